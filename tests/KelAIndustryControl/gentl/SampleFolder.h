// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A folder of a test with copies of sample producers in it.
class SampleFolder
{
public:
    SampleFolder()
    {
        std::string name = std::filesystem::temp_directory_path() / "kel-gentl-XXXXXX";
        m_path = ::mkdtemp(name.data());
    }
    ~SampleFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    SampleFolder(const SampleFolder &) = delete;
    SampleFolder &operator=(const SampleFolder &) = delete;

    /// Copies a sample producer; its path.
    std::string add(const std::string &sample, const std::string &name) const
    {
        std::filesystem::copy_file(std::string(SAMPLE_PRODUCERS "/") + sample, path(name));
        return path(name);
    }

    std::string path(const std::string &name) const { return m_path + '/' + name; }

private:
    std::string m_path;
};

/// Says what a copied producer shows from now on.
inline void describe(const std::string &producer, const std::string &description)
{
    // Renamed into place, so that the producer never reads half of it.
    const std::string fresh = producer + ".new";
    std::ofstream(fresh) << description;
    std::filesystem::rename(fresh, producer + ".txt");
}

/// True while a producer is loaded.
inline bool isMapped(const std::string &file)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(file) != std::string::npos)
            return true;
    }
    return false;
}

/// Waits until a producer's file is let go; false when it is not.
inline bool isLetGo(const std::string &file)
{
    for (int i = 0; i < 1500 && isMapped(file); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return !isMapped(file);
}

/// Waits until no producer has a thread any more; false when one stays.
inline bool areThreadsGone()
{
    for (int i = 0; i < 1500; ++i) {
        bool isOneLeft = false;
        for (const auto &task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::string name;
            std::getline(std::ifstream(task.path() / "comm"), name);
            isOneLeft = isOneLeft || name == "kel-gentl";
        }
        if (!isOneLeft)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

/// Collects the log lines of the device access while it lives.
class LogLines
{
public:
    LogLines() { KelAIndustryControl::SetLogSink(&LogLines::take, this); }
    ~LogLines() { KelAIndustryControl::SetLogSink(nullptr, nullptr); }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    /// How many lines hold a text.
    int count(const std::string &text)
    {
        const std::lock_guard lock(m_mutex);
        int found = 0;
        for (const std::string &line : m_lines)
            found += line.find(text) != std::string::npos ? 1 : 0;
        return found;
    }

private:
    static void take(KELA_LOG_LEVEL, const char *text, void *user)
    {
        auto *const self = static_cast<LogLines *>(user);
        const std::lock_guard lock(self->m_mutex);
        self->m_lines.emplace_back(text);
    }

    std::mutex m_mutex; // guards m_lines
    std::vector<std::string> m_lines;
};

/// What one object finds, as copies.
struct Interfaces {
    unsigned int code = 0;
    std::vector<KELA_GENTL_IF_INFO> records;
};

struct Devices {
    unsigned int code = 0;
    std::vector<KELA_DEVICE_INFO_EX> records;
};

inline Interfaces interfacesOf(KelAIndustryControl &access, const std::string &producer)
{
    KELA_GENTL_IF_INFO_LIST list = {};
    Interfaces found;
    found.code = access.EnumInterfacesByGenTL(&list, producer.c_str());
    for (std::uint32_t i = 0; i < list.count; ++i)
        found.records.push_back(*list.interfaces[i]);
    return found;
}

inline Devices devicesOf(KelAIndustryControl &access, const KELA_GENTL_IF_INFO &interface)
{
    KELA_GENTL_IF_INFO copy = interface;
    KELA_DEVICE_INFO_LIST list = {};
    Devices found;
    found.code = access.EnumDevicesByGenTL(&copy, &list);
    for (std::uint32_t i = 0; i < list.count; ++i)
        found.records.push_back(*list.devices[i]);
    return found;
}

inline Devices devicesOf(KelAIndustryControl &access, void *handle)
{
    KELA_DEVICE_INFO_LIST list = {};
    Devices found;
    found.code = access.EnumDevicesByGenTLEx(handle, &list);
    for (std::uint32_t i = 0; i < list.count; ++i)
        found.records.push_back(*list.devices[i]);
    return found;
}
