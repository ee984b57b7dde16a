#pragma once

#include "platform/files.h"

/// What files hold: read, copied and hashed in large pieces.
namespace kestrova::platform
{

/// A buffer's size for reading a file of that size from end to end: up to 1 MiB.
std::size_t BufferSize(std::uint64_t fileSize);
/// Called with the bytes done so far; False stops the copy with `operation_canceled`.
using CopyProgress = std::function<bool(std::uint64_t)>;
/// The content of `from` into the empty `to`: a clone where the file system can, otherwise a copy
/// within the kernel. `isClone`: told whether both share the same blocks of the disk.
std::error_code CopyContent(File& from, File& to, const CopyProgress& progress = {},
                            bool* isClone = nullptr);
std::error_code ReadAll(const Path& path, std::string& content,
                        std::uint64_t limit = UINT64_C(0xFFFFFFFFFFFF));
/// XXH3 with 128 bits, as 32 lower-case hexadecimal digits.
std::string HashOf(std::span<const std::byte> bytes);
std::error_code HashOfFile(const Path& path, std::string& hash);

} // namespace kestrova::platform
