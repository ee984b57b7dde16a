#include "history/archive_move.h"
#include "history/history.h"
#include "levels/undo_world.h"
#include "platform/real_path.h"
#include "sandbox/faults.h"
#include "swap/install.h"
#include "upkeep/load_archive.h"
#include "upkeep/move_archive.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// An archive with all that may lie in its folder: a level that stands in the Level Editor's
/// folder, changes that can be undone, folders that the list does not know, links, a stranger's
/// file.
class MoveWorld : public UndoWorld
{
public:
    MoveWorld()
    {
        host.AnswerAll(true);
        Write("outside.txt", "not of the archive");
        Write(Rested("my notes.txt"), "notes that nobody knows");
        Write(Rested("deep/a/b/c.bin"), std::string(200'000, 'c'));
        fs::create_symlink("a.tr4", root / Rested("files/alias.tr4"));
        fs::create_symlink("../../outside.txt", root / Rested("outside.lnk"));
        fs::create_symlink(root / Rested("deep"), root / Rested("absolute.lnk"));
        fs::create_symlink("nowhere", root / Rested("dangling.lnk"));
        fs::create_directories(root / Rested("empty"));
        Write("levels/exact-names.jsonl", "");
        Write("levels/discs.json", "{}");
        Write("levels/LEVEL_0077/files/lost.tr4", "of no list");
        Write("levels/LEVEL_0009.set-aside-2026-01-01_10.00.00/files/x.tr4", "set aside");
        Write("levels/mine.txt", "the person's own");
        ShotList shots = Shots("one.bmp");
        EXPECT_TRUE(AddShotFile(session, shots, root / "from/three.bmp"));
        whole_ = ArchiveIn("levels");
    }
    ~MoveWorld()
    {
        if (!far_.empty())
            fs::remove_all(far_);
    }
    MoveWorld(const MoveWorld&) = delete;
    MoveWorld& operator=(const MoveWorld&) = delete;

    /// The new folder lies on another disk from now on, where this machine has two.
    void GoFar()
    {
        std::string place = "/var/tmp/kestrova-test-XXXXXX";
        ASSERT_NE(::mkdtemp(place.data()), nullptr);
        far_ = place;
        std::error_code failure;
        fs::create_directory(far_ / "moved", failure);
        ASSERT_FALSE(failure);
        fs::create_directory_symlink(far_ / "moved", root / "moved");
    }
    bool Move() { return MoveArchive(session, root / "moved"); }

    /// All files of an archive that lies in that folder; links as their words.
    [[nodiscard]] FileContents ArchiveIn(const std::string& folder) const
    {
        FileContents found;
        if (!fs::exists(root / folder))
            return found;
        const Path place = fs::canonical(root / folder);
        for (const auto& entry : fs::recursive_directory_iterator(place)) {
            const std::string name = entry.path().lexically_relative(place).native();
            if (name == "mine.txt" || entry.path().filename() == ".kv~lock")
                continue;
            if (entry.is_symlink())
                found[name] = "->";
            else if (entry.is_regular_file())
                found[name] = Read(folder + "/" + name);
        }
        return found;
    }
    /// The archive is whole in the one folder that its file names, and nothing of it lies in the
    /// other one.
    void ExpectOneArchive(const std::string& wanted = {}) const
    {
        const auto saved = ReadArchiveFile(session.ArchivePath());
        ASSERT_TRUE(saved);
        const std::string folder = Path{Trim(saved->header.secondaryFolder)}.filename();
        const std::string other = folder == "moved" ? "levels" : "moved";
        if (!wanted.empty()) {
            EXPECT_EQ(folder, wanted);
        }
        EXPECT_EQ(ArchiveIn(folder), whole_);
        EXPECT_EQ(ArchiveIn(other), FileContents{});
        EXPECT_EQ(Read("levels/mine.txt"), "the person's own");
        EXPECT_EQ(Read("outside.txt"), "not of the archive");
        EXPECT_FALSE(MoveWaits(session.Folders()));
    }
    /// Playing on, savegames reach the store of their level where it is now.
    void ExpectSavegamesComeHome()
    {
        const std::string folder = session.Folders().levels.filename();
        const std::string live = Read("trle/savegame.3");
        ASSERT_TRUE(InstallLevel(session, resting)) << host.AllTold();
        EXPECT_EQ(Read(folder + "/LEVEL_0001/backup_savegames/savegame.3"), live);
        EXPECT_EQ(Read("trle/savegame.1"), SavegameBytes("Resting", 5));
        ASSERT_TRUE(InstallLevel(session, played)) << host.AllTold();
        EXPECT_EQ(Read("trle/savegame.3"), live);
    }

private:
    FileContents whole_;
    Path far_;
};

} // namespace

TEST(MovedArchive, HasAllThatLayInItsFolderAndItsLevelsFindTheirOwn)
{
    MoveWorld world;
    const auto time = fs::last_write_time(world / MoveWorld::Rested("my notes.txt"));
    ASSERT_TRUE(world.Move()) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("Folder archive moved in " + (world / "moved").native()));
    world.ExpectOneArchive("moved");
    EXPECT_EQ(world.session.archive.header.mainFolder, (world / "moved").native());
    EXPECT_EQ(fs::last_write_time(world / "moved/LEVEL_0002/my notes.txt"), time);
    EXPECT_EQ(fs::read_symlink(world / "moved/LEVEL_0002/files/alias.tr4"), "a.tr4");
    EXPECT_EQ(fs::canonical(world / "moved/LEVEL_0002/outside.lnk"), world / "outside.txt");
    EXPECT_EQ(fs::read_symlink(world / "moved/LEVEL_0002/absolute.lnk"),
              world / "moved/LEVEL_0002/deep");
    EXPECT_TRUE(fs::is_symlink(world / "moved/LEVEL_0002/dangling.lnk"));
    EXPECT_TRUE(fs::is_directory(world / "moved/LEVEL_0002/empty"));
    EXPECT_TRUE(fs::is_directory(world / "levels")) << "the person's own file lies there";
    EXPECT_TRUE(world.session.locks.Holds(world / "moved"));
    EXPECT_FALSE(world.session.locks.Holds(world / "levels"));
    // The picture that was added before goes again, and comes again.
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_FALSE(world.Has("moved/LEVEL_0002/screenshots/three.bmp"));
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_TRUE(world.Has("moved/LEVEL_0002/screenshots/three.bmp"));
    // Another archive in the old place is nobody's store.
    world.Write("levels/LEVEL_0001/files/a.tr4", "another level");
    world.ExpectSavegamesComeHome();
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/backup_savegames"));
}

