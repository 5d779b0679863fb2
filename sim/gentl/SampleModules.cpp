// SPDX-License-Identifier: Apache-2.0
#include "SampleModules.h"

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>
#include <utility>

#ifndef SAMPLE_DESCRIPTION
#define SAMPLE_DESCRIPTION                                                                                     \
    "interface sample-if-0|Sample interface 0|GEV\n"                                                           \
    "device sample-dev-00|Sample|Model A|S00|left|1.0|1\n"                                                     \
    "device sample-dev-01|Sample|Model B|S01||1.0|4\n"                                                         \
    "interface sample-if-1|Sample interface 1|CL\n"                                                            \
    "device sample-dev-10|Sample|Model C|S10||1.2|1\n"
#endif

namespace sample
{
namespace
{

std::string besidePath(const char *ending)
{
    Dl_info info = {};
    if (::dladdr(reinterpret_cast<const void *>(&besidePath), &info) == 0 || !info.dli_fname)
        return {};
    return std::string(info.dli_fname) + ending;
}

std::atomic<int> g_callsAtOnce{0};
std::atomic<std::thread::id> g_caller{};

// Between GCInitLib and GCCloseLib, a consumer has to make its calls one after another, all from one thread.
void noteCaller(const char *function)
{
    std::thread::id none;
    const std::thread::id self = std::this_thread::get_id();
    const bool isAlone = g_callsAtOnce.fetch_add(1) == 0;
    g_caller.compare_exchange_strong(none, self);
    if (!isAlone || g_caller.load() != self) {
        std::ofstream(besidePath(".noted"), std::ios::app)
            << function << (isAlone ? " from another thread\n" : " at once\n");
    }
}

} // namespace

InterfaceModule *Producer::find(IF_HANDLE handle) const
{
    const auto found =
        std::find_if(open.begin(), open.end(), [&](const auto &module) { return module.get() == handle; });
    return found == open.end() ? nullptr : found->get();
}

const Interface *Producer::findPublished(const std::string &id) const
{
    const auto found = std::find_if(published.begin(), published.end(),
                                    [&](const Interface &interface) { return interface.id == id; });
    return found == published.end() ? nullptr : &*found;
}

const Interface *Producer::findPresent(const std::string &id) const
{
    const auto &present = description.interfaces;
    const auto found = std::find_if(present.begin(), present.end(),
                                    [&](const Interface &interface) { return interface.id == id; });
    return found == present.end() ? nullptr : &*found;
}

Producer &producer()
{
    static Producer instance;
    return instance;
}

TL_HANDLE layerHandle()
{
    return &producer();
}

void rereadDescription()
{
    std::ifstream file(besidePath(".txt"));
    std::istringstream builtIn(SAMPLE_DESCRIPTION);
    Description description = file ? readDescription(file) : readDescription(builtIn);
    const std::lock_guard lock(producer().mutex);
    producer().description = std::move(description);
}

void forgetCaller()
{
    g_caller.store(std::thread::id());
}

LastError &lastError()
{
    static thread_local LastError error;
    return error;
}

Call::Call(const char *function)
{
    noteCaller(function);
    int hangMs = 0;
    {
        const std::lock_guard lock(producer().mutex);
        const Description &description = producer().description;
        const auto hang = description.hangs.find(function);
        hangMs = hang == description.hangs.end() ? 0 : hang->second;
        const auto error = description.errors.find(function);
        m_ordered = error == description.errors.end() ? GC_ERR_SUCCESS : error->second;
    }
    if (hangMs > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(hangMs));
    if (m_ordered != GC_ERR_SUCCESS)
        end(m_ordered, "ordered by the description");
}

Call::~Call()
{
    --g_callsAtOnce;
}

GC_ERROR Call::end(GC_ERROR code, const char *text) const
{
    if (code != GC_ERR_SUCCESS)
        lastError() = {code, text};
    return code;
}

// With the producer's mutex held.
GC_ERROR giveText(const std::string &text, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    const Description &description = producer().description;
    if (!size)
        return GC_ERR_INVALID_PARAMETER;
    if (type && !description.has("no-type"))
        *type = INFO_DATATYPE_STRING;
    const std::size_t needed = text.size() + (description.has("unterminated") ? 0 : 1);
    const std::size_t room = *size;
    *size = needed;
    if (!buffer && description.has("wrong-needed-size"))
        *size = 0xFFFFFFFFU;
    if (!buffer)
        return GC_ERR_SUCCESS;
    if (room < needed)
        return GC_ERR_BUFFER_TOO_SMALL;
    std::memcpy(buffer, text.c_str(), needed);
    if (description.has("overflow"))
        static_cast<char *>(buffer)[room] = 'x';
    if (description.has("wrong-size"))
        *size = room * 1000;
    return GC_ERR_SUCCESS;
}

// With the producer's mutex held.
GC_ERROR giveNumber(std::int32_t number, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    const Description &description = producer().description;
    if (!size)
        return GC_ERR_INVALID_PARAMETER;
    if (type && !description.has("no-type"))
        *type = INFO_DATATYPE_INT32;
    const std::size_t room = *size;
    *size = sizeof number;
    if (!buffer)
        return GC_ERR_SUCCESS;
    if (room < sizeof number)
        return GC_ERR_BUFFER_TOO_SMALL;
    std::memcpy(buffer, &number, sizeof number);
    if (description.has("wrong-size"))
        *size = room * 1000;
    return GC_ERR_SUCCESS;
}

} // namespace sample
