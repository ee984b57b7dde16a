#include "core/text.h"
#include "help/help_file.h"
#include "help/help_index.h"
#include "help/help_reader.h"
#include "help/help_topics.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// What is selected.
std::string Marked(const HelpReader& reader)
{
    const auto& selection = reader.Selection();
    return selection ? FromWindows1252(reader.Help().substr(selection->from, selection->length))
                     : "(nothing)";
}

TEST(HelpReader, JumpsSearchesAndPicks)
{
    HelpReader reader{ToWindows1252("#1# Été [Play a level] xx été #2# play"), "#2#"};
    EXPECT_EQ(Marked(reader), "(nothing)");
    reader.Find();
    EXPECT_EQ(Marked(reader), "#2#");
    reader.search = "  été ";
    reader.Find();
    EXPECT_EQ(Marked(reader), "Été");
    reader.Next();
    EXPECT_EQ(Marked(reader), "été");
    const auto last = reader.Selection();
    reader.Next(); // no further hit
    EXPECT_EQ(reader.Selection(), last);
    reader.Previous();
    EXPECT_EQ(Marked(reader), "Été");
    reader.Previous();
    EXPECT_EQ(reader.Selection()->from, 4u);

    for (const char* nothing : {"", "   ", "łódź", "absent"}) {
        reader.search = nothing;
        reader.Find();
        EXPECT_EQ(Marked(reader), "Été") << nothing;
    }
    reader.Pick(12);
    EXPECT_EQ(reader.search, "Play a level");
    EXPECT_EQ(Marked(reader), "Play a level");
    reader.Jump("[play A level]");
    EXPECT_EQ(Marked(reader), "[Play a level]");
    HelpReader empty{"", "#1#"};
    empty.Find();
    empty.Next();
    empty.Previous();
    empty.Pick(3);
    EXPECT_EQ(Marked(empty), "(nothing)");
}

TEST(HelpReader, BreaksLinesThatNoTextViewCanHold)
{
    const std::string tail = "[End]\r\n{last}";
    HelpReader reader{std::string(9000, '[') + tail + std::string(4001, 'x'), "[End]"};
    const std::string shown = reader.Text();
    for (std::size_t from = 0; from < shown.size();) {
        const std::size_t end = std::min(shown.find_first_of("\r\n", from), shown.size());
        EXPECT_LE(end - from, 4000u);
        from = end + 1;
    }
    reader.Find();
    ASSERT_TRUE(reader.Selection());
    EXPECT_EQ(shown.substr(reader.ShownPlace(reader.Selection()->from), 5), "[End]");
    for (std::size_t place = 0; place < reader.Help().size(); ++place) {
        ASSERT_EQ(shown[reader.ShownPlace(place)], reader.Help()[place]) << place;
        ASSERT_EQ(reader.PlaceOf(reader.ShownPlace(place)), place);
    }
}

TEST(HelpTopics, AreReadByNameUpToTheNextOne)
{
    const std::string help = ToWindows1252("Front\n[Play a level] #20#\nGo, see {Slots} and #3#.\n"
                                           "{Slots} of the game\nFifteen.\n\n[Été]\nWarm\n"
                                           "[Unclosed\n{Late}\nend");
    EXPECT_EQ(HelpOf(help, "play A level"),
              "Play a level\nGo, see {Slots} and.\nSlots of the game\nFifteen.\n");
    EXPECT_EQ(HelpOf(help, " slots "), "Slots of the game\nFifteen.\n");
    EXPECT_EQ(HelpOf(help, "été"), "Été\nWarm\n[Unclosed\nLate\nend\n");
    EXPECT_EQ(HelpOf(help, "play"), HelpOf(help, "Play a level")) << "only one holds it";
    EXPECT_FALSE(HelpOf(help, "l")) << "several hold it";
    EXPECT_FALSE(HelpOf(help, ""));
    EXPECT_EQ(ListOfTopics(help), "Play a level\n  Slots\nÉté\n  Late\n");

    using Names = std::vector<std::string>;
    EXPECT_EQ(TopicsNear(help, "L", 9), (Names{"Play a level", "Slots", "Late"}));
    EXPECT_EQ(TopicsNear(help, "leval", 9), Names{"Play a level"});
    EXPECT_EQ(TopicsNear(help, "slits", 9), Names{"Slots"});
    EXPECT_EQ(TopicsNear(help, "burning", 9), Names{});
    EXPECT_EQ(TopicsNear(std::string(50'000'000, '['), std::string(100'000, 'x'), 9), Names{});
}

TEST(HelpTopics, AreWrappedBetweenWords)
{
    EXPECT_EQ(
        Wrapped("one two three\n\n- ab cd éé\n    wide words here\nxxxxxxxxxxxxxx y", 9),
        "one two\nthree\n\n- ab cd\n  éé\n    wide\n    words\n    here\nxxxxxxxxxxxxxx\ny\n");
}

TEST(HelpIndex, ListsFindsAndGivesTopics)
{
    World box;
    HelpIndex index{box.host, ToWindows1252("[Play] [Ärger] {Keys} [Players] {KEYS} {Slots}")};
    EXPECT_EQ(index.Items(), (std::vector<std::string>{"[Play]", "[Ärger]", "[Players]"}));
    EXPECT_EQ(index.Info(), "3 items");
    EXPECT_FALSE(index.Chosen());
    EXPECT_TRUE(box.host.WasTold("No selected item"));

    index.Find(" PLAY ");
    EXPECT_EQ(index.Info(), "2 items");
    EXPECT_EQ(index.Chosen(), "[Play]");
    index.Previous();
    EXPECT_EQ(index.Chosen(), "[Play]");
    index.Next();
    index.Next();
    EXPECT_EQ(index.Chosen(), "[Players]");
    index.Find("ärg");
    EXPECT_EQ(index.Chosen(), "[Ärger]");
    index.Find("absent");
    EXPECT_EQ(index.Info(), "0 items");
    EXPECT_EQ(index.Chosen(), "[Ärger]");

    index.Show(false);
    EXPECT_EQ(index.Info(), "2 items");
    index.Next(); // the hits of the other list are gone
    EXPECT_FALSE(index.selected);
    index.selected = 1;
    EXPECT_EQ(index.Chosen(), "{Slots}");
}

TEST(HelpFile, IsTheOneOfTheProgramsFolderFirst)
{
    World box;
    const Folders folders = box.session.Folders();
    const auto load = [&] { return LoadHelp(box.host, folders, box / "share"); };
    EXPECT_FALSE(load());
    EXPECT_TRUE(box.host.WasTold("Warning: I can not find file: \"" +
                                 TextOf(folders.program / "help_kestrova.txt") + "\""));
    box.Write("share/help_kestrova.txt", "#1# installed\r\n[Topic]");
    EXPECT_EQ(load(), "#1# installed\n[Topic]");
    box.Write("home/HELP_Kestrova.TXT", "own");
    EXPECT_EQ(load(), "own");
    box.Write("home/HELP_Kestrova.TXT", std::string(50'000'000, '['));
    EXPECT_EQ(load()->size(), 50'000'000u);
}

} // namespace

} // namespace kestrova::testing
