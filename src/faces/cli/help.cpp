#include "cli/help.h"

#include "app/command_table.h"
#include "words/cli.h"

namespace kestrova
{

namespace
{

void Add(std::string& text, Message row)
{
    text += GetMsg(row, {"\n", "\n", "\n", "\n", "\n", "\n"}) + "\n";
}

/// The row of a word of the terminal that has the words of its manual.
bool IsHead(const CommandRow& row)
{
    return row.terminal.usage != Message{};
}

} // namespace

std::string HelpText()
{
    std::string text;
    Add(text, Msg::HelpHead);
    for (const CommandRow& row : CommandTable())
        if (IsHead(row))
            text += "  " + std::string{row.terminal.usage.text} + "\n      " +
                    std::string{Shown(row.terminal.summary)} + "\n";
    Add(text, Msg::HelpFoot);
    return text;
}

std::string HelpFor(std::string_view word, std::string_view verb)
{
    std::string text;
    for (const CommandRow* row : RowsThatTell(word, verb)) {
        text += text.empty() ? "" : "\n";
        text += GetMsg(Msg::UsageLine, {row->terminal.usage.text}) + "\n";
        text += std::string{Shown(row->terminal.summary)} + "\n";
        if (row->terminal.json != Message{})
            text += GetMsg(Msg::HelpJson) + std::string{Shown(row->terminal.json)} + "\n";
    }
    return text;
}

std::string HelpOfCommands()
{
    std::string text;
    for (const Message row : {Msg::MarkdownAll, Msg::MarkdownWhere, Msg::MarkdownAnswers,
                              Msg::MarkdownLocks, Msg::MarkdownTopics})
        Add(text, row);
    for (const CommandRow& row : CommandTable()) {
        if (!IsHead(row))
            continue;
        text += "\n### `" + std::string{row.terminal.usage.text} + "`\n\n";
        text += std::string{Shown(row.terminal.summary)} + "\n";
        if (row.terminal.json != Message{})
            text += "\n" + GetMsg(Msg::HelpJson) + std::string{Shown(row.terminal.json)} + "\n";
    }
    text += "\n";
    Add(text, Msg::MarkdownFoot);
    return text;
}

std::string HelpAsMarkdown()
{
    std::string text;
    Add(text, Msg::MarkdownHead);
    return text + HelpOfCommands();
}

} // namespace kestrova
