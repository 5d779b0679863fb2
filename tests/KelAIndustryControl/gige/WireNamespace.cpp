// SPDX-License-Identifier: Apache-2.0
#include "WireNamespace.h"

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace kelatest
{
namespace
{

constexpr int kLongestCarrierWait = 5000; // milliseconds

bool isRunning(const std::string &card)
{
    const int any = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request = {};
    card.copy(request.ifr_name, IFNAMSIZ - 1);
    const bool isKnown = ::ioctl(any, SIOCGIFFLAGS, &request) == 0;
    ::close(any);
    return isKnown && (request.ifr_flags & IFF_RUNNING) != 0;
}

} // namespace

void hostShell(const std::string &command)
{
    const std::string withPath = "PATH=$PATH:/usr/sbin:/sbin; " + command;
    if (std::system(withPath.c_str()) != 0) // NOLINT(concurrency-mt-unsafe): commands of the test itself
        throw std::runtime_error("failed: " + command);
}

WireNamespace::WireNamespace()
    : m_thread([this] { live(); })
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_threadId != 0; });
    if (m_threadId < 0) {
        lock.unlock();
        m_thread.join();
        throw std::runtime_error("no network namespace");
    }
    lock.unlock();
    shell("ip link set lo up");
}

WireNamespace::~WireNamespace()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void WireNamespace::live()
{
    const bool isMade = ::unshare(CLONE_NEWNET) == 0;
    std::unique_lock lock(m_mutex);
    m_threadId = isMade ? static_cast<pid_t>(::syscall(SYS_gettid)) : -1;
    m_changed.notify_all();
    while (isMade) {
        m_changed.wait(lock, [this] { return m_isEnding || m_task; });
        if (m_isEnding)
            return;
        m_task();
        m_task = nullptr;
        m_changed.notify_all();
    }
}

void WireNamespace::run(const std::function<void()> &function)
{
    std::exception_ptr failure;
    std::unique_lock lock(m_mutex);
    m_task = [&] {
        try {
            function();
        } catch (...) {
            failure = std::current_exception();
        }
    };
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return !m_task; });
    if (failure)
        std::rethrow_exception(failure);
}

void WireNamespace::shell(const std::string &command)
{
    run([&] { hostShell(command); });
}

void WireNamespace::addCard(const std::string &hostCard, const std::string &hostAddresses,
                            const std::string &wireCard)
{
    std::ostringstream pair;
    pair << "ip link add " << hostCard << " type veth peer name " << wireCard << " netns " << m_threadId;
    hostShell(pair.str());
    std::istringstream addresses(hostAddresses);
    for (std::string address; std::getline(addresses, address, ',');)
        hostShell("ip addr add " + address + " brd + dev " + hostCard);
    hostShell("ip link set " + hostCard + " up");
    shell("ip link set " + wireCard + " up");
    waitForCarrier(hostCard, wireCard);
}

// The kernel lets a fresh card wait for up to a second and meanwhile drops what is sent.
void WireNamespace::waitForCarrier(const std::string &hostCard, const std::string &wireCard)
{
    bool isWireReady = false;
    for (int i = 0; i < kLongestCarrierWait; ++i) {
        run([&] { isWireReady = isRunning(wireCard); });
        if (isWireReady && isRunning(hostCard))
            return;
        ::usleep(1000);
    }
    throw std::runtime_error("no carrier on " + hostCard);
}

} // namespace kelatest
