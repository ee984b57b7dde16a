#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/set_aside.h"
#include "archive/tr4_index.h"
#include "history/history.h"
#include "history/standing.h"
#include "intake/edit_level.h"
#include "levels/new_level.h"
#include "levels/original_level.h"
#include "levels/remove_level.h"
#include "sandbox/faults.h"
#include "swap/install.h"
#include "swap/recovery.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

class LevelLife : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
    }
    /// The archive as another start of the program reads it.
    [[nodiscard]] Session Reloaded()
    {
        Session fresh = box.Reopened();
        EXPECT_TRUE(ReadArchive(fresh, box.session.ArchivePath())) << box.host.AllTold();
        return fresh;
    }
    World box;
};

TEST_F(LevelLife, AFolderThatTheListDoesNotKnowIsSetAsideWhole)
{
    box.Write("levels/LEVEL_0001/files/old.tr4", "old");
    box.Write("levels/LEVEL_0001/screenshots/view.jpg", "view");
    box.Write("levels/level_0001/backup_savegames/savegame.0", SavegameBytes("Old", 5));
    const Files upper = box.Snapshot("levels/LEVEL_0001");
    const Files lower = box.Snapshot("levels/level_0001");
    LevelRecord level;
    ASSERT_TRUE(BeginNewLevel(box.session, level));
    ASSERT_EQ(box.host.told.size(), 2U) << box.host.AllTold();
    EXPECT_TRUE(box.Snapshot("levels/LEVEL_0001").empty());
    const auto found = *FindUnknownFolders(box.session.archive);
    ASSERT_EQ(found.setAside.size(), 2U);
    EXPECT_EQ(found.unlisted, std::vector<Path>{box / "levels/LEVEL_0001"}) << "not yet";
    std::set<Files> kept;
    for (const Path& folder : found.setAside) {
        EXPECT_TRUE(box.host.WasTold(folder.native())) << folder;
        kept.insert(box.Snapshot(folder.lexically_relative(box.root).native()));
    }
    EXPECT_EQ(kept, (std::set<Files>{upper, lower}));

    DropNewLevel(box.session, level);
    EXPECT_FALSE(box.Has("levels/LEVEL_0001")) << "its own folder is empty again";
    EXPECT_EQ(FindUnknownFolders(box.session.archive)->setAside.size(), 2U);
    ASSERT_TRUE(BeginNewLevel(box.session, level));
    EXPECT_EQ(box.host.told.size(), 2U) << "a folder without a file is taken as it is";
    ASSERT_TRUE(BeginNewLevel(box.session, level));
    EXPECT_EQ(box.host.told.size(), 2U);
}

TEST_F(LevelLife, SettingAFolderAsideLosesNothingWhereverItFailsOrIsKilled)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 200);
        bool reached = false;
        for (const bool killed : {false, true}) {
            World own;
            own.MakeTrle();
            own.MakeBackupAndArchive();
            own.Write("levels/LEVEL_0001/files/old.tr4", "old");
            LevelRecord level;
            const auto begin = [&] { return BeginNewLevel(own.session, level); };
            if (killed) {
                reached = WithKillAt(step, begin).killed || reached;
            } else {
                const FaultRun run = WithFaultAt(step, begin, std::errc::io_error);
                reached = run.reached || reached;
                EXPECT_TRUE(run.answer || !own.host.told.empty()) << run.call;
            }
            std::size_t found = 0;
            for (const auto& [name, content] : own.Snapshot("levels"))
                found += name.ends_with("old.tr4") && content == "old" ? 1 : 0;
            EXPECT_EQ(found, 1U) << step;
        }
        if (!reached)
            break;
    }
}

