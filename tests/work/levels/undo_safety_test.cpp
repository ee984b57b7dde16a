#include "archive/library_notes.h"
#include "archive/set_aside.h"
#include "history/changes.h"
#include "history/standing.h"
#include "levels/undo_world.h"
#include "sandbox/faults.h"
#include "swap/install.h"

namespace kestrova::testing
{

namespace
{

bool AddShotTo(UndoWorld& world, const std::string& name, int shade)
{
    world.Write("from/" + name, Pixel(shade));
    ShotList shots = world.Shots("one.bmp");
    return AddShotFile(world.session, shots, world / ("from/" + name));
}

} // namespace

TEST(RemovalDoneAgain, KeepsWhatThePlayerMadeMeanwhileAndTakesTheLevelOut)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    ASSERT_TRUE(RemoveLevel(world.session, world.played, LevelFolders::Remove));
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    // Played once more: its savegames are live, another one lies in its store.
    const FileContents empty = world.Snapshot("trle");
    ASSERT_TRUE(InstallLevel(world.session, world.played)) << world.host.AllTold();
    world.Live("8", 88, "made after the undo");
    world.Write("levels/LEVEL_0001/backup_savegames/savegame.9", SavegameBytes("Stored", 89));
    const auto treasures = world.Treasures();
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), originalCode);
    EXPECT_FALSE(world.Has("trle/savegame.8")) << "the level's savegames left with it";
    const auto aside = world.Next();
    ASSERT_TRUE(aside && aside->moved);
    world.session.settings.undoCount = 0;
    BoundUndo(world.session.Folders(), world.session.settings);
    EXPECT_FALSE(std::filesystem::exists(aside->moved->to));
    world.ExpectNothingLost(treasures);
}

TEST(RemovalDoneAgain, KilledAnywhereLosesNothingAndCanGoOn)
{
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        UndoWorld world;
        world.host.AnswerAll(true);
        ASSERT_TRUE(RemoveLevel(world.session, world.played, LevelFolders::Remove));
        const FileContents without = world.Held();
        ASSERT_TRUE(world.Undo()) << world.host.AllTold();
        world.Write("levels/LEVEL_0001/backup_savegames/savegame.9", SavegameBytes("Later", 89));
        const FileContents with = world.Held();
        const auto treasures = world.Treasures();
        const KillRun run = WithKillAt(step, [&] { return world.Redo(); });
        SCOPED_TRACE("redo killed at step " + std::to_string(step) + ": " + run.call);
        world.ExpectNothingLost(treasures);
        world.Restart();
        world.ExpectNothingLost(treasures);
        const FileContents now = world.Held();
        if (now == with) {
            ASSERT_TRUE(world.Redo()) << world.host.AllTold();
        }
        const FileContents removed = world.Held();
        EXPECT_TRUE(removed == without || world.Has("levels/LEVEL_0001")) << "neither";
        if (world.Next()) {
            EXPECT_TRUE(world.Undo()) << world.host.AllTold();
            EXPECT_EQ(world.Held(), with);
        }
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 10);
    }
    FAIL() << "never finished";
}

TEST(RemovalDoneAgain, IsRefusedWhereItCouldNotBeUndoneOnceMore)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    ASSERT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    ASSERT_TRUE(world.Undo());
    world.Write(UndoWorld::Rested("files/a.tr4"), std::string(3 << 20, 'a'));
    world.session.settings.undoMegabytes = 2;
    const FileContents now = world.Snapshot("levels");
    EXPECT_FALSE(world.Redo());
    EXPECT_TRUE(world.host.WasTold("has no room for this level")) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels"), now);
    world.session.settings.undoMegabytes = 20;
    EXPECT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels"), now);
}

