#include "history/history.h"
#include "history/standing.h"
#include "saves/archive_slots.h"
#include "saves/bring_back.h"
#include "saves/savegame_transfer.h"
#include "saves/saves_world.h"

#include <unistd.h>

namespace kestrova::testing
{

namespace
{

/// Without the rights that let the administrator read everything.
class AsNobody
{
public:
    explicit AsNobody(const Path& root) : before_(::geteuid())
    {
        if (before_ != 0)
            return;
        constexpr uid_t nobody = 65534;
        for (const auto& entry : std::filesystem::recursive_directory_iterator{root})
            EXPECT_EQ(::chown(entry.path().c_str(), nobody, nobody), 0);
        EXPECT_EQ(::chown(root.c_str(), nobody, nobody), 0);
        EXPECT_EQ(::seteuid(nobody), 0);
    }
    ~AsNobody() { EXPECT_EQ(::seteuid(before_), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    uid_t before_;
};

} // namespace

TEST(ArchiveSavegames, LeavesTheNewestInSlotZeroAndTheRestInANewArchiveSlot)
{
    SavesWorld world;
    ASSERT_TRUE(ArchiveSavegames(world.session));
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/savegames/slot1")) << "nothing to free";
    world.Live("3", 40);
    world.Write("trle/note3.txt", "my note");
    world.Write("trle/shot3.bmp", "big");
    world.Live("12", 39);
    world.Write("trle/shot12.jpg", "small");
    ASSERT_TRUE(ArchiveSavegames(world.session));
    EXPECT_EQ(world.Shown("trle"), "note0.txt=my note savegame.0=40 shot0.bmp=big");
    EXPECT_EQ(world.ShownSlot(1), "note3.txt=my note savegame.12=39 savegame.3=40 shot12.jpg=small "
                                  "shot3.bmp=big");
    EXPECT_EQ(world.Count(), 2);
    EXPECT_TRUE(HistoryOf(world.session.Folders(), world.played).empty())
        << "all of it is in the slot";

    // Its number is known now: an empty slot, and nothing else.
    ASSERT_TRUE(ArchiveSavegames(world.session));
    EXPECT_TRUE(world.Has("levels/LEVEL_0001/savegames/slot2"));
    EXPECT_EQ(world.ShownSlot(2), "");
    EXPECT_EQ(world.Shown("trle"), "note0.txt=my note savegame.0=40 shot0.bmp=big");
    EXPECT_EQ(world.Count(), 2);
    EXPECT_EQ(LoadSavegameStore(world.session.Folders(), world.session.preferences, world.played)
                  ->header.archivedCount,
              2);
}

TEST(ArchiveSavegames, PutsTheNewestIntoTheArchiveWhereverItStands)
{
    for (const char* keeper : {"0", "bak", "7"}) {
        SavesWorld world;
        world.Live("3", 39);
        world.Live(keeper, 40);
        const bool renamed = std::string{keeper} == "7";
        world.Write(renamed ? "trle/note7.txt" : "trle/note0.txt", "of the newest");
        world.Write(renamed ? "trle/shot7.bmp" : "trle/shot0.bmp", "picture");
        const auto moved = ArchiveSavegames(world.session);
        ASSERT_TRUE(moved);
        const std::string number = renamed ? "7" : "0";
        EXPECT_EQ(world.Read(SavesWorld::store + ("slot1/savegame." + std::string{keeper})),
                  SavegameBytes("Live " + std::string{keeper}, 40));
        EXPECT_EQ(world.Read(SavesWorld::store + ("slot1/note" + number + ".txt")),
                  "of the newest");
        EXPECT_EQ(world.Read(SavesWorld::store + ("slot1/shot" + number + ".bmp")), "picture");
        EXPECT_EQ(moved->moved, 2);
        EXPECT_EQ(world.Count(), 2);
        EXPECT_EQ(CountArchivedSavegames(world.session.Folders(), world.played), 2);
        EXPECT_EQ(world.Shown("trle"), "note0.txt=of the newest savegame." +
                                           std::string{renamed ? "0" : keeper} +
                                           "=40 shot0.bmp=picture");
    }
}

TEST(SavegameMoves, DecideNothingWhileTheMarkerCannotBeRead)
{
    SavesWorld world;
    world.Live("1", 4);
    world.Live("2", 5);
    world.Archived(1, "0", 3);
    world.Write("home/LEVEL_0000/backup_savegames/savegame.1", SavegameBytes("Original", 1));
    world.list.selected = originalCode;
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, originalCode, {world / "trle/savegame.1"},
                              "kept"));
    const auto before = world.Snapshot("");
    {
        const AsNobody nobody{world.root};
        std::filesystem::permissions(world / "trle/Kestrva.txt", std::filesystem::perms::none);
        EXPECT_FALSE(ArchiveSavegames(world.session))
            << "it might be the original that stands there";
        EXPECT_FALSE(RestoreSavegames(world.session));
        EXPECT_FALSE(BringBack(world.session, originalCode, "0000-1"));
        EXPECT_FALSE(LiveStateFolder(world.session.Folders(), world.session.archive, world.played));
        EXPECT_EQ(CopyIntoSlots(world.session, originalCode, {world / "trle/savegame.2"}).size(),
                  1U);
        std::filesystem::permissions(world / "trle/Kestrva.txt", std::filesystem::perms::all);
    }
    EXPECT_EQ(world.Snapshot(""), before);
}

TEST(ArchiveSavegames, KnowsNumbersOfAllSlotsAndKeepsWhatOnlySeemsArchived)
{
    SavesWorld world;
    world.Archived(1, "0", 7);
    world.Archived(2, "4", 8, "another game");
    world.Live("0", 8, "this game");
    world.Live("1", 9);
    world.Live("2", 9, "twice");
    world.Write("trle/savegame.5", world.Read(SavesWorld::store + std::string{"slot1/savegame.0"}));
    world.Write("trle/note5.txt", "a note of its own");
    ASSERT_TRUE(ArchiveSavegames(world.session));
    EXPECT_EQ(world.ShownSlot(3), "savegame.1=9 savegame.2=9") << "both of one number";
    EXPECT_EQ(world.Shown("trle"), "savegame.0=9");
    EXPECT_EQ(world.Read("trle/savegame.0"), SavegameBytes("Live 1", 9)) << "the first of equals";
    std::vector<std::string> kept;
    for (const HistoryEntry& entry : HistoryOf(world.session.Folders(), world.played))
        kept.push_back(entry.name);
    EXPECT_EQ(kept, (std::vector<std::string>{"savegame.0", "note5.txt"}))
        << "the same number with other bytes, and a note that no slot has";
    EXPECT_EQ(world.Count(), 2);
}

TEST(ArchiveSavegames, TakesAnyNumberAndName)
{
    SavesWorld world;
    world.Live("1", -1);
    world.Live("4", -7);
    world.Write("trle/savegame.9", "");
    world.Write("trle/SAVEGAME.2", std::string(200, '\xFF'));
    world.Write("trle/savegame.junk", "short");
    ASSERT_TRUE(ArchiveSavegames(world.session));
    EXPECT_EQ(world.Shown("trle"), "savegame.0=-1") << "none is above 0: the first listed stays";
    EXPECT_EQ(world.ShownSlot(1),
              "SAVEGAME.2=-1 savegame.1=-1 savegame.4=-7 savegame.9=0 savegame.junk=0");
    EXPECT_EQ(world.Count(), 5);
}

TEST(ArchiveSavegames, StopsBeforeAnythingWhenASavegameCannotBeRead)
{
    SavesWorld world;
    world.Live("1", 4);
    world.Live("2", 5);
    world.Archived(1, "0", 3);
    const AsNobody nobody{world.root};
    std::filesystem::permissions(world / "trle/savegame.1", std::filesystem::perms::none);
    const auto status = ArchiveSavegames(world.session);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.Error().subject, (world / "trle/savegame.1").native());
    EXPECT_FALSE(RestoreSavegames(world.session));
    EXPECT_TRUE(world.Has("trle/savegame.1"));
    EXPECT_TRUE(world.Has("trle/savegame.2"));
    EXPECT_EQ(world.ShownSlot(1), "savegame.0=3");
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/savegames/slot2"));

