#include "cli/help.h"

#include "cli/command_table.h"
#include "words/cli.h"

namespace kestrova
{

namespace
{

void Add(std::string& text, Message row)
{
    text += GetMsg(row, {"\n", "\n", "\n", "\n", "\n", "\n"}) + "\n";
}

} // namespace

std::string HelpText()
{
    std::string text;
    Add(text, Msg::HelpHead);
    for (const CommandRow& row : CommandTable())
        text += "  " + std::string{row.usage.text} + "\n      " +
                std::string{row.summary.text} + "\n";
    Add(text, Msg::HelpFoot);
    return text;
}

std::string HelpFor(const CommandRow& row)
{
    std::string text = GetMsg(Msg::UsageLine, {row.usage.text}) + "\n";
    text += std::string{row.summary.text} + "\n";
    if (row.json != Message{})
        text += GetMsg(Msg::HelpJson) + std::string{row.json.text} + "\n";
    return text;
}

std::string HelpAsMarkdown()
{
    std::string text;
    Add(text, Msg::MarkdownHead);
    text += "\n";
    for (const Message row : {Msg::MarkdownWhere, Msg::MarkdownAnswers, Msg::MarkdownLocks})
        Add(text, row);
    for (const CommandRow& row : CommandTable()) {
        text += "\n### `" + std::string{row.usage.text} + "`\n\n";
        text += std::string{row.summary.text} + "\n";
        if (row.json != Message{})
            text += "\n" + GetMsg(Msg::HelpJson) + std::string{row.json.text} + "\n";
    }
    text += "\n";
    Add(text, Msg::MarkdownFoot);
    return text;
}

} // namespace kestrova
