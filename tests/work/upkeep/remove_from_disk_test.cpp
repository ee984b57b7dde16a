#include "archive/archive_saving.h"
#include "discs/disc_notes.h"
#include "discs/disc_world.h"
#include "discs/remove_from_disk.h"
#include "history/undo_entries.h"
#include "levels/undo_change.h"
#include "sandbox/faults.h"
#include "swap/install.h"
#include "swap/recovery.h"
#include "upkeep/load_archive.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// Three levels that were put on two discs and compared, their files on the hard disk still.
class LeavingWorld : public DiscWorld
{
public:
    std::vector<LevelCode> codes;

    LeavingWorld()
    {
        DiscNote note;
        note.folder = "levels";
        for (int i = 0; i < 3; ++i) {
            const int disc = i == 2 ? 2 : 1;
            const LevelCode code =
                AddLevel("Level " + std::to_string(i),
                         {{"level.tr4", "tr4 " + std::to_string(i)}, {"audio/one.wav", "wave"}});
            codes.push_back(code);
            session.archive.levels.back().cdNumber = disc;
            const std::string place = DiscPlace(disc == 1 ? "a" : "b", disc, code) + "/files";
            fs::create_directories((root / place).parent_path());
            fs::copy(root / Files(i), root / place, fs::copy_options::recursive);
            Write(Home(i) + "/savegames/savegame.1", "mine");
            NotedDisc noted{disc, LabelOfDisc(disc), 0, {}, 0, {}};
            if (const NotedDisc* known = note.Find(disc))
                noted = *known;
            noted.levels.push_back({code, true, *NoteFilesOf(root / place)});
            note.Put(noted);
        }
        EXPECT_TRUE(WriteDiscNote(root / "levels", note));
        session.archive.header.cdCount = 2;
        session.archive.header.cdMovePending = true;
        EXPECT_TRUE(WriteArchive(session, session.ArchivePath()));
        places.drives = {DriveWith("a"), DriveWith("b")};
    }
    [[nodiscard]] std::string Home(int level) const
    {
        return "levels/LEVEL_" + ZeroPadded(codes[static_cast<std::size_t>(level)], 4);
    }
    [[nodiscard]] std::string Files(int level) const { return Home(level) + "/files"; }
    bool Load() { return ReadArchive(session, session.ArchivePath()); }
    /// Every level has its files in a place that counts: on the hard disk, or on its disc.
    void ExpectNothingLost(const std::string& where)
    {
        const auto archive = ReadArchiveRecords(session.settings, session.ArchivePath());
        ASSERT_TRUE(archive) << where;
        for (int i = 0; i < 3; ++i) {
            const LevelRecord& level = archive->levels[static_cast<std::size_t>(i) + 1];
            const std::string disc =
                DiscPlace(level.cdNumber == 1 ? "a" : "b", level.cdNumber, level.levelCode);
            const std::string text = "tr4 " + std::to_string(i);
            EXPECT_EQ(Read((level.cdNumber == 0 ? Home(i) : disc) + "/files/level.tr4"), text)
                << where;
            EXPECT_EQ(Read(Home(i) + "/savegames/savegame.1"), "mine") << where;
        }
    }
    /// What can be undone, newest first.
    bool UndoOne()
    {
        const auto head = NextToUndo(session.Folders(), session.archive, UndoWay::Undo);
        const auto entry = head ? ReadUndoEntry(session.Folders(), head->id)
                                : Result<Change>{MakeFailure(ErrorCode::Missing, {})};
        return entry && UndoChange(session, *entry);
    }
};

} // namespace

