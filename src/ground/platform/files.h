#pragma once

#include "platform/file_hook.h"
#include "platform/open_file.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// The file system as the system gives it: exact names, no message, errno as `std::error_code`.
namespace kestrova::platform
{

/// Follows links; a dangling link is `Missing`. `FactsOfLink` tells of the link itself.
FileFacts FactsOf(const Path& path);
FileFacts FactsOfLink(const Path& path);

/// A look whose failure is told apart from an absence: `facts.kind` is `Missing` without an error
/// only where nothing stands under that name, and nobody may decide by `facts` after an error.
/// Follows links; a dangling one is `Missing`.
std::error_code Look(const Path& path, FileFacts& facts);
/// The same of a link itself.
std::error_code LookAtLink(const Path& path, FileFacts& facts);

struct FolderEntry {
    std::string name;
    FileKind kind = FileKind::Missing; ///< of the entry itself: a link is a `Link`
};

/// Without "." and "..", in the order of the system.
std::error_code ListFolder(const Path& folder, std::vector<FolderEntry>& entries);

std::error_code MakeFolder(const Path& folder);
/// With all missing folders above it.
std::error_code MakeFolders(const Path& folder);
std::error_code RemoveFolder(const Path& folder);
std::error_code Unlink(const Path& file);
std::error_code Rename(const Path& from, const Path& to);
/// A second name of the same file; fails where the file system has none.
std::error_code HardLink(const Path& file, const Path& name);
/// A link with these words; fails where the name is taken.
std::error_code MakeLink(const Path& target, const Path& name);
/// Swaps two names in one step; `operation_not_supported` where the file system cannot.
std::error_code Exchange(const Path& a, const Path& b);
std::error_code SetMode(const Path& path, std::uint32_t mode);
std::error_code SetModified(const Path& path, std::int64_t modifiedNs);

/// Makes names of this folder durable.
std::error_code SyncFolder(const Path& folder);
/// Makes all that was written to the file system of `path` durable.
std::error_code SyncFileSystem(const Path& path);

/// Free bytes for an ordinary user.
std::error_code FreeSpace(const Path& path, std::uint64_t& bytes);
bool IsWritableFolder(const Path& folder);

} // namespace kestrova::platform