    // A slot that cannot be listed is no empty one.
    std::filesystem::permissions(world / "levels/LEVEL_0001/savegames/slot1",
                                 std::filesystem::perms::none);
    EXPECT_FALSE(RestoreSavegames(world.session));
    std::filesystem::permissions(world / "levels/LEVEL_0001/savegames/slot1",
                                 std::filesystem::perms::all);
    EXPECT_EQ(world.ShownSlot(1), "savegame.0=3");
}

TEST(ArchiveSavegames, WorksOnTheSelectedLevelOnly)
{
    SavesWorld world;
    world.Live("1", 4);
    world.list.selected.reset();
    ASSERT_TRUE(ArchiveSavegames(world.session));
    ASSERT_TRUE(RestoreSavegames(world.session));
    EXPECT_EQ(world.Shown("trle"), "savegame.1=4");
    world.list.selected = world.resting;
    world.Write("levels/LEVEL_0002/backup_savegames/savegame.6", SavegameBytes("Rests", 3));
    ASSERT_TRUE(ArchiveSavegames(world.session));
    EXPECT_EQ(world.Shown("levels/LEVEL_0002/backup_savegames"), "savegame.0=3");
    EXPECT_EQ(world.Shown("levels/LEVEL_0002/savegames/slot1"), "savegame.6=3");
    EXPECT_EQ(world.Shown("trle"), "savegame.1=4");
}

