#include "formats/help_text.h"

#include "core/text.h"

#include <gtest/gtest.h>

namespace kestrova
{

namespace
{

TEST(HelpText, IsSearchedForwardsAndBackwardsWithoutRegardToCase)
{
    const std::string help = ToWindows1252("#1# Été [Play] ÉTÉ play #2#");
    EXPECT_EQ(FindInHelp(help, ToWindows1252("été")), 4u);
    EXPECT_EQ(FindInHelp(help, ToWindows1252("été"), 5), 15u);
    EXPECT_EQ(FindInHelp(help, "#2#"), 24u);
    EXPECT_EQ(FindInHelp(help, "PLAY", 20), std::nullopt);
    EXPECT_EQ(FindInHelp(help, ""), std::nullopt);
    EXPECT_EQ(FindInHelp(help, "#1#", 1'000), std::nullopt);
    EXPECT_EQ(FindInHelpBefore(help, "play", 19), 9u);
    EXPECT_EQ(FindInHelpBefore(help, "play", 9), std::nullopt);
    EXPECT_EQ(FindInHelpBefore(help, "", 9), std::nullopt);
}

/// The word at the first `|`, which is taken out.
std::string Picked(std::string help)
{
    const std::size_t caret = help.find('|');
    help.erase(caret, 1);
    const auto word = HelpWordAt(help, caret);
    return word ? help.substr(word->from, word->length) : "(none)";
}

TEST(HelpText, AMousePicksAWordOrABracketedPhrase)
{
    EXPECT_EQ(Picked("see [Play a le|vel] now"), "Play a level");
    EXPECT_EQ(Picked("see {Play |a level} now"), "Play a level");
    EXPECT_EQ(Picked("see [Play a level|] now"), "Play a level");
    EXPECT_EQ(Picked("see |[Play a level] now"), "Play a level");
    EXPECT_EQ(Picked("one tw|o three"), "two");
    EXPECT_EQ(Picked("(a) tw|o, three"), " two"); // behind a closing bracket, with its blank
    EXPECT_EQ(Picked("say \"tw|o three\""), "two");
    EXPECT_EQ(Picked("fir|st word"), "first");
    EXPECT_EQ(Picked("last wo|rd"), "word");
    // The bracket counts up to thirty letters away; farther off the word alone does.
    const std::string far(26, 'x');
    EXPECT_EQ(Picked("[a " + far + " |bc d] e"), "a " + far + " bc d");
    EXPECT_EQ(Picked("[ab " + far + " |bc d] e"), "bc");
    // What has no mark in reach begins where the text does, and ends there.
    const std::string longWord(100, 'y');
    EXPECT_EQ(Picked("a " + longWord + "|z b"), "a " + longWord + "z");
    EXPECT_EQ(Picked("a |" + longWord + " b"), longWord + " b");
    EXPECT_EQ(Picked("|"), "(none)");
    EXPECT_EQ(Picked("  |  "), "(none)");
    EXPECT_EQ(Picked("|]"), "]");
    EXPECT_EQ(Picked("ab|"), "ab");
    EXPECT_EQ(HelpWordAt("ab cd", 1'000), (HelpWord{3, 2}));
}

TEST(HelpText, ItsBracketsAreItsIndex)
{
    const HelpTopics topics =
        TopicsOf("[Play] {Keys} text [Play] {KEYS} {Others} ] } [two [three] {a] b} [open {x");
    EXPECT_EQ(topics.main, (std::vector<std::string>{"[Play]", "[Play]", "[three]"}));
    EXPECT_EQ(topics.sub, (std::vector<std::string>{"{Keys}", "{Others}", "{a] b}"}));
    EXPECT_EQ(TagsOf("#2# #18# #x# ## #2##3# #12345# #4"), (std::vector<int>{2, 3, 18}));
}

TEST(HelpText, ManyMegabytesOfMarksTakeTheirLengthAndNoMore)
{
    for (const char* marks : {"[", "{", "[]", "{}", "[ {", "#1"}) {
        std::string help;
        while (help.size() < 2'000'000)
            help.append(marks);
        EXPECT_LE(TopicsOf(help).main.size(), 100'000u);
        EXPECT_LE(TagsOf(help).size(), 1u);
        EXPECT_TRUE(HelpWordAt(help, help.size() / 2));
    }
}

} // namespace

} // namespace kestrova
