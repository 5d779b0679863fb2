// SPDX-License-Identifier: Apache-2.0
// Any bytes as the kernel's routing table.
#include <KelAIndustryControl/gige/ReversePathFilter.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string table(data, data + size);
    kela::gige::hasDefaultRoute(table);
    return 0;
}