TEST(RemoveFromDisk, ComparedFilesLeaveWithTheNextLoadAndComeBack)
{
    LeavingWorld world;
    ASSERT_TRUE(world.Load()) << world.host.AllTold();
    EXPECT_FALSE(world.session.archive.header.cdMovePending);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(FolderExists(world / world.Files(i))) << i;
    world.ExpectNothingLost("after the load");
    EXPECT_TRUE(world.Find(world.codes[2]));

    const FileContents onDiscs = world.Snapshot("discs");
    while (world.UndoOne())
        ;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(world.Read(world.Files(i) + "/audio/one.wav"), "wave") << i;
    EXPECT_EQ(world.session.archive.header.cdCount, 0);
    EXPECT_EQ(world.session.archive.header.mainFolder, (world / "levels").native());
    EXPECT_EQ(world.session.archive.levels[1].cdNumber, 0);
    EXPECT_EQ(world.Snapshot("discs"), onDiscs);
    // Done again, unless the files are others since.
    world.Write(world.Files(0) + "/level.tr4", "changed");
    int redone = 0;
    while (const auto head =
               NextToUndo(world.session.Folders(), world.session.archive, UndoWay::Redo)) {
        const auto entry = ReadUndoEntry(world.session.Folders(), head->id);
        if (!entry || !UndoChange(world.session, *entry))
            break;
        ++redone;
    }
    EXPECT_LT(redone, 3);
    EXPECT_EQ(world.Read(world.Files(0) + "/level.tr4"), "changed");
    EXPECT_TRUE(world.Load()) << world.host.AllTold();
}

TEST(RemoveFromDisk, AStandingLevelIsKnownByItsDisc)
{
    LeavingWorld world;
    ASSERT_TRUE(InstallLevel(world.session, world.codes[0])) << world.host.AllTold();
    ASSERT_TRUE(world.Load()) << world.host.AllTold();
    ASSERT_FALSE(FolderExists(world / world.Files(0)));
    // Its files were touched since, so that only their content tells whose they are.
    int touched = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(world / "trle"))
        if (entry.is_regular_file() && entry.path().filename() == "level.tr4") {
            std::filesystem::last_write_time(entry, std::filesystem::file_time_type::clock::now());
            ++touched;
        }
    EXPECT_EQ(touched, 1);
    ASSERT_TRUE(InstallLevel(world.session, world.codes[1])) << world.host.AllTold();
    EXPECT_FALSE(world.host.WasTold("held by no backup")) << world.host.AllTold();
    EXPECT_FALSE(world.Has("home/history/originals"));
}

TEST(RemoveFromDisk, WhatWasNotComparedOrHasChangedStays)
{
    LeavingWorld world;
    world.Write(world.Files(0) + "/level.tr4", "tr4 0 and more");
    auto note = *ReadDiscNote(world / "levels");
    note.CutAfter(1);
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    world.Write(DiscWorld::DiscPlace("b", 2, world.codes[2]) + "/files/audio/one.wav", "wavy");
    world.session.settings.undoCount = 0; // what leaves then leaves for good
    ASSERT_TRUE(world.Load()) << world.host.AllTold();
    EXPECT_EQ(world.Read(world.Files(0) + "/level.tr4"), "tr4 0 and more");
    EXPECT_FALSE(FolderExists(world / world.Files(1)));
    EXPECT_EQ(world.Read(world.Files(2) + "/level.tr4"), "tr4 2");
    EXPECT_EQ(world.session.archive.levels[1].cdNumber, 0);
    EXPECT_EQ(world.session.archive.levels[2].cdNumber, 1);
    EXPECT_EQ(world.session.archive.levels[3].cdNumber, 0);
    ASSERT_FALSE(world.host.told.empty());
    EXPECT_NE(world.host.AllTold().find("Level 0: level.tr4 is not as it is on disc # 1"),
              std::string::npos)
        << world.host.AllTold();
    EXPECT_NE(world.host.AllTold().find("Level 2: audio/one.wav is not as it is on disc # 2"),
              std::string::npos);
    EXPECT_FALSE(world.UndoOne());
}

TEST(RemoveFromDisk, WhatNobodyComparedIsComparedBeforeItLeaves)
{
    LeavingWorld world;
    auto note = *ReadDiscNote(world / "levels");
    note.CutAfter(1);
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    ASSERT_TRUE(world.Load()) << world.host.AllTold();
    EXPECT_FALSE(FolderExists(world / world.Files(2)));
    EXPECT_EQ(world.session.archive.levels[3].cdNumber, 2);
    note = *ReadDiscNote(world / "levels");
    ASSERT_NE(FindNoted(note, 2, world.codes[2]), nullptr);
    EXPECT_TRUE(FindNoted(note, 2, world.codes[2])->verified);
    EXPECT_EQ(FindNoted(note, 2, world.codes[2])->files.size(), 2U);
    world.ExpectNothingLost("compared at the load");
}

