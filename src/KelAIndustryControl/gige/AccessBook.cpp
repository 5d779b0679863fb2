// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/AccessBook.h>

#include <utility>

namespace kela::gige
{
namespace
{

// Long enough for a client to go through 256 devices after a pass, short enough that nobody is told of a
// camera's state of long ago.
constexpr Milliseconds kFreshFor{500};

constexpr std::size_t kMostRemembered = 4096;

struct Memory {
    std::mutex mutex; // guards cards
    std::map<CameraKey, unsigned int> cards;
};

// Lives for the process and is never destroyed: an object may outlive the static ones.
Memory &memory()
{
    static Memory &instance = *new Memory;
    return instance;
}

} // namespace

void AccessBook::replace(Entries &&entries, TimePoint now)
{
    auto page = std::make_shared<const Page>(Page{std::move(entries), now});
    const std::lock_guard lock(m_mutex);
    m_page.swap(page);
}

std::optional<AccessValue> AccessBook::fresh(const KELA_DEVICE_INFO_EX &info, TimePoint now) const
{
    std::shared_ptr<const Page> page;
    {
        const std::lock_guard lock(m_mutex);
        page = m_page;
    }
    if (!page || now - page->read > kFreshFor)
        return std::nullopt;
    const auto entry = page->entries.find(keyOf(info));
    if (entry == page->entries.end() || entry->second.address != info.special.gige.currentIp)
        return std::nullopt;
    return entry->second.access;
}

unsigned int cardThatSaw(const CameraKey &key)
{
    Memory &known = memory();
    const std::lock_guard lock(known.mutex);
    const auto entry = known.cards.find(key);
    return entry == known.cards.end() ? 0 : entry->second;
}

void rememberCards(const AccessBook::Entries &entries)
{
    Memory &known = memory();
    const std::lock_guard lock(known.mutex);
    for (const auto &[key, entry] : entries) {
        if (known.cards.size() < kMostRemembered || known.cards.count(key) != 0)
            known.cards[key] = entry.cardIndex;
    }
}

} // namespace kela::gige
