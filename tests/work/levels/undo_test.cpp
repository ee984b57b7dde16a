#include "levels/undo_world.h"
#include "sandbox/faults.h"
#include "session/archive.h"

namespace kestrova::testing
{

namespace
{

class Undoing : public ::testing::TestWithParam<Doing>
{
protected:
    void Do(UndoWorld& world, FileContents (UndoWorld::*look)() const = &UndoWorld::Held)
    {
        before = (world.*look)();
        ASSERT_TRUE(GetParam().run(world)) << world.host.AllTold();
        after = (world.*look)();
        ASSERT_NE(before, after);
        // What a copy leaves where it was taken from is no part of the change.
        for (const auto& [name, content] : after)
            if (name.starts_with("out/"))
                before[name] = content;
    }
    FileContents before;
    FileContents after;
};

} // namespace

TEST_P(Undoing, BringsBackBitForBitAndGoesForthAgain)
{
    UndoWorld world;
    Do(world, &UndoWorld::Things);
    const auto entry = world.Next();
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->kind, GetParam().kind);
    EXPECT_FALSE(WhatWasDone(*entry).empty());
    EXPECT_FALSE(world.Next(UndoWay::Redo));
    world.Restart();
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Things(), before);
    EXPECT_FALSE(world.Next());
    world.Restart();
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    EXPECT_EQ(world.Things(), after);
    EXPECT_FALSE(world.Redo());
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Things(), before);
    EXPECT_FALSE(world.Undo()) << "there is nothing more";
}

TEST_P(Undoing, IsRefusedWhereSomethingHasChangedSince)
{
    UndoWorld world;
    Do(world, &UndoWorld::Things);
    const auto entry = world.Next();
    ASSERT_TRUE(entry);
    const auto refused = [&](const std::string& what) {
        const FileContents now = world.Snapshot("");
        world.host.told.clear();
        EXPECT_FALSE(UndoChange(world.session, *entry)) << what;
        EXPECT_TRUE(world.host.WasTold("nothing was changed")) << what;
        EXPECT_EQ(world.Snapshot(""), now) << what;
    };
    for (const ChangedFolder& folder : entry->folders) {
        std::set<std::string> came;
        const Path place = Path{folder.folder}.lexically_relative(world.root);
        for (const ComingFile& file : folder.after) {
            const std::string name = (place / file.name).native();
            const std::string content = world.Read(name);
            came.insert(file.name);
            world.Write(name, "written since");
            refused(name);
            std::filesystem::remove(world / name);
            refused(name + " gone");
            world.Write(name, content);
        }
        for (const StateFile& file : folder.before)
            if (const std::string name = (place / file.name).native(); !came.contains(file.name)) {
                world.Write(name, "another one since");
                refused(name);
                std::filesystem::remove(world / name);
            }
        if (!folder.goes && !folder.after.empty()) {
            std::filesystem::rename(folder.folder, world / "moved");
            refused("a folder that was moved");
            std::filesystem::rename(world / "moved", folder.folder);
        }
    }
    const Archive list = world.session.archive;
    if (entry->record && entry->record->after) {
        world.session.archive.levels[2].levelNote = "another note";
        refused("a record that was changed");
    }
    world.session.archive = list;
    world.session.archive.header.secondaryFolder = (world / "other").native();
    refused("another archive");
    world.session.archive = list;
    EXPECT_TRUE(UndoChange(world.session, *entry)) << world.host.AllTold();
    EXPECT_EQ(world.Things(), before);
}

TEST_P(Undoing, LeavesNoStoredFileThatCountsAsDamaged)
{
    if (GetParam().kind == ChangeKind::LevelRepaired)
        return; // its way back leads to the damage
    UndoWorld world;
    for (const char* home : {"levels/LEVEL_0001", "levels/LEVEL_0002"})
        NoteStoredFiles(world / home, {});
    const auto look = [&](const char* when) {
        for (const LevelCode code : {world.played, world.resting}) {
            if (world.session.archive.Find(code) == nullptr)
                continue;
            const auto checked =
                VerifyLevel(world.session.Folders(), world.session.archive, code, Noting::No);
            ASSERT_TRUE(checked) << when;
            for (const LevelFault& fault : checked->faults)
                EXPECT_TRUE(fault.stored.empty()) << when << ": " << fault.file;
        }
    };
    Do(world);
    look("done");
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    look("undone");
    ASSERT_TRUE(world.Redo()) << world.host.AllTold();
    look("done again");
}

