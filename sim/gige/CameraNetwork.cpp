// SPDX-License-Identifier: Apache-2.0
#include "CameraNetwork.h"

#include <net/if.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace kelsim
{

CameraNetwork::CameraNetwork(bool managesAddresses)
    : m_managesAddresses(managesAddresses)
{
}

static std::string portError(uint32_t address)
{
    return "cannot listen on " + addressText(address) + " port " + std::to_string(kGvcpPort) + ": " +
           std::generic_category().message(errno);
}

std::string CameraNetwork::open()
{
    m_broadcasts = openCameraSocket(0, kGvcpPort);
    if (!m_broadcasts.isOpen()) {
        return portError(0);
    }
    m_otherPort = openCameraSocket(0, 0);
    return {};
}

std::string CameraNetwork::add(const std::vector<CameraSettings> &cameras)
{
    std::vector<std::pair<std::string, CameraPlace>> places;
    places.reserve(cameras.size());
    for (const CameraSettings &camera : cameras) {
        places.emplace_back(camera.card, camera.place);
    }
    if (m_managesAddresses && !m_addresses.add(places)) {
        return "cannot give addresses: the command 'ip' does not run";
    }

    const std::size_t before = m_places.size();
    for (const CameraSettings &camera : cameras) {
        const std::string error = place(camera);
        if (!error.empty()) {
            while (m_places.size() > before) {
                m_index.erase(m_places.back().camera->settings().id);
                m_places.pop_back();
            }
            return "camera '" + camera.id + "': " + error;
        }
    }
    return {};
}

std::string CameraNetwork::place(const CameraSettings &settings)
{
    if (m_index.count(settings.id) != 0) {
        return "there is one with this ID already";
    }
    Place place;
    place.card = if_nametoindex(settings.card.c_str());
    if (place.card == 0) {
        return "there is no card '" + settings.card + "'";
    }
    place.socket = openCameraSocket(settings.place.address, kGvcpPort);
    if (!place.socket.isOpen()) {
        return portError(settings.place.address);
    }
    place.camera = std::make_unique<SimulatedCamera>(settings);
    m_index[settings.id] = m_places.size();
    m_places.push_back(std::move(place));
    return {};
}

std::string CameraNetwork::move(SimulatedCamera &camera, const CameraPlace &place)
{
    const std::string &card = camera.settings().card;
    const CameraPlace before = camera.place();
    if (m_managesAddresses) {
        m_addresses.add({{card, place}});
    }
    Descriptor socket = openCameraSocket(place.address, kGvcpPort);
    if (!socket.isOpen()) {
        return portError(place.address);
    }
    m_places[m_index.at(camera.settings().id)].socket = std::move(socket);
    camera.moveTo(place);
    if (m_managesAddresses && before.address != place.address) {
        m_addresses.remove(card, before);
    }
    return {};
}

SimulatedCamera *CameraNetwork::find(const std::string &id)
{
    const auto found = m_index.find(id);
    return found == m_index.end() ? nullptr : m_places[found->second].camera.get();
}

std::vector<SimulatedCamera *> CameraNetwork::all()
{
    std::vector<SimulatedCamera *> cameras;
    for (const Place &place : m_places) {
        cameras.push_back(place.camera.get());
    }
    return cameras;
}

void CameraNetwork::appendPollEntries(std::vector<pollfd> &entries) const
{
    entries.push_back({m_broadcasts.number(), POLLIN, 0});
    for (const Place &place : m_places) {
        entries.push_back({place.socket.number(), POLLIN, 0});
    }
}

int CameraNetwork::pollTimeout(Clock::time_point now) const
{
    if (m_waiting.empty()) {
        return -1;
    }
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(m_waiting.begin()->first - now).count();
    return static_cast<int>(std::clamp<long long>(wait, 0, 60000));
}

void CameraNetwork::run(const pollfd *entries, Clock::time_point now)
{
    if (entries[0].revents != 0) {
        receiveBroadcasts(now);
    }
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        if (entries[i + 1].revents != 0) {
            receiveUnicast(m_places[i], now);
        }
    }
    sendDue(now);
}

void CameraNetwork::receiveBroadcasts(Clock::time_point now)
{
    Arrival arrival;
    while (receiveArrival(m_broadcasts, arrival)) {
        for (Place &place : m_places) {
            const bool isForAll = arrival.destination == kLimitedBroadcast ||
                                  arrival.destination == place.camera->place().directedBroadcast();
            if (isForAll && arrival.card == place.card) {
                handle(place, arrival, true, now);
            }
        }
    }
}

void CameraNetwork::receiveUnicast(Place &place, Clock::time_point now)
{
    Arrival arrival;
    while (receiveArrival(place.socket, arrival)) {
        handle(place, arrival, false, now);
    }
}

void CameraNetwork::handle(Place &place, const Arrival &arrival, bool isBroadcast, Clock::time_point now)
{
    SimulatedCamera &camera = *place.camera;
    const Datagram datagram{arrival.bytes.data(), arrival.size, arrival.from, isBroadcast};
    for (Answer &answer : camera.receive(datagram, now)) {
        const auto due = now + answer.delay;
        const bool isDue = answer.delay.count() == 0;
        Waiting waiting{std::move(answer), camera.settings().id, arrival.card};
        if (isDue) {
            send(waiting);
        } else {
            m_waiting.emplace(due, std::move(waiting));
        }
    }
    obeyForcedPlace(camera);
}

// An address that cannot be had on this host leaves the camera where it was, as a refused command would.
void CameraNetwork::obeyForcedPlace(SimulatedCamera &camera)
{
    if (const auto forced = camera.takeForcedPlace()) {
        move(camera, *forced);
    }
}

void CameraNetwork::send(const Waiting &waiting)
{
    const auto found = m_index.find(waiting.cameraId);
    if (found == m_index.end()) {
        return;
    }
    const Place &place = m_places[found->second];
    const Descriptor &socket = waiting.answer.isFromOtherPort ? m_otherPort : place.socket;
    sendAnswer(socket, waiting.answer, place.camera->place().address, waiting.card);
}

void CameraNetwork::sendDue(Clock::time_point now)
{
    while (!m_waiting.empty() && m_waiting.begin()->first <= now) {
        const auto first = m_waiting.extract(m_waiting.begin());
        const SimulatedCamera *const camera = find(first.mapped().cameraId);
        // Nothing leaves a camera whose cable was pulled meanwhile.
        if (camera != nullptr && camera->isPlugged()) {
            send(first.mapped());
        }
    }
}

} // namespace kelsim
