#include "packages/zip_writer.h"

#include "core/ordered_jobs.h"
#include "core/text.h"
#include "platform/clock.h"

#include <algorithm>
#include <fmt/format.h>
#include <libdeflate.h>
#include <limits>
#include <new>
#include <optional>
#include <span>

namespace kestrova
{

namespace
{

/// Already smaller than the densest level of the zip program.
constexpr int deflateLevel = 7;
/// What a thread takes into its memory at once.
constexpr std::uint64_t largestFile = std::uint64_t{256} << 20;
/// Beyond these a zip needs its larger numbers.
constexpr std::uint64_t largestZip = std::uint64_t{3} << 30;
constexpr std::size_t mostFiles = 60'000;
constexpr std::chrono::milliseconds waitSlice{20};

constexpr std::uint16_t storedMethod = 0;
constexpr std::uint16_t deflatedMethod = 8;

/// A file of the zip: what its header and its entry say, and its content as it is packed.
struct ZipEntry {
    std::string name;
    std::string content;
    std::uint16_t method = storedMethod;
    std::uint32_t checksum = 0;
    std::uint32_t size = 0;
    std::uint32_t packed = 0;
    std::uint32_t mode = 0;
    std::int64_t modifiedNs = 0;
    std::uint32_t header = 0; ///< where it begins
    bool isRead = false;
};

struct Deflater {
    libdeflate_compressor* engine = libdeflate_alloc_compressor(deflateLevel);
    Deflater()
    {
        if (engine == nullptr)
            throw std::bad_alloc{};
    }
    ~Deflater() { libdeflate_free_compressor(engine); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
};

/// Reads and packs one file; what does not become smaller is stored.
void PackEntry(const Path& file, ZipEntry& entry)
{
    const platform::FileFacts facts = platform::FactsOf(file);
    auto bytes = ReadWholeFile(file, largestFile);
    if (!bytes)
        return;
    thread_local const Deflater deflater;
    entry.name = file.filename().native();
    entry.mode = facts.mode;
    entry.modifiedNs = facts.modifiedNs;
    entry.size = static_cast<std::uint32_t>(bytes->size());
    entry.checksum = libdeflate_crc32(0, bytes->data(), bytes->size());
    std::string deflated(bytes->size(), '\0');
    const std::size_t size = libdeflate_deflate_compress(
        deflater.engine, bytes->data(), bytes->size(), deflated.data(), deflated.size());
    if (size > 0) {
        deflated.resize(size);
        entry.method = deflatedMethod;
        entry.content = std::move(deflated);
    } else {
        entry.content = std::move(*bytes);
    }
    entry.packed = static_cast<std::uint32_t>(entry.content.size());
    entry.isRead = true;
}

void Put(std::string& bytes, std::uint64_t value, int width)
{
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
}

/// Date in the upper half, time in the lower one, as DOS has them, in steps of two seconds.
std::uint32_t DosTime(std::int64_t ns)
{
    constexpr int firstYear = 1980;
    constexpr int lastYear = 2107;
    const platform::LocalTime time = platform::LocalTimeOf(ns);
    if (time.year < firstYear || time.year > lastYear)
        return 1U << 21U | 1U << 16U;
    const int date = (time.year - firstYear) << 9 | time.month << 5 | time.day;
    const int clock = time.hour << 11 | time.minute << 5 | time.second / 2;
    return static_cast<std::uint32_t>(date) << 16U | static_cast<std::uint32_t>(clock);
}

/// The field with the seconds since 1970, by which no time zone changes a file's time.
std::string TimeField(std::int64_t ns)
{
    const std::int64_t seconds = ns / platform::nsOfSecond;
    std::string field;
    if (seconds < 0 || seconds > std::numeric_limits<std::int32_t>::max())
        return field;
    Put(field, 0x5455, 2);
    Put(field, 5, 2);
    Put(field, 1, 1);
    Put(field, static_cast<std::uint64_t>(seconds), 4);
    return field;
}

/// What header and entry have in common: from the version that it takes to the lengths.
std::string CommonPart(const ZipEntry& entry, const std::string& extras)
{
    constexpr unsigned utf8Name = 0x800;
    constexpr std::uint64_t version = 20;
    std::string part;
    Put(part, version, 2);
    Put(part, !IsAscii(entry.name) && IsUtf8(entry.name) ? utf8Name : 0, 2);
    Put(part, entry.method, 2);
    Put(part, DosTime(entry.modifiedNs), 4);
    Put(part, entry.checksum, 4);
    Put(part, entry.packed, 4);
    Put(part, entry.size, 4);
    Put(part, entry.name.size(), 2);
    Put(part, extras.size(), 2);
    return part;
}

std::string HeaderOf(const ZipEntry& entry)
{
    const std::string extras = TimeField(entry.modifiedNs);
    return std::string{"PK\3\4", 4} + CommonPart(entry, extras) + entry.name + extras;
}

std::string DirectoryEntryOf(const ZipEntry& entry)
{
    constexpr std::uint64_t madeByUnix = 3U << 8U | 30U;
    constexpr std::uint64_t plainFile = 0100000;
    const std::string extras = TimeField(entry.modifiedNs);
    std::string bytes{"PK\1\2", 4};
    Put(bytes, madeByUnix, 2);
    bytes += CommonPart(entry, extras);
    Put(bytes, 0, 2 + 2 + 2); // no comment, the first disk, no kind of text
    Put(bytes, (plainFile | (entry.mode & 0777U)) << 16U, 4);
    Put(bytes, entry.header, 4);
    return bytes + entry.name + extras;
}

std::string EndRecord(std::size_t count, std::size_t size, std::uint64_t begin)
{
    std::string bytes{"PK\5\6", 4};
    Put(bytes, 0, 2 + 2);
    Put(bytes, count, 2);
    Put(bytes, count, 2);
    Put(bytes, size, 4);
    Put(bytes, begin, 4);
    Put(bytes, 0, 2);
    return bytes;
}

bool IsUsualKind(const std::vector<Path>& files)
{
    std::uint64_t all = 0;
    for (const Path& file : files) {
        const std::uint64_t size = FileSize(file);
        all += size;
        if (size > largestFile || file.filename().native().size() > UINT16_MAX)
            return false;
    }
    return !files.empty() && files.size() <= mostFiles && all <= largestZip;
}

std::string LineOf(const ZipEntry& entry)
{
    constexpr std::uint64_t whole = 100;
    const std::uint64_t saved =
        entry.size == 0 ? 0 : whole - std::uint64_t{entry.packed} * whole / entry.size;
    return fmt::format("  adding: {} ({} {}%)", OnOneLine(entry.name), // not shown
                       entry.method == storedMethod ? "stored" : "deflated", saved);
}

/// The zip as it grows; what is not finished is gone at the end.
class GrowingZip
{
public:
    explicit GrowingZip(const Path& zip) : zip_(zip)
    {
        good_ = !platform::File::CreateNew(zip, file_);
        ours_ = good_;
    }
    ~GrowingZip()
    {
        if (ours_)
            (void)platform::Unlink(zip_); // half a zip is of no use to anybody
    }
    GrowingZip(const GrowingZip&) = delete;
    GrowingZip& operator=(const GrowingZip&) = delete;

