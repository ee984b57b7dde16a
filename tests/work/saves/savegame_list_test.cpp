#include "saves/history_list.h"
#include "saves/savegame_list.h"
#include "saves/savegame_transfer.h"
#include "saves/saves_world.h"

namespace kestrova::testing
{

namespace
{

std::vector<std::size_t> AllRows(const SavegameList& list)
{
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < list.Files().size(); ++i)
        rows.push_back(i);
    return rows;
}

} // namespace

TEST(SavegameList, IsPreparedForALevelWithSavegamesOnly)
{
    SavesWorld world;
    world.list.selected.reset();
    SavegameList list{world.session, ListPurpose::Export};
    EXPECT_FALSE(list.Prepare());
    EXPECT_TRUE(world.host.WasTold("No level selected"));
    world.list.selected = world.resting;
    EXPECT_FALSE(list.Prepare());
    EXPECT_TRUE(world.host.WasTold("No savegames in folder: " +
                                   (world / "levels/LEVEL_0002/backup_savegames").native()));
}

TEST(SavegameList, ShowsNumberTitleAndTimeInColumns)
{
    SavesWorld world;
    ::setenv("TZ", "UTC", 1);
    ::tzset();
    world.Write("trle/savegame.3", SavegameBytes("Caves \xE9" + std::string(40, 'x'), 7));
    world.Write("trle/savegame.11", SavegameBytes("", -32768));
    for (const char* name : {"savegame.3", "savegame.11"})
        ASSERT_FALSE(platform::SetModified(world / "trle" / name, 1'700'000'000'000'000'000));
    SavegameList list{world.session, ListPurpose::Mail};
    ASSERT_TRUE(list.Prepare());
    EXPECT_EQ(list.Rows(),
              (std::vector<std::string>{
                  "-32768 - " + std::string(32, ' ') + "  (22:13  14/11/2023)",
                  "   7 - Caves \u00E9" + std::string(25, 'x') + "  (22:13  14/11/2023)"}));
    EXPECT_EQ(list.Title(), "Select one or more savegame to export");
    EXPECT_FALSE(list.OffersDelete());
    EXPECT_FALSE(list.Take({})) << "it stays open";
    EXPECT_TRUE(world.host.WasTold("No savegame selected"));
}

TEST(SavegameImport, TakesTheLowestFreeSlots)
{
    SavesWorld world;
    world.list.selected = world.resting;
    world.Write("from/savegame.3", SavegameBytes("a", 3));
    world.Write("from/savegame.5", SavegameBytes("b", 5));
    world.Write("from/note5.txt", "stays behind");
    world.Write("levels/LEVEL_0002/backup_savegames/savegame.1", SavegameBytes("there", 1));
    SavegameList list{world.session, ListPurpose::Import};
    ASSERT_TRUE(list.Prepare(world / "from"));
    ASSERT_TRUE(list.Take(AllRows(list)));
    EXPECT_EQ(world.Shown("levels/LEVEL_0002/backup_savegames"),
              "savegame.0=3 savegame.1=1 savegame.2=5");
    EXPECT_EQ(ListFiles(world / "from", "*")->size(), 3U);
}

TEST(SavegameImport, FreesTheSlotsWhenFifteenAreNotEnough)
{
    SavesWorld world;
    for (int i = 0; i < 3; ++i)
        world.Live(std::to_string(i), 50 + i);
    for (int i = 0; i < 15; ++i)
        world.Write("from/savegame." + std::to_string(i), SavegameBytes("x", i));
    SavegameList list{world.session, ListPurpose::Import};
    ASSERT_TRUE(list.Prepare(world / "from"));
    EXPECT_FALSE(list.Take(AllRows(list))) << "fifteen and the one that stayed";
    EXPECT_TRUE(world.host.WasTold(
        "Too savegames! Max number of savegames to import in a single operation is 14"));
    EXPECT_EQ(world.Shown("trle"), "savegame.0=52") << "freed already";
    auto fourteen = AllRows(list);
    fourteen.pop_back();
    EXPECT_TRUE(list.Take(fourteen));
    EXPECT_EQ(ListFiles(world / "trle", "savegame.*")->size(), 15U);
    EXPECT_EQ(ReadSavegameInfo(world / "trle/savegame.0").number, 52);
}

TEST(SavegameExport, CopiesReplacesAndDeletesWithoutLosingAny)
{
    SavesWorld world;
    world.Live("0", 1);
    world.Live("4", 2);
    world.Write("trle/note4.txt", "stands alone then");
    world.Write("out/savegame.4", SavegameBytes("of another level", 9));
    const auto treasures = world.Treasures();
    SavegameList list{world.session, ListPurpose::Export};
    ASSERT_TRUE(list.Prepare());
    world.host.WillChoose("Select folder where save savegames", std::nullopt);
    EXPECT_FALSE(list.Take({1}, true)) << "cancelled: it stays open";
    world.host.WillChoose("Select folder where save savegames", world / "out");
    EXPECT_TRUE(list.Take({1}, true));
    EXPECT_EQ(world.Shown("trle"), "note4.txt=stands alone then savegame.0=1");
    EXPECT_EQ(world.Shown("out"), "savegame.4=2");
    EXPECT_TRUE(world.host.WasTold("other savegames of these names were replaced"));
    world.ExpectNothingLost(treasures);
    EXPECT_EQ(HistoryOf(world.session.Folders(), world.played).size(), 2U);

    // Its own folder: the only copy stays.
    EXPECT_FALSE(list.Export({world / "trle/savegame.0"}, world / "trle", true));
    EXPECT_TRUE(world.host.WasTold("could not be exported"));
    EXPECT_TRUE(world.Has("trle/savegame.0"));
    EXPECT_FALSE(list.Export({world / "trle/savegame.0"}, world / "nowhere", true));
    EXPECT_TRUE(world.Has("trle/savegame.0"));
}

