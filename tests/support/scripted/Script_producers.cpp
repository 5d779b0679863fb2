// SPDX-License-Identifier: Apache-2.0
// The producers of the script and the interfaces that a host opens.
#include "Script.h"

#include <algorithm>

void Script::addProducer(const std::string &path)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_producers[path];
}

void Script::plugInterface(const std::string &path, const KELA_GENTL_IF_INFO &interface)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_producers[path].push_back(interface);
}

void Script::unplugInterface(const std::string &path, const std::string &identifier)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<KELA_GENTL_IF_INFO> &interfaces = m_producers[path];
    interfaces.erase(std::remove_if(interfaces.begin(), interfaces.end(),
                                    [&identifier](const KELA_GENTL_IF_INFO &interface) {
                                        return fixedText(interface.identifier) == identifier;
                                    }),
                     interfaces.end());
}

void *Script::openInterface(const std::string &identifier, uint32_t number)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const auto &producer : m_producers) {
        for (const KELA_GENTL_IF_INFO &interface : producer.second) {
            if (fixedText(interface.identifier) == identifier && interface.number == number) {
                void *handle = &m_handleCells.emplace_back();
                m_handles[handle] = {producer.first, identifier, number};
                return handle;
            }
        }
    }
    return nullptr;
}

bool Script::closeInterface(void *handle)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_handles.erase(handle) != 0;
}

void Script::describeProducer(const std::string &path, const KELA_GENTL_PRODUCER_INFO &info)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_producerInfos[path] = info;
}

uint32_t Script::producerInfo(const std::string &path, KELA_GENTL_PRODUCER_INFO &info) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto described = m_producerInfos.find(path);
    if (described != m_producerInfos.end()) {
        info = described->second;
        return KELA_OK;
    }
    info.state = KELA_PRODUCER_READY;
    return m_producers.count(path) != 0 ? KELA_OK : KELA_ERROR_PRODUCER_MISSING;
}