TEST(Removal, LeavesAFolderThatCannotBeSetAside)
{
    UndoWorld world;
    const FileContents before = world.Snapshot("levels/LEVEL_0002/files");
    world.host.AnswerAll(true);
    {
        const auto aside = NameForAside(world / "levels/LEVEL_0002", world.machine.NowNs());
        ASSERT_TRUE(aside);
        const FailingCalls fixed{platform::FileAction::Rename, aside->filename().native(), -1,
                                 std::errc::read_only_file_system};
        EXPECT_FALSE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    }
    EXPECT_TRUE(world.host.WasTold("its folder was left as it is")) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0002/files"), before) << "nothing of it was deleted";
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_GE(FindLevel(world.session.archive, world.resting), 0);
}

TEST(UndoEntries, OneLargeOneTakesNoOtherWithIt)
{
    UndoWorld world;
    ASSERT_TRUE(AddShotTo(world, "before.bmp", 30));
    world.Write(UndoWorld::Rested("files/a.tr4"), std::string(3 << 20, 'a'));
    world.host.AnswerAll(true);
    ASSERT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    ASSERT_EQ(world.Entries().size(), 2U);
    world.session.settings.undoMegabytes = 1;
    BoundUndo(world.session.Folders(), world.session.settings);
    ASSERT_EQ(world.Entries().size(), 1U);
    EXPECT_EQ(world.Entries().front().kind, ChangeKind::ShotAdded);
}

TEST(UndoEntries, OfAnotherArchiveThatWereUndoneStay)
{
    UndoWorld world;
    ASSERT_TRUE(AddShotTo(world, "here.bmp", 30));
    ASSERT_TRUE(world.Undo());
    const Archive first = world.session.archive;
    world.session.archive.header.secondaryFolder = (world / "other").native();
    for (const char* part : {"screenshots", "backup_savegames", "savegames", "files"})
        std::filesystem::create_directories(world / "other/LEVEL_0002" / part);
    world.Write("other/LEVEL_0002/screenshots/one.bmp", Pixel(1));
    ASSERT_TRUE(AddShotTo(world, "there.bmp", 31));
    world.session.archive = first;
    EXPECT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_TRUE(world.Has("levels/LEVEL_0002/screenshots/here.bmp"));
}

TEST(UndoEntries, StrangeNumbersInTheirFolderDoNoHarm)
{
    UndoWorld world;
    for (const char* name : {"2147483647.json", "99999999999999999999.json", "1000000000.json"})
        world.Write("home/history/undo/" + std::string{name}, "{}");
    ASSERT_TRUE(AddShotTo(world, "a.bmp", 30));
    ASSERT_TRUE(AddShotTo(world, "b.bmp", 31));
    ASSERT_TRUE(world.Undo());
    ASSERT_TRUE(world.Undo());
    EXPECT_FALSE(world.Has("levels/LEVEL_0002/screenshots/a.bmp"));
}

TEST(UndoOfNames, ThatDifferInCaseAlone)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    const std::string folder = UndoWorld::Rested("screenshots/");
    const FileContents before = world.Held();
    ShotList shots = world.Shots("one.bmp");
    ASSERT_TRUE(RenameShotTo(world.session, shots, world / (folder + "one.bmp"), "ONE.bmp"));
    EXPECT_TRUE(world.Has(folder + "ONE.bmp"));
    const FileContents after = world.Held();
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Held(), before);
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_EQ(world.Held(), after);
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();

    // A deleted picture comes back beside its twin, whose content stays.
    world.Write(folder + "TWO.bmp", Pixel(200));
    const FileContents twins = world.Held();
    shots = world.Shots("two.bmp");
    while (shots.At(shots.Target()).filename() != "two.bmp")
        shots.SetTarget(shots.Target() + 1);
    ASSERT_TRUE(DeleteShot(world.session, shots)) << world.host.AllTold();
    ASSERT_FALSE(world.Has(folder + "two.bmp"));
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Held(), twins);
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Held(), twins);
}

