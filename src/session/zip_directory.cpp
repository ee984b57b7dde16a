#include "session/zip_directory.h"

#include "core/text.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestrova
{

namespace
{

constexpr std::size_t endSize = 22;
constexpr std::size_t entrySize = 46;
constexpr std::size_t longestComment = 0xFFFF;
constexpr std::uint64_t longestDirectory = std::uint64_t{16} << 20;
constexpr std::string_view endMark{"PK\5\6", 4};
constexpr std::string_view entryMark{"PK\1\2", 4};
constexpr std::uint32_t beyond = 0xFFFFFFFF; ///< the true size stands elsewhere

std::uint32_t NumberAt(std::string_view bytes, std::size_t place, std::size_t width)
{
    std::uint32_t value = 0;
    for (std::size_t i = width; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[place + i - 1]);
    return value;
}

/// Where the end record begins; npos when there is none.
std::size_t EndOf(std::string_view tail)
{
    if (tail.size() < endSize)
        return std::string_view::npos;
    std::size_t place = tail.size() - endSize;
    while ((place = tail.rfind(endMark, place)) != std::string_view::npos) {
        if (NumberAt(tail, place + 20, 2) == tail.size() - place - endSize)
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
        if (NumberAt(extras, 0, 2) == unicodePath)
            return true;
        extras.remove_prefix(std::min<std::size_t>(head + NumberAt(extras, 2, 2), extras.size()));
    }
    return false;
}

// What each byte from 0x80 on is in a code page: a small letter of names (3), a rarer one (2), a
// capital or a rare letter (1), a sign (0), a piece of a frame (-), nothing at all (x).
constexpr std::string_view cp437 = "13333333333333111313333321100000"
                                   "3333310000000000----------------"
                                   "--------------------------------"
                                   "030000000000000000000000000000-0";
constexpr std::string_view cp850 = "13333333333333111313333321130100"
                                   "3333310000000000-----1110----00-"
                                   "------31-------0111111111----01-"
                                   "131121011111210000000000000000-0";
constexpr std::string_view windows1252 = "0x00000000101x1xx000000000101x11"
                                         "00000000000000000000000000000000"
                                         "11111111111111111111111011111113"
                                         "33333333333333331333323033333212";

int WeightOf(char kind)
{
    constexpr int sign = -1;
    constexpr int frame = -3;
    constexpr int nothing = -1000;
    switch (kind) {
    case '0':
        return sign;
    case '-':
        return frame;
    case 'x':
        return nothing;
    default:
        return kind - '0';
    }
}

int Score(std::string_view kinds, const std::vector<std::string_view>& names)
{
    constexpr unsigned char firstHigh = 0x80;
    int score = 0;
    for (const std::string_view name : names)
        for (const char c : name)
            if (const auto byte = static_cast<unsigned char>(c); byte >= firstHigh)
                score += WeightOf(kinds[byte - firstHigh]);
    return score;
}

bool IsAscii(std::string_view name)
{
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

constexpr std::uint8_t madeByDos = 0;
constexpr std::uint8_t madeByNt = 11;
constexpr std::string_view utf8 = "UTF-8";

} // namespace

std::uint64_t ZipDirectorySize(std::string_view tail)
{
    const std::size_t end = EndOf(tail);
    if (end == std::string_view::npos)
        return 0;
    const std::uint32_t size = NumberAt(tail, end + 12, 4);
    return size == beyond ? 0 : size + std::uint64_t{tail.size() - end};
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
        const std::size_t nameSize = NumberAt(entries, 28, 2);
        const std::size_t extraSize = NumberAt(entries, 30, 2);
        const std::size_t whole = entrySize + nameSize + extraSize + NumberAt(entries, 32, 2);
        if (whole > entries.size())
            return {};
        constexpr std::uint32_t utf8Flag = 0x800;
        ZipName name;
        name.bytes = entries.substr(entrySize, nameSize);
        name.isUtf8 = (NumberAt(entries, 8, 2) & utf8Flag) != 0;
        name.hasUtf8 = HasUnicodeName(entries.substr(entrySize + nameSize, extraSize));
        name.madeBy = static_cast<std::uint8_t>(entries[5]);
        name.method = static_cast<std::uint16_t>(NumberAt(entries, 10, 2));
        if (const std::uint32_t bytes = NumberAt(entries, 24, 4); bytes != beyond)
            name.size = bytes;
        names.push_back(std::move(name));
        entries.remove_prefix(whole);
    }
    return names;
}

std::vector<ZipName> ReadZipDirectory(const Path& zip)
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
    return ParseZipDirectory(tail);
}

std::string_view CharsetOfNames(const std::vector<ZipName>& names)
{
    constexpr std::uint16_t stored = 0;
    constexpr std::uint16_t deflated = 8;
    std::vector<std::string_view> unknown;
    bool dos = false;
    bool spoiled = false; // unzip 6.0 takes UTF-8 of DOS for the code page of DOS
    for (const ZipName& name : names) {
        if (name.method != stored && name.method != deflated)
            return {};
        if (IsAscii(name.bytes))
            continue;
        if (name.hasUtf8 || (name.isUtf8 && !IsUtf8(name.bytes)))
            return {};
        spoiled = spoiled || (name.isUtf8 && name.madeBy == madeByDos);
        if (name.isUtf8)
            continue;
        unknown.push_back(name.bytes);
        dos = dos || name.madeBy == madeByDos || name.madeBy == madeByNt;
    }
    if (std::all_of(unknown.begin(), unknown.end(), IsUtf8))
        return dos || spoiled ? utf8 : std::string_view{};
    struct CodePage {
        std::string_view name;
        std::string_view kinds;
    };
    // Of equals the first one counts: what is usual where the zip was made.
    std::array<CodePage, 3> pages{{{"CP437", cp437}, {"CP850", cp850}, {"CP1252", windows1252}}};
    if (!dos)
        std::swap(pages.front(), pages.back());
    return std::max_element(pages.begin(), pages.end(),
                            [&](const CodePage& a, const CodePage& b) {
                                return Score(a.kinds, unknown) < Score(b.kinds, unknown);
                            })
        ->name;
}

} // namespace kestrova
