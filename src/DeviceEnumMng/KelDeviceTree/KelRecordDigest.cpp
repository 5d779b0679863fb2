// SPDX-License-Identifier: Apache-2.0
#include "KelRecordDigest.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

__extension__ using Product = unsigned __int128;

constexpr std::size_t kLanes = 4;
constexpr std::size_t kBlockSize = 2 * kLanes * sizeof(uint64_t);
using Lanes = std::array<uint64_t, kLanes>;

struct Keys {
    Lanes start;
    Lanes word; // other than start, or two words that change places would go unseen
};

// A device decides what stands in its record, so the keys are nobody's to know.
const Keys &keys()
{
    static const Keys kKeys = [] {
        const auto draw = [] { return QRandomGenerator::system()->generate64(); };
        Keys keys;
        std::generate(keys.start.begin(), keys.start.end(), draw);
        std::generate(keys.word.begin(), keys.word.end(), draw);
        return keys;
    }();
    return kKeys;
}

// Every bit of the result depends on every bit of both numbers.
uint64_t mixed(uint64_t left, uint64_t right)
{
    const Product product = static_cast<Product>(left) * right;
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64U);
}

uint64_t wordAt(const unsigned char *bytes)
{
    uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

// The lanes do not wait for each other, which makes this several times faster than one would be.
void mixIn(Lanes &lanes, const unsigned char *block, const Lanes &wordKeys)
{
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        const unsigned char *words = block + 2 * lane * sizeof(uint64_t);
        lanes[lane] = mixed(wordAt(words) ^ wordKeys[lane], wordAt(words + sizeof(uint64_t)) ^ lanes[lane]);
    }
}

} // namespace

uint64_t digestOfBytes(const void *bytes, std::size_t size) noexcept
{
    const auto *from = static_cast<const unsigned char *>(bytes);
    const Keys key = keys();
    Lanes lanes = key.start;
    std::size_t left = size;
    for (; left >= kBlockSize; left -= kBlockSize, from += kBlockSize) {
        mixIn(lanes, from, key.word);
    }
    if (left > 0) {
        unsigned char rest[kBlockSize] = {};
        std::memcpy(rest, from, left);
        mixIn(lanes, rest, key.word);
    }
    uint64_t digest = mixed(size ^ key.start[0], key.word[1]);
    for (const uint64_t lane : lanes) {
        digest = mixed(digest ^ lane, key.word[2]) + lane;
    }
    return digest;
}
