#pragma once

#include "core/files.h"

#include <functional>
#include <limits>
#include <optional>

/// Looks at files and folders by which something is decided: what cannot be looked at just now (a
/// network, a disk that answers with an error, no right) is a failure and never an absence.
namespace kestrova
{

/// What stands there, links followed, in whatever spelling; kind `Missing` when nothing does.
Result<platform::FileFacts> LookAt(const Path& path);
/// The same of a name that is spelled as its folder has it.
Result<platform::FileFacts> LookAtSpelled(const Path& path);
/// A file stands there, or a link to one.
Result<bool> IsFile(const Path& file);
Result<bool> IsFolder(const Path& folder);
/// Nothing stands under that name, not even a dangling link.
Result<bool> IsFree(const Path& path);
/// The first free one of the names that `nameOf` gives for `first`, the next number and on; an
/// empty path when they are taken up to `last`. A failure when one of them cannot be looked at.
Result<Path> FirstFree(const std::function<Path(int)>& nameOf, int first = 1,
                       int last = std::numeric_limits<int>::max());
/// The first free one of `file.1`, `file.2` and on.
Result<Path> FreeNumbered(const Path& file);
/// The file's bytes; no value where there is no file.
Result<std::optional<std::string>> ReadFileIfThere(const Path& file,
                                                   std::uint64_t limit = UINT64_C(1) << 32);
/// The same for a file that a person may keep elsewhere behind a link: `CannotRead` for a link that
/// leads nowhere now, since what it led to may come back.
Result<std::optional<std::string>> ReadKeptFile(const Path& file, std::uint64_t limit = UINT64_C(1)
                                                                                        << 32);
/// True for facts of one and the same file or folder, which is there.
bool IsSameThing(const platform::FileFacts& a, const platform::FileFacts& b);
/// True when both names lead to one folder, in whatever spelling, through whatever links.
bool IsSameFolder(const Path& a, const Path& b);
/// True when both files, which are spelled as their folders have them, hold the same bytes;
/// `CannotRead` for one that cannot be read. The heartbeat may be called on any thread.
Result<bool> HoldSameBytes(const Path& a, const Path& b, const Heartbeat& heartbeat = {});
/// Hash of the file's content; empty where there is no file.
Result<std::string> HashIfThere(const Path& file);

} // namespace kestrova
