// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gentl/InfoReader.h>
#include <KelAIndustryControl/gentl/ProducerLibrary.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <cxxabi.h>

namespace kela::gentl
{

/// An interface as its producer tells it.
struct InterfaceFacts {
    std::string identifier;
    std::string displayName;
};

/// A device as its producer tells it; texts that it has not are empty.
struct DeviceFacts {
    std::string identifier;
    std::string vendor;
    std::string model;
    std::string displayName;
    std::string userDefinedName;
    std::string serialNumber;
    std::string version;
    std::uint32_t accessStatus = DEVICE_ACCESS_STATUS_UNKNOWN;
};

/// What a producer tells of itself; texts that it has not are empty.
struct ProducerFacts {
    std::string vendor;
    std::string model;
    std::string version;
    std::string transportType;
    std::string displayName;
};

/// All calls into one producer: its file loaded, its one transport layer open, its interfaces opened as
/// they are needed. Nothing that a producer answers or throws leaves it unchecked.
/// Thread: one, from open() on; the producer keeps state per thread.
class ProducerSession
{
public:
    /// Where the texts of a producer are put and who hears of the steps.
    struct Options {
        char *memory = nullptr; ///< kMemorySize bytes that outlive the session; null: the session's own
        bool asksSizes = false; ///< asks for the size of every text as well
        /// Called before each step with its name.
        std::function<void(const char *step)> onStep;
    };
    static constexpr std::size_t kMemorySize = 65536;

    explicit ProducerSession(std::string path);
    ProducerSession(std::string path, Options options);

    ProducerSession(const ProducerSession &) = delete;
    ProducerSession &operator=(const ProducerSession &) = delete;

    /// Gives the producer's file back only where close() was called: it may be gone too far to be called.
    ~ProducerSession();

    /// Result of an operation: a code of the standard and, when it failed, the call it came from and the
    /// producer's own words.
    struct Result {
        GC_ERROR code = GC_ERR_SUCCESS;
        std::string what;
        explicit operator bool() const { return code == GC_ERR_SUCCESS; }
    };

    bool isOpen() const { return m_isOpen; }
    bool isLoaded() const { return m_library != nullptr; }

    /// Loads the file. False and what was wrong when it is no producer.
    bool load(std::string &error);

    /// Initialises the producer, opens its transport layer and asks what it is. What a failure leaves is
    /// taken back.
    Result open();

    /// What the producer told when it was opened.
    const ProducerFacts &facts() const { return m_facts; }

    /// Updates the producer's list of interfaces and gives it, one entry per identifier.
    Result listInterfaces(std::vector<InterfaceFacts> &found);

    /// Updates the list of devices of an interface and gives it. An interface that nobody holds open is
    /// opened for that time only.
    Result listDevices(const std::string &interfaceId, std::vector<DeviceFacts> &found);

    /// Opens an interface for a host. Several hosts share one opened interface.
    Result holdInterface(const std::string &interfaceId);
    void releaseInterface(const std::string &interfaceId);

    /// Closes everything in reverse order and lets the file go.
    void close();

    bool sizeLied() const { return m_reader.sizeLied(); }

private:
    struct OpenInterface {
        IF_HANDLE handle = nullptr;
        int users = 0;
    };

    /// Calls into the producer; a C++ exception that leaves it is its failure, not the process's end.
    template <typename Function, typename... Arguments>
    static GC_ERROR call(Function function, Arguments... arguments)
    {
        try {
            return function(arguments...);
        } catch (abi::__forced_unwind &) {
            throw; // the thread is being ended
        } catch (...) {
            return GC_ERR_ERROR;
        }
    }
    Result checked(GC_ERROR code, const char *name) const;
    void step(const char *name) const;
    Result openLayer();
    void closeLibrary();
    std::string readFact(std::int32_t command);
    void readFacts();
    Result useInterface(const std::string &interfaceId, IF_HANDLE &handle);
    bool reopenInterface(const std::string &interfaceId, IF_HANDLE &handle);
    void closeInterface(const std::string &interfaceId);
    Result readDevices(IF_HANDLE handle, std::vector<DeviceFacts> &found);
    DeviceFacts readDevice(IF_HANDLE handle, std::string identifier);

    struct ListCalls {
        const char *countName;
        std::function<GC_ERROR(std::uint32_t *)> count;
        const char *identifierName;
        std::function<GC_ERROR(std::uint32_t, INFO_DATATYPE *, void *, std::size_t *)> identifier;
    };
    Result readIdentifiers(const ListCalls &calls, std::vector<std::string> &found);

    const std::string m_path;
    const Options m_options;
    std::vector<char> m_ownMemory;
    InfoReader m_reader;
    std::unique_ptr<ProducerLibrary> m_library;
    TL_HANDLE m_layer = nullptr;
    bool m_isInitialised = false; // by us: another component's producer is not ours to close
    bool m_isOpen = false;
    bool m_closedWell = true; // else it may have threads in its code still
    ProducerFacts m_facts;
    std::map<std::string, OpenInterface> m_interfaces;
};

} // namespace kela::gentl
