#include "help/help_reader.h"

#include "core/text.h"

namespace kestrova
{

HelpReader::HelpReader(std::string help, std::string tag)
    : search(std::move(tag)), help_(std::move(help))
{
}

std::string HelpReader::Text() const
{
    return FromWindows1252(help_);
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
