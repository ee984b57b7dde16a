#include "cli/help.h"

#include "cli/command_table.h"

namespace kestrova
{

namespace
{

void Add(std::string& text, Msg row)
{
    text += GetMsg(row, {"\n", "\n", "\n", "\n", "\n", "\n"}) + "\n";
}

} // namespace

std::string HelpText()
{
    std::string text;
    Add(text, Msg::HelpHead);
    for (const CommandRow& row : CommandTable())
        text += "  " + std::string{RowText(row.usage)} + "\n      " +
                std::string{RowText(row.summary)} + "\n";
    Add(text, Msg::HelpFoot);
    return text;
}

std::string HelpFor(const CommandRow& row)
{
    std::string text = GetMsg(Msg::UsageLine, {RowText(row.usage)}) + "\n";
    text += std::string{RowText(row.summary)} + "\n";
    if (row.json != Msg::BeforeFirst)
        text += GetMsg(Msg::HelpJson) + std::string{RowText(row.json)} + "\n";
    return text;
}

std::string HelpAsMarkdown()
{
    std::string text;
    Add(text, Msg::MarkdownHead);
    text += "\n";
    for (const Msg row : {Msg::MarkdownWhere, Msg::MarkdownAnswers, Msg::MarkdownLocks})
        Add(text, row);
    for (const CommandRow& row : CommandTable()) {
        text += "\n### `" + std::string{RowText(row.usage)} + "`\n\n";
        text += std::string{RowText(row.summary)} + "\n";
        if (row.json != Msg::BeforeFirst)
            text += "\n" + GetMsg(Msg::HelpJson) + std::string{RowText(row.json)} + "\n";
    }
    text += "\n";
    Add(text, Msg::MarkdownFoot);
    return text;
}

} // namespace kestrova
