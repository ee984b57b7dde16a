#include "intake/edit_level.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/leftovers.h"
#include "intake/draft_files.h"
#include "intake/draft_sources.h"
#include "intake/left_intake.h"
#include "levels/new_level.h"
#include "levels/remove_level.h"
#include "sandbox/faults.h"
#include "upkeep/leftovers.h"
#include "upkeep/load_archive.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

void WritePackage(const World& box)
{
    box.Write("package/level1.tr4", "level");
    box.Write("package/script.dat", "script");
    box.Write("package/audio/107.wav", "wave");
    box.Write("package/docs/view.JPG", "view");
    box.Write("package/saves/savegame.3", "saved");
}

bool AddPackage(World& box, LevelCode& code)
{
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    return AddLevel(
        box.session, *progress,
        [&](Intake& level) {
            const Status taken = AddSources(level, {box / "package"}, Subfolders::Take);
            level.draft.name = "Salt Harbour";
            return taken && Accept(level);
        },
        code);
}

/// What no listing shows, but for the locks.
std::vector<std::string> HiddenIn(const World& box)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(box.root))
        if (const std::string name = entry.path().filename().native();
            name.starts_with(stagedPrefix) && name != lockFileName)
            names.push_back(entry.path());
    return names;
}

class AddLevelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        WritePackage(box);
    }
    World box;
    LevelCode code = -1;
};

TEST_F(AddLevelTest, ALevelComesIntoTheArchiveAndIsSelected)
{
    ASSERT_TRUE(AddPackage(box, code)) << box.host.AllTold();
    EXPECT_EQ(code, 1);
    EXPECT_EQ(box.list.selected, 1);
    Session fresh = box.Reopened();
    ASSERT_TRUE(ReadArchive(fresh, box.session.ArchivePath()));
    ASSERT_EQ(fresh.archive.levels.size(), 2U);
    EXPECT_EQ(fresh.archive.levels[1].levelName, "Salt Harbour");
    EXPECT_EQ(fresh.archive.header.mainFolderSize, 5 + 6 + 4 + 4);
    EXPECT_EQ(fresh.archive.header.secondaryFolderSize, 4 + 5);
    EXPECT_FALSE(box.Has("home/intake_note"));
    EXPECT_EQ(HiddenIn(box), std::vector<std::string>{});

    // Its properties, with another file.
    box.Write("more.wav", "more wave");
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    ASSERT_TRUE(EditLevel(box.session, *progress, 1, [&](Intake& level) {
        level.draft.name = "Renamed";
        return AddSources(level, {box / "more.wav"}) && Accept(level);
    }));
    EXPECT_EQ(box.session.archive.levels[1].levelName, "Renamed");
    EXPECT_EQ(box.session.archive.header.mainFolderSize, 5 + 6 + 4 + 4 + 9);
    EXPECT_FALSE(EditLevel(box.session, *progress, 1, [](Intake& level) {
        level.draft.name = "Given up";
        GiveUp(level);
        return false;
    }));
    EXPECT_EQ(box.session.archive.levels[1].levelName, "Renamed");
    EXPECT_FALSE(EditLevel(box.session, *progress, 9, [](Intake&) { return true; }));
    EXPECT_TRUE(box.host.WasTold("9"));
}

/// A level with a savegame and a picture of each kind that an edit may meet.
void MakeEdited(World& box)
{
    box.MakeTrle();
    box.MakeBackupAndArchive();
    box.AddLevel("Old", {{"a.tr4", "old"}, {"readme.txt", "how to"}, {"sound.wav", "sound"}});
    box.Write("levels/LEVEL_0001/backup_savegames/savegame.3", SavegameBytes("Mine", 7));
    box.Write("levels/LEVEL_0001/tr4.inf", "index");
    box.Write("from/A.TR4", "newer");
    box.Write("from/more.txt", "more");
    box.Write("from/savegame.3", SavegameBytes("Theirs", 1));
    box.Write("from/savegame.4", SavegameBytes("Another", 2));
    box.Write("from/view.jpg", "view");
    ASSERT_TRUE(SaveArchive(box.session));
}

