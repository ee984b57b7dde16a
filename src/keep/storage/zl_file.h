#pragma once

#include "core/files.h"

#include <functional>
#include <memory>

/// `.zl`: one file as one zlib stream (RFC 1950), named like its source with ".zl" added.
namespace kestrova
{

/// What no level's file reaches: sizes stand in records as 32-bit numbers. A stream that claims
/// more is refused before the memory is gone.
inline constexpr std::uint64_t maxZlContent = 0x7FFFFFFF;

/// As dense as zlib's level 9. The target is built beside itself, read back, compared and renamed;
/// it has the source's time. `made`: a stream of the source that was made before; one of other
/// bytes is passed over.
Status CompressToZl(const Path& source, const Path& target, std::string_view made = {});
/// `Damaged` for a stream that is cut, wrong, or followed by junk; `NoSpace` when it would expand
/// beyond `limit` bytes. The target is written whole or not at all, with the stream's time.
Status ExpandZl(const Path& source, const Path& target, std::uint64_t limit);
/// Takes the expanded bytes, piece by piece and in order.
using ZlSink = std::function<Status(std::string_view piece)>;
/// Expands a file piece by piece. Whatever the stream becomes, no more than `zlMemory` of it is
/// held at once. Failures as with `ExpandZl`, and the sink's own; what came before one was given
/// out.
Status StreamZl(const Path& source, std::uint64_t limit, const ZlSink& sink);
/// The most that one thread holds of a stream and of what comes out of it.
inline constexpr std::uint64_t zlMemory = std::uint64_t{64} << 20;
/// The expanded size, found by expanding; proves the stream whole.
Result<std::uint64_t> ExpandedSizeOfZl(const Path& source, std::uint64_t limit);
/// The stream in memory, for readers and tests.
Result<std::string> ExpandZlBytes(std::string_view bytes, std::uint64_t limit);
std::string CompressZlBytes(std::string_view bytes);

/// Expands one stream after the other into memory that is used again. Each thread has its own.
class ZlExpander
{
public:
    static ZlExpander& OfThisThread();
    ZlExpander();
    ~ZlExpander();
    ZlExpander(const ZlExpander&) = delete;
    ZlExpander& operator=(const ZlExpander&) = delete;

    /// The expanded bytes, good until the next call. Failures as with `ExpandZl`, without subject.
    Result<std::string_view> Expand(std::string_view bytes, std::uint64_t limit);
    /// The same for a file; failures name it.
    Result<std::string_view> ExpandFile(const Path& file, std::uint64_t limit);

private:
    struct Engine;
    std::unique_ptr<Engine> engine_;
    std::unique_ptr<char[]> memory_;
    std::size_t capacity_ = 0;
};

} // namespace kestrova
