// SPDX-License-Identifier: Apache-2.0
// Any bytes as what cameras tell of themselves: every 249 bytes are a card and a discovery payload.
#include <KelAIndustryControl/gige/CameraTable.h>

#include <cstdlib>
#include <cstring>

using namespace kela;
using namespace kela::gige;

namespace
{

Cards someCards()
{
    Cards cards(2);
    cards[0].index = 1;
    cards[0].addresses = {{0xC0A83201, 0xFFFFFF00, 0xC0A832FF, 0}, {0x0A000001, 0xFF000000, 0x0AFFFFFF, 0}};
    cards[1].index = 2;
    cards[1].addresses = {{0xA9FE0001, 0xFFFF0000, 0xA9FEFFFF, 0}};
    return cards;
}

// Whatever a device tells, its record can be read as a record.
void check(const CameraKey &key, const Sighting &sighting)
{
    const KELA_DEVICE_INFO_EX info = recordOf(sighting.answer, sighting.hostAddress, sighting.cardIndex == 0);
    const CameraKey fromRecord = keyOf(info);
    if (fromRecord < key || key < fromRecord)
        std::abort();
    if (fixedText(info.modelName).size() > 32 || fixedText(info.special.gige.userDefinedName).size() > 16)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Cards cards = someCards();
    CameraTable table;
    ByteView left{data, size};
    for (std::uint64_t pass = 1; left.size > 0 && pass < 8; ++pass) {
        table.beginPass(pass, cards);
        const std::uint8_t control = left.data[0];
        left = left.from(1);
        const auto answer = parseDiscovery(left);
        if (!answer)
            break;
        left = left.from(sizeof(DiscoveryPayload));
        const Card *card = (control & 3) == 0 ? nullptr : &cards[control & 1];
        const CameraTable::Noted noted =
            table.note({*answer, card, answer->gateway, pass - (control >> 2 & 1U)}, Clock::now());
        if (noted.camera)
            check(*noted.key, noted.camera->sightings.back());
        for (const auto &entry : table.cameras())
            table.isAwaited(entry.second);
        table.settle();
    }
    return 0;
}
