// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace kela::gentl
{

/// Which file a producer's path means, now.
struct ProducerFile {
    std::string path; ///< without links, "." and ".."
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t changedNs = 0; ///< modification time

    /// None when there is no such file.
    static std::optional<ProducerFile> of(const char *path);

    bool operator<(const ProducerFile &other) const;
};

} // namespace kela::gentl
