// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/ProducerFile.h>

#include <sys/stat.h>

#include <cstdlib>
#include <memory>
#include <tuple>

namespace kela::gentl
{

std::optional<ProducerFile> ProducerFile::of(const char *path)
{
    struct Free {
        void operator()(char *text) const { std::free(text); }
    };
    const std::unique_ptr<char, Free> real(::realpath(path, nullptr));
    struct stat status = {};
    if (!real || ::stat(real.get(), &status) != 0)
        return std::nullopt;
    constexpr std::int64_t kNsPerSecond = 1000000000;
    const std::int64_t changed =
        static_cast<std::int64_t>(status.st_mtim.tv_sec) * kNsPerSecond + status.st_mtim.tv_nsec;
    return ProducerFile{real.get(), status.st_dev, status.st_ino, status.st_size, changed};
}

bool ProducerFile::operator<(const ProducerFile &other) const
{
    return std::tie(path, device, inode, size, changedNs) <
           std::tie(other.path, other.device, other.inode, other.size, other.changedNs);
}

} // namespace kela::gentl
