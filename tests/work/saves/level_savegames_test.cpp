#include "history/history.h"
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

} // namespace kestrova::testing
