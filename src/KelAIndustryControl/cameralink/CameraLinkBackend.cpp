// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/CameraLinkBackend.h>

#include <KelAIndustryControl/cameralink/LibraryWorker.h>
#include <KelAIndustryControl/core/FieldText.h>

#include <algorithm>
#include <cstdlib>
#include <future>
#include <string>
#include <string_view>

namespace kela::cameralink
{
namespace
{

constexpr char kListVariable[] = "KELS_CLSERIAL";
constexpr char kDispatcher[] = "libclallserial.so";

/// The file itself, whatever link or way led to it: one library is one thread's. A name for the loader's path
/// stays as it is.
std::string fileMeantBy(const std::string &path)
{
    struct Free {
        void operator()(char *text) const { std::free(text); }
    };
    const bool isName = path.find('/') == std::string::npos;
    const std::unique_ptr<char, Free> real(isName ? nullptr : ::realpath(path.c_str(), nullptr));
    return real ? real.get() : path;
}

std::vector<std::string> libraryFiles()
{
    const char *list =
        std::getenv(kListVariable); // NOLINT(concurrency-mt-unsafe): nobody writes the environment
    std::vector<std::string> files;
    for (std::string_view rest = list ? list : ""; !rest.empty();) {
        const std::size_t colon = rest.find(':');
        const std::string file = fileMeantBy(std::string(rest.substr(0, colon)));
        if (!file.empty() && std::find(files.begin(), files.end(), file) == files.end())
            files.push_back(file);
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    if (files.empty())
        files.emplace_back(kDispatcher);
    return files;
}

KELA_DEVICE_INFO_EX recordOf(const PortCamera &camera)
{
    KELA_DEVICE_INFO_EX record = {};
    record.transport = KELA_INTERFACE_TYPE_CAMERALINK;
    setUtf8Field(record.modelName, camera.identity.model);
    setUtf8Field(record.secondName, camera.identity.version);
    setUtf8Field(record.serialNumber, camera.identity.serial);
    setUtf8Field(record.special.cameraLink.portName, camera.portName);
    setUtf8Field(record.special.cameraLink.manufacturerName, camera.identity.manufacturer);
    setUtf8Field(record.special.cameraLink.userDefinedName, camera.identity.userName);
    return record;
}

struct LibraryScan {
    ScanEnd end = ScanEnd::NotResponding;
    std::vector<PortCamera> cameras;
};

class CameraLinkBackend : public TransportBackend
{
public:
    explicit CameraLinkBackend(const BackendContext &context)
        : m_cancel(context.cancel)
    {
    }

    unsigned int enumerate(std::vector<KELA_DEVICE_INFO_EX> &devices) override
    {
        for (const LibraryScan &scan : scanAll()) {
            if (scan.end == ScanEnd::Cancelled)
                return KELA_ERROR_CANCELLED;
            std::transform(scan.cameras.begin(), scan.cameras.end(), std::back_inserter(devices), recordOf);
        }
        std::stable_sort(
            devices.begin(), devices.end(), [](const KELA_DEVICE_INFO_EX &a, const KELA_DEVICE_INFO_EX &b) {
                return fixedText(a.special.cameraLink.portName) < fixedText(b.special.cameraLink.portName);
            });
        return KELA_OK;
    }

private:
    /// All libraries side by side: the slowest line decides how long it takes.
    std::vector<LibraryScan> scanAll() const
    {
        std::vector<std::future<LibraryScan>> running;
        for (const std::string &file : libraryFiles()) {
            running.push_back(std::async(std::launch::async, [this, file] {
                LibraryScan scan;
                if (LibraryWorker *worker = LibraryWorker::of(file))
                    scan.end = worker->scan(m_cancel, scan.cameras);
                return scan;
            }));
        }
        std::vector<LibraryScan> scans;
        scans.reserve(running.size());
        for (std::future<LibraryScan> &scan : running)
            scans.push_back(scan.get());
        return scans;
    }

    const CancelSignal &m_cancel;
};

} // namespace

std::unique_ptr<TransportBackend> makeBackend(const BackendContext &context)
{
    return std::make_unique<CameraLinkBackend>(context);
}

} // namespace kela::cameralink
