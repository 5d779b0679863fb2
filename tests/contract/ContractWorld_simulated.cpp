// SPDX-License-Identifier: Apache-2.0
#include "ContractWorld.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <set>
#include <stdexcept>

namespace
{

/// Simulated cameras, steered through the control socket that KEL_SIM_CONTROL names. A camera that the
/// simulator has once been given stays there, unplugged when it is not wanted.
class SimulatedWorld final : public ContractWorld
{
public:
    void reset() override
    {
        for (const std::string &serial : m_known) {
            tell("unplug " + serial);
        }
    }

    void plug(const std::string &serial, uint32_t number) override
    {
        const std::string address =
            "192.168." + std::to_string(10 + number / 256) + "." + std::to_string(number % 256);
        if (m_known.insert(serial).second) {
            tell("camera " + serial + " card=wire-cam0 plugged=no version=2.1 vendor=\"Contract Vision\" " +
                 "model=CV-1 address=" + address + "/24");
        }
        tell("move " + serial + " " + address + " 24");
        tell("plug " + serial);
    }

    void unplug(const std::string &serial) override { tell("unplug " + serial); }
    void hold(const std::string &serial) override { tell("hold " + serial); }
    void letGo(const std::string &serial) override { tell("release " + serial); }

    void holdAndStream(const std::string &serial, uint32_t destination, uint16_t port) override
    {
        std::string address;
        for (const uint32_t shift : {24U, 16U, 8U, 0U}) {
            address += (address.empty() ? "" : ".") + std::to_string((destination >> shift) & 0xFFU);
        }
        tell("hold " + serial);
        tell("multicast " + serial + " " + address + " " + std::to_string(port));
    }

private:
    static int connectToSimulator()
    {
        const char *const path = std::getenv("KEL_SIM_CONTROL"); // NOLINT(concurrency-mt-unsafe)
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path == nullptr ? "" : path, sizeof address.sun_path - 1);
        const int simulator = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (connect(simulator, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
            close(simulator);
            throw std::runtime_error("KEL_SIM_CONTROL does not lead to a simulator");
        }
        return simulator;
    }

    static void tell(const std::string &command)
    {
        const int simulator = connectToSimulator();
        const std::string line = command + "\n";
        const bool isSent = write(simulator, line.data(), line.size()) == static_cast<ssize_t>(line.size());
        shutdown(simulator, SHUT_WR);
        std::string answer;
        char part[256];
        for (ssize_t size = 0; (size = read(simulator, part, sizeof part)) > 0;) {
            answer.append(part, static_cast<std::size_t>(size));
        }
        close(simulator);
        if (!isSent || answer != "ok\n") {
            throw std::runtime_error(command + ": " + answer);
        }
    }

    std::set<std::string> m_known;
};

} // namespace

ContractWorld &contractWorld()
{
    static SimulatedWorld world;
    return world;
}
