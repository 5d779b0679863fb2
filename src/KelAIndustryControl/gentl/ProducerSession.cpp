// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/ProducerSession.h>

#include <algorithm>
#include <clocale>
#include <set>
#include <string>
#include <utility>

namespace kela::gentl
{
namespace
{

constexpr std::uint64_t kUpdateTimeoutMs = 1000;
constexpr std::uint32_t kMostEntries = 4096;
constexpr int kMostMissesInARow = 16;

/// Puts the process's locale back when a producer changed it: texts and numbers of the host depend on it.
class LocaleKeeper
{
public:
    LocaleKeeper()
        : m_before(current())
    {
    }
    ~LocaleKeeper()
    {
        if (current() != m_before)
            std::setlocale(LC_ALL, m_before.c_str()); // NOLINT(concurrency-mt-unsafe): undoes a call as unsafe
    }
    LocaleKeeper(const LocaleKeeper &) = delete;
    LocaleKeeper &operator=(const LocaleKeeper &) = delete;

private:
    static std::string current()
    {
        const char *const name = std::setlocale(LC_ALL, nullptr); // NOLINT(concurrency-mt-unsafe): only asks
        return name ? name : "C";
    }

    const std::string m_before;
};

} // namespace

ProducerSession::ProducerSession(std::string path)
    : ProducerSession(std::move(path), Options())
{
}

ProducerSession::ProducerSession(std::string path, Options options)
    : m_path(std::move(path))
    , m_options(std::move(options))
    , m_ownMemory(m_options.memory ? 0 : kMemorySize)
    , m_reader(m_options.memory ? m_options.memory : m_ownMemory.data(), kMemorySize)
{
}

ProducerSession::~ProducerSession() = default;

void ProducerSession::step(const char *name) const
{
    if (m_options.onStep)
        m_options.onStep(name);
}

ProducerSession::Result ProducerSession::checked(GC_ERROR code, const char *name) const
{
    if (code == GC_ERR_SUCCESS)
        return {};
    std::string what = std::string(name) + " gave " + std::to_string(code);
    if (!m_library || !m_library->functions().GCGetLastError || !m_isInitialised)
        return {code, what};
    char text[512] = {};
    std::size_t size = sizeof text - 1;
    GC_ERROR last = GC_ERR_SUCCESS;
    if (call(m_library->functions().GCGetLastError, &last, text, &size) == GC_ERR_SUCCESS && last == code) {
        text[sizeof text - 1] = '\0';
        if (text[0])
            what += std::string(": ") + text;
    }
    return {code, what};
}

bool ProducerSession::load(std::string &error)
{
    step("load");
    const LocaleKeeper locale;
    m_library = ProducerLibrary::load(m_path, error);
    return m_library != nullptr;
}

ProducerSession::Result ProducerSession::open()
{
    if (!m_library)
        return {GC_ERR_NOT_INITIALIZED, "not loaded"};
    const LocaleKeeper locale;
    step("GCInitLib");
    const GC_ERROR code = call(m_library->functions().GCInitLib);
    // In use: another component of the process initialised it, and will close it.
    m_isInitialised = code == GC_ERR_SUCCESS;
    if (code != GC_ERR_SUCCESS && code != GC_ERR_RESOURCE_IN_USE)
        return checked(code, "GCInitLib");
    Result result = openLayer();
    if (!result && m_isInitialised) {
        step("GCCloseLib");
        call(m_library->functions().GCCloseLib);
        m_isInitialised = false;
    }
    return result;
}

ProducerSession::Result ProducerSession::openLayer()
{
    step("TLOpen");
    m_layer = nullptr;
    const GC_ERROR code = call(m_library->functions().TLOpen, &m_layer);
    if (code == GC_ERR_SUCCESS && m_layer) {
        m_isOpen = true;
        return {};
    }
    m_layer = nullptr;
    return checked(code == GC_ERR_SUCCESS ? GC_ERR_INVALID_HANDLE : code, "TLOpen");
}

ProducerSession::Result ProducerSession::readIdentifiers(const ListCalls &calls,
                                                         std::vector<std::string> &found)
{
    step(calls.countName);
    std::uint32_t entries = 0;
    Result result = checked(calls.count(&entries), calls.countName);
    if (!result)
        return result;
    step(calls.identifierName);
    std::set<std::string> known;
    int misses = 0;
    for (std::uint32_t index = 0; index < std::min(entries, kMostEntries) && misses < kMostMissesInARow;
         ++index) {
        GC_ERROR code = GC_ERR_SUCCESS;
        const std::string id =
            m_reader.text([&](INFO_DATATYPE *type, void *buffer,
                              std::size_t *size) { return calls.identifier(index, type, buffer, size); },
                          code);
        // Entries that went since they were counted are no failure of the list.
        const bool isGone =
            code == GC_ERR_INVALID_INDEX || code == GC_ERR_INVALID_ID || code == GC_ERR_INVALID_PARAMETER;
        if (code != GC_ERR_SUCCESS && !isGone)
            return checked(code, calls.identifierName);
        misses = isGone || id.empty() ? misses + 1 : 0;
        if (!isGone && !id.empty())
            known.insert(id);
    }
    found.assign(known.begin(), known.end());
    return {};
}

ProducerSession::Result ProducerSession::listInterfaces(std::vector<InterfaceFacts> &found)
{
    const ProducerFunctions &producer = m_library->functions();
    step("TLUpdateInterfaceList");
    bool8_t changed = 1;
    // No answer in time leaves the producer's old list valid.
    const GC_ERROR updated = call(producer.TLUpdateInterfaceList, m_layer, &changed, kUpdateTimeoutMs);
    if (updated != GC_ERR_TIMEOUT && updated != GC_ERR_SUCCESS)
        return checked(updated, "TLUpdateInterfaceList");

    const ListCalls calls{
        "TLGetNumInterfaces",
        [&](std::uint32_t *count) { return call(producer.TLGetNumInterfaces, m_layer, count); },
        "TLGetInterfaceID",
        [&](std::uint32_t index, INFO_DATATYPE *, void *buffer, std::size_t *size) {
            return call(producer.TLGetInterfaceID, m_layer, index, static_cast<char *>(buffer), size);
        },
    };
    std::vector<std::string> identifiers;
    Result result = readIdentifiers(calls, identifiers);
    step("TLGetInterfaceInfo");
    for (std::string &id : identifiers) {
        GC_ERROR ignored = GC_ERR_SUCCESS;
        std::string name = m_reader.text(
            [&](INFO_DATATYPE *type, void *buffer, std::size_t *size) {
                return call(producer.TLGetInterfaceInfo, m_layer, id.c_str(), INTERFACE_INFO_DISPLAYNAME, type,
                            buffer, size);
            },
            ignored);
        found.push_back({std::move(id), std::move(name)});
    }
    return result;
}

void ProducerSession::close()
{
    while (!m_interfaces.empty())
        closeInterface(m_interfaces.begin()->first);
    bool isClosed = true;
    if (m_isOpen) {
        step("TLClose");
        isClosed = call(m_library->functions().TLClose, m_layer) == GC_ERR_SUCCESS;
    }
    m_isOpen = false;
    m_layer = nullptr;
    if (m_isInitialised) {
        step("GCCloseLib");
        isClosed = call(m_library->functions().GCCloseLib) == GC_ERR_SUCCESS && isClosed;
    }
    m_isInitialised = false;
    // One that did not close well may have threads in its code still: it stays loaded.
    if (m_library && isClosed) {
        step("unload");
        m_library->unload();
    }
    m_library.reset();
}

} // namespace kela::gentl
