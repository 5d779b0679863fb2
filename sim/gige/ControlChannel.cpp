// SPDX-License-Identifier: Apache-2.0
#include "ControlChannel.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace kelsim
{

namespace
{

constexpr std::size_t kLongestLine = 4096;

bool fillSocketPath(const std::string &path, sockaddr_un &address)
{
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

void writeAll(int output, const std::string &text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t size = write(output, text.data() + done, text.size() - done);
        if (size <= 0) {
            return;
        }
        done += static_cast<std::size_t>(size);
    }
}

} // namespace

ControlChannel::ControlChannel(std::function<std::string(const std::string &)> execute)
    : m_execute(std::move(execute))
{
}

ControlChannel::~ControlChannel()
{
    if (!m_path.empty()) {
        unlink(m_path.c_str());
    }
}

std::string ControlChannel::listen(const std::string &path)
{
    sockaddr_un address{};
    if (!fillSocketPath(path, address)) {
        return "the path of the control socket is empty or too long: '" + path + "'";
    }
    Descriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (bind(listener.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        ::listen(listener.number(), 8) != 0) {
        return "cannot listen on " + path + ": " + std::generic_category().message(errno);
    }
    m_listener = std::move(listener);
    m_path = path;
    return {};
}

void ControlChannel::readStdin()
{
    Client client;
    client.input = Descriptor(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3));
    client.output = STDOUT_FILENO;
    m_clients.push_back(std::move(client));
}

void ControlChannel::appendPollEntries(std::vector<pollfd> &entries) const
{
    entries.push_back({m_listener.number(), POLLIN, 0});
    for (const Client &client : m_clients) {
        entries.push_back({client.input.number(), POLLIN, 0});
    }
}

void ControlChannel::run(const pollfd *entries)
{
    for (std::size_t i = 0; i < m_clients.size(); ++i) {
        if (entries[i + 1].revents != 0) {
            receive(m_clients[i]);
        }
    }
    m_clients.erase(
        std::remove_if(m_clients.begin(), m_clients.end(), [](const Client &client) { return client.isGone; }),
        m_clients.end());
    if (entries[0].revents != 0) {
        accept();
    }
}

void ControlChannel::accept()
{
    Client client;
    client.input = Descriptor(accept4(m_listener.number(), nullptr, nullptr, SOCK_CLOEXEC));
    client.output = client.input.number();
    if (client.input.isOpen()) {
        m_clients.push_back(std::move(client));
    }
}

void ControlChannel::receive(Client &client)
{
    char part[1024];
    const ssize_t size = read(client.input.number(), part, sizeof part);
    if (size <= 0) {
        client.isGone = true;
        return;
    }
    client.text.append(part, static_cast<std::size_t>(size));
    executeLines(client);
    if (client.text.size() > kLongestLine) {
        writeAll(client.output, "error: the line is too long\n");
        client.isGone = true;
    }
}

void ControlChannel::executeLines(Client &client)
{
    std::size_t end = 0;
    while ((end = client.text.find('\n')) != std::string::npos) {
        const std::string line = client.text.substr(0, end);
        client.text.erase(0, end + 1);
        writeAll(client.output, m_execute(line));
    }
}

int tellSimulator(const std::string &path, const std::string &line)
{
    sockaddr_un address{};
    const Descriptor client(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!fillSocketPath(path, address) ||
        connect(client.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        std::fprintf(stderr, "kel-sim-cameras: no simulator listens on '%s'\n", path.c_str());
        return 1;
    }
    writeAll(client.number(), line + "\n");
    shutdown(client.number(), SHUT_WR);

    std::string answer;
    char part[4096];
    for (ssize_t size = 0; (size = read(client.number(), part, sizeof part)) > 0;) {
        answer.append(part, static_cast<std::size_t>(size));
    }
    const bool isError = answer.rfind("error:", 0) == 0 || answer.empty();
    std::fputs(answer.c_str(), isError ? stderr : stdout);
    return isError ? 1 : 0;
}

} // namespace kelsim
