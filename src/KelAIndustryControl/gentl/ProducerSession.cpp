// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/ProducerSession.h>

#include <KelAIndustryControl/gentl/LocaleKeeper.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace kela::gentl
{
namespace
{

constexpr std::uint64_t kUpdateTimeoutMs = 1000;
constexpr std::uint32_t kMostEntries = 4096;
// Behind the room for texts: one byte too many hurts nobody.
constexpr std::size_t kSpare = 4096;
constexpr int kMostMissesInARow = 16;

} // namespace

ProducerSession::ProducerSession(std::string path)
    : ProducerSession(std::move(path), Options())
{
}

ProducerSession::ProducerSession(std::string path, Options options)
    : m_path(std::move(path))
    , m_options(std::move(options))
    , m_ownMemory(m_options.memory ? 0 : kMemorySize + kSpare)
    , m_reader(m_options.memory ? m_options.memory : m_ownMemory.data(), kMemorySize)
{
    if (m_options.asksSizes)
        m_reader.askSizes();
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
    if (result) {
        readFacts();
    } else {
        closeLibrary();
    }
    return result;
}

void ProducerSession::closeLibrary()
{
    if (m_isInitialised) {
        step("GCCloseLib");
        m_closedWell = call(m_library->functions().GCCloseLib) == GC_ERR_SUCCESS && m_closedWell;
    }
    m_isInitialised = false;
}

// A fact that the layer does not tell may be told without it. Neither call has to be there.
std::string ProducerSession::readFact(std::int32_t command)
{
    const ProducerFunctions &producer = m_library->functions();
    GC_ERROR code = GC_ERR_NOT_IMPLEMENTED;
    std::string text;
    if (producer.TLGetInfo) {
        step("TLGetInfo");
        text = m_reader.text(
            [&](INFO_DATATYPE *type, void *buffer, std::size_t *size) {
                return call(producer.TLGetInfo, m_layer, command, type, buffer, size);
            },
            code);
    }
    if (code != GC_ERR_SUCCESS && producer.GCGetInfo) {
        step("GCGetInfo");
        text = m_reader.text(
            [&](INFO_DATATYPE *type, void *buffer, std::size_t *size) {
                return call(producer.GCGetInfo, command, type, buffer, size);
            },
            code);
    }
    return text;
}

void ProducerSession::readFacts()
{
    m_facts.vendor = readFact(TL_INFO_VENDOR);
    m_facts.model = readFact(TL_INFO_MODEL);
    m_facts.version = readFact(TL_INFO_VERSION);
    m_facts.transportType = readFact(TL_INFO_TLTYPE);
    m_facts.displayName = readFact(TL_INFO_DISPLAYNAME);
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
        // Entries that went since they were counted, or that fit into no room, are no failure of the list.
        const bool isGone = code == GC_ERR_INVALID_INDEX || code == GC_ERR_INVALID_ID ||
                            code == GC_ERR_INVALID_PARAMETER || code == GC_ERR_BUFFER_TOO_SMALL;
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
    if (m_isOpen) {
        step("TLClose");
        m_closedWell = call(m_library->functions().TLClose, m_layer) == GC_ERR_SUCCESS && m_closedWell;
    }
    m_isOpen = false;
    m_layer = nullptr;
    closeLibrary();
    // One that did not close well stays loaded.
    if (m_library && m_closedWell) {
        step("unload");
        m_library->unload();
    }
    m_library.reset();
}

} // namespace kela::gentl