TEST(SavegameMail, HandsSubjectBodyAndFilesToTheDesktop)
{
    SavesWorld world;
    world.Live("0", 1);
    world.Live("4", 2);
    SavegameList list{world.session, ListPurpose::Mail};
    ASSERT_TRUE(list.Prepare());
    EXPECT_TRUE(list.Take({0}));
    EXPECT_TRUE(world.host.WasTold("Error trying to send savegames via email")) << "no such tool";
    world.host.told.clear();
    world.machine.tools["xdg-email"] = "/usr/bin/xdg-email";
    EXPECT_TRUE(list.Take({0}));
    EXPECT_TRUE(list.Take({0, 1}));
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
    ASSERT_EQ(world.machine.started.size(), 2U);
    const std::string one = (world / "trle/savegame.0").native();
    const std::string two = (world / "trle/savegame.4").native();
    EXPECT_EQ(
        world.machine.started[0].argv,
        (std::vector<std::string>{"/usr/bin/xdg-email", "--utf8", "--subject",
                                  "Savegame \"Live 0 - 1\" of level \"Played\"", "--body",
                                  "savegame.0 -> " + SavegameRow(one) + "\n", "--attach", one}));
    const auto& both = world.machine.started[1].argv;
    EXPECT_EQ(both[3], "2 Savegames of level \"Played\"");
    EXPECT_EQ(both[5],
              "savegame.0 -> " + SavegameRow(one) + "\nsavegame.4 -> " + SavegameRow(two) + "\n");
    EXPECT_EQ(both.back(), two);
    world.machine.exitCode = 4;
    EXPECT_TRUE(list.Take({0})) << "it closes in both cases";
    EXPECT_TRUE(world.host.WasTold("Error trying to send"));
}

TEST(SavegameMenu, SaysThatItIsDoneWhateverWasDone)
{
    SavesWorld world;
    EXPECT_TRUE(ArchiveWithWords(world.session));
    EXPECT_TRUE(world.host.WasTold("Current savegames archvied"));
    EXPECT_TRUE(RestoreWithWords(world.session));
    EXPECT_TRUE(world.host.WasTold("Restored last savegames in tomb raider slots"));
    world.host.told.clear();
    world.Live("2", 5);
    world.Write("levels/LEVEL_0001/savegames/slot1", "a file where a folder should be");
    EXPECT_FALSE(ArchiveWithWords(world.session));
    EXPECT_TRUE(world.host.WasTold("They are where they were"));
    EXPECT_FALSE(world.host.WasTold("archvied"));
    EXPECT_EQ(world.Shown("trle"), "savegame.2=5");
}

TEST(HistoryList, ShowsTheNewestFirstAndBringsBack)
{
    SavesWorld world;
    for (const int number : {3, 4}) {
        world.Live("0", number);
        ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                                  world.session.settings, world.played, {world / "trle/savegame.0"},
                                  "why"));
    }
    HistoryList list{world.session, world.played};
    ASSERT_EQ(list.Entries().size(), 2U);
    EXPECT_EQ(list.Entries()[0].number, 4);
    EXPECT_TRUE(list.BringBack(list.Entries()[1].id));
    EXPECT_TRUE(world.host.WasTold("Brought back as savegame.1."));
    EXPECT_EQ(world.Shown("trle"), "savegame.0=4 savegame.1=3");
    EXPECT_FALSE(list.BringBack("0001-77"));
}

TEST(HistoryList, OffersToFreeTheSlotsWhenAllAreTaken)
{
    SavesWorld world;
    world.Live("0", 99);
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, world.played, {world / "trle/savegame.0"},
                              "why"));
    for (int slot = 0; slot < 15; ++slot)
        world.Live(std::to_string(slot), slot + 1);
    HistoryList list{world.session, world.played};
    const std::string id = list.Entries().back().id;
    const std::string before = world.Shown("trle");
    world.host.WillAsk("All fifteen slots", false);
    EXPECT_FALSE(list.BringBack(id));
    EXPECT_EQ(world.Shown("trle"), before);
    world.host.WillAsk("All fifteen slots", true);
    EXPECT_TRUE(list.BringBack(id));
    EXPECT_EQ(world.Shown("trle"), "savegame.0=15 savegame.1=99");
}

} // namespace kestrova::testing
