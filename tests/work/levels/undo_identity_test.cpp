#include "history/changes.h"
#include "levels/undo_world.h"
#include "sandbox/faults.h"

namespace kestrova::testing
{

namespace
{

bool AddThree(UndoWorld& world)
{
    ShotList shots = world.Shots("one.bmp");
    return AddShotFile(world.session, shots, world / "from/three.bmp");
}

bool DeleteOne(UndoWorld& world)
{
    world.host.AnswerAll(true);
    ShotList shots = world.Shots("one.bmp");
    return DeleteShot(world.session, shots);
}

/// The level goes; where it was set aside.
Path RemoveResting(UndoWorld& world)
{
    world.host.AnswerAll(true);
    EXPECT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Remove));
    const auto entry = world.Next();
    return entry && entry->moved ? Path{entry->moved->to} : Path{};
}

void KeepNothing(UndoWorld& world, const Folders& folders)
{
    ProgramSettings settings = world.session.settings;
    settings.undoCount = 0;
    BoundUndo(folders, settings);
}

} // namespace

TEST(SetAside, AFolderIntoWhichSomethingWasPutStays)
{
    void (*const touch[])(UndoWorld&, const Path&) = {
        [](UndoWorld& w, const Path& aside) {
            w.Write(aside.lexically_relative(w.root) / "files/mine.txt", "my own");
        },
        [](UndoWorld& w, const Path& aside) {
            std::filesystem::remove(aside / "undo/token");
            w.Write("from/x", "");
        },
        [](UndoWorld& w, const Path& aside) {
            w.Write(aside.lexically_relative(w.root) / "files/a.tr4", "OLD LEVEL");
        },
    };
    for (const auto put : touch) {
        UndoWorld world;
        const Path aside = RemoveResting(world);
        ASSERT_TRUE(std::filesystem::exists(aside));
        put(world, aside);
        const auto held = world.Snapshot("levels");
        KeepNothing(world, world.session.Folders());
        EXPECT_TRUE(world.Entries().empty());
        EXPECT_EQ(world.Snapshot("levels"), held);
    }
}

TEST(UndoIdentity, AnotherLevelOfTheNumberIsNoneOfTheirs)
{
    UndoWorld world;
    ASSERT_TRUE(DeleteOne(world));
    const auto entry = world.Next();
    ASSERT_TRUE(entry);
    world.session.settings.undoMegabytes = 0;
    (void)RemoveResting(world);
    EXPECT_FALSE(UndoChange(world.session, *entry));
    EXPECT_TRUE(world.host.WasTold("not in the archive any more")) << world.host.AllTold();
    ASSERT_EQ(world.AddLevel("Newer", {{"n.tr4", "newer"}}), world.resting);
    std::filesystem::create_directories(world / "levels/LEVEL_0002/screenshots");
    EXPECT_FALSE(world.Next());
    const auto now = world.Snapshot("levels");
    EXPECT_FALSE(UndoChange(world.session, *entry));
    EXPECT_TRUE(world.host.WasTold("another one has its place")) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels"), now);
}

TEST(UndoIdentity, AnotherArchiveInTheOldPlaceIsNoneOfTheirs)
{
    UndoWorld world;
    ASSERT_TRUE(DeleteOne(world));
    ASSERT_TRUE(EditResting(world)) << world.host.AllTold();
    std::filesystem::rename(world / "levels", world / "elsewhere");
    std::filesystem::create_directories(world / "levels/LEVEL_0002/screenshots");
    EXPECT_FALSE(world.Next());
    std::filesystem::remove_all(world / "levels");
    std::filesystem::rename(world / "elsewhere", world / "levels");
    // Another list over the same folders has records of its own.
    const Path own = world.session.archive.file;
    std::filesystem::copy_file(own, world / "home/other.kva");
    world.session.archive.file = world / "home/other.kva";
    ASSERT_TRUE(world.Next());
    EXPECT_EQ(world.Next()->kind, ChangeKind::ShotDeleted);
    world.session.archive.file = own;
    // The archive's own file under another name is the same archive.
    std::filesystem::rename(world.session.ArchivePath(), world / "home/renamed.kva");
    world.session.archive.file = world / "home/renamed.kva";
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_TRUE(world.Has("levels/LEVEL_0002/screenshots/one.bmp"));
    EXPECT_EQ(world.Read(UndoWorld::Rested("files/a.tr4")), "old level");
}