TEST_F(LevelLife, NoFolderAndNoListGivesWayWhereALookFails)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        World own;
        own.MakeTrle();
        own.MakeBackupAndArchive();
        own.Write("levels/LEVEL_0001/files/old.tr4", "old");
        own.Write("home/other.kva", "another list");
        own.host.AnswerAll(false); // no list is to be replaced
        LevelRecord level;
        const FaultRun run = failing([&] {
            const bool begun = BeginNewLevel(own.session, level);
            return !CreateArchive(own.session, own / "fresh", own / "home/other.kva") && begun;
        });
        EXPECT_TRUE(run.answer || !own.host.told.empty());
        EXPECT_EQ(own.Read("home/other.kva"), "another list");
        std::size_t found = 0;
        for (const auto& [name, content] : own.Snapshot("levels"))
            found += name.ends_with("old.tr4") && content == "old" ? 1 : 0;
        EXPECT_EQ(found, 1U);
        return run;
    });
}

TEST_F(LevelLife, AKeptFolderOutlivesALaterLevelOfItsNumberThatIsGivenUp)
{
    box.AddLevel("one", {{"a.tr4", "one"}});
    box.Write("levels/LEVEL_0001/screenshots/view.jpg", "view");
    const Files kept = box.Snapshot("levels/LEVEL_0001");
    box.host.WillAsk("Are you sure", true);
    ASSERT_TRUE(RemoveLevel(box.session, 1, LevelFolders::Keep));
    LevelRecord level;
    ASSERT_TRUE(BeginNewLevel(box.session, level));
    EXPECT_EQ(level.levelCode, 1);
    DropNewLevel(box.session, level);
    const auto found = FindUnknownFolders(box.session.archive)->setAside;
    ASSERT_EQ(found.size(), 1U);
    Files now = box.Snapshot(found[0].lexically_relative(box.root).native());
    now.erase("undo/token"); // which tells the level from the later one
    EXPECT_EQ(now, kept);
}

TEST_F(LevelLife, TheOriginalAndUnknownLevelsAreNotRemoved)
{
    EXPECT_FALSE(RemoveLevel(box.session, 0));
    EXPECT_TRUE(box.host.WasTold("You can not delete TRLE original level!\r\nThis level"));
    EXPECT_FALSE(RemoveLevel(box.session, 7));
    box.AddLevel("On a disc", {});
    box.session.archive.levels[1].cdNumber = 1;
    EXPECT_FALSE(RemoveLevel(box.session, 1));
    EXPECT_TRUE(box.host.WasTold("Current level is also on cd. \r\n"));
    box.session.archive.levels[1].cdNumber = 0;
    box.host.WillAsk("Are you sure to want remove level \"On a disc\" ?", false);
    EXPECT_FALSE(RemoveLevel(box.session, 1));
    EXPECT_EQ(box.session.archive.levels.size(), 2U);
}

TEST_F(LevelLife, ARemovedLevelLeavesTheListAndItsFoldersWhenWanted)
{
    for (const char* name : {"one", "two", "three"})
        box.AddLevel(name, {{"a.tr4", name}});
    box.session.archive.header.mainFolderSize = 11;
    box.session.archive.levels[1].filesSize = 3;
    box.session.archive.levels[2].filesSize = 3;
    ASSERT_TRUE(SaveArchive(box.session));
    box.Write("levels/LEVEL_0001/savegames/slot1/savegame.4", SavegameBytes("Deep", 9));
    box.Write("levels/LEVEL_0001/screenshots/the view.jpg", "a picture of the player's");
    box.host.WillAsk("Are you sure to want remove level \"one\" ?", true);
    box.host.WillAsk("(Folder to remove: \"" + (box / "levels/LEVEL_0001").native() + "\")", true);
    ASSERT_TRUE(RemoveLevel(box.session, 1)) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("Level has been removed"));
    EXPECT_FALSE(box.Has("levels/LEVEL_0001"));
    std::set<std::string> kept;
    for (const HistoryEntry& entry : HistoryOf(box.session.Folders(), 1))
        kept.insert(entry.name);
    EXPECT_EQ(kept, (std::set<std::string>{"savegame.4", "the view.jpg"}));
    const Session fresh = Reloaded();
    ASSERT_EQ(fresh.archive.levels.size(), 3U);
    EXPECT_EQ(fresh.archive.levels[1].levelName, "three") << "the last record takes the place";
    EXPECT_EQ(fresh.archive.levels[2].levelName, "two");
    EXPECT_EQ(fresh.archive.header.mainFolderSize, 8);

    box.host.WillAsk("Are you sure", true);
    ASSERT_TRUE(RemoveLevel(box.session, 2, LevelFolders::Keep));
    EXPECT_TRUE(box.Has("levels/LEVEL_0002/files/a.tr4"));
    EXPECT_EQ(box.session.archive.header.mainFolderSize, 8) << "the bytes still lie on the disk";
}

