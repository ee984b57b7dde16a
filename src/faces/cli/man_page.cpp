#include "cli/man_page.h"

#include "app/command_table.h"
#include "cli/help.h"
#include "words/cli.h"

namespace kestrova
{

namespace
{

/// A line of words: what would steer the page is a letter, and `code` is bold.
std::string RoffWords(std::string_view words)
{
    std::string text;
    if (!words.empty() && (words.front() == '.' || words.front() == '\''))
        text = "\\&"; // not shown
    bool bold = false;
    for (const char letter : words) {
        if (letter == '`') {
            text += bold ? "\\fR" : "\\fB"; // not shown
            bold = !bold;
        } else if (letter == '\\') {
            text += "\\e"; // not shown
        } else if (letter == '-') {
            text += "\\-"; // not shown
        } else {
            text += letter;
        }
    }
    return text + '\n';
}

std::string PageHead(std::string_view name, std::string_view version)
{
    return ".TH " + std::string{name} + " 1 \"\" \"kestrova " + std::string{version} + // not shown
           "\"\n.nh\n.ad l\n";                                                         // not shown
}

/// The commands of a menu, an item each: keys, and the words of the terminal.
std::string CommandsOf(std::string_view menu)
{
    std::string items;
    for (const CommandRow& row : CommandTable()) {
        if (row.window.control.empty() || row.window.menu != menu)
            continue;
        items += "- `" + std::string{Shown(row.window.caption)} + '`';
        if (!row.window.keys.empty())
            items += GetMsg(Msg::ManKeys, {row.window.keys});
        if (!row.terminal.word.empty()) {
            std::string words{row.terminal.word};
            if (!row.terminal.verb.empty())
                words += ' ' + std::string{row.terminal.verb};
            items += GetMsg(Msg::ManInTerminal, {words});
        }
        items += '\n';
    }
    return items;
}

} // namespace

std::string AsRoff(std::string_view markdown)
{
    std::string page;
    bool example = false;
    bool begins = true; // a paragraph, with the next words
    bool heading = false;
    bool inItem = false; // its paragraphs are indented
    for (std::size_t from = 0; from < markdown.size();) {
        const std::size_t end = std::min(markdown.find('\n', from), markdown.size());
        const std::string_view line = markdown.substr(from, end - from);
        from = end + 1;
        const bool indented = line.starts_with("    ");
        if (example && !indented)
            page += ".fi\n.RE\n";
        else if (!example && indented)
            page += heading ? ".RS 4\n.nf\n" : ".PP\n.RS 4\n.nf\n"; // not shown
        example = indented;
        if (line.empty()) {
            begins = !heading;
            continue;
        }
        heading = line.starts_with("##");
        if (indented) {
            page += RoffWords(line.substr(4));
        } else if (line.starts_with("### ")) {
            page += ".TP\n" + RoffWords(line.substr(4));
            begins = false;
            inItem = true;
        } else if (line.starts_with("## ")) {
            page += ".SH " + RoffWords(line.substr(3));
            begins = false;
            inItem = false;
        } else if (line.starts_with("- ")) {
            page += ".IP \\(bu 2\n" + RoffWords(line.substr(2)); // not shown
        } else {
            page += (!begins ? "" : inItem ? ".IP\n" : ".PP\n") + RoffWords(line);
            begins = false;
        }
    }
    return example ? page + ".fi\n.RE\n" : page;
}

std::string ManPage(std::string_view version)
{
    return PageHead("KESTROVACTL", version) +
           AsRoff(GetMsg(Msg::ManHead, {"\n", "\n", "\n"}) + HelpOfCommands() +
                  GetMsg(Msg::ManFoot, {"\n", "\n", "\n"}));
}

std::string WindowsManPage(std::string_view version)
{
    std::string menus;
    for (const MenuRow& menu : MenuTable())
        if (const std::string commands = CommandsOf(menu.name); !commands.empty())
            menus += "\n" + GetMsg(Msg::ManMenu, {Shown(menu.caption)}) + "\n" + commands;
    return PageHead("KESTROVA", version) +
           AsRoff(GetMsg(Msg::ManWindowsHead) + GetMsg(Msg::ManWindowsOptions) + menus +
                  GetMsg(Msg::ManWindowsFoot));
}

} // namespace kestrova