TEST_P(Undoing, KilledAnywhereIsMendedAndCanGoOn)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        UndoWorld world;
        Do(world);
        const auto treasures = world.Treasures();
        const KillRun run = WithKillAt(step, [&] { return world.Undo(); });
        SCOPED_TRACE("undo killed at step " + std::to_string(step) + ": " + run.call);
        world.ExpectNothingLost(treasures);
        world.Restart();
        world.ExpectNothingLost(treasures);
        const FileContents now = world.Held();
        EXPECT_TRUE(now == before || now == after) << "neither done nor undone";
        if (now == after) {
            ASSERT_TRUE(world.Undo()) << world.host.AllTold();
        }
        EXPECT_EQ(world.Held(), before);
        EXPECT_FALSE(world.Next()) << "what was undone cannot be undone once more";
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 3);
    }
    FAIL() << "never finished";
}

TEST_P(Undoing, FailedAnywhereIsToldAndCanGoOn)
{
    for (const AfterFault trouble : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; step = NextPoint(step)) {
            UndoWorld world;
            Do(world);
            const auto treasures = world.Treasures();
            world.host.told.clear();
            const FaultRun run = WithFaultAt(
                step, [&] { return world.Undo(); }, std::errc::no_space_on_device, trouble);
            SCOPED_TRACE("undo failed at step " + std::to_string(step) + ": " + run.call);
            EXPECT_TRUE(run.answer || !world.host.told.empty()) << "a failure without a word";
            world.ExpectNothingLost(treasures);
            world.Restart();
            const FileContents now = world.Held();
            EXPECT_TRUE(now == before || now == after) << "neither done nor undone";
            if (now == after) {
                EXPECT_TRUE(world.Undo()) << world.host.AllTold();
                EXPECT_EQ(world.Held(), before);
            }
            ASSERT_LT(step, 1000) << "never finished";
            if (!run.reached || HasFailure()) {
                TellPoints(step - 1, 3);
                break;
            }
        }
}

TEST_P(Undoing, OfADoingThatWasKilledLeadsBackToo)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        UndoWorld world;
        before = world.Held();
        const auto treasures = world.Treasures();
        const KillRun run = WithKillAt(step, [&] { return GetParam().run(world); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        world.ExpectNothingLost(treasures);
        world.Restart();
        world.ExpectNothingLost(treasures);
        const FileContents now = world.Held();
        if (world.Next()) {
            EXPECT_TRUE(world.Undo()) << world.host.AllTold();
            for (const auto& [name, content] : now)
                if (name.starts_with("out/"))
                    before[name] = content;
            EXPECT_EQ(world.Held(), before);
        } else if (GetParam().isWhole) {
            EXPECT_TRUE(now == before || !run.killed || now.at("list") != before.at("list"))
                << "half";
        }
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 3);
    }
    FAIL() << "never finished";
}