TEST_F(LevelLife, WhileTheArchivesFolderIsGoneNoLevelComesGoesOrIsEdited)
{
    box.AddLevel("one", {{"a.tr4", "one"}});
    box.session.preferences.autoSave = false;
    ASSERT_TRUE(SaveArchiveNow(box.session));
    const std::string list = box.Read("home/LevelArchive.kva");
    std::filesystem::rename(box / "levels", box / "unplugged");
    LevelRecord level;
    const auto progress = box.host.BeginProgress(ProgressWindow::Wait, {});
    const auto nobody = [](Intake&) { return ADD_FAILURE() << "shown", true; };
    for (const LevelFolders folders : {LevelFolders::Ask, LevelFolders::Remove, LevelFolders::Keep})
        EXPECT_FALSE(RemoveLevel(box.session, 1, folders));
    EXPECT_FALSE(BeginNewLevel(box.session, level));
    EXPECT_FALSE(EditLevel(box.session, *progress, 1, nobody));
    ASSERT_EQ(box.host.told.size(), 5U) << "each says why, once: " << box.host.AllTold();
    for (const auto& told : box.host.told)
        EXPECT_NE(told.text.find((box / "levels").native() + " is not there"), std::string::npos);
    EXPECT_FALSE(box.Has("levels")) << "nothing may be made where a drive belongs";
    EXPECT_EQ(box.session.archive.levels.size(), 2U);
    EXPECT_FALSE(box.session.archive.dirty);
    EXPECT_EQ(box.Read("home/LevelArchive.kva"), list);

    // Of a drive that is away the mount point may stand there.
    std::filesystem::create_directory(box / "levels");
    EXPECT_FALSE(RemoveLevel(box.session, 1, LevelFolders::Keep));
    EXPECT_FALSE(BeginNewLevel(box.session, level));
    EXPECT_TRUE(std::filesystem::is_empty(box / "levels"));
    std::filesystem::remove(box / "levels");

    // A single folder that is gone is another thing: its level can be taken off the list.
    std::filesystem::rename(box / "unplugged", box / "levels");
    std::filesystem::remove_all(box / "levels/LEVEL_0001");
    box.Write("levels/library.json", "{}");
    EXPECT_FALSE(EditLevel(box.session, *progress, 1, nobody));
    EXPECT_TRUE(box.host.WasTold("The folder of this level is not there: "));
    box.host.WillAsk("Are you sure", true);
    EXPECT_TRUE(RemoveLevel(box.session, 1)) << "and no folder is asked about";
}

/// All contents of savegames that stand anywhere: live, in stores, in the history.
std::set<std::string> SavegamesAnywhere(const World& box)
{
    std::set<std::string> found;
    for (const char* folder : {"trle", "levels", "home"})
        for (const auto& [name, content] : box.Snapshot(folder))
            if (content.starts_with("Save "))
                found.insert(content);
    return found;
}

/// A level that was played, with savegames live, in its store's slots and of the original.
void MakePlayedLevel(World& box)
{
    box.host.AnswerAll(true);
    box.MakeTrle();
    box.MakeBackupAndArchive();
    box.Write("trle/savegame.0", SavegameBytes("Save original", 1));
    box.AddLevel("Level", {{"a.tr4", "a"}, {"script.dat", "level's script"}});
    ASSERT_TRUE(SaveArchive(box.session));
    ASSERT_TRUE(InstallLevel(box.session, 1)) << box.host.AllTold();
    box.Write("trle/savegame.2", SavegameBytes("Save live", 2));
    box.Write("levels/LEVEL_0001/savegames/slot1/savegame.5", SavegameBytes("Save slot", 3));
}

