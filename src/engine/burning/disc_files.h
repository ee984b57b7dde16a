#pragma once

#include "burning/burn_settings.h"
#include "core/files.h"

/// What a disc of these items holds, file by file.
namespace kestrova
{

struct DiscFile {
    std::string target; ///< its place from the disc's root, parted by "/"
    Path source;        ///< as the items name it
    Path real;          ///< the same without links: what a tool is to read
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    bool isFolder = false; ///< one without anything in it
};

/// The items without what is excluded, in the order of the items, folders without content among
/// them. A link to a file counts as that file. What no disc can take is refused in words, so that
/// no tool drops it: a link to a folder or to nothing, what is neither file nor folder, a file that
/// cannot be read, a name with a line end, two files of one place.
Result<std::vector<DiscFile>> DiscFilesOf(const std::vector<BurnItem>& items,
                                          const std::vector<Path>& noItems,
                                          const Heartbeat& heartbeat = {});

/// Bytes of them, without what the file system around them takes.
std::uint64_t BytesOf(const std::vector<DiscFile>& files);

} // namespace kestrova
