#include "help/help_topics.h"

#include "core/text.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

constexpr std::size_t longestTopic = 200;

/// A line that begins with a topic in brackets: where it stands in the text, and the topic.
struct Heading {
    std::size_t at = 0;
    bool main = false;
    std::string name; ///< UTF-8, without brackets
};

std::vector<Heading> HeadingsOf(std::string_view help)
{
    std::vector<Heading> headings;
    for (std::size_t line = 0; line < help.size();) {
        const std::size_t end = std::min(help.find('\n', line), help.size());
        const char first = help[line];
        const std::size_t close =
            first == '[' || first == '{' ? help.find(first == '[' ? ']' : '}', line) : end;
        if (close < end && close - line <= longestTopic)
            headings.push_back(
                {line, first == '[', FromWindows1252(help.substr(line + 1, close - line - 1))});
        line = end + 1;
    }
    return headings;
}

/// Letters that must be typed otherwise to make one text of the other.
std::size_t Distance(std::string_view one, std::string_view other)
{
    std::vector<std::size_t> row(other.size() + 1);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = i;
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t before = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j)
            before = std::exchange(row[j + 1], std::min({row[j + 1] + 1, row[j] + 1,
                                                         before + (one[i] == other[j] ? 0 : 1)}));
    }
    return row.back();
}

/// How far a topic is from what was written: 0 for one that holds it, else that of its nearest word
/// or of the whole; no value for what has nothing to do with it.
std::optional<std::size_t> FarFrom(const std::string& topic, const std::string& wanted)
{
    if (topic.find(wanted) != std::string::npos)
        return 0;
    std::size_t nearest = Distance(topic, wanted);
    for (std::size_t from = 0; from < topic.size();) {
        const std::size_t end = std::min(topic.find(' ', from), topic.size());
        nearest = std::min(nearest, Distance(topic.substr(from, end - from), wanted));
        from = end + 1;
    }
    constexpr std::size_t lettersToAnError = 3;
    if (nearest > std::max<std::size_t>(1, wanted.size() / lettersToAnError))
        return std::nullopt;
    return nearest + 1;
}

std::string WithoutTags(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t end = text.find_first_not_of("0123456789", i + 1);
        if (text[i] == '#' && end != std::string_view::npos && end > i + 1 && text[end] == '#') {
            i = end;
            plain.resize(Trim(plain).empty() ? plain.size() : plain.find_last_not_of(' ') + 1);
        } else {
            plain += text[i];
        }
    }
    return plain;
}

std::string SectionAt(std::string_view help, const std::vector<Heading>& headings,
                      std::size_t number)
{
    const Heading& heading = headings[number];
    std::size_t end = help.size();
    for (std::size_t i = number + 1; i < headings.size() && end == help.size(); ++i)
        if (headings[i].main || !heading.main)
            end = headings[i].at;
    std::string text;
    for (std::size_t line = heading.at; line < end;) {
        const std::size_t next = std::min(help.find('\n', line), end);
        std::string words{help.substr(line, next - line)};
        if (number < headings.size() && headings[number].at == line) {
            words.erase(words.find_first_of("]}"), 1).erase(0, 1);
            ++number;
        }
        text += WithoutTags(words) + '\n';
        line = next + 1;
    }
    text.resize(text.find_last_not_of(" \n") + 1);
    return FromWindows1252(text) + '\n';
}

} // namespace

std::optional<std::string> HelpOf(std::string_view help, const std::string& name)
{
    const std::vector<Heading> headings = HeadingsOf(help);
    const std::string wanted = FoldCase(Trim(name));
    if (wanted.empty())
        return std::nullopt;
    std::vector<std::size_t> holding;
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const std::string topic = FoldCase(headings[i].name);
        if (topic == wanted)
            return SectionAt(help, headings, i);
        if (topic.find(wanted) != std::string::npos)
            holding.push_back(i);
    }
    if (holding.size() != 1)
        return std::nullopt;
    return SectionAt(help, headings, holding.front());
}

std::vector<std::string> TopicsNear(std::string_view help, const std::string& name,
                                    std::size_t most)
{
    const std::string wanted = FoldCase(Trim(name)).substr(0, longestTopic);
    std::vector<std::pair<std::size_t, std::string>> found;
    if (!wanted.empty())
        for (const Heading& heading : HeadingsOf(help))
            if (const auto far = FarFrom(FoldCase(heading.name), wanted))
                found.emplace_back(*far, heading.name);
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    std::vector<std::string> names;
    for (std::size_t i = 0; i < found.size() && i < most; ++i)
        names.push_back(std::move(found[i].second));
    return names;
}

std::string ListOfTopics(std::string_view help)
{
    std::string list;
    for (const Heading& heading : HeadingsOf(help))
        list += (heading.main ? "" : "  ") + heading.name + '\n';
    return list;
}

std::string Wrapped(std::string_view text, std::size_t width)
{
    std::string result;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        const std::string_view line = text.substr(from, end - from);
        from = end + 1;
        std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
        if (line.substr(indent).starts_with("- "))
            indent += 2;
        std::size_t column = 0;
        for (std::size_t at = 0; at < line.size();) {
            const std::size_t word = std::min(line.find_first_not_of(' ', at), line.size());
            const std::size_t after = std::min(line.find(' ', word), line.size());
            const std::string_view letters = line.substr(word, after - word);
            const auto length = static_cast<std::size_t>(std::count_if(
                letters.begin(), letters.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
            const std::size_t blanks = word - at;
            if (column > indent && column + blanks + length > width && length > 0) {
                result += '\n' + std::string(indent, ' ');
                column = indent;
            } else {
                result.append(blanks, ' ');
                column += blanks;
            }
            result += letters;
            column += length;
            at = after;
        }
        result += '\n';
    }
    return result;
}

} // namespace kestrova