TEST(UndoIdentity, ACopiedProgramFolderClearsNothingOfTheOther)
{
    UndoWorld world;
    ASSERT_TRUE(EditResting(world)) << world.host.AllTold();
    const Path aside = RemoveResting(world);
    std::filesystem::copy(world / "home", world / "home2",
                          std::filesystem::copy_options::recursive);
    Folders copied = world.session.Folders();
    copied.program = world / "home2";
    EXPECT_EQ(ReadUndoList(copied).ValueOr({}).entries.size(), 2U);
    const auto held = world.Snapshot("levels");
    KeepNothing(world, copied);
    EXPECT_TRUE(ReadUndoList(copied).ValueOr({}).entries.empty());
    EXPECT_EQ(world.Snapshot("levels"), held);
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Read(UndoWorld::Rested("files/a.tr4")), "old level");

    // A new change there is noted as its own, beside the same level.
    const Change one = NewChange(world.session, ChangeKind::LevelEdited, world.resting);
    const Change other =
        NewChange({world.session.machine, copied, world.session.archive, world.session.settings},
                  ChangeKind::LevelEdited, world.resting);
    EXPECT_EQ(one.level, other.level);
    EXPECT_NE(one.maker, other.maker);
}

TEST(UndoEntries, OfSomebodyElseRemoveNothing)
{
    UndoWorld world;
    ASSERT_TRUE(AddThree(world));
    ChangeHead forged = *world.Next();
    forged.id = 77;
    forged.kind = ChangeKind::LevelRemoved;
    forged.moved = MovedFolder{forged.home, forged.home + ".set-aside-mine", 1, {}};
    world.Write("levels/LEVEL_0002.set-aside-mine/undo/token", forged.level);
    const auto digest = DigestOfAside(forged.moved->to);
    ASSERT_TRUE(digest);
    forged.moved->digest = *digest;
    for (const bool ofLevel : {false, true}) {
        forged.maker = std::string(32, ofLevel ? 'a' : 'b');
        forged.level = ofLevel ? forged.level : std::string(32, 'c');
        world.Write("home/history/undo/000077.json", FormatChangeHead(forged) + "{}");
        const auto held = world.Snapshot("levels");
        EXPECT_EQ(world.Entries().size(), 2U);
        DropUndoEntry(world.session.Folders(), forged);
        EXPECT_EQ(world.Snapshot("levels"), held);
        EXPECT_FALSE(world.Has("home/history/undo/000077.json"));
    }
    // Nor does it make another entry one that was undone.
    forged.moved.reset();
    forged.kind = ChangeKind::ShotAdded;
    forged.undoes = world.Next()->id;
    world.Write("home/history/undo/000077.json", FormatChangeHead(forged) + "{}");
    EXPECT_EQ(world.Entries().size(), 2U);
}

