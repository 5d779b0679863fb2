// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/LibraryWorker.h>

#include <KelAIndustryControl/core/Log.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace kela::cameralink
{
namespace
{

// No single call into a library may take longer: counting its ports is the slowest, some look for boards in it.
constexpr Milliseconds kLongestCall{3000};
constexpr Milliseconds kWaitSlice{10};
constexpr std::chrono::minutes kIdentityAge{1};

const char *remarkOf(ProbeResult result)
{
    return result == ProbeResult::NoAnswer ? "no answer at 9600 baud" : "what answers is not understood";
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
    while (m_doneScans < mine && !cancel.isSet() && !isHanging())
        m_changed.wait_for(lock, kWaitSlice);

    cameras = m_cameras;
    if (m_doneScans >= mine)
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
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_wantedScans > m_doneScans; });
            m_progressAt = Clock::now();
        }
        scanPorts();
        const std::lock_guard lock(m_mutex);
        ++m_doneScans;
        m_isLate = false;
        m_changed.notify_all();
    }
}

void LibraryWorker::scanPorts()
{
    if (!std::exchange(m_isLoadTried, true)) {
        std::string error;
        m_library = SerialLibrary::load(m_file, error);
        if (!m_library)
            logLine(KELA_LOG_INFO, "Camera Link: " + printable(error));
    }
    std::vector<PortCamera> cameras;
    std::map<std::string, int> sameName;
    std::set<std::string> present;
    const std::uint32_t count = m_library ? m_library->portCount() : 0;
    for (std::uint32_t index = 0; index < count; ++index) {
        markProgress();
        const std::string name = m_library->portName(index);
        const int nth = ++sameName[name];
        const std::string key = nth == 1 ? name : name + '#' + std::to_string(nth);
        Known &known = m_known[key];
        present.insert(key);
        probe(name, index, known);
        if (known.identity)
            cameras.push_back({name, *known.identity, key});
        publish(cameras, present);
    }
    for (auto known = m_known.begin(); known != m_known.end();)
        known = present.count(known->first) ? std::next(known) : m_known.erase(known);
    const std::lock_guard lock(m_mutex);
    m_cameras = std::move(cameras);
}

// What is known so far, since a port that hangs is not to hide those before it.
void LibraryWorker::publish(std::vector<PortCamera> cameras, const std::set<std::string> &asked)
{
    const std::lock_guard lock(m_mutex);
    std::copy_if(m_cameras.begin(), m_cameras.end(), std::back_inserter(cameras),
                 [&asked](const PortCamera &camera) { return asked.count(camera.key) == 0; });
    m_cameras = std::move(cameras);
}

void LibraryWorker::probe(const std::string &name, std::uint32_t index, Known &known)
{
    if (known.identity && Clock::now() - known.identifiedAt < kIdentityAge)
        return;
    std::int32_t result = kSerialOk;
    const std::unique_ptr<SerialPort> port = m_library->open(index, result);
    if (!port) {
        // Somebody works with it: what was found there stays, since nobody can be asked now.
        const bool isInUse = result == kSerialPortInUse;
        if (!known.identity || !isInUse) {
            remark(name, known,
                   isInUse ? "in use by another program" : "cannot be opened, code " + std::to_string(result));
        }
        return;
    }
    CameraIdentity identity;
    // Most ports that do not answer have no camera. One that is slow at first answers the next scan's question.
    const Milliseconds patience = std::exchange(known.isAsked, true) ? kLongestResponse : kFirstResponse;
    const ProbeResult probed = GenCpClient(*port, patience, [this] {
                                   markProgress();
                                   return false;
                               }).identify(identity);
    if (probed != ProbeResult::Identified) {
        remark(name, known, remarkOf(probed));
        return;
    }
    known.identity = std::move(identity);
    known.identifiedAt = Clock::now();
    known.lastRemark.clear();
}

void LibraryWorker::remark(const std::string &name, Known &known, const std::string &text)
{
    known.identity.reset();
    if (std::exchange(known.lastRemark, text) != text)
        logLine(KELA_LOG_INFO, "Camera Link: port " + printable(name) + ": " + text);
}

void LibraryWorker::markProgress()
{
    const std::lock_guard lock(m_mutex);
    m_progressAt = Clock::now();
}

} // namespace kela::cameralink
