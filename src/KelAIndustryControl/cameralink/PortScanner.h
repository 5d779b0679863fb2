// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/GenCpClient.h>
#include <KelAIndustryControl/cameralink/SerialLibrary.h>
#include <KelAIndustryControl/core/Clock.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kela::cameralink
{

/// A camera behind a port of a serial library.
struct PortCamera {
    std::string portName;
    CameraIdentity identity;
};

/// How long an identified port is believed before it is asked again.
constexpr std::chrono::minutes kIdentityAge{1};

/// Asks the ports of one serial library and remembers what it found behind them. Makes every call into the
/// library. A port that has no camera leaves one log line, another one when the reason changes.
/// Thread: one, the library's own.
class PortScanner
{
public:
    /// What is told while a scan runs. Both are called without a lock held.
    struct Report {
        std::function<void()> progress;                       ///< the library returned from a call
        std::function<void(std::vector<PortCamera>)> cameras; ///< all that are known now, in the ports' order
    };

    /// @param file  path of the library, or a name for the loader's path; loaded by the first scan
    /// @param now   the clock that identities age by
    PortScanner(std::string file, Report report, std::function<TimePoint()> now = &Clock::now)
        : m_file(std::move(file))
        , m_report(std::move(report))
        , m_now(std::move(now))
    {
    }

    /// Looks at every port once. Those that were identified less than kIdentityAge ago are left alone.
    void scan();

private:
    struct Known {
        std::optional<CameraIdentity> identity;
        TimePoint identifiedAt;
        std::string lastRemark; ///< why there is no camera, as it was logged last
    };
    using PortKey = std::pair<PortName, int>; ///< its name, and its place among those of that name

    void loadOnce();
    std::uint32_t countPorts();
    void probe(const PortName &name, std::uint32_t index, Known &known);
    void remark(const PortName &name, Known &known, const std::string &text);
    std::vector<PortCamera> cameras() const;

    const std::string m_file;
    const Report m_report;
    const std::function<TimePoint()> m_now;
    std::unique_ptr<SerialLibrary> m_library;
    bool m_isLoadTried = false;
    std::uint32_t m_portCount = 0;
    std::optional<TimePoint> m_countedAt;
    std::map<PortKey, Known> m_known;
};

} // namespace kela::cameralink