TEST(UndoEntries, ThatNobodyCanReadAreNamedAndHoldUpNothing)
{
    UndoWorld world;
    ASSERT_TRUE(AddThree(world));
    for (const char* name : {"000900", "000901", "000902", "strange"})
        world.Write("home/history/undo/" + std::string{name} + ".json", "{\"kind\":\"edit\"}");
    world.Write("home/history/undo/000901/" + std::string(32, 'a'), "kept");
    EXPECT_EQ(ReadUndoList(world.session.Folders()).ValueOr({}).unread.size(), 4U);
    EXPECT_EQ(world.Entries().size(), 1U);
    EXPECT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_FALSE(world.Has("levels/LEVEL_0002/screenshots/three.bmp"));
    world.session.settings.undoCount = 1;
    BoundUndo(world.session.Folders(), world.session.settings);
    EXPECT_TRUE(world.Has("home/history/undo/000902.json"));
    EXPECT_FALSE(world.Has("home/history/undo/000901.json"));
    EXPECT_FALSE(world.Has("home/history/undo/000901/" + std::string(32, 'a')));
    EXPECT_TRUE(world.Has("home/history/undo/strange.json")) << "it has no number to be bound by";

    // One whose first line alone is whole is refused in words.
    std::string text = FormatChangeHead(world.Entries().back());
    world.Write("home/history/undo/" + ZeroPadded(world.Entries().back().id, 6) + ".json", text);
    const auto entry = ReadUndoEntry(world.session.Folders(), world.Entries().back().id);
    ASSERT_FALSE(entry);
    EXPECT_EQ(entry.Error().code, ErrorCode::Damaged);
}

TEST(UndoEntries, SizesAreRightAfterAKillAnywhere)
{
    const auto sizesOf = [](const Archive& archive) {
        return std::pair{archive.header.mainFolderSize, archive.header.secondaryFolderSize};
    };
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        UndoWorld world;
        world.host.AnswerAll(true);
        world.session.archive.levels[2].extrasSize = 40;
        world.session.archive.header.secondaryFolderSize = 60;
        ASSERT_TRUE(WriteArchive(world.session, world.session.ArchivePath()));
        const KillRun run = WithKillAt(
            step, [&] { return RemoveLevel(world.session, world.resting, LevelFolders::Remove); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        world.Restart();
        const bool counted = world.Has("levels/LEVEL_0002");
        EXPECT_EQ(sizesOf(world.session.archive),
                  counted ? (std::pair{100.0, 60.0}) : (std::pair{0.0, 20.0}));
        const auto file = ReadArchiveFile(world.session.ArchivePath());
        ASSERT_TRUE(file);
        EXPECT_EQ(file->header.mainFolderSize, world.session.archive.header.mainFolderSize);
        if (!run.killed || HasFailure())
            break;
    }
    bool finished = false;
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        UndoWorld world;
        const auto bytes = static_cast<std::int32_t>(Pixel(1).size());
        const std::int32_t before = world.session.archive.levels[2].extrasSize;
        const KillRun run = WithKillAt(step, [&] { return DeleteOne(world); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        const bool waits = ChangeWaits(world.session.Folders());
        world.Restart();
        if (waits && !world.Has(UndoWorld::Rested("screenshots/one.bmp"))) {
            EXPECT_EQ(world.session.archive.levels[2].extrasSize, before - bytes);
            finished = true;
        }
        if (!run.killed || HasFailure())
            break;
    }
    EXPECT_TRUE(finished || WalkStride() > 1) << "no kill left a deletion to finish";
}

TEST(RemovalOfALevel, SaysWhenItCannotBeUndone)
{
    UndoWorld world;
    world.host.AnswerAll(true);
    std::filesystem::create_directories(world / "home/swap/savegames"); // no note can be written
    ASSERT_TRUE(RemoveLevel(world.session, world.resting, LevelFolders::Keep));
    EXPECT_TRUE(world.host.WasTold("removal of this level cannot be undone"))
        << world.host.AllTold();
    EXPECT_TRUE(world.Has(UndoWorld::Rested("files/a.tr4")));
}

TEST(RemovalOfALevel, CanBeUndoneWhenTheListWasNeverSavedWithoutIt)
{
    UndoWorld world;
    const FileContents before = world.Things();
    world.session.preferences.autoSave = false;
    const Path aside = RemoveResting(world);
    ASSERT_TRUE(std::filesystem::exists(aside));
    world.Restart();
    ASSERT_NE(world.session.archive.Find(world.resting), nullptr);
    ASSERT_TRUE(world.Undo()) << world.host.AllTold();
    EXPECT_EQ(world.Things(), before);
}

} // namespace kestrova::testing
