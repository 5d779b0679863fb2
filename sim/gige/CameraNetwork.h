// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AddressKeeper.h"
#include "CameraSockets.h"
#include "SimulatedCamera.h"

#include <poll.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kelsim
{

/// The cameras on their cards: sockets, and the answers that wait for their time.
///
/// Broadcasts are heard on one socket for all cards; each camera has a socket on its own address besides, so
/// that several simulators and other programs can share a card.
class CameraNetwork
{
public:
    /// @param managesAddresses  give the cards the cameras' addresses
    explicit CameraNetwork(bool managesAddresses);

    /// Opens what hears broadcasts. @return an error, empty when all is well
    std::string open();

    /// Puts cameras on their cards; none is added when one of them cannot be.
    /// @return an error, empty when all is well
    std::string add(const std::vector<CameraSettings> &cameras);

    /// Gives a camera another address. It keeps its place when that cannot be had.
    std::string move(SimulatedCamera &camera, const CameraPlace &place);

    /// Null when there is no such camera.
    SimulatedCamera *find(const std::string &id);
    std::vector<SimulatedCamera *> all();

    /// Appends what to poll for.
    void appendPollEntries(std::vector<pollfd> &entries) const;

    /// Milliseconds until the next waiting answer, -1 when none waits.
    int pollTimeout(Clock::time_point now) const;

    /// Handles everything that has arrived and everything that is due.
    /// @param entries  the network's own ones as poll() filled them; nothing was added since
    void run(const pollfd *entries, Clock::time_point now);

private:
    struct Place {
        std::unique_ptr<SimulatedCamera> camera;
        Descriptor socket;
        unsigned int card = 0; ///< interface index
    };
    struct Waiting {
        Answer answer;
        std::string cameraId;
        unsigned int card = 0; ///< to leave by
    };

    std::string place(const CameraSettings &settings);
    void receiveBroadcasts(Clock::time_point now);
    void receiveUnicast(Place &place, Clock::time_point now);
    void handle(Place &place, const Arrival &arrival, bool isBroadcast, Clock::time_point now);
    void obeyForcedPlace(SimulatedCamera &camera);
    void send(const Waiting &waiting);
    void sendDue(Clock::time_point now);

    AddressKeeper m_addresses;
    bool m_managesAddresses;
    Descriptor m_broadcasts;
    Descriptor m_otherPort; ///< for answers that come from a wrong port
    std::vector<Place> m_places;
    std::map<std::string, std::size_t> m_index; ///< camera ID to its place
    std::multimap<Clock::time_point, Waiting> m_waiting;
};

} // namespace kelsim
