// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "WireNamespace.h"

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/gige/GvcpMessages.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kelatest
{

/// A camera of a few lines: as much of one as the tests of the device access need, and every fault.
struct SmallCamera {
    std::uint64_t hardwareAddress = 0;
    std::uint32_t address = 0;
    std::uint32_t mask = 0xFFFFFF00;
    std::uint32_t deviceMode = 0x80000001;
    std::string serial;
    std::string model = "Model";
    std::string vendor = "Vendor";
    std::string userName;
    std::map<std::uint32_t, std::uint32_t> registers = {{0x0934, 0x08000000}, {0x0938, 3000}, {0x0A00, 0},
                                                        {0x0A14, 0},          {0x0D00, 0},    {0x0D18, 0}};

    bool isPlugged = true;
    int discoveriesToLose = 0;
    int registerReadsToLose = 0;
    bool answersRegisters = true;
    bool answersDiscovery = true;
    bool answersByBroadcast = false;
    int copies = 1; ///< of each discovery answer
    std::chrono::milliseconds discoveryDelay{0};
    std::uint16_t registerStatus = 0;                  ///< an error for every register access
    std::uint16_t sourcePort = 3956;                   ///< of the discovery answer
    std::function<void(kela::gige::Datagram &)> spoil; ///< changes a discovery answer on its way

    // What the camera has seen.
    int discoveries = 0;
    int unicastDiscoveries = 0;
    int registerReads = 0;
    bool wasBroadcastAllowed = false;  ///< by the last discovery
    std::vector<std::uint32_t> writes; ///< values written to the control privilege
};

/// A camera with the address 192.168.50.N on a hardware address of its own.
SmallCamera smallCamera(unsigned int number);

/// Plays cameras behind the cards of a namespace.
class SmallCameras
{
public:
    explicit SmallCameras(WireNamespace &wire)
        : SmallCameras(&wire)
    {
    }

    /// In the test's own namespace: cameras that are simulated on the host itself.
    SmallCameras()
        : SmallCameras(nullptr)
    {
    }
    ~SmallCameras();

    SmallCameras(const SmallCameras &) = delete;
    SmallCameras &operator=(const SmallCameras &) = delete;

    /// @param card  the wire card that the camera is on; it gets the address
    void add(const SmallCamera &camera, const std::string &card);

    /// As add(), at an address that the card has already.
    void addBeside(const SmallCamera &camera, const std::string &card);

    /// Changes a camera, or looks at it, while it plays.
    void edit(const std::string &serial, const std::function<void(SmallCamera &)> &change);
    SmallCamera look(const std::string &serial);

    /// Waits until a fact holds of a camera. False after three seconds.
    bool waitFor(const std::string &serial, const std::function<bool(const SmallCamera &)> &fact);

    /// Sends bytes from port 3956 by a card.
    void throwAt(const std::string &card, std::uint32_t from, std::uint32_t to, std::uint16_t port,
                 const kela::gige::Datagram &bytes);

    /// Port that the last discovery came from.
    std::uint16_t lastClientPort();

private:
    struct Played {
        SmallCamera camera;
        unsigned int cardIndex = 0;
        std::uint32_t controller = 0;
        std::uint16_t controllerPort = 0;
    };
    struct Request {
        kela::gige::Datagram bytes;
        std::uint32_t sender = 0;
        std::uint16_t senderPort = 0;
        std::uint32_t destination = 0;
        unsigned int cardIndex = 0;
    };
    struct Outgoing {
        kela::TimePoint due;
        kela::gige::Datagram bytes;
        std::uint32_t from = 0;
        std::uint16_t fromPort = 0;
        std::uint32_t to = 0;
        std::uint16_t toPort = 0;
        unsigned int cardIndex = 0;
    };

    explicit SmallCameras(WireNamespace *wire);

    void runThere(const std::function<void()> &function);
    void live();
    bool receive(Request &request) const;
    void handle(const Request &request);
    void discover(Played &played, const Request &request);
    static void moveTo(SmallCamera &camera, const Request &request);
    void access(Played &played, const Request &request);
    kela::gige::Datagram write(Played &played, const Request &request, std::uint32_t address,
                               std::uint32_t value);
    void sendDue(kela::TimePoint now);
    void send(const Outgoing &outgoing) const;
    kela::TimePoint nextDue();

    WireNamespace *m_wire;
    kela::CancelSignal m_end;
    int m_socket = -1;
    std::mutex m_mutex; // guards all below
    std::vector<Played> m_cameras;
    std::vector<Outgoing> m_outgoing;
    std::uint16_t m_lastClientPort = 0;
    std::thread m_thread;
};

} // namespace kelatest
