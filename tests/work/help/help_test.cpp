#include "core/text.h"
#include "help/help_file.h"
#include "help/help_index.h"
#include "help/help_reader.h"
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
