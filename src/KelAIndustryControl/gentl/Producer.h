// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/core/UniqueFd.h>
#include <KelAIndustryControl/gentl/ProducerSession.h>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace kela::gentl
{

/// One producer file of the process, with a thread of its own that makes all calls into it, one after
/// another. The file is loaded for the first request and let go when the last user has left. It lives as
/// long as the process: its thread may be inside a producer that never comes back.
/// Thread: any.
class Producer
{
public:
    /// Longest time that a caller waits for the producer.
    static constexpr Milliseconds kLimit{5000};
    /// What a call usually takes at most.
    static constexpr Milliseconds kMoment{250};

    /// @param file         its real path
    /// @param token        its number in the process
    /// @param onFirstOpen  called once, on the producer's thread, when it is open for the first time
    Producer(std::string file, std::uint32_t token, void (*onFirstOpen)())
        : m_file(std::move(file))
        , m_token(token)
        , m_onFirstOpen(onFirstOpen)
    {
    }

    Producer(const Producer &) = delete;
    Producer &operator=(const Producer &) = delete;

    const std::string &file() const { return m_file; }
    std::uint32_t token() const { return m_token; }

    /// Keeps the producer wanted. Neither its constructor nor its destructor waits.
    class Use
    {
    public:
        explicit Use(Producer &producer);
        ~Use();
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;
        Producer &producer() const { return m_producer; }

    private:
        Producer &m_producer;
    };

    bool isUsed() const;
    bool isLoaded() const;

    /// What is known of it now, without asking it.
    struct Condition {
        bool isLoaded = false;
        bool isResponding = true;
        ProducerFacts facts; ///< as it told them when it was opened last
        std::string trouble; ///< what failed last, empty when it answers as it should
    };
    Condition condition() const;

    /// The operations below wait for the producer's thread, kLimit at most. A request that is not answered
    /// by then is left to that thread; until it comes back, further requests give KELA_ERROR_TIMEOUT at once.
    unsigned int listInterfaces(const CancelSignal &cancel, std::vector<InterfaceFacts> &found);
    unsigned int listDevices(const CancelSignal &cancel, const std::string &interfaceId,
                             std::vector<DeviceFacts> &found);
    unsigned int holdInterface(const CancelSignal &cancel, const std::string &interfaceId);

    /// Returns at once.
    void releaseInterface(const std::string &interfaceId);

    /// Waits until a producer that nobody uses any more is closed, unless it does not respond: a call that
    /// its caller left is given kMoment from its start.
    void waitClosed(TimePoint deadline);

private:
    using Task = std::function<unsigned int(ProducerSession &)>;

    enum class Kind { Opening, IfOpen, Closing };
    enum class Progress { Waiting, Running, Finished };
    struct Request {
        Kind kind = Kind::Opening;
        Task task;
        UniqueFd finished; // readable when it is; not there when nobody waits
        Progress progress = Progress::Waiting;
        bool isAbandoned = false; // took longer than anybody waits
        bool isLeft = false;      // its caller was cancelled meanwhile
        TimePoint start;
        unsigned int result = 0;
    };

    unsigned int run(const CancelSignal &cancel, Task task);
    void post(Task task);
    bool enqueue(const std::shared_ptr<Request> &request);
    unsigned int giveUp(const std::shared_ptr<Request> &request, bool isCancelled);
    bool startThread();
    void threadMain();
    void runNext(std::unique_lock<std::mutex> &lock);
    unsigned int perform(const Request &request);
    unsigned int performUnguarded(const Request &request);
    unsigned int openSession();
    void closeSession();
    unsigned int resultCode(const ProducerSession::Result &result, const std::string &subject);
    void tellTrouble(const std::string &subject, const std::string &trouble);
    void forgetTrouble(const std::string &subject);
    void keepInterfaces(const std::vector<InterfaceFacts> &interfaces);

    const std::string m_file;
    const std::uint32_t m_token;

    mutable std::mutex m_mutex; // guards the members down to m_troubles
    std::condition_variable m_wake;
    std::condition_variable m_ended;
    std::deque<std::shared_ptr<Request>> m_queue;
    std::shared_ptr<Request> m_current;
    int m_users = 0;
    bool m_hasThread = false;
    bool m_isLoaded = false;
    ProducerFacts m_facts;
    std::map<std::string, std::string> m_troubles; // by interface, "" for the producer itself

    // Touched by the producer's thread alone.
    void (*m_onFirstOpen)();
    std::unique_ptr<ProducerSession> m_session;
    std::optional<std::vector<InterfaceFacts>> m_lastInterfaces;
    std::map<std::string, std::vector<DeviceFacts>> m_lastDevices;
};

} // namespace kela::gentl