TEST(RestoreSavegames, PacksOldestFirstAndDropsWhatIsLiveAlready)
{
    SavesWorld world;
    world.Live("2", 9);
    world.Write("trle/note2.txt", "nine");
    world.Live("7", 7);
    world.Archived(1, "0", 5);
    world.Archived(1, "3", 8);
    world.Archived(1, "11", 7);
    const std::string slot = SavesWorld::store + std::string{"slot1/"};
    world.Write(slot + "note3.txt", "eight");
    world.Write(slot + "shot3.bmp", "eight too");
    const auto treasures = world.Treasures();
    ASSERT_TRUE(RestoreSavegames(world.session));
    EXPECT_EQ(world.Shown("trle"), "note2.txt=eight note3.txt=nine savegame.0=5 savegame.1=7 "
                                   "savegame.2=8 savegame.3=9 shot2.bmp=eight too");
    EXPECT_EQ(world.ShownSlot(1), "");
    EXPECT_TRUE(world.Has(slot)) << "an emptied slot stays until the next restore";
    EXPECT_EQ(world.Count(), -3);
    world.ExpectNothingLost(treasures);
    EXPECT_FALSE(world.Has("home/_temp_Savegame"));
    ASSERT_TRUE(RestoreSavegames(world.session));
    EXPECT_FALSE(world.Has(slot));
    EXPECT_EQ(world.Count(), -3);
}

TEST(RestoreSavegames, FillsFifteenPlacesWithTheNewestAndLeavesTheOthers)
{
    SavesWorld world;
    for (int i = 0; i < 13; ++i)
        world.Live(std::to_string(i), 100 + i);
    for (int i = 0; i < 5; ++i)
        world.Archived(1, std::to_string(i), 50 + i);
    ASSERT_TRUE(RestoreSavegames(world.session));
    EXPECT_EQ(ListFiles(world / "trle", "savegame.*")->size(), 15U);
    EXPECT_EQ(ReadSavegameInfo(world / "trle/savegame.0").number, 53);
    EXPECT_EQ(ReadSavegameInfo(world / "trle/savegame.14").number, 112);
    EXPECT_EQ(world.ShownSlot(1), "savegame.0=50 savegame.1=51 savegame.2=52");
    const auto full = world.Snapshot("");
    ASSERT_TRUE(RestoreSavegames(world.session));
    EXPECT_EQ(world.Snapshot(""), full) << "fifteen are live";
}

TEST(RestoreSavegames, SkipsEmptySlotsAndKeepsWhatTheyHold)
{
    SavesWorld world;
    ASSERT_TRUE(RestoreSavegames(world.session)) << "no slot at all";
    world.Archived(1, "0", 5);
    world.Write(SavesWorld::store + std::string{"slot2/note4.txt"}, "left alone");
    world.Write(SavesWorld::store + std::string{"slot2/my list.doc"}, "a list");
    world.Write("home/_temp_Savegame/savegame.3", SavegameBytes("Stranded", 2));
    const auto treasures = world.Treasures();
    ASSERT_TRUE(RestoreSavegames(world.session));
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/savegames/slot2"));
    EXPECT_FALSE(world.Has("home/_temp_Savegame"));
    EXPECT_EQ(world.Shown("trle"), "savegame.0=5");
    world.ExpectNothingLost(treasures);
    EXPECT_EQ(HistoryOf(world.session.Folders(), world.played).size(), 3U);
}

