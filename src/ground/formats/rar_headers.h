#pragma once

#include "core/files.h"

#include <functional>
#include <optional>

/// What the headers of a rar tell of its files: the tool that unpacks it neither proves a file that
/// is stored as it is nor says that one is locked. Read without trust; what goes beyond the file or
/// beyond what is known ends the list. Numbers are little endian, `v` is a number of 7 bits a byte.
///
///     rar 4, behind 52 61 72 21 1A 07 00        rar 5, behind 52 61 72 21 1A 07 01 00
///        0  2  checksum of the header              0  4  checksum of the header
///        2  1  kind: 0x73 archive, 0x74 file       4  v  size of what follows
///        3  2  flags                                  v  kind: 1 archive, 2 file, 4 locked
///        5  2  size of the header                     v  flags: 1 extras, 2 data
///        7  4  size of the data behind it             v  size of extras; v  size of data
///       11  4  size of the file                    of a file: v  flags: 1 folder, 4 checksum
///       15  1  system                                 v  size of the file; v  attributes
///       16  4  checksum of the file                   4  time, with flag 2
///       25  1  method                                 4  checksum of the file
///       26  2  length of the name                     v  method; v  system
///       28  4  attributes                             v  length of the name; the name
///       32  4  upper half of both sizes, flag 0x100   extras: v size, v kind: 1 locked, 5 link
namespace kestrova
{

struct PackedFile {
    std::string name; ///< bytes, as they stand in the package
    /// The CRC-32 of the content; nothing where the package does not say it.
    std::optional<std::uint32_t> checksum;
    bool operator==(const PackedFile&) const = default;
};

struct RarHeaders {
    std::vector<PackedFile> files; ///< plain ones alone: neither folders nor links
    bool isRar = false;
    bool locked = false; ///< a file, or the whole list, needs a password
    bool operator==(const RarHeaders&) const = default;
};

/// Gives the bytes from `place` on, at most `most`; fewer at the end of the file.
using BytesAt = std::function<std::string(std::uint64_t place, std::size_t most)>;
/// `size`: of the whole file. A file of which only a part is in this rar has no checksum.
RarHeaders ParseRarHeaders(const BytesAt& bytesAt, std::uint64_t size);
/// The same for a file; empty when it cannot be read, since the tool says why.
RarHeaders ReadRarHeaders(const Path& rar);

} // namespace kestrova
