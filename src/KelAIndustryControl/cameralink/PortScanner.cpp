// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/PortScanner.h>

#include <KelAIndustryControl/core/Log.h>

#include <iterator>
#include <set>

namespace kela::cameralink
{
namespace
{

const char *remarkOf(ProbeResult result)
{
    return result == ProbeResult::NoAnswer ? "no answer at 9600 baud" : "what answers is not understood";
}

} // namespace

void PortScanner::scan()
{
    loadOnce();
    std::map<PortName, int> repeats;
    std::set<PortKey> present;
    const std::uint32_t count = countPorts();
    for (std::uint32_t index = 0; index < count; ++index) {
        m_report.progress();
        const PortName name = m_library->portName(index);
        const PortKey key(name, repeats[name]++);
        present.insert(key);
        probe(name, index, m_known[key]);
        // A port that hangs is not to hide those before it.
        m_report.cameras(cameras());
    }
    for (auto known = m_known.begin(); known != m_known.end();)
        known = present.count(known->first) ? std::next(known) : m_known.erase(known);
    m_report.cameras(cameras());
}

// A library of the first edition is counted by taking each port for a moment: as seldom as a camera is asked.
std::uint32_t PortScanner::countPorts()
{
    if (!m_library)
        return 0;
    const bool isKnown = m_countedAt && m_now() - *m_countedAt < kIdentityAge;
    if (!m_library->isCountedByOpening() || !isKnown) {
        m_portCount = m_library->portCount();
        m_countedAt = m_now();
    }
    return m_portCount;
}

void PortScanner::loadOnce()
{
    if (std::exchange(m_isLoadTried, true))
        return;
    std::string error;
    m_library = SerialLibrary::load(m_file, error);
    if (!m_library)
        logLine(KELA_LOG_INFO, "Camera Link: " + printable(error));
}

void PortScanner::probe(const PortName &name, std::uint32_t index, Known &known)
{
    if (known.identity && m_now() - known.identifiedAt < kIdentityAge)
        return;
    std::int32_t result = kSerialOk;
    const std::unique_ptr<SerialPort> port = m_library->open(index, result);
    if (!port) {
        const bool isInUse = result == kSerialPortInUse;
        remark(name, known,
               isInUse ? "in use by another program" : "cannot be opened, code " + std::to_string(result));
        return;
    }
    CameraIdentity identity;
    const ProbeResult probed = GenCpClient(*port, [this] {
                                   m_report.progress();
                                   return false;
                               }).identify(identity);
    if (probed != ProbeResult::Identified) {
        remark(name, known, remarkOf(probed));
        return;
    }
    known.identity = std::move(identity);
    known.identifiedAt = m_now();
    known.lastRemark.clear();
}

void PortScanner::remark(const PortName &name, Known &known, const std::string &text)
{
    known.identity.reset();
    if (std::exchange(known.lastRemark, text) == text)
        return;
    const std::string maker = name.maker.empty() ? std::string() : " of " + printable(name.maker);
    logLine(KELA_LOG_INFO, "Camera Link: port " + printable(name.port) + maker + ": " + text);
}

std::vector<PortCamera> PortScanner::cameras() const
{
    std::vector<PortCamera> found;
    for (const auto &[key, known] : m_known) {
        if (known.identity)
            found.push_back({key.first.port, *known.identity});
    }
    return found;
}

} // namespace kela::cameralink
