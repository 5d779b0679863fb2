// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gentl/GenTLStandard.h>

#include <memory>
#include <string>

namespace kela::gentl
{

/// A producer's file, loaded. Its destructor leaves it loaded; unload() lets it go.
/// Thread: one at a time.
class ProducerLibrary
{
public:
    /// @param path   file to load
    /// @param error  receives what was wrong when the result is null
    static std::unique_ptr<ProducerLibrary> load(const std::string &path, std::string &error);

    const ProducerFunctions &functions() const { return m_functions; }

    void unload();

private:
    explicit ProducerLibrary(void *library)
        : m_library(library)
    {
    }
    bool resolve(std::string &error);

    void *m_library;
    ProducerFunctions m_functions;
};

/// Looks whether a file can be a shared library of this machine at all, for a better message than the
/// loader's. Empty when it can, else what is wrong.
std::string libraryFault(const std::string &path);

} // namespace kela::gentl
