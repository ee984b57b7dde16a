#include "formats/help_text.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_set>

namespace kestrova
{

namespace
{

constexpr std::size_t reach = 30;
constexpr std::size_t mostTopics = 100'000;
constexpr std::string_view delimiters = "{}[] .=;:,()\"\r\n"; // not shown

/// Each byte of the code page with its case folded, where the code page has that letter.
std::array<char, 256> FoldedBytes()
{
    std::array<char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string letter(1, static_cast<char>(i));
        const std::string folded = FoldCase(FromWindows1252(letter));
        table[i] = FitsWindows1252(folded) ? ToWindows1252(folded).front() : letter.front();
    }
    return table;
}

char Folded(char byte)
{
    static const std::array<char, 256> table = FoldedBytes();
    return table[static_cast<unsigned char>(byte)];
}

bool SameLetter(char a, char b)
{
    return Folded(a) == Folded(b);
}

/// Where a word begins, and the mark that ends it.
struct Beginning {
    std::size_t at = 0;
    char closing = '\0'; ///< none: any delimiter
};

Beginning WalkLeft(std::string_view help, std::size_t caret)
{
    std::optional<std::size_t> fallBack;
    const std::size_t end = caret > reach ? caret - reach : 0;
    for (std::size_t i = caret; i > end; --i) {
        const char mark = help[i - 1];
        if (mark == '{' || mark == '[')
            return {i, mark == '{' ? '}' : ']'};
        if (mark == '}' || mark == ']' || mark == ')' || mark == '"')
            return {i, '\0'};
        if (!fallBack && delimiters.find(mark) != std::string_view::npos)
            fallBack = i;
    }
    return {fallBack.value_or(0), '\0'};
}

std::size_t WalkRight(std::string_view help, std::size_t caret, char closing)
{
    const std::size_t end = std::min(help.size(), caret + 1 + reach);
    for (std::size_t i = caret + 1; i < end; ++i)
        if (closing != '\0' ? help[i] == closing
                            : delimiters.find(help[i]) != std::string_view::npos)
            return i;
    return help.size();
}

} // namespace

std::optional<std::size_t> FindInHelp(std::string_view help, std::string_view what,
                                      std::size_t from)
{
    if (what.empty() || from >= help.size())
        return std::nullopt;
    const auto found = std::search(help.begin() + static_cast<std::ptrdiff_t>(from), help.end(),
                                   what.begin(), what.end(), SameLetter);
    if (found == help.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - help.begin());
}

std::optional<std::size_t> FindInHelpBefore(std::string_view help, std::string_view what,
                                            std::size_t end)
{
    const std::string_view before = help.substr(0, end);
    const auto found =
        std::find_end(before.begin(), before.end(), what.begin(), what.end(), SameLetter);
    if (what.empty() || found == before.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - before.begin());
}

std::optional<HelpWord> HelpWordAt(std::string_view help, std::size_t caret)
{
    if (Trim(help).empty())
        return std::nullopt;
    std::size_t place = std::min(caret, help.size() - 1);
    if (help[place] == ']' && place > 0)
        --place;
    else if (help[place] == '[' && place + 1 < help.size())
        ++place;
    const Beginning beginning = WalkLeft(help, place);
    return HelpWord{beginning.at, WalkRight(help, place, beginning.closing) - beginning.at};
}

HelpTopics TopicsOf(std::string_view help)
{
    HelpTopics topics;
    std::unordered_set<std::string> known;
    std::optional<std::size_t> open;
    for (std::size_t i = 0; i < help.size(); ++i) {
        const char mark = help[i];
        if (mark == '[' || mark == '{')
            open = i;
        const bool closesMain = mark == ']' && open && help[*open] == '[';
        const bool closesSub = mark == '}' && open && help[*open] == '{';
        if (!closesMain && !closesSub)
            continue;
        const std::string_view text = help.substr(*open, i + 1 - *open);
        open.reset();
        if (closesMain && topics.main.size() < mostTopics)
            topics.main.emplace_back(text);
        if (closesSub && topics.sub.size() < mostTopics) {
            std::string key{text};
            std::transform(key.begin(), key.end(), key.begin(), Folded);
            if (known.insert(std::move(key)).second)
                topics.sub.emplace_back(text);
        }
    }
    return topics;
}

std::vector<int> TagsOf(std::string_view help)
{
    constexpr std::size_t mostDigits = 4;
    std::set<int> tags;
    for (std::size_t i = help.find('#'); i != std::string_view::npos; i = help.find('#', i + 1)) {
        const std::size_t end = help.find_first_not_of("0123456789", i + 1);
        if (end != std::string_view::npos && help[end] == '#' && end > i + 1 &&
            end - i <= mostDigits + 1)
            tags.insert(LeadingNumber(help.substr(i + 1, end - i - 1)));
    }
    return {tags.begin(), tags.end()};
}

} // namespace kestrova