TEST(RestoreSavegames, SnapshotsWhatIsLive)
{
    SavesWorld world;
    world.Live("0", 3);
    world.Live("1", 4);
    world.Archived(1, "0", 5);
    ASSERT_TRUE(RestoreSavegames(world.session));
    const auto kept = HistoryOf(world.session.Folders(), world.played);
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(kept[1].number, 4);
    EXPECT_EQ(kept[1].reason, "before a restore");
}

TEST(RestoreSavegames, MoreThanFifteenAtTheStartEndsAtTheToldPlace)
{
    SavesWorld world;
    for (const char* name :
         {"0", "1", "2", "3", "4", "5", "6", "7", "8", "a", "b", "c", "d", "e", "f", "g", "h"})
        world.Live(name, name[0] * 10);
    for (int i = 0; i < 4; ++i)
        world.Archived(1, std::to_string(i), 20 + i);
    ASSERT_TRUE(RestoreSavegames(world.session));
    // Seventeen live: the first that came made the count of free places -1 and ended it.
    EXPECT_EQ(ListFiles(world / "trle", "savegame.*")->size(), 18U);
    EXPECT_EQ(world.ShownSlot(1), "savegame.0=20 savegame.1=21 savegame.2=22");
}

TEST(SavegameMoves, NameWhatOnlyTheHistoryHoldsAfterThem)
{
    SavesWorld world;
    world.Archived(1, "0", 1, "first game");
    world.Archived(1, "1", 2, "first game");
    world.Live("0", 1, "second game");
    world.Live("1", 2, "second game");
    world.Live("2", 3, "second game");
    const auto archived = ArchiveSavegames(world.session);
    ASSERT_TRUE(archived);
    ASSERT_EQ(archived->kept.size(), 2U) << "the third went into the archive";
    EXPECT_NE(WordsAboutKept(*archived, world.played).find(archived->kept.front()),
              std::string::npos);
    ASSERT_TRUE(BringBack(world.session, world.played, archived->kept.front()));
    EXPECT_EQ(world.Read("trle/savegame.1"), SavegameBytes("Live 0", 1, "second game"))
        << "the place of the newest is taken";

    // Two of one number in a slot, and that number is live already.
    SavesWorld equal;
    equal.Live("0", 7, "live");
    equal.Archived(1, "0", 7, "one");
    equal.Archived(1, "1", 7, "another");
    const auto restored = RestoreSavegames(equal.session);
    ASSERT_TRUE(restored);
    EXPECT_EQ(restored->kept.size(), 2U);
    EXPECT_TRUE(WordsAboutKept(SavegamesMoved{}, equal.played).empty());

    // The only savegame there is comes and goes, and no other one is spoken of.
    SavesWorld single;
    single.Live("1", 4, "the only one");
    ASSERT_TRUE(ArchiveSavegames(single.session));
    const auto back = RestoreSavegames(single.session);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->kept.empty());
}

TEST(BringBack, OfALevelWithoutItsFolderNamesTheWayOut)
{
    SavesWorld world;
    world.Live("3", 4);
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, world.resting, {world / "trle/savegame.3"},
                              "kept"));
    std::filesystem::remove_all(world / "levels/LEVEL_0002");
    const auto place = BringBack(world.session, world.resting, "0002-1");
    ASSERT_FALSE(place);
    EXPECT_NE(place.Error().reason.find("--to"), std::string::npos);
    EXPECT_FALSE(world.Has("levels/LEVEL_0002"));
    for (const char* name : {"out/new/savegame.3", "out/new/savegame.0"}) {
        const auto copied =
            BringBackTo(world.session.Folders(), world.resting, "0002-1", world / "out/new");
        ASSERT_TRUE(copied);
        EXPECT_EQ(*copied, world / name) << "nothing there is replaced";
        EXPECT_EQ(world.Read(name), SavegameBytes("Live 3", 4));
    }
}

} // namespace kestrova::testing
