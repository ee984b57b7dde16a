#pragma once

#include <cstdint>

struct stat;

namespace kestrova::platform
{

enum class FileKind { Missing, File, Folder, Link, Other };

struct FileFacts {
    FileKind kind = FileKind::Missing;
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0; ///< since 1970, UTC
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint32_t mode = 0;
    std::int64_t changedNs = 0; ///< of content, name or mode; no program can set it back
};

/// Of what the system says.
FileFacts FactsFrom(const struct stat& status);

} // namespace kestrova::platform
