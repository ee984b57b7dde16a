#include "app/command_table.h"
#include "app/result_text.h"
#include "cli/help.h"
#include "cli/terminal_host.h"
#include "world/world.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>

namespace kestrova
{
namespace
{

using testing::World;

Arguments Parse(const std::vector<std::string>& items)
{
    return ParseArguments(items, AllOptions());
}

TEST(TerminalWords, OptionsStandBeforeOrBehindTheCommand)
{
    for (const auto& items : {std::vector<std::string>{"--home", "/h", "--json", "info", "3"},
                              std::vector<std::string>{"info", "--json", "3", "--home=/h"}}) {
        const Arguments arguments = Parse(items);
        EXPECT_EQ(arguments.wrong, "");
        EXPECT_EQ(arguments.command, "info");
        EXPECT_EQ(arguments.words, std::vector<std::string>{"3"});
        EXPECT_EQ(arguments.ValueOf("--home"), "/h");
        EXPECT_TRUE(arguments.Has("--json"));
    }
    // A value may look like an option, and behind -- nothing is one.
    const Arguments added = Parse({"add", "--name", "--json", "--", "--full"});
    EXPECT_EQ(added.ValueOf("--name"), "--json");
    EXPECT_FALSE(added.Has("--json"));
    EXPECT_EQ(added.words, std::vector<std::string>{"--full"});
    EXPECT_EQ(Parse({"info", "-"}).words, std::vector<std::string>{"-"});
    EXPECT_EQ(Parse({"add", "--note=", "x"}).ValueOf("--note"), "");
}

TEST(TerminalWords, TheWrongOneIsNamed)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"levels", "--jsn"}, "'--jsn'"},
        {{"--no-start=yes", "play"}, "'--no-start' takes no value"},
        {{"new", "--folder"}, "'--folder' needs a value"},
        {{"--yes", "levels", "--yes"}, "'--yes' stands there twice"},
        {{"info", "-5"}, "'-5'"},
    };
    for (const auto& [items, part] : cases)
        EXPECT_NE(Parse(items).wrong.find(part), std::string::npos) << Parse(items).wrong;
}

TEST(CommandRows, AgreeWithTheirUsage)
{
    std::set<std::string_view> known;
    for (const OptionRow& option : AllOptions())
        known.insert(option.name);
    for (const CommandRow& row : CommandTable()) {
        if (row.terminal.usage == Message{})
            continue;
        const std::string usage{row.terminal.usage.text};
        EXPECT_EQ(usage.substr(0, usage.find(' ')), row.terminal.word);
        for (const OptionRow& option : row.terminal.options) {
            EXPECT_TRUE(known.contains(option.name)) << option.name;
            EXPECT_NE(HelpFor(row.terminal.word, {}).find(option.name), std::string::npos) << usage;
        }
        EXPECT_EQ(FindCommand(row.terminal.word)->terminal.word, row.terminal.word);
        EXPECT_NE(HelpText().find(usage), std::string::npos);
        EXPECT_NE(HelpFor(row.terminal.word, row.terminal.verb).find(usage), std::string::npos);
    }
    EXPECT_NE(HelpFor("discs", "").find("discs create"), std::string::npos);
    EXPECT_EQ(HelpFor("discs", "verify").find("discs create"), std::string::npos);
    EXPECT_EQ(HelpFor("discs", "no verb"), HelpFor("discs", ""));
    EXPECT_EQ(HelpFor("saves", "restore"), HelpFor("saves", ""));
    EXPECT_EQ(FindCommand("plays"), nullptr);
}

TEST(TerminalText, CannotSteerTheTerminal)
{
    EXPECT_EQ(ForTerminal("a\x1b[2Jb\r\nc\x07\td\x7f"), "a[2Jb\nc\td");
    EXPECT_EQ(ForTerminal("\xE9t\xE9"), "été"); // no UTF-8
    EXPECT_EQ(ForTerminal("\xC2\x9B"
                          "31m ©"),
              "31m ©");
    EXPECT_EQ(ForTerminal("a\u202Eb\u2066c\u2028d\u2069\u200E"), "abcd\u200E");
}

TEST(TerminalText, NoNameLooksLikeALineOrAColumnOfItsOwn)
{
    World box;
    TerminalHost host;
    const Arguments arguments;
    kestrova::Run run{box.session, host, arguments};
    AddLine(run, "1\t" + OneField("a\tname\n2\tforged\x1b]0;t\x07"));
    AddText(run, "Note: ", "first\r\nMail: forged\n\n");
    EXPECT_EQ(run.text, "1\ta name 2 forged]0;t\nNote: first\n  Mail: forged\n  \n  \n");
}

TEST(TerminalText, JsonIsExactAndSteersNothing)
{
    const std::string name = "a\x1b[2J\n\x7f\u009b31m \u0080\u00a9";
    const std::string text = JsonText(Json{{"name", name}});
    EXPECT_EQ(text, "{\"name\":\"a\\u001b[2J\\n\\u007f\\u009b31m \\u0080\u00a9\"}");
    EXPECT_EQ(Json::parse(text)["name"], name);
}

} // namespace
} // namespace kestrova
