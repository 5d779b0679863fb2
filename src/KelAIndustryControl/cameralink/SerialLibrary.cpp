// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/SerialLibrary.h>

#include <KelAIndustryControl/core/Log.h>

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <thread>

namespace kela::cameralink
{

extern "C" {
using CountPorts = std::int32_t (*)(std::uint32_t *count);
using ManufacturerInfo = std::int32_t (*)(char *name, std::uint32_t *nameBytes, std::uint32_t *version);
using PortIdentifier = std::int32_t (*)(std::uint32_t index, char *name, std::uint32_t *nameBytes);
using PortInfo = std::int32_t (*)(std::uint32_t index, char *maker, std::uint32_t *makerBytes, char *name,
                                  std::uint32_t *nameBytes, std::uint32_t *version);
using OpenPort = std::int32_t (*)(std::uint32_t index, void **reference);
using ClosePort = void (*)(void *reference);
using Transfer = std::int32_t (*)(void *reference, char *bytes, std::uint32_t *count, std::uint32_t timeoutMs);
using BytesAvailable = std::int32_t (*)(void *reference, std::uint32_t *count);
using FlushPort = std::int32_t (*)(void *reference);
using SetBaudRate = std::int32_t (*)(void *reference, std::uint32_t rate);
}

struct SerialFunctions {
    CountPorts numSerialPorts = nullptr; ///< of one maker
    CountPorts numPorts = nullptr;       ///< of all makers
    ManufacturerInfo manufacturerInfo = nullptr;
    PortIdentifier portIdentifier = nullptr;
    PortInfo portInfo = nullptr;
    OpenPort open = nullptr;
    ClosePort close = nullptr;
    Transfer read = nullptr;
    Transfer write = nullptr;
    BytesAvailable bytesAvailable = nullptr;
    FlushPort flush = nullptr;
    SetBaudRate setBaudRate = nullptr;
};

namespace
{

constexpr std::uint32_t kMostPorts = 64;
constexpr std::uint32_t kRate9600 = 0x01; // a bit of the table of rates, not the number
constexpr Milliseconds kPollPause{3};

/// A text that a library writes: the last byte is kept from it, since some forget the NUL.
class TextBuffer
{
public:
    char *data() { return m_bytes.data(); }
    std::uint32_t size() const { return static_cast<std::uint32_t>(m_bytes.size() - 1); }
    std::string text() const { return std::string(m_bytes.data(), ::strnlen(m_bytes.data(), m_bytes.size())); }

private:
    std::array<char, 256> m_bytes = {};
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
    resolve(library, "clGetManufacturerInfo", functions.manufacturerInfo);
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

SerialPort::~SerialPort()
{
    if (m_reference)
        m_functions->close(m_reference);
}

void SerialPort::setDefaultRate()
{
    if (m_functions->setBaudRate)
        m_functions->setBaudRate(m_reference, kRate9600);
}

bool SerialPort::write(const std::uint8_t *bytes, std::size_t count, Milliseconds limit)
{
    std::string copy(count, '\0'); // the interface takes what it sends as writable
    std::memcpy(copy.data(), bytes, count);
    auto written = static_cast<std::uint32_t>(count);
    const auto timeout = static_cast<std::uint32_t>(limit.count());
    return m_functions->write(m_reference, copy.data(), &written, timeout) == kSerialOk && written == count;
}

std::size_t SerialPort::read(std::uint8_t *bytes, std::size_t count, TimePoint deadline)
{
    if (!m_functions->bytesAvailable) {
        // An old library waits for exactly what it is asked for: one byte at a time loses nothing.
        std::uint32_t one = 1;
        char byte = 0;
        const auto timeout = static_cast<std::uint32_t>(pollTimeout(deadline, Clock::now()));
        if (m_functions->read(m_reference, &byte, &one, timeout) != kSerialOk || one != 1)
            return 0;
        std::memcpy(bytes, &byte, 1);
        return 1;
    }
    std::uint32_t available = 0;
    while (m_functions->bytesAvailable(m_reference, &available) == kSerialOk && available == 0 &&
           Clock::now() < deadline)
        std::this_thread::sleep_for(kPollPause);
    auto taken = static_cast<std::uint32_t>(std::min<std::size_t>(available, count));
    if (taken == 0)
        return 0;
    std::string buffer(taken, '\0');
    const std::uint32_t wanted = taken;
    if (m_functions->read(m_reference, buffer.data(), &taken, 1) != kSerialOk)
        return 0;
    taken = std::min(taken, wanted);
    std::memcpy(bytes, buffer.data(), taken);
    return taken;
}

void SerialPort::drain(Milliseconds limit, Milliseconds firstWait)
{
    const TimePoint deadline = Clock::now() + limit;
    std::array<std::uint8_t, 64> dropped;
    Milliseconds wait = firstWait;
    while (Clock::now() < deadline && read(dropped.data(), dropped.size(), Clock::now() + wait) > 0)
        wait = kQuietLine;
    if (m_functions->flush)
        m_functions->flush(m_reference);
}

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

PortName SerialLibrary::portName(std::uint32_t index) const
{
    TextBuffer maker;
    TextBuffer name;
    std::uint32_t makerSize = maker.size();
    std::uint32_t nameSize = name.size();
    std::uint32_t version = 0;
    std::int32_t result = kSerialFunctionMissing;
    if (m_functions->portInfo) {
        result = m_functions->portInfo(index, maker.data(), &makerSize, name.data(), &nameSize, &version);
    } else if (m_functions->portIdentifier) {
        result = m_functions->portIdentifier(index, name.data(), &nameSize);
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
