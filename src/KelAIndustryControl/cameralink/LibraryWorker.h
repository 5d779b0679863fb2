// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/PortScanner.h>
#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/core/Clock.h>

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace kela::cameralink
{

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
    explicit LibraryWorker(std::string file)
        : m_file(std::move(file))
    {
    }
    void run();
    void publish(std::vector<PortCamera> cameras);
    void markProgress();

    const std::string m_file;

    std::mutex m_mutex; // guards the members below
    std::condition_variable m_changed;
    std::uint64_t m_wantedScans = 0;
    std::uint64_t m_doneScans = 0;
    TimePoint m_progressAt;
    bool m_isLate = false; ///< said once per hang
    std::vector<PortCamera> m_cameras;
};

} // namespace kela::cameralink
