// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraFaults.h"

#include <array>
#include <cstdint>
#include <optional>

namespace kelsim
{

/// A socket descriptor, closed with its owner.
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {
    }
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept;
    Descriptor &operator=(Descriptor &&other) noexcept;

    int number() const { return m_number; }
    bool isOpen() const { return m_number >= 0; }

private:
    int m_number;
};

/// A datagram with where it came from and where it was sent to.
struct Arrival {
    std::array<uint8_t, 2048> bytes;
    std::size_t size = 0;
    Endpoint from;
    uint32_t destination = 0;
    unsigned int card = 0; ///< interface index
};

/// A non-blocking UDP socket on an address, 0 = all of them (hears broadcasts). Not open when the system
/// refuses; errno then tells why.
Descriptor openCameraSocket(uint32_t address, uint16_t port);

/// The next datagram that waits on a socket.
bool receiveArrival(const Descriptor &socket, Arrival &arrival);

/// Sends an answer through a card with a camera's address as its source. Losses are the network's business.
void sendAnswer(const Descriptor &socket, const Answer &answer, uint32_t source, unsigned int card);

} // namespace kelsim
