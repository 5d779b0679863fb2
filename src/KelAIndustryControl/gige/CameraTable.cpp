// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/CameraTable.h>

#include <KelAIndustryControl/core/FieldText.h>

#include <algorithm>

namespace kela::gige
{
namespace
{

// Far more than a list holds; a flood of invented cameras ends here.
constexpr std::size_t kMostCameras = 1024;

bool isAddressFitting(const Card &card, std::uint32_t hostAddress, const DiscoveryAnswer &answer)
{
    return std::any_of(card.addresses.begin(), card.addresses.end(), [&](const CardAddress &entry) {
        return entry.address == hostAddress && isNeighbour(entry, answer.currentIp, answer.subnetMask);
    });
}

} // namespace

CameraKey keyOf(const DiscoveryAnswer &answer)
{
    CameraKey key;
    key.hardwareAddress = answer.hardwareAddress;
    key.serial = fixedText(answer.texts.serialNumber);
    if (key.hardwareAddress == 0)
        key.address = answer.currentIp;
    return key;
}

CameraKey keyOf(const KELA_DEVICE_INFO_EX &info)
{
    const KELA_GIGE_DEVICE_INFO &gige = info.special.gige;
    CameraKey key;
    key.hardwareAddress = static_cast<std::uint64_t>(gige.macHigh) << 32 | gige.macLow;
    key.serial = fixedText(info.serialNumber);
    if (key.hardwareAddress == 0)
        key.address = gige.currentIp;
    return key;
}

KELA_DEVICE_INFO_EX recordOf(const DiscoveryAnswer &answer, std::uint32_t hostAddress, bool isOnThisHost)
{
    KELA_DEVICE_INFO_EX info = {};
    info.transport = KELA_INTERFACE_TYPE_GIGE;
    setFieldText(info.modelName, fixedText(answer.texts.modelName));
    setFieldText(info.secondName, fixedText(answer.texts.deviceVersion));
    setFieldText(info.serialNumber, fixedText(answer.texts.serialNumber));
    KELA_GIGE_DEVICE_INFO &gige = info.special.gige;
    gige.macHigh = static_cast<std::uint32_t>(answer.hardwareAddress >> 32);
    gige.macLow = static_cast<std::uint32_t>(answer.hardwareAddress);
    gige.ipConfigOptions = answer.ipConfigOptions;
    gige.ipConfigCurrent = answer.ipConfigCurrent;
    gige.currentIp = answer.currentIp;
    gige.subnetMask = answer.subnetMask;
    gige.gateway = answer.gateway;
    setFieldText(gige.manufacturerName, fixedText(answer.texts.manufacturerName));
    setFieldText(gige.userDefinedName, fixedText(answer.texts.userDefinedName));
    gige.hostIp = hostAddress;
    if (isOnThisHost) {
        info.placement = KELA_PLACEMENT_VIRTUAL;
    } else if (!answer.isPlainTransmitter()) {
        info.placement = KELA_PLACEMENT_OTHER;
    }
    return info;
}

const Sighting *Camera::sightingBy(unsigned int cardIndex) const
{
    const auto found = std::find_if(sightings.begin(), sightings.end(), [cardIndex](const Sighting &sighting) {
        return sighting.cardIndex == cardIndex;
    });
    return found == sightings.end() ? nullptr : &*found;
}

void CameraTable::beginPass(std::uint64_t pass, const Cards &cards)
{
    m_pass = pass;
    for (auto &[key, camera] : m_cameras) {
        camera.isAlive = false;
        const auto isGone = [&cards](const Sighting &sighting) {
            return sighting.cardIndex != 0 && !findCard(cards, sighting.cardIndex);
        };
        camera.sightings.erase(std::remove_if(camera.sightings.begin(), camera.sightings.end(), isGone),
                               camera.sightings.end());
    }
}

CameraTable::Noted CameraTable::note(const HeardAnswer &heard, TimePoint now)
{
    const CameraKey key = keyOf(heard.answer);
    auto found = m_cameras.find(key);
    const bool isNew = found == m_cameras.end();
    if (isNew && m_cameras.size() >= kMostCameras)
        return {};
    if (isNew)
        found = m_cameras.emplace(key, Camera{}).first;
    Camera &camera = found->second;
    const unsigned int cardIndex = heard.card ? heard.card->index : 0;
    auto *sighting = const_cast<Sighting *>(camera.sightingBy(cardIndex));
    if (sighting && heard.requestPass <= sighting->countedPass && heard.requestPass != m_pass)
        return {};
    if (!sighting) {
        sighting = &camera.sightings.emplace_back();
        sighting->cardIndex = cardIndex;
    }
    const std::uint32_t previous = sighting->hostAddress;
    sighting->hostAddress = heard.card ? hostAddressFor(*heard.card, heard.answer, heard.destination, previous)
                                       : heard.answer.currentIp;
    sighting->fits = !heard.card || isAddressFitting(*heard.card, sighting->hostAddress, heard.answer);
    sighting->answer = heard.answer;
    sighting->countedPass = std::max(sighting->countedPass, heard.requestPass);
    sighting->answeredIn = m_pass;
    camera.lastAnswer = now;
    return {&found->first, &camera, isNew};
}

bool CameraTable::isAwaited(const Camera &camera) const
{
    const Sighting *chosen = camera.chosen();
    if (!camera.isListed || !chosen || camera.isAlive)
        return false;
    return std::none_of(camera.sightings.begin(), camera.sightings.end(), [&](const Sighting &sighting) {
        return hasAnswered(sighting) && (&sighting == chosen || (sighting.fits && !chosen->fits));
    });
}

void CameraTable::settle()
{
    for (auto entry = m_cameras.begin(); entry != m_cameras.end();) {
        Camera &camera = entry->second;
        const Sighting *best = bestOf(camera);
        const Sighting *kept = best || !camera.isAlive ? nullptr : camera.chosen();
        if (kept && isAddressTaken(entry->first, *kept))
            kept = nullptr;
        if (!best && !kept) {
            entry = m_cameras.erase(entry);
            continue;
        }
        camera.chosenCard = best ? best->cardIndex : kept->cardIndex;
        camera.isListed = true;
        ++entry;
    }
}

const Sighting *CameraTable::bestOf(const Camera &camera) const
{
    const auto rank = [&camera](const Sighting &sighting) {
        const bool isChosen = camera.isListed && sighting.cardIndex == camera.chosenCard;
        return std::tuple(sighting.fits, isChosen, -static_cast<std::int64_t>(sighting.cardIndex));
    };
    const Sighting *best = nullptr;
    for (const Sighting &sighting : camera.sightings) {
        if (hasAnswered(sighting) && (!best || rank(*best) < rank(sighting)))
            best = &sighting;
    }
    return best;
}

bool CameraTable::isAddressTaken(const CameraKey &key, const Sighting &kept) const
{
    return std::any_of(m_cameras.begin(), m_cameras.end(), [&](const Map::value_type &entry) {
        if (!(entry.first < key) && !(key < entry.first))
            return false;
        const Sighting *best = bestOf(entry.second);
        return best && best->cardIndex == kept.cardIndex && best->answer.currentIp == kept.answer.currentIp;
    });
}

std::uint32_t hostAddressFor(const Card &card, const DiscoveryAnswer &answer, std::uint32_t destination,
                             std::uint32_t previous)
{
    if (previous != 0 && isAddressFitting(card, previous, answer))
        return previous;
    if (isAddressFitting(card, destination, answer))
        return destination;
    if (const CardAddress *fitting = fittingAddress(card, answer.currentIp, answer.subnetMask))
        return fitting->address;
    if (previous != 0 && card.owns(previous))
        return previous;
    if (card.owns(destination))
        return destination;
    return card.addresses.empty() ? 0 : card.addresses.front().address;
}

} // namespace kela::gige
