// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/SerialLibrary.h>

#include <KelAIndustryControl/core/Log.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace kela::cameralink
{

namespace
{

constexpr std::uint32_t kMostPorts = 64;

/// A text that a library writes: the last byte is kept from it, since some forget the NUL.
class TextBuffer
{
public:
    char *data() { return m_bytes.data(); }
    std::uint32_t size() const { return static_cast<std::uint32_t>(m_bytes.size() - 1); }
    std::string text() const { return std::string(m_bytes.data(), ::strnlen(m_bytes.data(), m_bytes.size())); }

    /// Empties it and makes room for a text that needs so many bytes, within bounds.
    void makeRoom(std::uint32_t needed)
    {
        m_bytes.assign(std::min(std::max(needed, size()), kLongestText) + 1, '\0');
    }

private:
    static constexpr std::uint32_t kLongestText = 4096;

    std::vector<char> m_bytes = std::vector<char>(256);
};

template <typename Function>
void resolve(void *library, const char *name, Function &function)
{
    void *symbol = ::dlsym(library, name);
    static_assert(sizeof(function) == sizeof(symbol));
    std::memcpy(&function, &symbol, sizeof(function));
}

bool resolveAll(void *library, SerialFunctions &functions)
{
    resolve(library, "clGetNumSerialPorts", functions.numSerialPorts);
    resolve(library, "clGetNumPorts", functions.numPorts);
    resolve(library, "clGetSerialPortIdentifier", functions.portIdentifier);
    resolve(library, "clGetPortInfo", functions.portInfo);
    resolve(library, "clSerialInit", functions.open);
    resolve(library, "clSerialClose", functions.close);
    resolve(library, "clSerialRead", functions.read);
    resolve(library, "clSerialWrite", functions.write);
    resolve(library, "clGetNumBytesAvail", functions.bytesAvailable);
    resolve(library, "clFlushPort", functions.flush);
    resolve(library, "clSetBaudRate", functions.setBaudRate);
    return functions.open && functions.close && functions.read && functions.write;
}

} // namespace

SerialLibrary::SerialLibrary() = default;
SerialLibrary::~SerialLibrary() = default;

std::unique_ptr<SerialLibrary> SerialLibrary::load(const std::string &file, std::string &error)
{
    void *handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char *reason = ::dlerror(); // NOLINT(concurrency-mt-unsafe): kept per thread by the loader
        error = reason ? reason : "not loadable";
        return nullptr;
    }
    auto functions = std::make_unique<SerialFunctions>();
    if (!resolveAll(handle, *functions)) {
        error = file + ": not a Camera Link serial library";
        return nullptr;
    }
    std::unique_ptr<SerialLibrary> library(new SerialLibrary);
    library->m_functions = std::move(functions);
    return library;
}

std::uint32_t SerialLibrary::portCount() const
{
    const CountPorts count = m_functions->numPorts ? m_functions->numPorts : m_functions->numSerialPorts;
    std::uint32_t ports = 0;
    if (count && count(&ports) == kSerialOk)
        return std::min(ports, kMostPorts);
    if (count)
        return 0;
    for (std::int32_t result = kSerialOk; ports < kMostPorts; ++ports) {
        open(ports, result);
        if (result == kSerialInvalidIndex)
            break;
    }
    return ports;
}

bool SerialLibrary::isCountedByOpening() const
{
    return !m_functions->numPorts && !m_functions->numSerialPorts;
}

PortName SerialLibrary::portName(std::uint32_t index) const
{
    TextBuffer maker;
    TextBuffer name;
    std::int32_t result = kSerialBufferTooSmall;
    // Once more with the sizes that the library told.
    for (int attempt = 0; attempt < 2 && result == kSerialBufferTooSmall; ++attempt) {
        std::uint32_t makerSize = maker.size();
        std::uint32_t nameSize = name.size();
        std::uint32_t version = 0;
        result = kSerialFunctionMissing;
        if (m_functions->portInfo) {
            result = m_functions->portInfo(index, maker.data(), &makerSize, name.data(), &nameSize, &version);
        } else if (m_functions->portIdentifier) {
            result = m_functions->portIdentifier(index, name.data(), &nameSize);
        }
        if (result == kSerialBufferTooSmall) {
            maker.makeRoom(makerSize);
            name.makeRoom(nameSize);
        }
    }
    PortName found;
    if (result == kSerialOk)
        found = {maker.text(), name.text()};
    if (found.port.empty())
        found.port = "port " + std::to_string(index);
    return found;
}

std::unique_ptr<SerialPort> SerialLibrary::open(std::uint32_t index, std::int32_t &result) const
{
    void *reference = nullptr;
    result = m_functions->open(index, &reference);
    if (result != kSerialOk || !reference)
        return nullptr;
    return std::make_unique<SerialPort>(*m_functions, reference);
}

} // namespace kela::cameralink
