// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/GenCpClient.h>
#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/core/Clock.h>

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kela::cameralink
{

/// A camera behind a port of a serial library.
struct PortCamera {
    std::string portName;
    CameraIdentity identity;
    std::string key; ///< tells ports of one name apart
};

/// How a wait for a library ended.
enum class ScanEnd { Done, NotResponding, Cancelled };

/// Owns one serial library: loads it and makes every call into it, one after another, on a thread of its own.
/// A library that hangs keeps that thread and nobody else. One worker per file and process; it is never
/// destroyed, since the library never ends either.
class LibraryWorker
{
public:
    /// The worker of a library; the same file gives the same worker. Null when there can be no thread.
    static LibraryWorker *of(const std::string &file);

    /// Asks for a scan of the ports and waits for it.
    /// @param cameras  receives the cameras that are known, also when the scan did not end
    /// Thread: any.
    ScanEnd scan(const CancelSignal &cancel, std::vector<PortCamera> &cameras);

private:
    struct Known {
        std::optional<CameraIdentity> identity;
        TimePoint identifiedAt;
        std::string lastRemark; ///< why there is no camera, as it was logged last
        bool isAsked = false;   ///< not for the first time any more
    };

    explicit LibraryWorker(std::string file)
        : m_file(std::move(file))
    {
    }
    void run();
    void scanPorts();
    void publish(std::vector<PortCamera> cameras, const std::set<std::string> &asked);
    void probe(const std::string &name, std::uint32_t index, Known &known);
    void remark(const std::string &name, Known &known, const std::string &text);
    void markProgress();

    const std::string m_file;

    std::mutex m_mutex; // guards the members down to the blank line
    std::condition_variable m_changed;
    std::uint64_t m_wantedScans = 0;
    std::uint64_t m_doneScans = 0;
    TimePoint m_progressAt;
    bool m_isLate = false; ///< said once per hang
    std::vector<PortCamera> m_cameras;

    // The thread's own.
    std::unique_ptr<SerialLibrary> m_library;
    bool m_isLoadTried = false;
    std::map<std::string, Known> m_known;
};

} // namespace kela::cameralink