/// Changes of every kind; `wrong` ends it with a refusal.
bool EditAll(World& box, bool wrong)
{
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    return EditLevel(box.session, *progress, 1, [&](Intake& level) {
        if (!AddSources(level, {box / "from"}, Subfolders::Take))
            return false;
        for (const Path& file : std::vector<Path>{level.draft.files})
            if (file.filename() == "sound.wav" && !RemoveFile(level, file))
                return false;
        level.draft.name = "New";
        level.draft.moreInfo = "more.txt";
        return Accept(level) && !wrong;
    });
}

TEST_F(AddLevelTest, ARefusedEditLeavesTheLevelAsItWas)
{
    for (const bool compressed : {false, true}) {
        World own;
        own.host.AnswerAll(true);
        MakeEdited(own);
        own.session.archive.header.compressLevels = compressed;
        const Files before = own.Snapshot("levels");
        const LevelRecord record = own.session.archive.levels[1];
        EXPECT_FALSE(EditAll(own, true));
        EXPECT_EQ(own.Snapshot("levels"), before) << own.host.AllTold();
        EXPECT_EQ(own.session.archive.levels[1].levelName, "Old");
        EXPECT_EQ(own.session.archive.levels[1].filesSize, record.filesSize);

        ASSERT_TRUE(EditAll(own, false)) << own.host.AllTold();
        EXPECT_FALSE(own.Has("levels/LEVEL_0001/.kv~before_edit"));
        EXPECT_TRUE(own.Has("levels/LEVEL_0001/files/more.txt"));
        EXPECT_TRUE(own.Has("levels/LEVEL_0001/screenshots/view.jpg"));
        EXPECT_FALSE(own.Has("levels/LEVEL_0001/files/sound.wav"));
    }
}

TEST_F(AddLevelTest, AnEditThatFailsAnywhereChangesAllOrNothing)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 400);
        World own;
        own.host.AnswerAll(true);
        MakeEdited(own);
        const Files before = own.Snapshot("levels");
        const FaultRun run = WithFaultAt(
            step, [&] { return EditAll(own, false); }, std::errc::no_space_on_device);
        if (!run.answer) {
            EXPECT_EQ(own.Snapshot("levels"), before) << run.call << own.host.AllTold();
            EXPECT_FALSE(own.host.told.empty()) << run.call;
        }
        EXPECT_EQ(own.session.archive.levels[1].levelName, run.answer ? "New" : "Old") << run.call;
        if (!run.reached)
            break;
    }
}

TEST_F(AddLevelTest, AnEditThatIsKilledAnywhereIsUndoneOrAcceptedAndLeavesNothing)
{
    std::map<std::string, int> ends;
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 400);
        World own;
        own.host.AnswerAll(true);
        MakeEdited(own);
        own.session.archive.header.compressLevels = step % 2 == 0;
        const Files before = own.Snapshot("levels");
        const KillRun run = WithKillAt(step, [&] {
            NotePlacesIn(WorkNotes(own.session.Folders()));
            return EditAll(own, false);
        });
        Session fresh = own.Reopened();
        // The start after it may be killed as well.
        (void)WithKillAt(1 + step % 11, [&] {
            NotePlacesIn(WorkNotes(own.session.Folders()));
            return ReadArchive(fresh, own.session.ArchivePath());
        });
        ASSERT_TRUE(ReadArchive(fresh, own.session.ArchivePath())) << own.host.AllTold();
        EXPECT_EQ(HiddenIn(own), std::vector<std::string>{}) << step << ": " << run.call;
        const std::string name{Trim(fresh.archive.levels[1].levelName)};
        ++ends[name];
        if (name == "Old") {
            Files after = own.Snapshot("levels");
            if (const auto noted = after.extract("LEVEL_0001/undo/stored.json")) {
                EXPECT_NE(noted.mapped().find("\"changing\":true"), std::string::npos)
                    << "what is not as noted is the edit's own work, " << step << ": " << run.call;
            }
            EXPECT_EQ(after, before) << step << ": " << run.call;
        } else {
            EXPECT_TRUE(own.Has("levels/LEVEL_0001/files/more.txt")) << step << ": " << run.call;
            EXPECT_FALSE(own.Has("levels/LEVEL_0001/files/sound.wav")) << step << ": " << run.call;
        }
        if (!run.killed)
            break;
    }
    EXPECT_GT(ends["Old"], 5);
    EXPECT_GT(ends["New"], 1);
}

