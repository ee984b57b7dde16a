#pragma once

#include "core/files.h"

/// Copies and moves: whole or not at all.
namespace kestrova
{

/// For more files than these one flush of the whole file system is cheaper than one for each.
inline constexpr std::size_t flushedSingly = 2;

enum class Verify {
    Size,   ///< the kernel's word and the length
    Content ///< read back and compared, unless it is a clone of the same blocks
};
/// What a file may be used for that somebody else made: read, and changed by its owner.
inline constexpr std::uint32_t plainRights = 0644;
struct CopyOptions {
    Verify verify = Verify::Size;
    bool flush = false;     ///< the content is on the disk before the name is there
    bool flushName = false; ///< the name too; for many files one flush of their folder is cheaper
    std::function<bool(std::uint64_t)> progress; ///< bytes of this file so far; False stops
    std::uint32_t rights = 0; ///< of the target; 0: the source's, and the owner may write
    bool spelled = false;     ///< the target is spelled as its folder has it: no look for another
};
/// `target` holds the source's bytes and time afterwards, writable by the owner. It is built beside
/// the target and renamed into place, so the target is the old file or the new one at any moment.
/// An existing target keeps its spelling; a link there is replaced by the copy.
Status CopyFileOver(const Path& source, const Path& target, const CopyOptions& options = {});
/// Each file of the folder that matches, under its own name, all overwritten. Goes to the end;
/// the first failure is the answer. Sub-folders are not entered.
Status CopyMatching(const Path& source, const Path& target, std::string_view pattern,
                    const CopyOptions& options = {});
/// Moves within a file system by rename, otherwise copies, compares, flushes, deletes.
Status MoveFileOver(const Path& source, const Path& target);
/// The names of a folder are on the disk when it answers.
Status FlushFolder(const Path& folder);

} // namespace kestrova