TEST(MovedArchive, BringsBackALevelThatWasSetAsideBefore)
{
    MoveWorld world;
    ASSERT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    ASSERT_TRUE(world.Move()) << world.host.AllTold();
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_TRUE(world.Has("moved/LEVEL_0002/my notes.txt"));
    EXPECT_NE(world.session.archive.Find(world.resting), nullptr);
}

TEST(MovedByHand, TheArchiveFindsItsLevelsAndTheyFindTheirOwn)
{
    // Whoever loads it is asked, or says it beforehand; on discs too.
    for (const bool asked : {true, false})
        for (const bool onDisc : {false, true}) {
            MoveWorld world;
            if (onDisc) {
                world.session.archive.header.mainFolder = "D:\\levels";
                world.session.archive.header.cdCount = 1;
                ASSERT_TRUE(WriteArchive(world.session, world.session.ArchivePath()));
            }
            fs::rename(world / "levels", world / "moved");
            if (asked)
                world.host.WillChoose("Select folder: levels", world / "moved");
            ASSERT_TRUE(ReadArchive(world.session, world.session.ArchivePath(),
                                    asked ? Path{} : world / "moved"))
                << world.host.AllTold();
            EXPECT_EQ(world.session.archive.header.mainFolder,
                      onDisc ? "D:\\levels" : (world / "moved").native());
            ASSERT_TRUE(world.Undo()) << world.host.AllTold();
            EXPECT_FALSE(world.Has("moved/LEVEL_0002/screenshots/three.bmp"));
            // Another archive comes into the old place.
            world.Write("levels/LEVEL_0001/files/a.tr4", "another level");
            world.ExpectSavegamesComeHome();
        }
}

