// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraSockets.h"

#include <poll.h>

#include <functional>
#include <string>
#include <vector>

namespace kelsim
{

/// Carries command lines to the simulator: from stdin, and from any number of clients of a UNIX stream
/// socket. Each line is answered by lines and then by "ok" or "error: …".
class ControlChannel
{
public:
    /// @param execute  takes a line and gives the whole answer
    explicit ControlChannel(std::function<std::string(const std::string &)> execute);
    ~ControlChannel();

    ControlChannel(const ControlChannel &) = delete;
    ControlChannel &operator=(const ControlChannel &) = delete;

    /// @return an error, empty when all is well
    std::string listen(const std::string &path);
    void readStdin();

    void appendPollEntries(std::vector<pollfd> &entries) const;

    /// @param entries  the channel's own ones as poll() filled them
    void run(const pollfd *entries);

private:
    struct Client {
        Descriptor input;
        int output = -1;
        std::string text; ///< begun, its line end not here yet
        bool isGone = false;
    };

    void accept();
    void receive(Client &client);
    void executeLines(Client &client);

    std::function<std::string(const std::string &)> m_execute;
    std::string m_path;
    Descriptor m_listener;
    std::vector<Client> m_clients;
};

/// Sends one command line to a simulator's socket and writes its answer to stdout.
/// @return the exit status: 0, or 1 with a line on stderr
int tellSimulator(const std::string &path, const std::string &line);

} // namespace kelsim
