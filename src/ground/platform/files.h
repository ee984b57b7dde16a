#pragma once

#include "platform/file_hook.h"

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
/// Swaps two names in one step; `operation_not_supported` where the file system cannot.
std::error_code Exchange(const Path& a, const Path& b);
std::error_code SetMode(const Path& path, std::uint32_t mode);
std::error_code SetModified(const Path& path, std::int64_t modifiedNs);

/// An open file; closed at the end of its life, never inherited by a child.
class File
{
public:
    File() = default;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    static std::error_code OpenForRead(const Path& path, File& file);
    /// Creates or empties.
    static std::error_code Create(const Path& path, File& file);
    /// Fails where the name is taken.
    static std::error_code CreateNew(const Path& path, File& file);
    /// Opens what is there, or creates, and keeps the content. A link is refused
    /// (`too_many_symbolic_link_levels`): what it leads to is nobody's to change.
    static std::error_code OpenForUpdate(const Path& path, File& file);

    /// `got` 0 is the end.
    std::error_code Read(std::span<std::byte> into, std::size_t& got);
    /// The bytes from `offset` on; fewer than asked for only at the end of the file.
    std::error_code ReadAt(std::uint64_t offset, std::span<std::byte> into, std::size_t& got);
    /// All of `bytes` or an error.
    std::error_code Write(std::span<const std::byte> bytes);
    /// The same over what stands at `offset`.
    std::error_code WriteAt(std::uint64_t offset, std::span<const std::byte> bytes);
    std::error_code Sync();
    std::error_code Truncate(std::uint64_t size);
    /// Reports what a close can still find out (a full quota, a lost server).
    std::error_code Close();
    [[nodiscard]] FileFacts Facts() const;
    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int Descriptor() const { return descriptor_; }

private:
    static std::error_code Open(const Path& path, int flags, File& file);
    int descriptor_ = -1;
    Path path_;
};

/// Makes names of this folder durable.
std::error_code SyncFolder(const Path& folder);
/// Makes all that was written to the file system of `path` durable.
std::error_code SyncFileSystem(const Path& path);

/// Free bytes for an ordinary user.
std::error_code FreeSpace(const Path& path, std::uint64_t& bytes);
bool IsWritableFolder(const Path& folder);

} // namespace kestrova::platform