TEST(MovedArchive, AsksAnotherDiskForItsRoom)
{
    MoveWorld world;
    world.GoFar();
    const bool near =
        platform::FactsOf(world / "moved").device == platform::FactsOf(world / "levels").device;
    world.machine.free = 1000;
    EXPECT_EQ(world.Move(), near);
    EXPECT_EQ(world.host.WasTold("free space is not sufficient (it needs "), !near);
    if (!near)
        world.ExpectOneArchive("levels");
}

TEST(MovedArchive, GoesOnlyWhereItFits)
{
    MoveWorld world;
    world.Write("file", "no folder");
    world.Write("other/LEVEL_0003/files/a.tr4", "another archive");
    world.Write("full/mine.txt", "the person's own");
    fs::create_directory_symlink(world / "levels", world / "same");
    fs::create_symlink("nowhere", world / "dangling");
    fs::create_directory(world / "locked");
    fs::permissions(world / "locked", fs::perms::owner_read | fs::perms::owner_exec);
    const std::string list = world.Read("home/LevelArchive.kva");
    const std::pair<std::string, std::string> refused[] = {
        {"levels", "lies in"},
        {"levels/LEVEL_0002/new", "inside the archive's own"},
        {"levels/new", "inside the archive's own"},
        {"same", "lies in"},
        {"same/new", "inside the archive's own"},
        {"file", "no folder"},
        {"dangling", "no folder"},
        {"other", "levels already"},
        {"home/backup_trle/new", "Levels are not safe in"},
        {"home/swap", "Levels are not safe in"},
        {"trle/data/new", "Levels are not safe in"},
        {"LEVELS", "lies in " + (world / "levels").native() + " already"},
        {std::string(220, 'x'), "220 letters"}};
    for (const auto& [target, words] : refused) {
        world.host.told.clear();
        EXPECT_FALSE(MoveArchive(world.session, world / target));
        EXPECT_TRUE(world.host.WasTold(words)) << target << ": " << world.host.AllTold();
    }
    if (!platform::MayWrite(world / "locked")) { // nothing is locked for a superuser
        EXPECT_FALSE(MoveArchive(world.session, world / "locked"));
    }
    fs::permissions(world / "locked", fs::perms::owner_all);
    EXPECT_EQ(world.Read("home/LevelArchive.kva"), list);
    EXPECT_FALSE(world.Has("moved"));
    world.ExpectOneArchive("levels");
    // Who is asked is asked again. Within one disk no room is asked for.
    world.machine.free = 1000;
    world.host.WillChoose("Select target folder", world / "other");
    world.host.WillChoose("Select target folder", world / "moved");
    EXPECT_TRUE(MoveArchive(world.session)) << world.host.AllTold();
    // What else lies in the target stays, and so does a link to it.
    fs::create_directory_symlink(world / "full", world / "link");
    EXPECT_TRUE(MoveArchive(world.session, world / "link")) << world.host.AllTold();
    EXPECT_TRUE(world.Has("full/LEVEL_0002/my notes.txt"));
    EXPECT_TRUE(world.Has("full/mine.txt"));
    EXPECT_FALSE(world.Has("moved"));
}

TEST(MovedArchive, GoesToAFolderAsItIsSpelledThere)
{
    MoveWorld world;
    fs::create_directory(world / "Moved");
    ASSERT_TRUE(MoveArchive(world.session, world / "moved")) << world.host.AllTold();
    EXPECT_EQ(world.session.archive.header.secondaryFolder, (world / "Moved").native());
    EXPECT_FALSE(world.host.WasTold("somebody")) << world.host.AllTold();
    world.ExpectOneArchive("Moved");
}

