// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/ProducerLibrary.h>

#include <KelAIndustryControl/core/UniqueFd.h>

#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace kela::gentl
{
namespace
{

#if defined(__x86_64__)
constexpr Elf64_Half kOwnMachine = EM_X86_64;
#elif defined(__aarch64__)
constexpr Elf64_Half kOwnMachine = EM_AARCH64;
#else
constexpr Elf64_Half kOwnMachine = EM_NONE; // the loader alone decides
#endif

constexpr char kForeignMachine[] = "it is a library for another processor";

template <typename Function>
bool resolveOne(void *library, const char *name, Function *&function)
{
    function = reinterpret_cast<Function *>(::dlsym(library, name));
    return function != nullptr;
}

} // namespace

std::unique_ptr<ProducerLibrary> ProducerLibrary::load(const std::string &path, std::string &error)
{
    // Local: a producer brings libraries of its own, and theirs must not replace the host's.
    void *const handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char *const text = ::dlerror(); // NOLINT(concurrency-mt-unsafe): its state is the thread's
        error = text ? text : "it cannot be loaded";
        return nullptr;
    }
    std::unique_ptr<ProducerLibrary> library(new ProducerLibrary(handle));
    if (!library->resolve(error)) {
        library->unload();
        return nullptr;
    }
    return library;
}

bool ProducerLibrary::resolve(std::string &error)
{
    const char *missing = nullptr;
    const auto need = [&](const char *name, auto *&function) {
        if (!resolveOne(m_library, name, function) && !missing)
            missing = name;
    };
    need("GCInitLib", m_functions.GCInitLib);
    need("GCCloseLib", m_functions.GCCloseLib);
    need("TLOpen", m_functions.TLOpen);
    need("TLClose", m_functions.TLClose);
    need("TLUpdateInterfaceList", m_functions.TLUpdateInterfaceList);
    need("TLGetNumInterfaces", m_functions.TLGetNumInterfaces);
    need("TLGetInterfaceID", m_functions.TLGetInterfaceID);
    need("TLGetInterfaceInfo", m_functions.TLGetInterfaceInfo);
    need("TLOpenInterface", m_functions.TLOpenInterface);
    need("IFClose", m_functions.IFClose);
    need("IFUpdateDeviceList", m_functions.IFUpdateDeviceList);
    need("IFGetNumDevices", m_functions.IFGetNumDevices);
    need("IFGetDeviceID", m_functions.IFGetDeviceID);
    need("IFGetDeviceInfo", m_functions.IFGetDeviceInfo);
    resolveOne(m_library, "GCGetInfo", m_functions.GCGetInfo);
    resolveOne(m_library, "TLGetInfo", m_functions.TLGetInfo);
    resolveOne(m_library, "GCGetLastError", m_functions.GCGetLastError);
    if (missing)
        error = std::string("it has no function ") + missing;
    return !missing;
}

void ProducerLibrary::unload()
{
    if (m_library)
        ::dlclose(m_library);
    m_library = nullptr;
    m_functions = {};
}

std::string libraryFault(const std::string &path)
{
    // Not blocking, so that a pipe in the folder of the producers stops nobody.
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return std::generic_category().message(errno);
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return "it is no file";
    Elf64_Ehdr header = {};
    const ssize_t length = ::read(file.get(), &header, sizeof header);
    if (length < static_cast<ssize_t>(EI_NIDENT) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0)
        return "it is no library";
    if (header.e_ident[EI_CLASS] != ELFCLASS64)
        return kForeignMachine;
    if (length < static_cast<ssize_t>(sizeof header) || header.e_type != ET_DYN)
        return "it is no library";
    if (kOwnMachine != EM_NONE && header.e_machine != kOwnMachine)
        return kForeignMachine;
    return {};
}

} // namespace kela::gentl
