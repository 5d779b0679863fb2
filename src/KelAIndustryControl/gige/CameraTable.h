// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>
#include <KelAIndustryControl/core/Clock.h>
#include <KelAIndustryControl/gige/AccessProbe.h>
#include <KelAIndustryControl/gige/GvcpMessages.h>
#include <KelAIndustryControl/gige/NetworkCards.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

/// @file
/// The cameras that one object knows, and what it decides about them from pass to pass. No input or output.

namespace kela::gige
{

/// Tells cameras apart. The hardware address is the key; the serial number stands beside it because
/// careless makers repeat addresses, and the IP address where there is no hardware address.
struct CameraKey {
    std::uint64_t hardwareAddress = 0;
    std::string serial;
    std::uint32_t address = 0;

    bool operator<(const CameraKey &other) const
    {
        return std::tie(hardwareAddress, serial, address) <
               std::tie(other.hardwareAddress, other.serial, other.address);
    }
};

CameraKey keyOf(const DiscoveryAnswer &answer);
CameraKey keyOf(const KELA_DEVICE_INFO_EX &info);

/// The record of a camera; the registers that say who holds it are not part of its answer.
KELA_DEVICE_INFO_EX recordOf(const DiscoveryAnswer &answer, std::uint32_t hostAddress, bool isOnThisHost);

/// A camera as one card sees it. A camera on this host itself is seen by no card: index 0.
struct Sighting {
    unsigned int cardIndex = 0;
    std::uint32_t hostAddress = 0;
    bool fits = false;             ///< the camera's subnet is the card's, or the camera is on this host
    DiscoveryAnswer answer;        ///< the last one
    std::uint64_t countedPass = 0; ///< latest pass whose request was answered
    std::uint64_t answeredIn = 0;  ///< pass in which an answer last counted
};

struct Camera {
    std::vector<Sighting> sightings;
    unsigned int chosenCard = 0; ///< meaningful while listed
    bool isListed = false;       ///< part of the last result
    bool isAlive = false;        ///< stayed silent to the discovery of this pass, yet answered by its registers
    TimePoint lastAnswer;        ///< to a discovery
    std::optional<std::uint32_t> capability;
    AccessValue access;

    const Sighting *sightingBy(unsigned int cardIndex) const;
    const Sighting *chosen() const { return sightingBy(chosenCard); }
};

/// What came in: a discovery answer, with the card that heard it.
struct HeardAnswer {
    DiscoveryAnswer answer;
    const Card *card = nullptr;    ///< null for a camera on this host itself
    std::uint32_t destination = 0; ///< address that the answer was sent to
    std::uint64_t requestPass = 0; ///< pass whose request it answers
};

class CameraTable
{
public:
    using Map = std::map<CameraKey, Camera>;

    struct Noted {
        const CameraKey *key = nullptr; ///< null when there was no room, or the answer was a repetition
        Camera *camera = nullptr;
        bool isNew = false;
    };

    /// Starts a pass. Ways by cards that are gone are forgotten.
    void beginPass(std::uint64_t pass, const Cards &cards);

    /// Takes an answer in. Answers to an earlier pass count once: a repetition of what that pass had
    /// already is no sign of life.
    Noted note(const HeardAnswer &heard, TimePoint now);

    /// Whether the pass still waits for this camera: it was listed, the card that it was listed with is
    /// there, and neither that card nor a better one has heard it.
    bool isAwaited(const Camera &camera) const;

    /// Ends the pass: chooses the way of each camera and drops the silent ones.
    void settle();

    Map &cameras() { return m_cameras; }
    std::uint64_t pass() const { return m_pass; }

private:
    bool hasAnswered(const Sighting &sighting) const { return sighting.answeredIn == m_pass; }
    const Sighting *bestOf(const Camera &camera) const;
    bool isAddressTaken(const CameraKey &key, const Sighting &kept) const;

    Map m_cameras;
    std::uint64_t m_pass = 0;
};

/// The card's address that a camera is seen from: what was chosen before while it is as good as another,
/// else the one that the answer came to, else the one whose subnet holds the camera.
std::uint32_t hostAddressFor(const Card &card, const DiscoveryAnswer &answer, std::uint32_t destination,
                             std::uint32_t previous);

} // namespace kela::gige
