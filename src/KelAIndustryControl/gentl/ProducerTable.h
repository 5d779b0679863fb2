// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gentl/Producer.h>
#include <KelAIndustryControl/gentl/ProducerFile.h>

#include <memory>
#include <string>
#include <vector>

namespace kela::gentl
{

/// The producers and opened interfaces of the process. Producers stay for its life.
/// Thread: any.
class ProducerTable
{
public:
    /// The one producer of a file, whatever path or link led to it.
    static Producer &producerOf(const ProducerFile &file);

    /// The same, null for a file that was not met yet.
    static Producer *known(const ProducerFile &file);

    /// The producer with a token, null for an unknown one.
    static Producer *find(std::uint32_t token);
};

/// The interfaces that hosts hold open, behind numbers that are looked up at every use: a handle is never
/// followed as a pointer, and no number is given twice.
/// Thread: any.
class InterfaceHandles
{
public:
    struct Entry {
        std::shared_ptr<Producer::Use> use;
        std::string interfaceId;
        const void *owner = nullptr; ///< who opened it
    };

    static void *add(Entry entry);
    /// What the next handle will be: every handle that was ever given is less.
    static void *next();
    /// An entry without use for an unknown handle.
    static Entry find(void *handle);
    static Entry remove(void *handle);
    /// Removes what an owner opened on a producer; all of it when @p producer is null.
    static std::vector<Entry> removeAll(const void *owner, const Producer *producer);
};

} // namespace kela::gentl
