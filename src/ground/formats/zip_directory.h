#pragma once

#include "core/names.h"

#include <cstdint>
#include <vector>

/// The entries of a zip's directory, for what no tool tells: in which code page the names are, by
/// which methods the files are packed, and how many there are whatever else the file makes a tool
/// print. Read without trust. The directory lies at the end of the file:
///
///     entry                                              end record
///        0  4  "PK" 1 2                                     0  4  "PK" 5 6
///        5  1  made by: 0 DOS, 3 Unix, 11 NT               10  2  number of entries
///        8  2  flags, bit 11: the name is UTF-8            12  4  size of all entries
///       10  2  method: 0 stored, 8 deflated                20  2  length c of the comment
///       16  4  checksum of the content
///       20  4  size as it is packed
///       24  4  size when unpacked                          22  c  comment
///       28  6  lengths n, e, c of name, extras, comment
///       38  4  attributes: of DOS (0x10: a folder), of Unix in the upper half
///       42  4  where the header before the file begins
///       46  n  name; then e, c
namespace kestrova
{

constexpr std::uint32_t zipBeyond = 0xFFFFFFFF; ///< the true number stands elsewhere

struct ZipName {
    std::string bytes;
    bool isUtf8 = false;  ///< says the zip
    bool hasUtf8 = false; ///< stands there in UTF-8 once more
    std::uint8_t madeBy = 0;
    std::uint16_t method = 0;
    std::uint32_t checksum = 0;
    std::uint32_t size = 0;   ///< when unpacked; 0 where the true one stands elsewhere
    std::uint32_t packed = 0; ///< its size as it is packed; see `zipBeyond`
    bool isFolder = false;    ///< by its attributes, whatever its name ends with
    bool isOther = false;     ///< by them neither a file nor a folder: a link, a pipe, a device
    std::uint16_t flags = 0;
    std::uint32_t header = 0;  ///< where the header before the file begins; see `zipBeyond`
    std::uint64_t fromEnd = 0; ///< the entry begins so many bytes before the end of the file

    bool operator==(const ZipName&) const = default;
};

struct ZipDirectory {
    std::vector<ZipName> names;
    std::string comment;  ///< of the whole zip, as bytes
    bool isWhole = false; ///< there are as many names as the end record says
};

/// How many bytes at the end of the file the directory takes up to its end; 0 when `tail`, the last
/// bytes of a file, holds no end record, or one of a zip beyond 4 GB.
std::uint64_t ZipDirectorySize(std::string_view tail);
/// The entries of the directory that ends with `tail`; empty when it is none, or damaged.
std::vector<ZipName> ParseZipDirectory(std::string_view tail);
/// The same with all that is known of it.
ZipDirectory DirectoryIn(std::string_view tail);
/// The same for a file. Directories above 16 MB are not read.
ZipDirectory ReadZipDirectory(const Path& zip);

/// The number of `width` bytes at that place, lowest byte first, as zips write them.
std::uint32_t ZipNumberAt(std::string_view bytes, std::size_t place, std::size_t width);

} // namespace kestrova
