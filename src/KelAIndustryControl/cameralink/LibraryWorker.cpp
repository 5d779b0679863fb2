// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/LibraryWorker.h>

#include <KelAIndustryControl/core/Log.h>

#include <cxxabi.h>

#include <algorithm>
#include <map>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace kela::cameralink
{
namespace
{

// No single call into a library may take longer: counting its ports is the slowest, some look for boards in it.
constexpr Milliseconds kLongestCall{3000};
// Longer nobody waits for a scan: it goes on by itself, and the next pass gives what it finds.
constexpr Milliseconds kLongestScan{8000};
constexpr Milliseconds kWaitSlice{10};

// What a maker's library throws, or memory that runs out, ends the scan and not the host.
void scanUnharmed(PortScanner &scanner)
{
    try {
        scanner.scan();
    } catch (abi::__forced_unwind &) {
        throw; // the thread is being ended
    } catch (...) {
        logLine(KELA_LOG_WARNING, "Camera Link: a serial library failed in the middle of a scan");
    }
}

} // namespace

LibraryWorker *LibraryWorker::of(const std::string &file)
{
    static auto *mutex = new std::mutex; // guards workers; both live as long as the libraries: for ever
    static auto *workers = new std::map<std::string, LibraryWorker *>;
    const std::lock_guard lock(*mutex);
    LibraryWorker *&worker = (*workers)[file];
    if (worker)
        return worker;
    auto fresh = std::unique_ptr<LibraryWorker>(new LibraryWorker(file));
    try {
        std::thread(&LibraryWorker::run, fresh.get()).detach();
    } catch (const std::system_error &) {
        return nullptr;
    }
    worker = fresh.release();
    return worker;
}

ScanEnd LibraryWorker::scan(const CancelSignal &cancel, std::vector<PortCamera> &cameras)
{
    std::unique_lock lock(m_mutex);
    // A scan under way may have passed a port before the caller asked: it does not count.
    const std::uint64_t mine = m_wantedScans == m_doneScans ? m_doneScans + 1 : m_doneScans + 2;
    if (m_wantedScans == m_doneScans)
        m_progressAt = Clock::now();
    m_wantedScans = std::max(m_wantedScans, mine);
    m_changed.notify_all();
    const auto isHanging = [this] { return Clock::now() - m_progressAt > kLongestCall; };
    const TimePoint latest = Clock::now() + kLongestScan;
    while (m_doneScans < mine && !cancel.isSet() && !isHanging() && Clock::now() < latest)
        m_changed.wait_for(lock, kWaitSlice);

    cameras = m_cameras;
    if (m_doneScans >= mine || (!cancel.isSet() && !isHanging()))
        return ScanEnd::Done;
    if (cancel.isSet())
        return ScanEnd::Cancelled;
    const bool isNews = !std::exchange(m_isLate, true);
    lock.unlock();
    const std::string line = "Camera Link: " + printable(m_file) + " does not return; its last list is kept";
    if (isNews)
        logLine(KELA_LOG_WARNING, line);
    return ScanEnd::NotResponding;
}

void LibraryWorker::run()
{
    PortScanner scanner(m_file,
                        {[this] { markProgress(); }, [this](auto cameras) { publish(std::move(cameras)); }});
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_wantedScans > m_doneScans; });
            m_progressAt = Clock::now();
        }
        scanUnharmed(scanner);
        const std::lock_guard lock(m_mutex);
        ++m_doneScans;
        m_isLate = false;
        m_changed.notify_all();
    }
}

void LibraryWorker::publish(std::vector<PortCamera> cameras)
{
    const std::lock_guard lock(m_mutex);
    m_cameras = std::move(cameras);
}

void LibraryWorker::markProgress()
{
    const std::lock_guard lock(m_mutex);
    m_progressAt = Clock::now();
}

} // namespace kela::cameralink
