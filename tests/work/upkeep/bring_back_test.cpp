#include "archive/archive_saving.h"
#include "discs/disc_notes.h"
#include "discs/disc_world.h"
#include "sandbox/faults.h"
#include "upkeep/bring_back.h"
#include "upkeep/move_archive.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// Three levels on two discs, one on the hard disk; the discs' files are read-only.
class BringBackWorld : public DiscWorld
{
public:
    BringBackWorld()
    {
        host.AnswerAll(true);
        first = AddOnDisc("First", 1, "one", {{"a.tr4", "level a"}, {"sub/readme.txt", "read me"}});
        second = AddOnDisc("Second", 1, "one", {{"b.tr4", "level b"}});
        third = AddOnDisc("Third", 2, "two", {{"c.tr4", std::string(300'000, 'c')}});
        AddLevel("At home", {{"d.tr4", "level d"}});
        Write("levels/LEVEL_0001/savegames/savegame.1", "mine");
        for (LevelRecord& level : session.archive.levels)
            level.filesSize = level.cdNumber != 0 ? 20 : 0;
        for (const auto& entry : fs::recursive_directory_iterator(root / "discs"))
            if (entry.is_regular_file())
                fs::permissions(entry, fs::perms::owner_read);
        places.drives = {DriveWith("one"), DriveWith("two")};
        NoteDiscs();
        EXPECT_TRUE(WriteArchive(session, session.ArchivePath()));
    }
    LevelCode first = 0;
    LevelCode second = 0;
    LevelCode third = 0;

    void NoteDiscs() const
    {
        DiscNote note;
        note.folder = "levels";
        for (const std::int32_t number : {1, 2}) {
            NotedDisc disc;
            disc.number = number;
            for (const LevelRecord& level : session.archive.levels)
                if (level.cdNumber == number) {
                    const auto files = NoteFilesOf(
                        root / (DiscPlace(number == 1 ? "one" : "two", number, level.levelCode) +
                                "/files"));
                    ASSERT_TRUE(files);
                    disc.levels.push_back({level.levelCode, true, *files});
                }
            note.Put(disc);
        }
        ASSERT_TRUE(WriteDiscNote(root / "levels", note));
    }
    /// A new start, which reads the list from its file.
    void Restart()
    {
        const auto read = ReadArchiveFile(session.ArchivePath());
        ASSERT_TRUE(read);
        session.archive.header = read->header;
        session.archive.levels = read->levels;
        session.running.operations = 0;
        NewShelf();
    }
    /// Each level is either on its disc or whole on the hard disk; `all`: all of them are here.
    void ExpectWhole(bool all, const std::string& folder = "levels") const
    {
        const FileContents wanted[] = {{{"a.tr4", "level a"}, {"sub/readme.txt", "read me"}},
                                       {{"b.tr4", "level b"}},
                                       {{"c.tr4", std::string(300'000, 'c')}}};
        std::int32_t largest = 0;
        for (const LevelRecord& level : session.archive.levels) {
            largest = std::max(largest, level.cdNumber);
            if (level.levelCode < 1 || level.levelCode > 3)
                continue;
            EXPECT_TRUE(level.cdNumber == 0 || !all) << level.levelCode;
            if (level.cdNumber == 0) {
                EXPECT_EQ(Snapshot(folder + "/LEVEL_" + ZeroPadded(level.levelCode, 4) + "/files"),
                          wanted[level.levelCode - 1]);
            }
        }
        EXPECT_EQ(session.archive.header.cdCount, largest);
        EXPECT_EQ(Read(folder + "/LEVEL_0001/savegames/savegame.1"), "mine");
        EXPECT_EQ(Read(folder + "/LEVEL_0004/files/d.tr4"), "level d");
    }
};

} // namespace

TEST(BroughtBack, IsAllThatLayOnDiscsAndCanBeWritten)
{
    BringBackWorld world;
    ASSERT_TRUE(MoveArchiveToHd(world.session)) << world.host.AllTold();
    world.ExpectWhole(true);
    EXPECT_EQ(world.session.archive.header.mainFolder, (world / "levels").native());
    EXPECT_FALSE(world.session.archive.header.cdMovePending);
    EXPECT_EQ(fs::status(world / "levels/LEVEL_0001/files/a.tr4").permissions(),
              static_cast<fs::perms>(0644));
    EXPECT_EQ(world.session.archive.levels[3].filesSize, 300'000) << "as it was measured";
    world.Restart();
    world.ExpectWhole(true);
    EXPECT_TRUE(MoveArchiveToHd(world.session));
    EXPECT_TRUE(world.host.WasTold("No level of this archive lies on a disc"));
}

TEST(BroughtBack, GoesToAnotherFolderWhereThatIsWanted)
{
    BringBackWorld world;
    ASSERT_TRUE(MoveArchive(world.session, world / "moved")) << world.host.AllTold();
    world.ExpectWhole(true, "moved");
    EXPECT_FALSE(world.Has("levels/LEVEL_0001"));
    EXPECT_EQ(world.session.archive.header.mainFolder, (world / "moved").native());

    BringBackWorld small; // and where the disk has no room
    small.machine.free = 30;
    EXPECT_FALSE(MoveArchiveToHd(small.session, small / "moved"));
    EXPECT_TRUE(small.host.WasTold("free space is not sufficient"));
    EXPECT_EQ(small.session.archive.header.cdCount, 2);
    small.host.AnswerAll(false);
    EXPECT_FALSE(MoveArchiveToHd(small.session));
    small.ExpectWhole(false);
}

TEST(BroughtBack, LeavesOnItsDiscWhatTheDiscDoesNotHoldAsItWas)
{
    BringBackWorld world;
    const std::string damaged = BringBackWorld::DiscPlace("one", 1, world.first) + "/files/a.tr4";
    fs::permissions(world / damaged, fs::perms::owner_all);
    world.Write(damaged, "level !"); // a changed byte, the same size
    EXPECT_FALSE(MoveArchiveToHd(world.session));
    EXPECT_TRUE(world.host.WasTold("The disc # 1 does not hold the level \"First\""))
        << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("Levels on the hard disk now: 2; still on discs: 1"));
    world.ExpectWhole(false);
    EXPECT_EQ(world.session.archive.header.cdCount, 1);
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/files/a.tr4"));
    world.Write(damaged, "level a");
    EXPECT_TRUE(MoveArchiveToHd(world.session)) << world.host.AllTold();
    world.ExpectWhole(true);
}

TEST(BroughtBack, GoesOnWhereADiscWasMissing)
{
    BringBackWorld world;
    // What lies on the hard disk already needs no disc; another file of the name is kept.
    world.Write("levels/LEVEL_0002/files/b.tr4", "level b");
    world.Write("levels/LEVEL_0003/files/c.tr4", "somebody's own");
    world.places.drives.clear();
    EXPECT_FALSE(MoveArchiveToHd(world.session));
    EXPECT_TRUE(world.host.WasTold("Cd missing")) << world.host.AllTold();
    world.places.drives = {world.DriveWith("one"), world.DriveWith("two")};
    world.Restart();
    EXPECT_TRUE(MoveArchiveToHd(world.session)) << world.host.AllTold();
    EXPECT_EQ(world.Read("levels/LEVEL_0003/files/c.tr4"), std::string(300'000, 'c'));
    EXPECT_EQ(world.Read("levels/LEVEL_0003/replaced/c.tr4"), "somebody's own");
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0003/files").size(), 1U) << "only the level's files";
    EXPECT_TRUE(world.host.WasTold("replaced/c.tr4")) << world.host.AllTold();
}

TEST(BroughtBack, KeepsWhatIsSpelledWithOtherCapitals)
{
    BringBackWorld world;
    world.Write("levels/LEVEL_0001/files/sub/README.TXT", "somebody's own");
    // Two files of a disc that another program made, which one folder here cannot tell apart.
    fs::permissions(world / BringBackWorld::DiscPlace("one", 1, world.second), fs::perms::all);
    world.Write(BringBackWorld::DiscPlace("one", 1, world.second) + "/files/B.TR4", "level B");
    fs::remove(world / "levels/discs.json");
    EXPECT_FALSE(MoveArchiveToHd(world.session));
    EXPECT_TRUE(world.host.WasTold("Levels on the hard disk now: 2; still on discs: 1"))
        << world.host.AllTold();
    EXPECT_EQ(world.session.archive.Find(world.second)->cdNumber, 1);
    EXPECT_EQ(world.Read("levels/LEVEL_0001/replaced/README.TXT"), "somebody's own");
    EXPECT_EQ(world.Read("levels/LEVEL_0001/files/sub/readme.txt"), "read me");
}

TEST(BroughtBack, IsStoppedAndKilledAndFailsWithNoLevelInHalves)
{
    int stops = 0;
    for (int step = 1; step < 200; ++step) {
        BringBackWorld world;
        world.host.StopAtStep(step);
        const bool done = MoveArchiveToHd(world.session);
        world.ExpectWhole(done);
        world.Restart();
        world.ExpectWhole(done);
        stops = step;
        if (done)
            break;
    }
    EXPECT_GT(stops, 3);
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        BringBackWorld world;
        const KillRun run = WithKillAt(step, [&] { return MoveArchiveToHd(world.session); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        world.Restart();
        world.ExpectWhole(!run.killed);
        EXPECT_TRUE(MoveArchiveToHd(world.session)) << world.host.AllTold();
        world.ExpectWhole(true);
        if (!run.killed || ::testing::Test::HasFailure()) {
            TellPoints(step - 1, 20);
            break;
        }
    }
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        BringBackWorld world;
        const FaultRun run = WithFaultAt(step, [&] { return MoveArchiveToHd(world.session); });
        SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
        world.ExpectWhole(run.answer);
        world.Restart();
        world.ExpectWhole(run.answer);
        EXPECT_TRUE(MoveArchiveToHd(world.session)) << world.host.AllTold();
        if (!run.reached || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 20);
    }
}

} // namespace kestrova::testing
