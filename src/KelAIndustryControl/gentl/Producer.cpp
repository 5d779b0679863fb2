// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/Producer.h>

#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/gentl/Identifiers.h>
#include <KelAIndustryControl/gentl/LocaleKeeper.h>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <iterator>
#include <system_error>
#include <thread>
#include <utility>

namespace kela::gentl
{
namespace
{

/// True when @p event is readable; false when the deadline passed or the caller was cancelled.
bool waitFor(const UniqueFd &event, const CancelSignal &cancel, TimePoint deadline)
{
    constexpr Milliseconds kLookInterval{20};
    for (TimePoint now = Clock::now(); now < deadline && !cancel.isSet(); now = Clock::now()) {
        pollfd events[] = {{event.get(), POLLIN, 0}, {cancel.fd(), POLLIN, 0}};
        const TimePoint until = cancel.fd() < 0 ? std::min(deadline, now + kLookInterval) : deadline;
        if (::poll(events, 2, pollTimeout(until, now)) > 0 && (events[0].revents & POLLIN))
            return true;
    }
    return false;
}

} // namespace

Producer::Use::Use(Producer &producer)
    : m_producer(producer)
{
    const std::lock_guard lock(m_producer.m_mutex);
    ++m_producer.m_users;
}

Producer::Use::~Use()
{
    const std::lock_guard lock(m_producer.m_mutex);
    --m_producer.m_users;
    m_producer.m_wake.notify_all();
}

bool Producer::isUsed() const
{
    const std::lock_guard lock(m_mutex);
    return m_users > 0;
}

bool Producer::isLoaded() const
{
    const std::lock_guard lock(m_mutex);
    return m_isLoaded;
}

Producer::Condition Producer::condition() const
{
    const std::lock_guard lock(m_mutex);
    Condition now;
    now.isLoaded = m_isLoaded;
    now.isResponding = !(m_current && m_current->isAbandoned);
    now.facts = m_facts;
    if (!m_troubles.empty()) {
        const auto &[interface, trouble] = *m_troubles.begin();
        now.trouble = (interface.empty() ? std::string() : "interface " + interface + ": ") + trouble;
    }
    return now;
}

unsigned int Producer::listInterfaces(const CancelSignal &cancel, std::vector<InterfaceFacts> &found)
{
    // Shared with the task, which may outlive this call.
    const auto result = std::make_shared<std::vector<InterfaceFacts>>();
    const unsigned int code = run(cancel, [this, result](ProducerSession &session) {
        const ProducerSession::Result listed = session.listInterfaces(*result);
        if (listed)
            keepInterfaces(*result);
        if (listed.code != GC_ERR_TIMEOUT || !m_lastInterfaces)
            return resultCode(listed, {});
        *result = *m_lastInterfaces;
        return static_cast<unsigned int>(KELA_OK);
    });
    if (code == KELA_OK)
        found = std::move(*result);
    return code;
}

void Producer::keepInterfaces(const std::vector<InterfaceFacts> &interfaces)
{
    m_lastInterfaces = interfaces;
    const auto isListed = [&interfaces](const std::string &identifier) {
        return std::any_of(interfaces.begin(), interfaces.end(),
                           [&](const InterfaceFacts &facts) { return facts.identifier == identifier; });
    };
    for (auto kept = m_lastDevices.begin(); kept != m_lastDevices.end();)
        kept = isListed(kept->first) ? std::next(kept) : m_lastDevices.erase(kept);
    const std::lock_guard lock(m_mutex);
    for (auto trouble = m_troubles.begin(); trouble != m_troubles.end();) {
        const bool isKept = trouble->first.empty() || isListed(trouble->first);
        trouble = isKept ? std::next(trouble) : m_troubles.erase(trouble);
    }
}

unsigned int Producer::listDevices(const CancelSignal &cancel, const std::string &interfaceId,
                                   std::vector<DeviceFacts> &found)
{
    const auto result = std::make_shared<std::vector<DeviceFacts>>();
    const unsigned int code = run(cancel, [this, result, interfaceId](ProducerSession &session) {
        const ProducerSession::Result listed = session.listDevices(interfaceId, *result);
        const auto last = m_lastDevices.find(interfaceId);
        if (listed)
            m_lastDevices[interfaceId] = *result;
        if (listed.code != GC_ERR_TIMEOUT || last == m_lastDevices.end())
            return resultCode(listed, interfaceId);
        *result = last->second;
        return static_cast<unsigned int>(KELA_OK);
    });
    if (code == KELA_OK)
        found = std::move(*result);
    return code;
}

unsigned int Producer::holdInterface(const CancelSignal &cancel, const std::string &interfaceId)
{
    const auto isHeld = std::make_shared<std::atomic<bool>>(false);
    const unsigned int code =
        run(cancel, [this, isHeld, interfaceId](ProducerSession &session) -> unsigned int {
            const ProducerSession::Result held = session.holdInterface(interfaceId);
            isHeld->store(static_cast<bool>(held));
            // Another's good right, not the producer's trouble.
            const bool isTaken = held.code == GC_ERR_RESOURCE_IN_USE || held.code == GC_ERR_ACCESS_DENIED;
            return isTaken ? static_cast<unsigned int>(KELA_ERROR_IN_USE) : resultCode(held, interfaceId);
        });
    // Nobody will close what a caller that left meanwhile got.
    if (code == KELA_ERROR_TIMEOUT || code == KELA_ERROR_CANCELLED) {
        post([isHeld, interfaceId](ProducerSession &session) -> unsigned int {
            if (isHeld->load())
                session.releaseInterface(interfaceId);
            return KELA_OK;
        });
    }
    return code;
}

void Producer::releaseInterface(const std::string &interfaceId)
{
    post([interfaceId](ProducerSession &session) -> unsigned int {
        session.releaseInterface(interfaceId);
        return KELA_OK;
    });
}

unsigned int Producer::run(const CancelSignal &cancel, Task task)
{
    const TimePoint deadline = Clock::now() + kLimit;
    const auto request = std::make_shared<Request>();
    request->task = std::move(task);
    request->finished = UniqueFd(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!request->finished)
        return KELA_ERROR_RESOURCE;
    {
        const std::lock_guard lock(m_mutex);
        if (m_current && m_current->isAbandoned)
            return KELA_ERROR_TIMEOUT;
        if (!enqueue(request))
            return KELA_ERROR_RESOURCE;
    }
    if (waitFor(request->finished, cancel, deadline)) {
        const std::lock_guard lock(m_mutex);
        return request->result;
    }
    return giveUp(request, cancel.isSet());
}

void Producer::post(Task task)
{
    const auto request = std::make_shared<Request>();
    request->kind = Kind::IfOpen;
    request->task = std::move(task);
    const std::lock_guard lock(m_mutex);
    // Without a thread nothing is open that would need the call.
    if (m_hasThread)
        enqueue(request);
}

bool Producer::startThread()
{
    // The host's signal handlers have no business inside a producer, but for those of faults: a blocked fault
    // ends the process without a word.
    sigset_t blocked;
    sigset_t before;
    ::sigfillset(&blocked);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, SIGABRT})
        ::sigdelset(&blocked, fault);
    ::pthread_sigmask(SIG_SETMASK, &blocked, &before);
    bool isStarted = true;
    try {
        // Nobody ever joins it: it may be held up in the producer for ever.
        std::thread([this] { threadMain(); }).detach();
    } catch (const std::system_error &) {
        isStarted = false;
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return isStarted;
}