TEST(UndoOfNames, ThePictureThatStandsForALevelStillDoes)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    const Folders folders = world.session.Folders();
    const auto cover = [&] { return NoteOf(folders, world.session.archive, world.resting)->cover; };
    const auto choose = [&](const std::string& name) {
        return bool{ChangeNotes(folders, world.session.archive, {world.resting},
                                [&](LevelCode, LevelNote& note) { note.cover = name; })};
    };
    ASSERT_TRUE(choose("One.bmp"));
    ShotList shots = world.Shots("one.bmp");
    const std::string folder = UndoWorld::Rested("screenshots/");
    ASSERT_TRUE(RenameShotTo(world.session, shots, world / (folder + "one.bmp"), "dawn.bmp"));
    EXPECT_EQ(cover(), "dawn.bmp");
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(cover(), "one.bmp");
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_EQ(cover(), "dawn.bmp");
    // One that is none of its business stays.
    ASSERT_TRUE(choose("two.bmp"));
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(cover(), "two.bmp");
}

TEST(UndoOfNames, ThatNobodyWouldGive)
{
    UndoWorld world;
    for (const char* name : {"a\nb.bmp", "a:b.bmp", "a\\b.bmp"}) {
        world.Write(UndoWorld::Rested("screenshots/") + name, Pixel(44));
        const FileContents before = world.Held();
        world.host.AnswerAll(true);
        ShotList shots = world.Shots(name);
        ASSERT_TRUE(DeleteShot(world.session, shots)) << world.host.AllTold();
        ASSERT_TRUE(world.Undo()) << name << world.host.AllTold();
        EXPECT_EQ(world.Held(), before);
    }
}

TEST(UndoChange, IsStoppedWithAllAsItWas)
{
    for (int step = 1; step < 1000; ++step) {
        UndoWorld world;
        ASSERT_TRUE(EditResting(world));
        const FileContents after = world.Held();
        const auto entry = world.Next();
        ASSERT_TRUE(entry);
        world.host.told.clear();
        world.host.StopAtStep(step);
        const bool done = UndoChange(world.session, *entry).has_value();
        EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
        world.host.StopAtStep(0);
        if (done) {
            EXPECT_GT(step, 5);
            return;
        }
        EXPECT_EQ(world.Held(), after) << "stopped at step " << step;
        EXPECT_FALSE(ChangeWaits(world.session.Folders()));
        EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    }
}

TEST(UndoChange, BringsNoFileBackBesideOneInOtherCapitals)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    ASSERT_TRUE(EditResting(world)) << world.host.AllTold();
    world.Write(UndoWorld::Rested("files/SOUND.WAV"), "put there since");
    EXPECT_FALSE(world.Undo());
    EXPECT_TRUE(world.host.WasTold("SOUND.WAV")) << world.host.AllTold();
    EXPECT_FALSE(world.Has(UndoWorld::Rested("files/sound.wav")));
    std::filesystem::remove(world / UndoWorld::Rested("files/SOUND.WAV"));
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_TRUE(world.Has(UndoWorld::Rested("files/sound.wav")));
}

TEST(UndoChange, KnowsTheArchiveByWhateverPathItWasLoaded)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    const FileContents before = world.Things();
    ShotList shots = world.Shots("one.bmp");
    ASSERT_TRUE(AddShotFile(world.session, shots, world / "from/three.bmp"));
    ASSERT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    std::filesystem::create_directory_symlink(world / "levels", world / "link");
    std::filesystem::create_symlink(world.session.archive.file, world / "home/linked.kva");
    const Archive direct = world.session.archive;
    world.session.archive.header.secondaryFolder = (world / "link").native();
    world.session.archive.header.mainFolder = (world / "link").native();
    world.session.archive.file = world / "home/linked.kva";
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    world.session.archive.header.secondaryFolder = direct.header.secondaryFolder;
    world.session.archive.header.mainFolder = direct.header.mainFolder;
    EXPECT_EQ(world.Things(), before);
}

} // namespace kestrova::testing
