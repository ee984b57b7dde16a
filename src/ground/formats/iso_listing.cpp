#include "formats/iso_listing.h"

#include "core/text.h"
#include "words/formats.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kestrova
{

namespace
{

constexpr std::array<std::string_view, 12> monthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// The first word, which goes off the text.
std::string_view WordAt(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

template <class Take> Status EachListed(std::string_view text, const Take& take)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (Status taken = take(line); !taken)
            return taken;
    }
    return {};
}

/// What stands in front of the name, in both tools' lines: rights, three numbers, size, month, day,
/// and a last word, a year or a time. None for a line of another kind.
struct LineHead {
    DiscEntry file{};
    std::string_view last{};
    std::string_view rest{};
    bool monthIsNone = false;
};

std::optional<LineHead> HeadOf(std::string_view line)
{
    constexpr std::size_t rightsLength = 10;
    LineHead head;
    const std::string_view rights = WordAt(line);
    if (rights.size() < rightsLength || (rights[0] != 'd' && rights[0] != '-'))
        return {};
    head.file.isFolder = rights[0] == 'd';
    for (int i = 0; i < 3; ++i)
        if (WordAt(line).empty())
            return {};
    const auto size = WholeNumber<std::uint64_t>(WordAt(line));
    const std::string_view month = WordAt(line);
    const auto day = WholeNumber<int>(WordAt(line));
    head.last = WordAt(line);
    if (!size || !day || *day < 1 || *day > 31)
        return {};
    head.file.size = *size;
    head.file.day = *day;
    const auto found = std::find(monthNames.begin(), monthNames.end(), month);
    head.monthIsNone = found == monthNames.end();
    head.file.month = static_cast<int>(found - monthNames.begin()) + 1;
    head.rest = line;
    return head;
}

std::optional<int> YearIn(std::string_view word)
{
    const auto year = WholeNumber<int>(word);
    return year && *year >= 0 && *year < 10'000 ? year : std::nullopt;
}

Failure NoMonth()
{
    return InWords(ErrorCode::Damaged, GetMsg(Msg::ErrorScanningMonth));
}

/// A name as a shell would read it: pieces in single or double quotes.
std::optional<std::string> Unquoted(std::string_view text)
{
    text = Trim(text);
    if (text.empty())
        return {};
    std::string name;
    while (!text.empty()) {
        const char quote = text.front();
        const std::size_t end = text.find(quote, 1);
        if ((quote != '\'' && quote != '"') || end == std::string_view::npos)
            return {};
        name += text.substr(1, end - 1);
        text.remove_prefix(end + 1);
    }
    return name;
}

std::size_t DepthOf(std::string_view path)
{
    return static_cast<std::size_t>(std::count(path.begin(), path.end(), '/'));
}

/// Sorts a folder in front of what is in it, and in one folder its folders before its files.
std::string TreeKeyOf(const DiscEntry& file)
{
    std::string key;
    std::string_view rest = std::string_view{file.path}.substr(1);
    for (bool isLast = false; !isLast;) {
        const std::size_t slash = rest.find('/');
        isLast = slash == std::string_view::npos;
        key += isLast && !file.isFolder ? '\2' : '\1';
        key.append(rest.substr(0, slash)) += '\0';
        rest.remove_prefix(isLast ? rest.size() : slash + 1);
    }
    return key;
}

} // namespace

std::vector<std::string> ParseIsoinfoPaths(std::string_view text)
{
    std::vector<std::string> paths;
    (void)EachListed(text, [&](std::string_view line) -> Status { // nothing in it fails
        line = TrimEnd(line);
        if (line.starts_with('/') && line.size() > 1)
            paths.push_back(FromWindows1252(line));
        return {};
    });
    return paths;
}

Result<std::vector<DiscEntry>> ParseIsoinfoListing(std::string_view text)
{
    constexpr std::string_view head = "Directory listing of "; // not shown
    std::vector<DiscEntry> files;
    std::string folder = "/";
    const Status read = EachListed(text, [&](std::string_view line) -> Status {
        if (line.starts_with(head)) {
            folder = FromWindows1252(TrimEnd(line.substr(head.size())));
            if (!folder.starts_with('/'))
                folder.insert(0, 1, '/');
            if (!folder.ends_with('/'))
                folder += '/';
            return {};
        }
        auto entry = HeadOf(line);
        if (!entry)
            return {};
        const std::size_t bracket = entry->rest.find("] ");
        if (bracket == std::string_view::npos)
            return {};
        std::string_view name = entry->rest.substr(bracket + 2);
        if (name.starts_with(' '))
            name.remove_prefix(1);
        if (name.ends_with(' '))
            name.remove_suffix(1);
        if (name.empty() || name == "." || name == "..")
            return {};
        if (entry->monthIsNone)
            return NoMonth();
        entry->file.year = YearIn(entry->last).value_or(0);
        entry->file.path = folder + FromWindows1252(name);
        files.push_back(std::move(entry->file));
        return {};
    });
    if (!read)
        return read.Error();
    return files;
}

Result<std::vector<DiscEntry>> ParseXorrisoListing(std::string_view text, int thisYear,
                                                   int thisMonth)
{
    std::vector<DiscEntry> files;
    const Status read = EachListed(text, [&](std::string_view line) -> Status {
        auto entry = HeadOf(line);
        if (!entry)
            return {};
        auto name = Unquoted(entry->rest);
        if (!name || !name->starts_with('/') || name->size() == 1)
            return {};
        if (entry->monthIsNone)
            return NoMonth();
        const bool isTime = entry->last.find(':') != std::string_view::npos;
        const int recent = entry->file.month > thisMonth ? thisYear - 1 : thisYear;
        entry->file.year = isTime ? recent : YearIn(entry->last).value_or(0);
        entry->file.path = Readable(*name);
        files.push_back(std::move(entry->file));
        return {};
    });
    if (!read)
        return read.Error();
    return files;
}

std::string FlatListOf(const std::vector<DiscEntry>& files)
{
    std::string list;
    for (const DiscEntry& file : files)
        list.append(file.path).append(lineBreak);
    return list;
}

std::string TreeListOf(const std::vector<DiscEntry>& files)
{
    std::vector<std::pair<std::string, const DiscEntry*>> order;
    order.reserve(files.size());
    for (const DiscEntry& file : files)
        order.emplace_back(TreeKeyOf(file), &file);
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::string list;
    for (const auto& [key, file] : order) {
        list.append(2 * (DepthOf(file->path) - 1), ' ');
        list.append(file->path, file->path.rfind('/') + 1).append(file->isFolder ? "/" : "");
        list += lineBreak;
    }
    return list;
}

std::string ReferenceListOf(const std::vector<DiscEntry>& files)
{
    std::string list;
    for (const DiscEntry& file : files) {
        list += file.path;
        if (file.isFolder)
            list += "\t--\t--";
        else
            list.append("\t")
                .append(std::to_string(file.size))
                .append("\t")
                .append(DayText(file.day, file.month, file.year));
        list += lineBreak;
    }
    return list;
}

std::string DayText(int day, int month, int year)
{
    return ZeroPadded(day, 2) + "/" + ZeroPadded(month, 2) + "/" + ZeroPadded(year, 4);
}

} // namespace kestrova
