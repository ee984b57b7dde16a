#pragma once

#include "core/files.h"

/// `.zl`: one file as one zlib stream (RFC 1950), named like its source with ".zl" added.
namespace kestrova
{

/// Level 9 of libdeflate. The target is built beside itself and renamed; it has the source's time.
Status CompressToZl(const Path& source, const Path& target);
/// `Damaged` for a stream that is cut, wrong, or followed by junk; `NoSpace` when it would expand
/// beyond `limit` bytes. The target is written whole or not at all, with the stream's time.
Status ExpandZl(const Path& source, const Path& target, std::uint64_t limit);
/// The expanded size, found by expanding in memory; proves the stream whole.
Result<std::uint64_t> ExpandedSizeOfZl(const Path& source, std::uint64_t limit);
/// The stream in memory, for readers and tests.
Result<std::string> ExpandZlBytes(std::string_view bytes, std::uint64_t limit);
std::string CompressZlBytes(std::string_view bytes);

} // namespace kestrova
