#include "help/help_reader.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t longestHelpLine = 4000;

std::vector<std::size_t> BreaksOf(std::string_view help)
{
    std::vector<std::size_t> breaks;
    std::size_t line = 0; // where it begins
    for (std::size_t i = 0; i < help.size(); ++i) {
        if (help[i] == '\n' || help[i] == '\r') {
            line = i + 1;
        } else if (i - line == longestHelpLine) {
            breaks.push_back(i);
            line = i;
        }
    }
    return breaks;
}

} // namespace

HelpReader::HelpReader(std::string help, std::string tag)
    : search(std::move(tag)), help_(std::move(help)), breaks_(BreaksOf(help_))
{
}

std::string HelpReader::Text() const
{
    std::string shown;
    shown.reserve(help_.size() + breaks_.size());
    std::size_t from = 0;
    for (const std::size_t at : breaks_) {
        shown.append(help_, from, at - from) += '\n';
        from = at;
    }
    shown.append(help_, from);
    return FromWindows1252(shown);
}

std::size_t HelpReader::ShownPlace(std::size_t place) const
{
    const auto before = std::upper_bound(breaks_.begin(), breaks_.end(), place);
    return place + static_cast<std::size_t>(before - breaks_.begin());
}

std::size_t HelpReader::PlaceOf(std::size_t shown) const
{
    // The break of number n stands at breaks_[n] + n in what is shown.
    std::size_t low = 0;
    std::size_t high = breaks_.size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (breaks_[middle] + middle < shown)
            low = middle + 1;
        else
            high = middle;
    }
    return shown - low;
}

std::string HelpReader::Wanted() const
{
    const std::string wanted{Trim(search)};
    return FitsWindows1252(wanted) ? ToWindows1252(wanted) : std::string{};
}

void HelpReader::Select(std::optional<std::size_t> hit, std::size_t length)
{
    if (!hit)
        return;
    foundAt_ = *hit;
    selection_ = HelpWord{*hit, length};
}

void HelpReader::Find()
{
    const std::string wanted = Wanted();
    Select(FindInHelp(help_, wanted), wanted.size());
}

void HelpReader::Next()
{
    constexpr std::size_t behind = 2; // letters behind the last hit's first one
    const std::string wanted = Wanted();
    Select(FindInHelp(help_, wanted, foundAt_ + behind), wanted.size());
}

void HelpReader::Previous()
{
    const std::string wanted = Wanted();
    Select(FindInHelpBefore(help_, wanted, foundAt_), wanted.size());
}

void HelpReader::Pick(std::size_t caret)
{
    const auto word = HelpWordAt(help_, caret);
    if (!word)
        return;
    Select(word->from, word->length);
    search = FromWindows1252(Trim(std::string_view{help_}.substr(word->from, word->length)));
}

void HelpReader::Jump(const std::string& topic)
{
    search = topic;
    Find();
}

} // namespace kestrova
