#pragma once

#include "platform/file_facts.h"
#include "platform/file_hook.h"

#include <span>
#include <system_error>

namespace kestrova::platform
{

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

} // namespace kestrova::platform