    bool Add(ZipEntry& entry)
    {
        entry.header = static_cast<std::uint32_t>(place_);
        good_ = good_ && Write(HeaderOf(entry)) && Write(entry.content);
        directory_ += DirectoryEntryOf(entry);
        ++count_;
        return good_;
    }
    bool Finish()
    {
        const std::uint64_t begin = place_;
        good_ = good_ && Write(directory_) && Write(EndRecord(count_, directory_.size(), begin)) &&
                !file_.Close();
        ours_ = ours_ && !good_;
        return good_;
    }

private:
    bool Write(std::string_view bytes)
    {
        place_ += bytes.size();
        return !file_.Write(std::as_bytes(std::span{bytes}));
    }

    Path zip_;
    platform::File file_;
    std::string directory_;
    std::size_t count_ = 0;
    std::uint64_t place_ = 0;
    bool good_ = false;
    bool ours_ = false;
};

} // namespace

Result<bool> WriteZip(const Path& zip, const std::vector<Path>& files, const ZipLine& added,
                      const Heartbeat& heartbeat)
{
    if (!IsUsualKind(files))
        return false;
    GrowingZip growing{zip};
    std::vector<ZipEntry> entries(files.size());
    OrderedJobs jobs{files.size(), OrderedJobs::Cores(),
                     [&](std::size_t i) { PackEntry(files[i], entries[i]); }};
    const Failure stopped = MakeFailure(ErrorCode::Stopped, TextOf(zip));
    for (std::size_t i = 0; i < files.size(); ++i) {
        while (!jobs.WaitFor(i, waitSlice))
            if (heartbeat && !heartbeat())
                return stopped;
        if (!entries[i].isRead || !growing.Add(entries[i]))
            return false;
        const std::string line = LineOf(entries[i]);
        entries[i] = {}; // its content is written
        if (!added(line) || (heartbeat && !heartbeat()))
            return stopped;
    }
    return growing.Finish();
}

} // namespace kestrova
