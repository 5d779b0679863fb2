// SPDX-License-Identifier: Apache-2.0
// The ports of one maker's boards.
#include "SerialInterface.h"

using namespace kelsim;

extern "C" {

SIM_EXPORT std::int32_t clGetNumSerialPorts(std::uint32_t *count)
{
    *count = static_cast<std::uint32_t>(describedPorts().size());
    return kNoError;
}

SIM_EXPORT std::int32_t clGetManufacturerInfo(char *name, std::uint32_t *nameBytes, std::uint32_t *version)
{
    *version = 2;
    return giveText("Simulated", name, nameBytes);
}

SIM_EXPORT std::int32_t clGetSerialPortIdentifier(std::uint32_t index, char *name, std::uint32_t *nameBytes)
{
    const auto ports = describedPorts();
    return index < ports.size() ? giveText(ports[index].name, name, nameBytes) : kInvalidIndex;
}
}
