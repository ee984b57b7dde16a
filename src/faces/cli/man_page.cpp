#include "cli/man_page.h"

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

} // namespace

std::string AsRoff(std::string_view markdown)
{
    std::string page;
    bool example = false;
    bool begins = true; // a paragraph, with the next words
    bool heading = false;
    for (std::size_t from = 0; from < markdown.size();) {
        const std::size_t end = std::min(markdown.find('\n', from), markdown.size());
        const std::string_view line = markdown.substr(from, end - from);
        from = end + 1;
        const bool indented = line.starts_with("    ");
        if (example && !indented)
            page += ".fi\n.RE\n";
        else if (!example && indented)
            page += ".PP\n.RS 4\n.nf\n"; // not shown
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
        } else if (line.starts_with("## ")) {
            page += ".SH " + RoffWords(line.substr(3));
            begins = false;
        } else if (line.starts_with("- ")) {
            page += ".IP \\(bu 2\n" + RoffWords(line.substr(2)); // not shown
        } else {
            page += (begins ? ".IP\n" : "") + RoffWords(line);
            begins = false;
        }
    }
    return example ? page + ".fi\n.RE\n" : page;
}

std::string ManPage(std::string_view version)
{
    return ".TH KESTROVACTL 1 \"\" \"kestrova " + std::string{version} + // not shown
           "\"\n.nh\n.ad l\n" +                                          // not shown
           AsRoff(GetMsg(Msg::ManHead, {"\n", "\n", "\n"}) + HelpOfCommands() +
                  GetMsg(Msg::ManFoot, {"\n", "\n", "\n"}));
}

} // namespace kestrova
