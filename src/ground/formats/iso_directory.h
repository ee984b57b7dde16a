#pragma once

#include "core/result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

/// The directory of a disc or of its image (ISO 9660, with the names of Rock Ridge or Joliet where
/// it has them), read without trust: where each file's bytes lie. Numbers stand there twice, lowest
/// byte first and last; the first is read.
///
///     descriptor, from sector 16 on            record of a directory
///        0  1  1 primary, 2 further, 255 end      0  1  length of the record
///        1  5  "CD001"                            1  1  sectors of extra attributes before the
///        data
///       40 32  label                              2  8  first sector
///       80  8  sectors of the whole              10  8  bytes
///       88  3  "%/@", "%/C", "%/E": Joliet       25  1  flags: 2 folder, 128 goes on in the next
///      128  4  bytes of a sector                 26  2  gaps between pieces
///      156 34  record of the root                32  1  length n of the name
///                                                33  n  name, a byte to an even place, then
///                                                       fields of Rock Ridge: two letters, length,
///                                                       version, content
namespace kestrova
{

/// Fills the whole span from that byte on, or answers False.
using IsoReader = std::function<bool(std::uint64_t offset, std::span<std::byte> into)>;

struct IsoExtent {
    std::uint64_t offset = 0; ///< bytes from the beginning of the disc
    std::uint64_t size = 0;

    bool operator==(const IsoExtent&) const = default;
};

enum class IsoKind { File, Folder, Link };

struct IsoFile {
    std::string path; ///< from the root, parted by "/", without one in front; bytes of Rock Ridge
    IsoKind kind = IsoKind::File;
    std::uint64_t size = 0;
    std::vector<IsoExtent> extents{};
};

struct IsoDirectory {
    std::string label;
    std::uint64_t bytes = 0;    ///< of the disc, as it says itself
    std::vector<IsoFile> files; ///< folders before what is in them
};

/// `Damaged` for what is no such disc, and for a directory that leads nowhere, in a circle, or to
/// more than a disc can hold. The places of files are not looked at.
Result<IsoDirectory> ReadIsoDirectory(const IsoReader& read);

} // namespace kestrova
