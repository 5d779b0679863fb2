// SPDX-License-Identifier: Apache-2.0
// What comes over a serial line, from a camera or from anything else.
#include <KelAIndustryControl/cameralink/GenCpPacket.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const kela::ByteView bytes{data, size};
    if (kela::cameralink::parsePacketHead(bytes) && kela::cameralink::isPacketDataValid(bytes))
        kela::cameralink::pendingTime(bytes.from(kela::cameralink::kPacketHeadSize));
    return 0;
}