TEST_F(AddLevelTest, WhatIsGivenUpOrStoppedLeavesNothing)
{
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    EXPECT_FALSE(AddLevel(
        box.session, *progress,
        [&](Intake& level) {
            (void)AddSources(level, {box / "package"}, Subfolders::Take);
            GiveUp(level);
            return false;
        },
        code));
    EXPECT_FALSE(box.Has("levels/LEVEL_0001"));
    box.host.StopAtStep(6);
    EXPECT_FALSE(AddPackage(box, code));
    EXPECT_FALSE(box.Has("levels/LEVEL_0001"));
    EXPECT_EQ(box.session.archive.levels.size(), 1U);
    box.session.archive.file.clear();
    EXPECT_FALSE(AddPackage(box, code));
    EXPECT_TRUE(box.host.WasTold("Missing archive! Before adding levels you must create new"));
    EXPECT_TRUE(box.Snapshot("levels").empty());
}

/// A zip of zips of zips, with a level in each of the innermost.
void WriteNestedPackage(ToolBox& box)
{
    std::vector<BuiltEntry> outer;
    for (const char* middle : {"a", "b", "c"}) {
        std::vector<BuiltEntry> inner;
        for (const char* name : {"1", "2"}) {
            const std::string level = std::string{middle} + name;
            inner.push_back({level + ".zip", BuildZip({{level + ".tr4", "level"}})});
        }
        outer.push_back({std::string{middle} + ".zip", BuildZip(inner)});
    }
    box.Write("nested.zip", BuildZip(outer));
}

TEST(AddNestedPackage, StopGivesUpTheWholeLevelWhereverItIsPressed)
{
    bool added = false;
    for (int step = 3; !added; step += 3) {
        ASSERT_LT(step, 2000);
        ToolBox box;
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.UseRealTools();
        WriteNestedPackage(box);
        box.host.StopAtStep(step);
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        LevelCode code = -1;
        added = AddLevel(
            box.session, *progress,
            [&](Intake& level) {
                return AddSources(level, {box / "nested.zip"}) && UnpackAll(level) && Accept(level);
            },
            code);
        EXPECT_EQ(box.Snapshot("levels/LEVEL_0001/files").size(), added ? 6U : 0U) << step;
        EXPECT_EQ(box.Has("levels/LEVEL_0001"), added) << step;
        EXPECT_EQ(box.session.archive.levels.size(), added ? 2U : 1U) << step;
    }
}

TEST_F(AddLevelTest, ALevelIsAddedWholeOrNotAtAllWhereverItFails)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 900);
        World own;
        own.host.AnswerAll(true);
        own.MakeTrle();
        own.MakeBackupAndArchive();
        own.session.archive.header.compressLevels = step % 2 == 0;
        WritePackage(own);
        const Files package = own.Snapshot("package");
        LevelCode added = -1;
        const FaultRun run = WithFaultAt(
            step, [&] { return AddPackage(own, added); }, std::errc::no_space_on_device);
        const auto content = ParseArchive(own.Read("home/LevelArchive.kva"));
        ASSERT_TRUE(content) << run.call;
        const std::size_t expected = run.answer ? 2 : 1;
        EXPECT_EQ(content->levels.size(), expected) << run.call << own.host.AllTold();
        EXPECT_EQ(own.session.archive.levels.size(), expected) << run.call;
        EXPECT_EQ(own.Has("levels/LEVEL_0001/files/script.dat"), run.answer) << run.call;
        EXPECT_TRUE(run.answer || !own.Has("levels/LEVEL_0001")) << run.call << own.host.AllTold();
        EXPECT_TRUE(run.answer || !own.host.told.empty()) << run.call;
        EXPECT_EQ(own.Snapshot("package"), package) << run.call;
        EXPECT_FALSE(own.session.archive.dirty) << run.call;
        if (!run.reached)
            break;
    }
}

