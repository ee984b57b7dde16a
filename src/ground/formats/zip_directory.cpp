#include "formats/zip_directory.h"

#include "platform/files.h"

#include <algorithm>
#include <span>

namespace kestrova
{

std::uint32_t ZipNumberAt(std::string_view bytes, std::size_t place, std::size_t width)
{
    std::uint32_t value = 0;
    for (std::size_t i = width; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[place + i - 1]);
    return value;
}

namespace
{

constexpr std::size_t endSize = 22;
constexpr std::size_t entrySize = 46;
constexpr std::size_t longestComment = 0xFFFF;
constexpr std::uint64_t longestDirectory = std::uint64_t{16} << 20;
constexpr std::string_view endMark{"PK\5\6", 4};
constexpr std::string_view entryMark{"PK\1\2", 4};

/// Where the end record begins; npos when there is none.
std::size_t EndOf(std::string_view tail)
{
    if (tail.size() < endSize)
        return std::string_view::npos;
    std::size_t place = tail.size() - endSize;
    while ((place = tail.rfind(endMark, place)) != std::string_view::npos) {
        if (ZipNumberAt(tail, place + 20, 2) == tail.size() - place - endSize)
            return place;
        if (place == 0)
            break;
        --place;
    }
    return std::string_view::npos;
}

/// A field that gives the name once more, as UTF-8.
bool HasUnicodeName(std::string_view extras)
{
    constexpr std::uint32_t unicodePath = 0x7075;
    constexpr std::size_t head = 4;
    while (extras.size() >= head) {
        if (ZipNumberAt(extras, 0, 2) == unicodePath)
            return true;
        extras.remove_prefix(
            std::min<std::size_t>(head + ZipNumberAt(extras, 2, 2), extras.size()));
    }
    return false;
}

constexpr std::uint8_t madeByUnix = 3;
constexpr std::uint32_t folderOfUnix = 0040000;

std::uint32_t KindOfUnix(std::uint32_t attributes)
{
    constexpr std::uint32_t kinds = 0170000;
    return (attributes >> 16) & kinds;
}

bool IsFolder(std::uint8_t madeBy, std::uint32_t attributes)
{
    constexpr std::uint32_t folderOfDos = 0x10;
    return madeBy == madeByUnix ? KindOfUnix(attributes) == folderOfUnix
                                : (attributes & folderOfDos) != 0;
}

bool IsOther(std::uint8_t madeBy, std::uint32_t attributes)
{
    constexpr std::uint32_t fileOfUnix = 0100000;
    const std::uint32_t kind = KindOfUnix(attributes);
    return madeBy == madeByUnix && kind != 0 && kind != fileOfUnix && kind != folderOfUnix;
}

} // namespace

std::uint64_t ZipDirectorySize(std::string_view tail)
{
    const std::size_t end = EndOf(tail);
    if (end == std::string_view::npos)
        return 0;
    const std::uint32_t size = ZipNumberAt(tail, end + 12, 4);
    return size == zipBeyond ? 0 : size + std::uint64_t{tail.size() - end};
}

std::vector<ZipName> ParseZipDirectory(std::string_view tail)
{
    const std::size_t end = EndOf(tail);
    const std::uint64_t size = ZipDirectorySize(tail);
    if (size == 0 || size > tail.size())
        return {};
    std::string_view entries = tail.substr(0, end);
    entries.remove_prefix(tail.size() - size);
    std::vector<ZipName> names;
    while (entries.size() >= entrySize && entries.starts_with(entryMark)) {
        const std::size_t nameSize = ZipNumberAt(entries, 28, 2);
        const std::size_t extraSize = ZipNumberAt(entries, 30, 2);
        const std::size_t whole = entrySize + nameSize + extraSize + ZipNumberAt(entries, 32, 2);
        if (whole > entries.size())
            return {};
        constexpr std::uint32_t utf8Flag = 0x800;
        ZipName name;
        name.bytes = entries.substr(entrySize, nameSize);
        name.flags = static_cast<std::uint16_t>(ZipNumberAt(entries, 8, 2));
        name.isUtf8 = (name.flags & utf8Flag) != 0;
        name.hasUtf8 = HasUnicodeName(entries.substr(entrySize + nameSize, extraSize));
        name.madeBy = static_cast<std::uint8_t>(entries[5]);
        name.method = static_cast<std::uint16_t>(ZipNumberAt(entries, 10, 2));
        name.checksum = ZipNumberAt(entries, 16, 4);
        if (const std::uint32_t bytes = ZipNumberAt(entries, 24, 4); bytes != zipBeyond)
            name.size = bytes;
        name.packed = ZipNumberAt(entries, 20, 4);
        name.isFolder = IsFolder(name.madeBy, ZipNumberAt(entries, 38, 4));
        name.isOther = IsOther(name.madeBy, ZipNumberAt(entries, 38, 4));
        name.header = ZipNumberAt(entries, 42, 4);
        name.fromEnd = entries.size() + (tail.size() - end);
        names.push_back(std::move(name));
        entries.remove_prefix(whole);
    }
    return names;
}

ZipDirectory DirectoryIn(std::string_view tail)
{
    ZipDirectory directory{ParseZipDirectory(tail), {}};
    if (const std::size_t end = EndOf(tail); end != std::string_view::npos) {
        directory.comment = tail.substr(end + endSize);
        directory.isWhole = directory.names.size() == ZipNumberAt(tail, end + 10, 2);
    }
    return directory;
}

ZipDirectory ReadZipDirectory(const Path& zip)
{
    platform::File file;
    if (platform::File::OpenForRead(zip, file))
        return {}; // the tool says why
    const std::uint64_t size = file.Facts().size;
    std::string tail;
    const auto readTail = [&](std::uint64_t wanted) {
        tail.resize(std::min(wanted, size));
        std::size_t got = 0;
        return !file.ReadAt(size - tail.size(), std::as_writable_bytes(std::span{tail}), got) &&
               got == tail.size();
    };
    if (!readTail(endSize + longestComment))
        return {};
    const std::uint64_t wanted = ZipDirectorySize(tail);
    if (wanted > longestDirectory || (wanted > tail.size() && !readTail(wanted)))
        return {};
    return DirectoryIn(tail);
}

} // namespace kestrova
