// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/ProducerTable.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <mutex>
#include <utility>

namespace kela::gentl
{
namespace
{

struct Known {
    ProducerFile file; // as it was when the producer was met last
    std::unique_ptr<Producer> producer;
};

struct Producers {
    std::mutex mutex;         // guards the list; what it points to stays
    std::vector<Known> known; // token = place + 1
};

// Never destroyed: producer threads may outlive the statics of the process.
Producers &producers()
{
    static auto *const table = new Producers;
    return *table;
}

struct Handles {
    std::mutex mutex; // guards the rest
    std::map<std::uintptr_t, InterfaceHandles::Entry> entries;
    std::uintptr_t next = 1;
};

Handles &handles()
{
    static auto *const table = new Handles;
    return *table;
}

// A producer that is just being closed is not torn apart by the end of the process, as far as its statics
// came before its opening. One that does not respond is not waited for.
void waitForClosing()
{
    constexpr Milliseconds kLongestWait{1000};
    // The statics of producers are being destroyed from here on: a second wait would only give a late one
    // the time to meet that.
    static std::atomic<bool> hasWaited{false};
    if (hasWaited.exchange(true))
        return;
    const TimePoint deadline = Clock::now() + kLongestWait;
    std::vector<Producer *> all;
    {
        const std::lock_guard lock(producers().mutex);
        for (const Known &known : producers().known)
            all.push_back(known.producer.get());
    }
    for (Producer *producer : all)
        producer->waitClosed(deadline);
}

bool isSameFile(const Known &known, const ProducerFile &file)
{
    if (known.file.path == file.path)
        return true;
    // A second link to a file that is loaded is the same library to the loader. One that is not, such as a
    // refused one, may have been deleted since: its inode then stands for any other file.
    const bool isUnchanged = known.file.size == file.size && known.file.changedNs == file.changedNs;
    return known.file.device == file.device && known.file.inode == file.inode &&
           (known.producer->isLoaded() || (known.producer->isUsed() && isUnchanged));
}

void watchExit()
{
    std::atexit(waitForClosing);
}

void *asHandle(std::uintptr_t number)
{
    return reinterpret_cast<void *>(number); // NOLINT(performance-no-int-to-ptr): never followed
}
std::uintptr_t asNumber(void *handle)
{
    return reinterpret_cast<std::uintptr_t>(handle);
}

} // namespace

Producer &ProducerTable::producerOf(const ProducerFile &file)
{
    Producers &table = producers();
    const std::lock_guard lock(table.mutex);
    for (Known &known : table.known) {
        if (isSameFile(known, file)) {
            if (known.file.path == file.path)
                known.file = file;
            return *known.producer;
        }
    }
    const auto token = static_cast<std::uint32_t>(table.known.size() + 1);
    table.known.push_back({file, std::make_unique<Producer>(file.path, token, watchExit)});
    return *table.known.back().producer;
}

Producer *ProducerTable::known(const ProducerFile &file)
{
    Producers &table = producers();
    const std::lock_guard lock(table.mutex);
    for (const Known &known : table.known) {
        if (isSameFile(known, file))
            return known.producer.get();
    }
    return nullptr;
}

Producer *ProducerTable::find(std::uint32_t token)
{
    Producers &table = producers();
    const std::lock_guard lock(table.mutex);
    return token > 0 && token <= table.known.size() ? table.known[token - 1].producer.get() : nullptr;
}

void *InterfaceHandles::add(Entry entry)
{
    Handles &table = handles();
    const std::lock_guard lock(table.mutex);
    const std::uintptr_t number = table.next++;
    table.entries.emplace(number, std::move(entry));
    return asHandle(number);
}

void *InterfaceHandles::next()
{
    Handles &table = handles();
    const std::lock_guard lock(table.mutex);
    return asHandle(table.next);
}

InterfaceHandles::Entry InterfaceHandles::find(void *handle)
{
    Handles &table = handles();
    const std::lock_guard lock(table.mutex);
    const auto found = table.entries.find(asNumber(handle));
    return found == table.entries.end() ? Entry() : found->second;
}

InterfaceHandles::Entry InterfaceHandles::remove(void *handle)
{
    Handles &table = handles();
    const std::lock_guard lock(table.mutex);
    const auto found = table.entries.find(asNumber(handle));
    if (found == table.entries.end())
        return {};
    Entry entry = std::move(found->second);
    table.entries.erase(found);
    return entry;
}

std::vector<InterfaceHandles::Entry> InterfaceHandles::removeAll(const void *owner, const Producer *producer)
{
    std::vector<Entry> removed;
    Handles &table = handles();
    const std::lock_guard lock(table.mutex);
    for (auto entry = table.entries.begin(); entry != table.entries.end();) {
        const bool isWanted =
            entry->second.owner == owner && (!producer || &entry->second.use->producer() == producer);
        if (isWanted)
            removed.push_back(std::move(entry->second));
        entry = isWanted ? table.entries.erase(entry) : std::next(entry);
    }
    return removed;
}

} // namespace kela::gentl
