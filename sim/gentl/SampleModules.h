// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SampleDescription.h"

#include <KelAIndustryControl/gentl/GenTLStandard.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace sample
{

using namespace kela::gentl;

/// An opened interface; its handle is its address.
struct InterfaceModule {
    std::string id;
    std::vector<Device> published; // changes in IFUpdateDeviceList only
};

/// Everything that a sample producer knows. Its lists are snapshots: they change in the two Update calls.
struct Producer {
    std::mutex mutex; // guards the rest
    bool isInitialised = false;
    bool isLayerOpen = false;
    Description description;
    std::vector<Interface> published;
    std::vector<std::unique_ptr<InterfaceModule>> open;

    InterfaceModule *find(IF_HANDLE handle) const;
    const Interface *findPublished(const std::string &id) const;
    const Interface *findPresent(const std::string &id) const;
};

Producer &producer();

/// The only handle of the transport layer.
TL_HANDLE layerHandle();

/// Reads the file beside the producer again.
void rereadDescription();

/// One call from outside: notes when two come at once or from two threads, takes the time and gives the
/// error that the description asks for, and keeps the code for GCGetLastError.
class Call
{
public:
    explicit Call(const char *function);
    ~Call();
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    /// The error that this call has to give, or 0.
    GC_ERROR ordered() const { return m_ordered; }
    GC_ERROR end(GC_ERROR code, const char *text = "") const;

private:
    GC_ERROR m_ordered = GC_ERR_SUCCESS;
};

/// The last failure on this thread.
struct LastError {
    GC_ERROR code = GC_ERR_SUCCESS;
    std::string text = "No Error";
};
LastError &lastError();

/// The next consumer may call from another thread.
void forgetCaller();

/// The standard's way to hand out a text and a number, with the faults that the description asks for.
GC_ERROR giveText(const std::string &text, INFO_DATATYPE *type, void *buffer, std::size_t *size);
GC_ERROR giveNumber(std::int32_t number, INFO_DATATYPE *type, void *buffer, std::size_t *size);

} // namespace sample
