#include "packages/small_zip.h"

#include "core/text.h"
#include "formats/zip_directory.h"
#include "platform/clock.h"
#include "platform/files.h"

#include <algorithm>
#include <libdeflate.h>
#include <memory>
#include <set>
#include <span>

namespace kestrova
{

namespace
{

constexpr std::uint64_t mostUnpacked = std::uint64_t{4} << 20;
/// So many are written before anybody waits for the window.
constexpr std::size_t mostEntries = 200;
constexpr std::uint16_t stored = 0;
constexpr std::uint16_t deflated = 8;

/// Before each file stands a header:
///
///      0  4  "PK" 3 4                  10  4  time and date as DOS has them
///      6  2  flags                     26  4  lengths n, e of name, extras
///      8  2  method                    30  n  name; then e, then the packed content
constexpr std::size_t headerSize = 30;
constexpr std::string_view headerMark{"PK\3\4", 4};

bool IsPlainPart(std::string_view part)
{
    return !part.empty() && part != "." && part != ".." &&
           std::all_of(part.begin(), part.end(), [](char c) {
               return c >= ' ' && c < 0x7F && c != '\\' && c != ':' && c != ';';
           });
}

/// True when every part of the name is a plain one; a slash at its end makes it a folder.
bool IsPlainName(std::string_view name)
{
    if (name.ends_with('/'))
        name.remove_suffix(1);
    const std::vector<std::string> parts = Split(name, '/');
    return std::all_of(parts.begin(), parts.end(), IsPlainPart);
}

bool IsPlain(const ZipName& entry)
{
    constexpr std::uint8_t dos = 0;
    constexpr std::uint8_t unix = 3;
    constexpr std::uint8_t nt = 11;
    // How well it is deflated, sizes behind the content, names in UTF-8.
    constexpr std::uint16_t harmless = 0x0006 | 0x0008 | 0x0800;
    return (entry.madeBy == dos || entry.madeBy == unix || entry.madeBy == nt) &&
           (entry.method == stored || entry.method == deflated) && (entry.flags & ~harmless) == 0 &&
           !entry.isOther && entry.header != zipBeyond && entry.packed != zipBeyond &&
           entry.isFolder == entry.bytes.ends_with('/') && IsPlainName(entry.bytes);
}

/// Seconds since 1970 by the field that gives them, otherwise the time of DOS.
std::int64_t ModifiedOf(std::string_view header, std::string_view extras)
{
    constexpr std::uint32_t unixTimes = 0x5455;
    constexpr std::size_t head = 4;
    while (extras.size() >= head) {
        const std::size_t size = ZipNumberAt(extras, 2, 2);
        if (ZipNumberAt(extras, 0, 2) == unixTimes && size > head && extras.size() > 2 * head &&
            (extras[head] & 1) != 0)
            return static_cast<std::int32_t>(ZipNumberAt(extras, head + 1, 4)) *
                   platform::nsOfSecond;
        extras.remove_prefix(std::min(head + size, extras.size()));
    }
    const int time = static_cast<int>(ZipNumberAt(header, 10, 2));
    const int date = static_cast<int>(ZipNumberAt(header, 12, 2));
    constexpr int firstYear = 1980;
    return platform::NsOf({firstYear + (date >> 9), (date >> 5) & 0xF, date & 0x1F, time >> 11,
                           (time >> 5) & 0x3F, (time & 0x1F) * 2});
}

struct EntryContent {
    std::string_view packed;
    std::int64_t modifiedNs = 0;
    std::size_t begin = 0; ///< of the header
};

/// What stands in the zip for that entry; no value where header and directory do not agree.
std::optional<EntryContent> ContentOf(std::string_view zip, const ZipName& entry)
{
    if (entry.header > zip.size() || zip.size() - entry.header < headerSize)
        return {};
    const std::string_view header = zip.substr(entry.header);
    const std::size_t nameSize = ZipNumberAt(header, 26, 2);
    const std::size_t extraSize = ZipNumberAt(header, 28, 2);
    const std::size_t before = headerSize + nameSize + extraSize;
    if (!header.starts_with(headerMark) || header.size() < before ||
        header.size() - before < entry.packed || ZipNumberAt(header, 6, 2) != entry.flags ||
        ZipNumberAt(header, 8, 2) != entry.method ||
        header.substr(headerSize, nameSize) != entry.bytes)
        return {};
    return EntryContent{header.substr(before, entry.packed),
                        ModifiedOf(header, header.substr(headerSize + nameSize, extraSize)),
                        entry.header};
}

/// The content as it was packed, of the size and with the checksum that the zip tells.
std::optional<std::string> Unpacked(libdeflate_decompressor& inflater, const ZipName& entry,
                                    std::string_view packed)
{
    std::string content(entry.size, '\0');
    if (entry.method == stored) {
        if (packed.size() != content.size())
            return {};
        content = packed;
    } else if (libdeflate_deflate_decompress(&inflater, packed.data(), packed.size(),
                                             content.data(), content.size(),
                                             nullptr) != LIBDEFLATE_SUCCESS) {
        return {};
    }
    if (libdeflate_crc32(0, content.data(), content.size()) != entry.checksum)
        return {};
    return content;
}

bool WriteNew(const Path& target, std::string_view content, std::int64_t modifiedNs)
{
    platform::File file;
    return !platform::File::CreateNew(target, file) &&
           !file.Write(std::as_bytes(std::span{content})) && !file.Close() &&
           !platform::SetModified(target, modifiedNs);
}

/// Makes the folders that an entry lies in, each once.
class MadeFolders
{
public:
    explicit MadeFolders(const Path& top) : top_(top) {}
    bool Make(const Path& below)
    {
        if (below.empty() || made_.contains(below))
            return true;
        if (!Make(below.parent_path()) || platform::MakeFolder(top_ / below))
            return false;
        made_.insert(below);
        return true;
    }

private:
    const Path& top_;
    std::set<Path> made_;
};

/// Names of one file, or of a file and of a folder, are no plain matter; nor are contents that lie
/// in each other.
bool UnpackEntries(std::string_view zip, const std::vector<ZipName>& entries, const Path& folder)
{
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)>
        inflater{libdeflate_alloc_decompressor(), libdeflate_free_decompressor};
    if (inflater == nullptr)
        return false;
    std::vector<std::pair<std::size_t, std::size_t>> ranges;
    MadeFolders folders{folder};
    for (const ZipName& entry : entries) {
        const auto content = ContentOf(zip, entry);
        if (!content)
            return false;
        ranges.emplace_back(content->begin,
                            static_cast<std::size_t>(content->packed.data() - zip.data()) +
                                content->packed.size());
        if (entry.isFolder) {
            if (!folders.Make(Path{entry.bytes}.parent_path()))
                return false;
            continue;
        }
        const auto bytes = Unpacked(*inflater, entry, content->packed);
        if (!bytes || !folders.Make(Path{entry.bytes}.parent_path()) ||
            !WriteNew(folder / entry.bytes, *bytes, content->modifiedNs))
            return false;
    }
    std::sort(ranges.begin(), ranges.end());
    return std::adjacent_find(ranges.begin(), ranges.end(), [](const auto& a, const auto& b) {
               return a.second > b.first;
           }) == ranges.end();
}

} // namespace

bool UnpackSmallZip(const Path& zip, const Path& folder)
{
    const auto bytes = ReadWholeFile(zip, mostOfSmallZip);
    if (!bytes)
        return false;
    const ZipDirectory directory = DirectoryIn(*bytes);
    const std::vector<ZipName>& entries = directory.names;
    std::uint64_t promised = 0;
    for (const ZipName& entry : entries) {
        promised += entry.size;
        if (!IsPlain(entry) || promised > mostUnpacked)
            return false;
    }
    return directory.isWhole && !entries.empty() && entries.size() <= mostEntries &&
           UnpackEntries(*bytes, entries, folder);
}

} // namespace kestrova
