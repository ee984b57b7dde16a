#include "history/history.h"
#include "saves/delete_history.h"
#include "saves/delete_savegames.h"
#include "saves/saves_world.h"

namespace kestrova::testing
{

namespace
{

/// Fifteen live places with two taken, two archive slots, and two files of the history.
class ManySaves : public SavesWorld
{
public:
    ManySaves()
    {
        Live("10", 30);
        Live("2", 31);
        Write("trle/note2.txt", "words");
        Archived(1, "0", 7, "seven");
        Archived(2, "4", 9, "nine");
        Write(store + std::string{"slot2/note4.txt"}, "of nine");
        Write("gone/savegame.0", SavegameBytes("Overwritten", 3));
        Write("gone/note0.txt", "no savegame");
        EXPECT_TRUE(KeepInHistory(session.machine, session.Folders(), session.settings, played,
                                  {*this / "gone/savegame.0", *this / "gone/note0.txt"},
                                  "slots freed"));
        EXPECT_TRUE(LoadSavegameStore(session.Folders(), session.preferences, played));
    }
    [[nodiscard]] std::vector<LevelSavegame> All() const
    {
        return SavegamesOfLevel(session.Folders(), session.archive, played).ValueOr({});
    }
    /// Those with these numbers.
    [[nodiscard]] std::vector<LevelSavegame> With(const std::set<int>& numbers) const
    {
        auto chosen = All();
        std::erase_if(chosen,
                      [&](const LevelSavegame& one) { return !numbers.contains(one.number); });
        return chosen;
    }
    [[nodiscard]] std::string AllShown() const
    {
        std::string text;
        for (const LevelSavegame& one : All())
            text += (text.empty() ? "" : " ") + std::to_string(one.slot) + "/" + one.name + "=" +
                    std::to_string(one.number) + (one.place == SavegamePlace::History ? "h" : "");
        return text;
    }
};

} // namespace

TEST(LevelSavegames, ListsLiveOnesThenSlotsThenTheHistory)
{
    const ManySaves world;
    EXPECT_EQ(world.AllShown(), "0/savegame.2=31 0/savegame.10=30 2/savegame.4=9 1/savegame.0=7 "
                                "0/savegame.0=3h");
    const auto all = world.All();
    EXPECT_EQ(all.front().title, "Live 2");
    EXPECT_EQ(all.back().reason, "slots freed");
    EXPECT_NE(WordsOf(all.front()).find("savegame.2: “Live 2”, number 31, saved "),
              std::string::npos);
}

TEST(LevelSavegames, ComeIntoFreeSlotsOneByOne)
{
    ManySaves world;
    EXPECT_TRUE(BringIntoSlots(world.session, world.played, world.With({9, 3})));
    EXPECT_EQ(world.Shown("trle"),
              "note2.txt=words savegame.0=9 savegame.1=3 savegame.10=30 savegame.2=31");
    EXPECT_EQ(world.ShownSlot(2), "note4.txt=of nine savegame.4=9") << "it stays there too";

    EXPECT_FALSE(BringIntoSlots(world.session, world.played, world.With({9, 7})));
    EXPECT_NE(world.host.AllTold().find("stands in the game's slots already"), std::string::npos);
    EXPECT_NE(world.Shown("trle").find("savegame.3=7"), std::string::npos)
        << "one that cannot come keeps no other from coming";
    for (const int slot : {4, 5, 6, 7, 8, 9, 11, 12, 13, 14})
        world.Live(std::to_string(slot), 100 + slot);
    world.Archived(1, "1", 8, "eight");
    EXPECT_FALSE(BringIntoSlots(world.session, world.played, world.With({8})));
    EXPECT_EQ(world.Shown("trle").find("=8"), std::string::npos);
}

TEST(LevelSavegames, AreNamedBeforeAnExportReplacesThem)
{
    ManySaves world;
    world.Write("out/savegame.2", SavegameBytes("Mine", 50));
    world.host.WillAsk("number 50", false);
    EXPECT_FALSE(ExportChosen(world.session, world.played, world.With({31}), world / "out"));
    EXPECT_EQ(world.Shown("out"), "savegame.2=50");

    const auto treasures = world.Treasures();
    world.host.WillAsk("“Mine”", true);
    EXPECT_TRUE(ExportChosen(world.session, world.played, world.With({31, 9, 3}), world / "out"));
    EXPECT_EQ(world.Shown("out"), "savegame.0=3 savegame.2=31 savegame.4=9");
    world.ExpectNothingLost(treasures);
}

TEST(LevelSavegames, AreDeletedIntoTheHistoryWithWhatGoesWithThem)
{
    ManySaves world;
    const auto treasures = world.Treasures();
    EXPECT_FALSE(DeleteChosen(world.session, world.played, world.With({3})))
        << "the history is bounded by itself";
    world.host.WillAsk("savegame.4", false);
    EXPECT_FALSE(DeleteChosen(world.session, world.played, world.With({31, 9})));
    world.host.WillAsk("savegame.4", true);
    EXPECT_TRUE(DeleteChosen(world.session, world.played, world.With({31, 9})));
    EXPECT_EQ(world.Shown("trle"), "savegame.10=30");
    EXPECT_EQ(world.ShownSlot(2), "");
    EXPECT_EQ(world.ShownSlot(1), "savegame.0=7");
    world.ExpectNothingLost(treasures);
}

TEST(DeletedHistory, GoesForGoodOnlyAfterAYesAndOfWhatIsListed)
{
    ManySaves world;
    const Folders folders = world.session.Folders();
    const auto ids = [&](LevelCode code) {
        std::vector<std::string> found;
        for (const HistoryEntry& entry : HistoryOf(folders, code))
            found.push_back(entry.id);
        return found;
    };
    const auto kept = [&] { return world.Snapshot("home/history/content").size(); };
    const auto all = ids(world.played);
    ASSERT_EQ(all.size(), 2U);
    // Of a level with this number in another archive, whose folder is there.
    world.Write("other/LEVEL_0001/backup_savegames/savegame.5", SavegameBytes("Theirs", 8));
    ASSERT_TRUE(KeepInHistory(world.machine, folders, world.session.settings,
                              LevelPlace{world.played, world / "other/LEVEL_0001"},
                              {world / "other/LEVEL_0001/backup_savegames/savegame.5"}, "test"));
    ASSERT_EQ(kept(), 3U);
    for (const char* nothing : {"0001-99", "0002-1", "2", "77"})
        EXPECT_FALSE(DeleteHistoryTold(world.session, {all.front(), nothing})) << nothing;
    EXPECT_TRUE(world.host.WasTold("nothing of the name 77")) << world.host.AllTold();
    world.host.WillAsk("savegame.0 (Overwritten)", false);
    EXPECT_FALSE(DeleteHistoryTold(world.session, {"1"}));
    EXPECT_EQ(ids(world.played), all);
    world.host.WillAsk("Files: 1", true);
    EXPECT_TRUE(DeleteHistoryTold(world.session, {all.front(), all.front()}));
    EXPECT_EQ(ids(world.played), std::vector<std::string>{all.back()});
    EXPECT_EQ(kept(), 2U);
    // While work that was cut short may still need it, nothing goes.
    world.Write("home/swap/savegames", "{");
    world.Write("home/swap/journal", "cut short");
    EXPECT_FALSE(DeleteHistoryTold(world.session, {"0001"}));
    std::filesystem::remove_all(world / "home/swap");
    world.host.WillAsk("note0.txt", true);
    EXPECT_TRUE(DeleteHistoryTold(world.session, {"0001"}));
    EXPECT_TRUE(ids(world.played).empty());
    EXPECT_EQ(kept(), 1U) << "the other archive's";
    for (const char* wrong : {"", "x", "1x", "-1", "1-", "1-2-3", "0001-1x"})
        EXPECT_FALSE(NamesHistory(wrong)) << wrong;
    EXPECT_TRUE(NamesHistory("12") && NamesHistory("0012-3"));
}

} // namespace kestrova::testing