TEST(MovedArchive, ThatIsStoppedOrHasAPipeIsWhereItWas)
{
    for (int step = 1;; ++step) {
        MoveWorld world;
        world.host.StopAtStep(step);
        if (world.Move())
            break;
        SCOPED_TRACE("stopped at step " + std::to_string(step));
        world.ExpectOneArchive("levels");
        EXPECT_FALSE(world.Has("moved"));
        EXPECT_FALSE(world.host.WasTold("Error")) << world.host.AllTold();
        ASSERT_LT(step, 1000);
    }
    MoveWorld world;
    ASSERT_EQ(::mkfifo((world / MoveWorld::Rested("pipe")).c_str(), 0600), 0);
    EXPECT_FALSE(world.Move());
    EXPECT_TRUE(world.host.WasTold("pipe"));
    EXPECT_FALSE(world.Has("moved"));
}

namespace
{

/// Does something else in front of one call.
class Meanwhile : public platform::FileHook
{
public:
    Meanwhile(platform::FileAction action, std::string ending, std::function<void()> doing)
        : action_(action), ending_(std::move(ending)), doing_(std::move(doing))
    {
        platform::SetFileHook(this);
    }
    ~Meanwhile() override { platform::SetFileHook(nullptr); }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;
    std::error_code Before(platform::FileAction action, const platform::Path& path) override
    {
        if (action == action_ && path.native().ends_with(ending_) && doing_)
            std::exchange(doing_, nullptr)();
        return {};
    }

private:
    platform::FileAction action_;
    std::string ending_;
    std::function<void()> doing_;
};

} // namespace

TEST(MovedArchive, LeavesWhatSomebodyChangedMeanwhile)
{
    using platform::FileAction;
    const std::string notes = MoveWorld::Rested("my notes.txt");
    for (const bool far : {false, true}) {
        const auto replace = [&](const MoveWorld& world) {
            if (!far) // otherwise it is written in place
                fs::remove(world / notes);
            world.Write(notes, "newer");
        };
        {
            // Before the list is written: the move is given up.
            MoveWorld world;
            if (far)
                world.GoFar();
            const Meanwhile writer{FileAction::Sync, "moved", [&] { replace(world); }};
            EXPECT_FALSE(world.Move());
            EXPECT_TRUE(world.host.WasTold("Somebody changed files")) << world.host.AllTold();
            EXPECT_EQ(world.Read(notes), "newer");
            EXPECT_FALSE(world.Has("moved/LEVEL_0001"));
        }
        // Behind it: what is newer stays in the old folder, and is named.
        MoveWorld world;
        if (far)
            world.GoFar();
        const Meanwhile writer{FileAction::Unlink, "c.bin", [&] {
                                   replace(world);
                                   world.Write(MoveWorld::Rested("files/added.txt"), "added");
                               }};
        EXPECT_TRUE(world.Move()) << world.host.AllTold();
        EXPECT_TRUE(world.host.WasTold("stays in the old folder")) << world.host.AllTold();
        EXPECT_EQ(world.Read(notes), "newer");
        EXPECT_EQ(world.Read(MoveWorld::Rested("files/added.txt")), "added");
        EXPECT_EQ(world.ArchiveIn("levels").size(), 2U);
        EXPECT_EQ(world.Read("moved/LEVEL_0002/my notes.txt"), "notes that nobody knows");
    }
    // One file under both names is the newer one under both.
    MoveWorld world;
    const Meanwhile writer{FileAction::Sync, "moved", [&] { world.Write(notes, "newer"); }};
    EXPECT_TRUE(world.Move());
    EXPECT_EQ(world.Read("moved/LEVEL_0002/my notes.txt"), "newer");
}

namespace
{

/// Every point of a move within a disk, where files get second names; every few of one to another
/// disk, each of which waits for that disk.
int NextOfMove(int point, bool far)
{
    return NextPoint(point) + (far ? 10 : 0);
}

class MoveWalk : public ::testing::TestWithParam<bool>
{
};

} // namespace

