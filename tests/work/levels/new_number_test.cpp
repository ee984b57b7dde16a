#include "history/history.h"
#include "levels/new_level.h"
#include "levels/undo_world.h"
#include "sandbox/faults.h"

namespace kestrova::testing
{

namespace
{

/// A level with kept savegames and pictures of its own is removed, and a newer one has its number.
class NumberTaken : public UndoWorld
{
public:
    NumberTaken()
    {
        host.AnswerAll(true);
        ShotList shots = Shots("one.bmp");
        EXPECT_TRUE(AddShotFile(session, shots, root / "from/three.bmp"));
        Write("levels/LEVEL_0002/files/a.tr4", "old level");
        EXPECT_TRUE(RemoveLevel(session, resting, LevelFolders::Remove));
        const auto entry = Next();
        if (!entry || entry->kind != ChangeKind::LevelRemoved)
            throw std::runtime_error{"the removal cannot be undone"};
        removal = *entry;
        machine.now += 60'000'000'000;
        EXPECT_EQ(AddLevel("Newer", {{"n.tr4", "newer"}}), resting);
        EXPECT_TRUE(NoteAdded(session.Folders(), session.archive, resting,
                              machine.NowNs() / 1'000'000'000));
        EXPECT_TRUE(WriteArchive(session, session.ArchivePath()));
        machine.now += 60'000'000'000;
        Write("levels/LEVEL_0002/backup_savegames/savegame.2", SavegameBytes("Newer", 8));
        EXPECT_TRUE(KeepInHistory(machine, session.Folders(), session.settings, resting,
                                  {root / "levels/LEVEL_0002/backup_savegames/savegame.2"},
                                  "test"));
    }
    [[nodiscard]] std::vector<std::string> KeptOf(LevelCode code) const
    {
        std::vector<std::string> titles;
        for (const HistoryEntry& entry : HistoryOf(session.Folders(), code))
            if (!entry.title.empty())
                titles.push_back(entry.title);
        return titles;
    }
    void ExpectBackAsThree()
    {
        const LevelRecord* const back = session.archive.Find(3);
        ASSERT_NE(back, nullptr);
        EXPECT_EQ(back->levelName, removal.record->before->levelName);
        EXPECT_EQ(Read("levels/LEVEL_0003/files/a.tr4"), "old level");
        EXPECT_TRUE(Has("levels/LEVEL_0003/backup_savegames/savegame.1"));
        EXPECT_EQ(Read("levels/LEVEL_0002/files/n.tr4"), "newer");
        EXPECT_EQ(NoteOf(session.Folders(), session.archive, 3)->stars, 2);
        EXPECT_EQ(NoteOf(session.Folders(), session.archive, resting)->stars, 0);
        EXPECT_EQ(KeptOf(3), std::vector<std::string>{"Resting"});
        EXPECT_EQ(KeptOf(resting), std::vector<std::string>{"Newer"});
    }
    Change removal;
};

} // namespace

TEST(UndoEntries, BringALevelBackUnderAnotherNumberWhereItsOwnIsTaken)
{
    NumberTaken world;
    const FileContents newer = world.Snapshot("levels/LEVEL_0002");
    ASSERT_EQ(UndoChange(world.session, world.removal), LevelCode{3}) << world.host.AllTold();
    world.ExpectBackAsThree();
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0002"), newer);
    world.Restart();
    world.ExpectBackAsThree();

    // What was done to it before can be undone still, and its removal done again and undone.
    const auto removed = world.Next(UndoWay::Redo);
    ASSERT_TRUE(removed);
    ASSERT_EQ(UndoChange(world.session, *removed), LevelCode{3}) << world.host.AllTold();
    EXPECT_FALSE(world.Has("levels/LEVEL_0003"));
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    world.ExpectBackAsThree();
    ASSERT_TRUE(world.Has("levels/LEVEL_0003/screenshots/three.bmp"));
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_FALSE(world.Has("levels/LEVEL_0003/screenshots/three.bmp"));
    EXPECT_FALSE(world.Next()) << "nothing was done to the newer level";
}

TEST(UndoEntries, KilledWhileALevelGetsAnotherNumberTheRestFollows)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        NumberTaken world;
        const auto treasures = world.Treasures();
        const KillRun run =
            WithKillAt(step, [&] { return UndoChange(world.session, world.removal).has_value(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        world.ExpectNothingLost(treasures);
        world.Restart();
        world.ExpectNothingLost(treasures);
        if (world.session.archive.Find(3) == nullptr) {
            ASSERT_TRUE(UndoChange(world.session, world.removal)) << world.host.AllTold();
        }
        world.ExpectBackAsThree();
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 3);
    }
    FAIL() << "never finished";
}

TEST(UndoEntries, NameTheFolderOfALevelThatWasOnlyTakenOffTheList)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    (void)RemoveLevel(world.session, world.resting, LevelFolders::Keep);
    const auto removal = world.Next();
    ASSERT_TRUE(removal);
    LevelRecord newer;
    ASSERT_TRUE(BeginNewLevel(world.session, newer));
    newer.levelName = "Newer";
    ASSERT_TRUE(FinishNewLevel(world.session, newer));
    ASSERT_EQ(newer.levelCode, world.resting);
    world.host.told.clear();
    EXPECT_FALSE(UndoChange(world.session, *removal));
    EXPECT_TRUE(world.host.WasTold("LEVEL_0002.set-aside-")) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("kestrovactl add"));
}

} // namespace kestrova::testing