INSTANTIATE_TEST_SUITE_P(Changes, Undoing, ::testing::ValuesIn(doings),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST(UndoEntries, AreUndoneOneAfterTheOtherOrOnTheirOwn)
{
    UndoWorld world;
    EXPECT_FALSE(world.Next()) << "nothing was done yet";
    const FileContents before = world.Things();
    ASSERT_TRUE(ArchiveSavegamesOf(world.session, world.played));
    const auto first = world.Next();
    ASSERT_TRUE(CopyIntoSlots(world.session, world.played, {world / "from/savegame.7"}).empty());
    ShotList shots = world.Shots("one.bmp");
    ASSERT_TRUE(AddShotFile(world.session, shots, world / "from/three.bmp"));
    ASSERT_TRUE(UndoChange(world.session, *first)) << "what came later is of other files";
    EXPECT_TRUE(world.Has("levels/LEVEL_0002/screenshots/three.bmp"));
    EXPECT_FALSE(UndoChange(world.session, *first)) << "an undone one is none any more";
    ASSERT_TRUE(world.Undo());
    ASSERT_TRUE(world.Undo());
    EXPECT_EQ(world.Things(), before);
    EXPECT_TRUE(world.Next(UndoWay::Redo));
    ASSERT_TRUE(AddShotFile(world.session, shots, world / "from/three.bmp"));
    EXPECT_FALSE(world.Next(UndoWay::Redo)) << "something else was done";
}

TEST(UndoEntries, AreBoundByTheirNumberAndByWhatTheyTake)
{
    UndoWorld world;
    const auto addShots = [&](int count) {
        for (int i = 0; i < count; ++i) {
            world.Write("from/more" + std::to_string(i) + ".bmp", Pixel(i));
            ShotList shots = world.Shots("one.bmp");
            ASSERT_TRUE(AddShotFile(world.session, shots,
                                    world / ("from/more" + std::to_string(i) + ".bmp")));
        }
    };
    world.session.settings.undoCount = 3;
    addShots(5);
    EXPECT_EQ(world.Entries().size(), 3U);
    EXPECT_EQ(world.Entries().back().subject, "more4.bmp");

    // A level that is larger than the bound goes for good only after a question that says so.
    world.Write(UndoWorld::Rested("files/a.tr4"), std::string(3 << 20, 'a'));
    world.session.settings.undoMegabytes = 2;
    const FileContents whole = world.Snapshot("levels/LEVEL_0002");
    world.host.WillAsk("remove level", true);
    world.host.WillAsk("for good?", false);
    EXPECT_FALSE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0002"), whole);
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    world.host.AnswerAll(true);
    ASSERT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    EXPECT_FALSE(world.Has("levels/LEVEL_0002"));
    for (const auto& [name, content] : world.Snapshot("levels"))
        EXPECT_EQ(name.find("LEVEL_0002"), std::string::npos) << name;
    EXPECT_FALSE(world.Next()); // what was done to the level went with it

    // A later one takes the place of what was set aside; what the player made is in the history.
    world.session.settings.undoMegabytes = 1;
    world.Write("levels/LEVEL_0001/files/b.tr4", std::string(1 << 19, 'b'));
    world.Write("levels/LEVEL_0001/screenshots/mine.bmp", Pixel(77));
    ASSERT_TRUE(RemoveLevel(world.session, world.played, LevelFolders::Remove))
        << world.host.AllTold();
    ASSERT_TRUE(world.Next());
    ASSERT_EQ(world.Next()->kind, ChangeKind::LevelRemoved);
    const Path aside = world.Next()->moved->to;
    EXPECT_TRUE(std::filesystem::exists(aside));
    const auto treasures = world.Treasures();
    world.session.settings.undoCount = 0;
    BoundUndo(world.session.Folders(), world.session.settings);
    EXPECT_FALSE(std::filesystem::exists(aside));
    EXPECT_FALSE(world.Next());
    EXPECT_TRUE(world.Entries().empty());
    world.ExpectNothingLost(treasures);
}

TEST(UndoEntries, OfTwoArchivesStayApart)
{
    UndoWorld world;
    ShotList shots = world.Shots("one.bmp");
    ASSERT_TRUE(AddShotFile(world.session, shots, world / "from/three.bmp"));
    const Archive first = world.session.archive;
    world.session.archive.header.secondaryFolder = (world / "other").native();
    world.session.archive.header.mainFolder = (world / "other").native();
    world.session.archive.file = world / "home/other.kva";
    for (const char* part : {"screenshots", "backup_savegames", "savegames", "files"})
        std::filesystem::create_directories(world / "other/LEVEL_0002" / part);
    EXPECT_FALSE(world.Next()) << "this archive's level has the same code and no change";
    shots = world.Shots("one.bmp");
    ASSERT_TRUE(AddShotFile(world.session, shots, world / "from/one.bmp"));
    ASSERT_TRUE(world.Undo());
    EXPECT_FALSE(world.Has("other/LEVEL_0002/screenshots/one.bmp"));
    EXPECT_TRUE(world.Has("levels/LEVEL_0002/screenshots/three.bmp"));
    EXPECT_FALSE(world.Undo());
    world.session.archive = first;
    ASSERT_TRUE(world.Undo());
    EXPECT_FALSE(world.Has("levels/LEVEL_0002/screenshots/three.bmp"));
}

TEST(UndoEntries, WaitForTheLevelWhoseSavegamesStoodInTheFolder)
{
    UndoWorld world;
    ASSERT_TRUE(ExportSavegames(world.session, world.played, {world / "trle/savegame.3"},
                                world / "from", true)
                    .empty());
    const std::string marker = world.Read("trle/Kestrva.txt");
    world.Write("trle/Kestrva.txt", "#LEVEL_CODE=0002#");
    EXPECT_FALSE(world.Undo()) << "another level's slots";
    EXPECT_TRUE(world.host.WasTold("stand elsewhere now"));
    EXPECT_FALSE(world.Has("trle/savegame.3"));
    world.Write("trle/Kestrva.txt", marker);
    EXPECT_TRUE(world.Undo());
    EXPECT_TRUE(world.Has("trle/savegame.3"));
}

} // namespace kestrova::testing
