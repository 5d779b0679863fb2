// SPDX-License-Identifier: Apache-2.0
// The ports of all makers: a description says whose a port is with "maker=NAME".
#include "SerialInterface.h"

using namespace kelsim;

extern "C" {

SIM_EXPORT std::int32_t clGetNumPorts(std::uint32_t *count)
{
    *count = static_cast<std::uint32_t>(describedPorts().size());
    return kNoError;
}

SIM_EXPORT std::int32_t clGetPortInfo(std::uint32_t index, char *maker, std::uint32_t *makerBytes, char *port,
                                      std::uint32_t *portBytes, std::uint32_t *version)
{
    auto ports = describedPorts();
    if (index >= ports.size())
        return kInvalidIndex;
    *version = 2;
    const std::int32_t makerResult = giveText(ports[index].values["maker"], maker, makerBytes);
    const std::int32_t portResult = giveText(ports[index].name, port, portBytes);
    return makerResult == kNoError ? portResult : makerResult;
}
}