/// Every savegame is somewhere, and what the marker names is in the archive.
void CheckNothingLost(const World& box, Session& session, const std::string& call)
{
    const std::set<std::string> wanted{SavegameBytes("Save original", 1),
                                       SavegameBytes("Save live", 2),
                                       SavegameBytes("Save slot", 3)};
    EXPECT_EQ(SavegamesAnywhere(box), wanted) << call;
    EXPECT_GE(FindLevel(session.archive, CurrentLevelCode(session.Folders(), session.archive)), 0)
        << call;
    EXPECT_TRUE(FindLevel(session.archive, 1) < 0 || box.Has("levels/LEVEL_0001/files/a.tr4"))
        << call;
}

TEST_F(LevelLife, RemovingTheInstalledLevelLosesNothingWhereverItFails)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; step = NextPoint(step)) {
            ASSERT_LT(step, 600);
            World own;
            MakePlayedLevel(own);
            const FaultRun run = WithFaultAt(
                step, [&] { return RemoveLevel(own.session, 1, LevelFolders::Remove); },
                std::errc::io_error, after);
            Session fresh = own.Reopened();
            EXPECT_TRUE(RecoverInterruptedWork(fresh)) << run.call << own.host.AllTold();
            EXPECT_TRUE(ReadArchive(fresh, own.session.ArchivePath())) << run.call;
            CheckNothingLost(own, fresh, run.call + "\n" + own.host.AllTold());
            EXPECT_TRUE(run.answer || !own.host.told.empty()) << run.call;
            if (run.answer) {
                EXPECT_FALSE(own.Has("levels/LEVEL_0001")) << run.call;
                EXPECT_EQ(fresh.archive.levels.size(), 1U) << run.call;
            }
            if (!run.reached)
                break;
        }
}

TEST_F(LevelLife, RemovingTheInstalledLevelLosesNothingWhereverItIsKilled)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 600);
        World own;
        MakePlayedLevel(own);
        const KillRun run =
            WithKillAt(step, [&] { return RemoveLevel(own.session, 1, LevelFolders::Remove); });
        Session fresh = own.Reopened();
        EXPECT_TRUE(ReadArchive(fresh, own.session.ArchivePath())) << run.call;
        EXPECT_TRUE(RecoverInterruptedWork(fresh)) << run.call << own.host.AllTold();
        CheckNothingLost(own, fresh, run.call);
        const bool stands = CurrentLevelCode(fresh.Folders(), fresh.archive) == 1;
        EXPECT_EQ(own.Has("trle/DATA/a.tr4"), stands) << run.call;
        EXPECT_EQ(own.Read("trle/Script.dat"), stands ? "level's script" : "original script")
            << run.call;
        if (!run.killed)
            break;
    }
}

TEST_F(LevelLife, TheOriginalsFolderIsBuiltWholeOrNotAtAll)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 200);
        World own;
        own.host.AnswerAll(true);
        own.MakeTrle();
        own.Write("home/backup_trle/savegame.1", "kept");
        const FaultRun run = WithFaultAt(step, [&] {
            const auto built = EnsureLevel0Folder(own.session.Folders());
            if (!built)
                TellNoLevel0(own.host, own.session.Folders(), built.Error());
            return built && *built;
        });
        EXPECT_EQ(own.Has("home/LEVEL_0000"), run.answer) << run.call;
        EXPECT_TRUE(run.answer || own.host.WasTold("could not be made")) << run.call;
        if (run.answer) {
            EXPECT_EQ(own.Snapshot("home/LEVEL_0000"),
                      (Files{{"screenshots/Tomb Raider Level Editor.bmp", "original load picture"},
                             {"backup_savegames/savegame.1", "kept"},
                             {"files/manual.htm", "manual"}}))
                << run.call;
        }
        if (!run.reached)
            break;
    }
    EXPECT_FALSE(EnsureLevel0Folder(box.session.Folders()).ValueOr(true)) << "it stands";
}

} // namespace

} // namespace kestrova::testing
