#include "formats/disc_note.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

DiscNote TwoDiscs()
{
    const std::string hash(32, 'a');
    DiscNote note;
    note.folder = "Levels \xFF%";
    note.Put({2, "Kestrova #2", 734'003'200, "/isos/Żółw 02.iso", 1'700'000'000, {}});
    note.Put({1,
              "Kestrova #1",
              0,
              {},
              0,
              {{7, true, {{"data/l\xFE.tr4", 5'000'000'000, hash}}}, {9, false, {}}}});
    return note;
}

std::string Replaced(std::string text, std::string_view what, std::string_view with)
{
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return text.replace(at, what.size(), with);
}

} // namespace

TEST(DiscNote, ComesBackAsItWasWrittenAndFindsDiscsAndLevels)
{
    const auto back = ParseDiscNote(FormatDiscNote(TwoDiscs()));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, TwoDiscs());
    ASSERT_NE(back->Find(1), nullptr);
    ASSERT_NE(back->Find(1)->Find(7), nullptr);
    EXPECT_TRUE(back->Find(1)->Find(7)->verified);
    EXPECT_EQ(back->Find(2)->Find(7), nullptr);
    EXPECT_EQ(back->Find(3), nullptr);
    DiscNote cut = *back;
    cut.Put({1, "again", 0, {}, 0, {}});
    cut.CutAfter(1);
    ASSERT_EQ(cut.discs.size(), 1U);
    EXPECT_EQ(cut.discs[0].label, "again");
}

TEST(DiscNote, IsRefusedWhereItIsCutOrCouldLeadElsewhere)
{
    const std::string text = FormatDiscNote(TwoDiscs());
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParseDiscNote(std::string_view{text}.substr(0, length))) << length;
    const std::string hash(32, 'a');
    const std::pair<std::string_view, std::string_view> bad[] = {
        {"data/l", "../l"},
        {"data/l", "/l"},
        {"data/l", "data//l"},
        {"data/l", "./l"},
        {"\"code\":9", "\"code\":7"},
        {hash, "../../etc"},
        {"5000000000", "-1"},
        {"\"number\":2", "\"number\":1"},
        {"\"number\":1", "\"number\":0"},
        {"/isos", "isos"},
        {"734003200", "-734003200"},
        {"\"version\":1", "\"version\":2"}};
    for (const auto& [what, with] : bad)
        EXPECT_FALSE(ParseDiscNote(Replaced(text, what, with))) << with;
}

} // namespace kestrova::testing
