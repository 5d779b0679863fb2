// SPDX-License-Identifier: Apache-2.0
#include "Interruption.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

// A signal handler may do little more than write to a pipe.
int s_pipe[2] = {-1, -1};

void onSignal(int)
{
    const char byte = 0;
    const ssize_t written = write(s_pipe[1], &byte, 1);
    static_cast<void>(written);
}

void handle(int signal)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

} // namespace

Interruption::Interruption()
{
    if (pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    m_notifier = new QSocketNotifier(s_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (read(s_pipe[0], bytes, sizeof bytes) > 0) {
        }
        Q_EMIT requested();
    });
    handle(SIGINT);
    handle(SIGTERM);
}

Interruption::~Interruption()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    delete m_notifier;
    close(s_pipe[0]);
    close(s_pipe[1]);
}