/// A document that was copied from a disc, and what came back before that was broken off, are no
/// levels: the archive goes on to know the discs on which all of them lie.
TEST(RemoveFromDisk, APartOfALevelLeavesItsLevelOnItsDisc)
{
    for (const bool isNoted : {true, false}) {
        LeavingWorld world;
        for (LevelRecord& level : world.session.archive.levels)
            level.filesSize = level.cdNumber != 0 ? 9 : 0;
        ASSERT_TRUE(WriteArchive(world.session, world.session.ArchivePath()));
        std::filesystem::remove_all(world / world.Files(0));
        world.Write(world.Files(0) + "/readme.txt", "with notes of my own");
        std::filesystem::remove_all(world / (world.Files(1) + "/audio"));
        if (!isNoted)
            std::filesystem::remove(world / "levels/discs.json");
        // The second disc is given up, which the levels of the first one do not suffer from.
        world.places.drives = {world.DriveWith("a")};
        world.host.WillAsk("Do you want the levels whose files are on the hard disk", true);
        ASSERT_TRUE(world.Load()) << world.host.AllTold();
        EXPECT_EQ(world.session.archive.levels[1].cdNumber, 1);
        EXPECT_EQ(world.session.archive.levels[2].cdNumber, 1);
        EXPECT_EQ(world.session.archive.levels[3].cdNumber, 0);
        EXPECT_EQ(world.Read(world.Files(0) + "/readme.txt"), "with notes of my own");
        EXPECT_TRUE(world.Find(world.codes[0]));
        world.ExpectNothingLost(isNoted ? "noted" : "not noted");
    }
}

TEST(RemoveFromDisk, AMissingDiscKeepsTheArchiveFromLoadingUnlessItIsGivenUp)
{
    LeavingWorld world;
    world.places.drives = {world.DriveWith("a")};
    world.host.WillAsk("Do you want the levels whose files are on the hard disk", false);
    EXPECT_FALSE(world.Load());
    EXPECT_TRUE(world.host.WasTold("Cd missing: cd install step 2, aborted!"));
    EXPECT_TRUE(FolderExists(world / world.Files(2)));
    // The next load goes on with the rest.
    world.host.WillAsk("Do you want the levels whose files are on the hard disk", true);
    ASSERT_TRUE(world.Load()) << world.host.AllTold();
    EXPECT_FALSE(FolderExists(world / world.Files(0)));
    EXPECT_TRUE(FolderExists(world / world.Files(2)));
    EXPECT_EQ(world.session.archive.levels[3].cdNumber, 0);
    EXPECT_EQ(world.session.archive.header.cdCount, 1);
    EXPECT_FALSE(world.session.archive.header.cdMovePending);
    world.ExpectNothingLost("one disc given up");
}

TEST(RemoveFromDisk, KilledAndFailedAnywhereNothingIsLost)
{
    for (const std::int32_t undo : {0, 50}) {
        int points = 0;
        for (int point = 1;; point = NextPoint(point), ++points) {
            LeavingWorld world;
            world.session.settings.undoCount = undo;
            world.host.AnswerAll(false);
            const KillRun run = WithKillAt(point, [&] { return world.Load(); });
            Session next = world.Reopened();
            next.discs = world.shelf.get();
            (void)RecoverInterruptedWork(next, {});
            world.ExpectNothingLost(run.call);
            EXPECT_TRUE(world.Load()) << run.call << world.host.AllTold();
            for (int i = 0; i < 3; ++i)
                EXPECT_FALSE(FolderExists(world / world.Files(i))) << run.call;
            world.ExpectNothingLost(run.call);
            if (!run.killed)
                break;
        }
        TellPoints(points, 10 / WalkStride());
        for (int point = 1;; point = NextPoint(point)) {
            LeavingWorld world;
            world.session.settings.undoCount = undo;
            world.host.AnswerAll(false);
            const FaultRun run = WithFaultAt(point, [&] { return world.Load(); });
            Session next = world.Reopened();
            next.discs = world.shelf.get();
            (void)RecoverInterruptedWork(next, {});
            world.ExpectNothingLost(run.call);
            if (!run.reached)
                break;
        }
    }
}

} // namespace kestrova::testing
