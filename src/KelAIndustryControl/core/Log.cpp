// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/core/Log.h>

#include <cstdio>
#include <mutex>

namespace kela
{
namespace
{

struct Sink {
    KELA_LOG_SINK function = nullptr;
    void *user = nullptr;
};

std::mutex g_sinkMutex; // guards g_sink
Sink g_sink;

Sink currentSink()
{
    const std::lock_guard lock(g_sinkMutex);
    return g_sink;
}

} // namespace

void logLine(KELA_LOG_LEVEL level, const std::string &line)
{
    const Sink sink = currentSink();
    if (sink.function) {
        sink.function(level, line.c_str(), sink.user);
    } else if (level >= KELA_LOG_WARNING) {
        std::fprintf(stderr, "%s\n", line.c_str());
    }
}

void setLogSink(KELA_LOG_SINK sink, void *user)
{
    const std::lock_guard lock(g_sinkMutex);
    g_sink = {sink, user};
}

std::string printable(std::string_view text)
{
    constexpr std::size_t kLongest = 200;
    std::string result(text.substr(0, kLongest));
    for (char &character : result) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F)
            character = '?';
    }
    return result;
}

} // namespace kela
