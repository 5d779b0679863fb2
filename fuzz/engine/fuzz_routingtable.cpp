// SPDX-License-Identifier: Apache-2.0
// Any bytes as what "route -n" prints, behind a first line that is the beginning of the card's address.
#include <DeviceEnumMng/DevicesEnum/RoutingTable.h>

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string input(data, data + size);
    const std::size_t lineEnd = input.find('\n');
    const QString prefix = QString::fromStdString(input.substr(0, lineEnd));
    const QString routes =
        lineEnd == std::string::npos ? QString() : QString::fromStdString(input.substr(lineEnd + 1));

    const QString gateway = gatewayIn(routes, prefix);
    strIP2IntIP(prefix);
    strIP2IntIP(gateway);
    isPlainInterfaceName(prefix);
    if (!gateway.startsWith(prefix) && !gateway.isEmpty()) {
        std::abort();
    }
    return 0;
}