INSTANTIATE_TEST_SUITE_P(ToAnotherDisk, MoveWalk, ::testing::Bool());

TEST_P(MoveWalk, KilledAnywhereTheArchiveIsWholeInOneFolder)
{
    for (int step = 1; step < 5000; step = NextOfMove(step, GetParam())) {
        MoveWorld world;
        if (GetParam())
            world.GoFar();
        const KillRun run = WithKillAt(step, [&] { return world.Move(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        world.Restart();
        world.ExpectOneArchive(run.killed ? "" : "moved");
        world.ExpectSavegamesComeHome();
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 100);
    }
    FAIL() << "never finished";
}

TEST_P(MoveWalk, FailedAnywhereTheArchiveIsWholeInOneFolder)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1; step < 5000; step = NextOfMove(step, GetParam())) {
            MoveWorld world;
            if (GetParam())
                world.GoFar();
            const FaultRun run = WithFaultAt(
                step, [&] { return world.Move(); }, std::errc::no_space_on_device, after);
            SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
            const auto saved = ReadArchiveFile(world.session.ArchivePath());
            ASSERT_TRUE(saved);
            if (after == AfterFault::Works) {
                EXPECT_EQ(Trim(saved->header.secondaryFolder),
                          Trim(world.session.archive.header.secondaryFolder));
            }
            world.Restart();
            const auto stayed = WhatStayed(world / "levels");
            const bool cleared = stayed.empty() || run.answer == false || !run.reached;
            if (cleared)
                world.ExpectOneArchive();
            world.ExpectSavegamesComeHome();
            if (!run.reached || ::testing::Test::HasFailure()) {
                TellPoints(step - 1, 100);
                break;
            }
        }
}

TEST(KilledMove, IsItselfEndedWhereverThatIsKilled)
{
    int calls = 0;
    {
        MoveWorld world;
        calls = CountFileCalls([&] { return world.Move(); });
    }
    for (const int at : {calls / 3, calls - 15})
        for (int step = 1; step < 2000; step = NextPoint(step)) {
            MoveWorld world;
            ASSERT_TRUE(WithKillAt(at, [&] { return world.Move(); }).killed);
            const KillRun run =
                WithKillAt(step, [&] { return RecoverInterruptedWork(world.session); });
            SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
            world.Restart();
            world.ExpectOneArchive();
            world.ExpectSavegamesComeHome();
            if (!run.killed || ::testing::Test::HasFailure())
                break;
        }
}

TEST(KilledMove, WaitsForAListThatCannotBeReadAndCanBeGivenUp)
{
    MoveWorld world;
    ASSERT_TRUE(WithKillAt(100, [&] { return world.Move(); }).killed);
    const std::string list = world.Read("home/LevelArchive.kva");
    world.Write("home/LevelArchive.kva", "damaged");
    const FileContents both[] = {world.ArchiveIn("levels"), world.ArchiveIn("moved")};
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("mend --let-go")) << world.host.AllTold();
    EXPECT_FALSE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
    EXPECT_NE(
        RemedyForWaiting(world.session.Folders(), world.session.archive).find("mend --let-go"),
        std::string::npos);
    EXPECT_TRUE(RecoverInterruptedWork(world.session, {{}, {}, true})) << world.host.AllTold();
    EXPECT_EQ(world.ArchiveIn("levels"), both[0]);
    EXPECT_EQ(world.ArchiveIn("moved"), both[1]);
    EXPECT_FALSE(MoveWaits(world.session.Folders()));
    // Neither folder of a note that is damaged, or leads elsewhere, is touched.
    world.Write("home/LevelArchive.kva", list);
    world.Write("home/swap/move", "{}");
    EXPECT_TRUE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("could not be read. It lies in"));
    EXPECT_EQ(world.ArchiveIn("moved"), both[1]);
    EXPECT_FALSE(ParseMoveNote(FormatMoveNote({"/a.kva", "/from", "relative", false})));
}

} // namespace kestrova::testing