TEST_F(AddLevelTest, WhatAKilledRunLeftIsClearedByTheNextStart)
{
    int cleared = 0;
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 900);
        World own;
        own.host.AnswerAll(true);
        own.MakeTrle();
        own.MakeBackupAndArchive();
        WritePackage(own);
        LevelCode added = -1;
        const KillRun run = WithKillAt(step, [&] { return AddPackage(own, added); });
        const bool cameIn = own.Has("levels/LEVEL_0001/files/level1.tr4");
        Session fresh = own.Reopened();
        ASSERT_TRUE(ReadArchive(fresh, own.session.ArchivePath())) << run.call;
        const bool stands = FindLevel(fresh.archive, 1) >= 0;
        const bool stays = own.Has("levels/LEVEL_0001/files/level1.tr4");
        EXPECT_TRUE(stays || !stands) << run.call;
        cleared += cameIn && !stays ? 1 : 0;
        const bool noted = own.Has("home/intake_note");
        OfferLeftIntake(fresh.host, fresh.Folders(), fresh.archive);
        EXPECT_FALSE(own.Has("home/intake_note")) << run.call;
        EXPECT_EQ(own.Has("levels/LEVEL_0001/files/level1.tr4"), stands) << run.call;
        EXPECT_TRUE(noted || stands || !stays) << run.call;
        LevelRecord next;
        ASSERT_TRUE(BeginNewLevel(fresh, next));
        EXPECT_FALSE(own.host.WasTold("set-aside")) << run.call << own.host.AllTold();
        if (!run.killed)
            break;
    }
    TellPoints(cleared, 6);
}

/// The last calls of an adding, in each of which a level may be whole that no list has.
TEST_F(AddLevelTest, AWholeLevelIsNeverClearedWhateverListIsReadAfterAKill)
{
    constexpr int lastCalls = 40;
    int calls = 0;
    {
        World own;
        own.host.AnswerAll(true);
        own.MakeTrle();
        own.MakeBackupAndArchive();
        WritePackage(own);
        LevelCode added = -1;
        calls = CountFileCalls([&] { return AddPackage(own, added); });
    }
    int listedAnew = 0;
    int marked = 0;
    for (int step = std::max(1, calls - lastCalls); step <= calls; ++step) {
        World own;
        own.host.AnswerAll(true);
        own.MakeTrle();
        own.MakeBackupAndArchive();
        WritePackage(own);
        const std::string older = own.Read("home/LevelArchive.kva");
        LevelCode added = -1;
        const KillRun run = WithKillAt(step, [&] { return AddPackage(own, added); });
        const bool listed = ParseArchive(own.Read("home/LevelArchive.kva"))->levels.size() == 2;
        marked += listed && own.Has("levels/LEVEL_0001/.kv~intake") ? 1 : 0;
        own.Write("home/Older.kva", older);
        for (const char* list : {"home/Older.kva", "home/LevelArchive.kva"}) {
            Session fresh = own.Reopened();
            ASSERT_TRUE(ReadArchive(fresh, own / list)) << run.call;
            OfferLeftIntake(fresh.host, fresh.Folders(), fresh.archive);
            const LevelRecord* level = fresh.archive.Find(1);
            const bool stands = own.Has("levels/LEVEL_0001/files/level1.tr4");
            EXPECT_TRUE(stands || !listed) << list << run.call;
            EXPECT_TRUE(stands || level == nullptr) << list << run.call;
            EXPECT_FALSE(own.Has("levels/LEVEL_0001/.kv~intake")) << list << run.call;
            if (level == nullptr)
                continue;
            EXPECT_EQ(level->levelName, "Salt Harbour") << list << run.call;
            EXPECT_GT(level->filesSize, 0) << list << run.call;
            EXPECT_EQ(fresh.archive.header.secondaryFolderSize, level->extrasSize) << run.call;
            EXPECT_EQ(ReadArchiveFile(own / list)->levels.size(), 2U) << list << run.call;
            listedAnew += own.host.WasTold("It is on the list now") ? 1 : 0;
        }
    }
    EXPECT_GE(listedAnew, 2) << "killed before the list had it, or read with an older one";
    EXPECT_GE(marked, 1) << "killed between the list and the mark";
}

} // namespace

} // namespace kestrova::testing