// With m_mutex held.
bool Producer::enqueue(const std::shared_ptr<Request> &request)
{
    m_queue.push_back(request);
    m_wake.notify_all();
    if (m_hasThread)
        return true;
    m_hasThread = startThread();
    if (!m_hasThread)
        m_queue.pop_back();
    return m_hasThread;
}

unsigned int Producer::giveUp(const std::shared_ptr<Request> &request, bool isCancelled)
{
    bool isNew = false;
    {
        const std::lock_guard lock(m_mutex);
        if (request->progress == Progress::Finished)
            return request->result;
        m_queue.erase(std::remove(m_queue.begin(), m_queue.end(), request), m_queue.end());
        if (isCancelled) {
            request->isLeft = true;
            m_ended.notify_all();
            return KELA_ERROR_CANCELLED;
        }
        // One that waits behind another's request has not met the producer yet.
        const bool isLate = m_current && (m_current == request || Clock::now() - m_current->start >= kLimit);
        isNew = isLate && !m_current->isAbandoned;
        if (isNew)
            m_current->isAbandoned = true;
    }
    if (isNew)
        logLine(KELA_LOG_WARNING, "GenTL producer does not respond: " + printable(m_file));
    return KELA_ERROR_TIMEOUT;
}

void Producer::threadMain()
{
    ::pthread_setname_np(::pthread_self(), "kel-gentl");
    std::unique_lock lock(m_mutex);
    for (;;) {
        const bool isUnused = m_queue.empty() && m_users == 0;
        if (isUnused && !m_isLoaded)
            break;
        if (isUnused) {
            m_queue.push_back(std::make_shared<Request>());
            m_queue.back()->kind = Kind::Closing;
        }
        if (m_queue.empty()) {
            m_wake.wait(lock);
        } else {
            runNext(lock);
        }
    }
    m_hasThread = false;
    m_ended.notify_all();
}

