#include "storage/zl_file.h"

#include "core/staged_file.h"

#include <algorithm>
#include <libdeflate.h>
#include <new>
#include <optional>
#include <span>
#include <vector>
#include <zlib.h>

namespace kestrova
{

namespace
{

/// Already smaller than the densest level of zlib. On 92 MB of levels the engine's own level 9 took
/// four times as long for 0.3 % less.
constexpr int compressionLevel = 7;
constexpr std::size_t smallest = std::size_t{1} << 16;
/// Memory that is not touched costs nothing, a second try costs the whole stream again.
constexpr std::size_t firstGuess = 8;

struct Compressor {
    libdeflate_compressor* engine = libdeflate_alloc_compressor(compressionLevel);
    Compressor()
    {
        if (engine == nullptr)
            throw std::bad_alloc{};
    }
    ~Compressor() { libdeflate_free_compressor(engine); }
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;
};

Failure WithSubject(const Failure& failure, const Path& file)
{
    return {failure.code, TextOf(file), failure.reason};
}

} // namespace

struct ZlExpander::Engine {
    libdeflate_decompressor* decompressor = libdeflate_alloc_decompressor();
    Engine()
    {
        if (decompressor == nullptr)
            throw std::bad_alloc{};
    }
    ~Engine() { libdeflate_free_decompressor(decompressor); }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
};

ZlExpander::ZlExpander() : engine_(std::make_unique<Engine>()) {}

ZlExpander::~ZlExpander() = default;

ZlExpander& ZlExpander::OfThisThread()
{
    thread_local ZlExpander expander;
    return expander;
}

Result<std::string_view> ZlExpander::Expand(std::string_view bytes, std::uint64_t limit)
{
    const std::uint64_t most = std::min(limit, maxZlContent);
    std::uint64_t wanted = std::max<std::uint64_t>(smallest, bytes.size() * firstGuess);
    for (;;) {
        wanted = std::min(wanted, most);
        if (capacity_ < wanted) {
            capacity_ = 0;
            memory_.reset(new (std::nothrow) char[wanted]);
            if (memory_ == nullptr)
                return MakeFailure(ErrorCode::NoSpace, {},
                                   std::make_error_code(std::errc::not_enough_memory));
            capacity_ = wanted;
        }
        // Room that an earlier stream left is used, but never beyond the limit.
        const std::size_t room = std::min<std::uint64_t>(capacity_, most);
        std::size_t read = 0;
        std::size_t made = 0;
        char none = 0; // the engine takes no null
        const libdeflate_result result =
            libdeflate_zlib_decompress_ex(engine_->decompressor, bytes.data(), bytes.size(),
                                          room > 0 ? memory_.get() : &none, room, &read, &made);
        if (result == LIBDEFLATE_SUCCESS && read == bytes.size())
            return std::string_view{memory_.get(), made};
        if (result != LIBDEFLATE_INSUFFICIENT_SPACE)
            return Failure{ErrorCode::Damaged, {}, {}};
        if (room >= most)
            return Failure{ErrorCode::NoSpace, {}, {}};
        wanted = std::uint64_t{room} * 2;
    }
}

Result<std::string_view> ZlExpander::ExpandFile(const Path& file, std::uint64_t limit)
{
    const auto bytes = ReadWholeFile(file, maxZlContent);
    if (!bytes)
        return bytes.Error();
    auto expanded = Expand(*bytes, limit);
    if (!expanded)
        return WithSubject(expanded.Error(), file);
    return expanded;
}

std::string CompressZlBytes(std::string_view bytes)
{
    thread_local const Compressor compressor;
    std::string stream(libdeflate_zlib_compress_bound(compressor.engine, bytes.size()), '\0');
    stream.resize(libdeflate_zlib_compress(compressor.engine, bytes.data(), bytes.size(),
                                           stream.data(), stream.size()));
    return stream;
}

Result<std::string> ExpandZlBytes(std::string_view bytes, std::uint64_t limit)
{
    const auto expanded = ZlExpander::OfThisThread().Expand(bytes, limit);
    if (!expanded)
        return expanded.Error();
    return std::string{*expanded};
}

namespace
{

/// zlib's own engine, which is slower and needs no more memory than its window.
class Inflater
{
public:
    Inflater() : good_(inflateInit(&stream_) == Z_OK) {}
    ~Inflater()
    {
        if (good_)
            inflateEnd(&stream_);
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    [[nodiscard]] bool Good() const { return good_; }
    [[nodiscard]] bool AtEnd() const { return atEnd_; }
    void Give(std::span<std::byte> bytes)
    {
        stream_.next_in = reinterpret_cast<Bytef*>(bytes.data());
        stream_.avail_in = static_cast<uInt>(bytes.size());
    }
    [[nodiscard]] bool HasMore() const { return stream_.avail_in > 0; }
    /// How much came out; no value when the stream is wrong.
    std::optional<std::size_t> Take(std::span<char> room)
    {
        stream_.next_out = reinterpret_cast<Bytef*>(room.data());
        stream_.avail_out = static_cast<uInt>(room.size());
        const int result = inflate(&stream_, Z_NO_FLUSH);
        atEnd_ = result == Z_STREAM_END;
        if (!atEnd_ && result != Z_OK && result != Z_BUF_ERROR)
            return {};
        return room.size() - stream_.avail_out;
    }

private:
    z_stream stream_{};
    bool good_;
    bool atEnd_ = false;
};

/// All that comes out of the bytes that were given.
Status TakeAll(Inflater& inflater, std::span<char> room, std::uint64_t& left, const ZlSink& sink)
{
    for (;;) {
        const auto made = inflater.Take(room);
        if (!made || (inflater.AtEnd() && inflater.HasMore()))
            return Failure{ErrorCode::Damaged, {}, {}};
        if (*made > left)
            return Failure{ErrorCode::NoSpace, {}, {}};
        left -= *made;
        if (*made > 0)
            if (auto status = sink({room.data(), *made}); !status)
                return status;
        if (inflater.AtEnd() || (*made < room.size() && !inflater.HasMore()))
            return {};
    }
}

Status InflateFile(const Path& file, std::uint64_t limit, const ZlSink& sink)
{
    constexpr std::size_t pieceSize = std::size_t{1} << 18;
    platform::File input;
    if (const auto failure = platform::File::OpenForRead(file, input))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(file), failure);
    Inflater inflater;
    if (!inflater.Good())
        throw std::bad_alloc{};
    std::vector<std::byte> in(pieceSize);
    std::vector<char> out(pieceSize);
    std::uint64_t left = std::min(limit, maxZlContent);
    for (;;) {
        std::size_t got = 0;
        if (const auto failure = input.Read(in, got))
            return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
        if (got == 0 || inflater.AtEnd()) // junk behind the end, or an end that is missing
            return got == 0 && inflater.AtEnd() ? Status{}
                                                : Failure{ErrorCode::Damaged, TextOf(file), {}};
        inflater.Give(std::span{in}.first(got));
        if (auto status = TakeAll(inflater, out, left, sink); !status)
            return status.Error().subject.empty() ? WithSubject(status.Error(), file) : status;
    }
}

Status WriteWithTimeOf(const Path& source, StagedFile& staged, std::string_view bytes)
{
    if (auto status = staged.Open(); !status)
        return status;
    if (auto status = staged.Write(bytes); !status)
        return status;
    // Some disks keep no times; the bytes are what counts.
    (void)platform::SetModified(staged.StagedPath(), platform::FactsOf(source).modifiedNs);
    return {};
}

} // namespace

Status StreamZl(const Path& source, std::uint64_t limit, const ZlSink& sink)
{
    const Path file = ResolvePath(source);
    if (platform::FactsOf(file).size <= zlMemory) {
        const auto whole = ZlExpander::OfThisThread().ExpandFile(file, std::min(limit, zlMemory));
        if (whole)
            return sink(*whole);
        if (whole.Error().code != ErrorCode::NoSpace || limit <= zlMemory)
            return whole.Error();
    }
    return InflateFile(file, limit, sink);
}

Result<std::uint64_t> ExpandedSizeOfZl(const Path& source, std::uint64_t limit)
{
    std::uint64_t size = 0;
    const auto counted = StreamZl(source, limit, [&](std::string_view piece) {
        size += piece.size();
        return Status{};
    });
    if (!counted)
        return counted.Error();
    return size;
}

Status CompressToZl(const Path& source, const Path& target, std::string_view made)
{
    const Path from = ResolvePath(source);
    const auto bytes = ReadWholeFile(from, maxZlContent);
    if (!bytes)
        return bytes.Error();
    const std::string own = made.empty() ? CompressZlBytes(*bytes) : std::string{};
    StagedFile staged{ResolvePath(target)};
    if (auto status = WriteWithTimeOf(from, staged, made.empty() ? own : made); !status)
        return status;
    const auto back = ZlExpander::OfThisThread().ExpandFile(staged.StagedPath(), bytes->size());
    if (back && *back == *bytes)
        return staged.Commit(false);
    return made.empty() ? MakeFailure(ErrorCode::Differs, TextOf(target))
                        : CompressToZl(source, target);
}

Status ExpandZl(const Path& source, const Path& target, std::uint64_t limit)
{
    const Path from = ResolvePath(source);
    StagedFile staged{ResolvePath(target)};
    if (auto status = staged.Open(); !status)
        return status;
    if (auto status =
            StreamZl(from, limit, [&](std::string_view piece) { return staged.Write(piece); });
        !status)
        return status;
    (void)platform::SetModified(staged.StagedPath(),
                                platform::FactsOf(from).modifiedNs); // as above
    return staged.Commit(false);
}

} // namespace kestrova