void Producer::runNext(std::unique_lock<std::mutex> &lock)
{
    m_current = m_queue.front();
    m_queue.pop_front();
    m_current->progress = Progress::Running;
    m_current->start = Clock::now();
    lock.unlock();
    const unsigned int result = perform(*m_current);
    lock.lock();

    const std::shared_ptr<Request> done = std::move(m_current);
    m_current = nullptr;
    m_isLoaded = m_session != nullptr;
    done->result = result;
    done->progress = Progress::Finished;
    const std::uint64_t one = 1;
    if (done->finished && ::write(done->finished.get(), &one, sizeof one) < 0)
        done->result = KELA_ERROR_RESOURCE;
    if (!done->isAbandoned)
        return;
    lock.unlock();
    logLine(KELA_LOG_INFO, "GenTL producer responds again: " + printable(m_file));
    lock.lock();
}

unsigned int Producer::perform(const Request &request)
{
    try {
        return performUnguarded(request);
    } catch (abi::__forced_unwind &) {
        throw; // the thread is being ended
    } catch (...) {
        return KELA_ERROR_RESOURCE;
    }
}

unsigned int Producer::performUnguarded(const Request &request)
{
    const CallLocaleKeeper locale;
    unsigned int code = KELA_OK;
    switch (request.kind) {
    case Kind::Opening:
        code = openSession();
        return code == KELA_OK ? request.task(*m_session) : code;
    case Kind::IfOpen:
        return m_session ? request.task(*m_session) : code;
    case Kind::Closing:
        closeSession();
        return code;
    }
    return code;
}

unsigned int Producer::openSession()
{
    if (m_session)
        return KELA_OK;
    auto session = std::make_unique<ProducerSession>(m_file);
    std::string error;
    if (!session->load(error)) {
        tellTrouble({}, "cannot be loaded: " + error);
        return KELA_ERROR_NOT_A_PRODUCER;
    }
    const ProducerSession::Result result = session->open();
    if (!result) {
        session->close();
        return resultCode(result, {});
    }
    m_session = std::move(session);
    {
        const std::lock_guard lock(m_mutex);
        m_facts = m_session->facts();
    }
    if (const auto onFirstOpen = std::exchange(m_onFirstOpen, nullptr))
        onFirstOpen();
    return KELA_OK;
}

void Producer::closeSession()
{
    if (m_session)
        m_session->close();
    m_session.reset();
    m_lastInterfaces.reset();
    m_lastDevices.clear();
    PlacedIdentifiers::forget(m_file);
    const std::lock_guard lock(m_mutex);
    m_troubles.clear();
}

unsigned int Producer::resultCode(const ProducerSession::Result &result, const std::string &subject)
{
    if (result) {
        forgetTrouble(subject);
        return KELA_OK;
    }
    tellTrouble(subject, result.what);
    return result.code == GC_ERR_TIMEOUT ? KELA_ERROR_TIMEOUT : KELA_ERROR_PRODUCER_FAILED;
}

// One line per change, not per pass.
void Producer::tellTrouble(const std::string &subject, const std::string &trouble)
{
    {
        const std::lock_guard lock(m_mutex);
        std::string &told = m_troubles[subject];
        if (told == trouble)
            return;
        told = trouble;
    }
    const std::string where = subject.empty() ? std::string() : ", interface " + printable(subject);
    logLine(KELA_LOG_WARNING, "GenTL producer " + printable(m_file) + where + ": " + printable(trouble));
}

void Producer::forgetTrouble(const std::string &subject)
{
    const std::lock_guard lock(m_mutex);
    m_troubles.erase(subject);
}

void Producer::waitClosed(TimePoint deadline)
{
    std::unique_lock lock(m_mutex);
    while (m_hasThread && m_users == 0 && !(m_current && m_current->isAbandoned)) {
        const bool isLeft = m_current && m_current->isLeft;
        const TimePoint until = isLeft ? std::min(deadline, m_current->start + kMoment) : deadline;
        if (Clock::now() >= until)
            return;
        m_ended.wait_until(lock, until);
    }
}

} // namespace kela::gentl
