#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/text.h"
#include "discs/disc_notes.h"
#include "discs/disc_world.h"
#include "levels/unfinished_intake.h"
#include "packages/level_config_file.h"
#include "sandbox/faults.h"
#include "upkeep/load_archive.h"
#include "upkeep/recover_archive.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

class RecoverWorld : public DiscWorld
{
public:
    RecoverWorld()
    {
        session.archive.header.mainFolder = session.archive.header.secondaryFolder;
        AddLevel("First", {{"a.tr4", "level a"}});
        AddLevel("Łódź", {{"b.tr4.zl", "level b"}});
        session.archive.levels[1].authorName = "Ada";
        session.archive.header.wavInMp3 = true;
        EXPECT_TRUE(WriteArchive(session, session.ArchivePath()));
    }
    void LoseList(const std::string& name = "home/LevelArchive.kva")
    {
        fs::remove(root / name);
        session.archive = {};
    }
    bool Recover(bool takeAside = false)
    {
        return RecoverArchive(session, {root / "levels", {}, takeAside});
    }
    [[nodiscard]] std::map<LevelCode, std::string> Names() const
    {
        std::map<LevelCode, std::string> names;
        for (const LevelRecord& level : session.archive.levels)
            if (level.levelCode != originalCode)
                names[level.levelCode] = level.levelName;
        return names;
    }
    using Listed = std::map<LevelCode, std::string>;
};

} // namespace

TEST(RecoveredArchive, TakesNamesFromWhereverTheyAreKnown)
{
    RecoverWorld world;
    const std::string list = world.Read("home/LevelArchive.kva");
    world.LoseList();
    // What the levels brought, a text's first lines, or the number; the exact name lies beside.
    LevelConfig config;
    config.name = "By its author";
    config.moreInfo = "readme.txt";
    ASSERT_TRUE(WriteLevelConfig(LevelConfigPath(world / "levels/LEVEL_0001/files"), config));
    world.Write("levels/LEVEL_0003/files/readme.txt",
                "Welcome!\r\n  Level title : \"The Mill\"\r\n");
    world.Write("levels/LEVEL_0003/savegames/savegame.1", "12345");
    world.Write("levels/LEVEL_12345/files/far.tr4", "a high number");
    ASSERT_TRUE(world.Recover()) << world.host.AllTold();
    EXPECT_EQ(
        world.Names(),
        (RecoverWorld::Listed{
            {1, "By its author"}, {2, "Łódź"}, {3, "The Mill"}, {12345, "Level Name 12345"}}));
    EXPECT_EQ(world.session.archive.levels[1].moreInfoFile, "readme.txt");
    EXPECT_EQ(world.session.archive.levels[2].filesSize, 7);
    EXPECT_EQ(world.session.archive.levels[3].extrasSize, 5);
    EXPECT_EQ(world.session.archive.levels[0].levelCode, originalCode);
    EXPECT_TRUE(world.host.WasTold("no .tr4 file")) << "the third one is told of, and listed";
    EXPECT_TRUE(world.host.WasTold("Levels: 4; with a number in place of a name: 1"));

    // An old list is better, also one that was cut in the middle, and is never written to.
    for (const std::size_t size : {list.size(), list.size() - 800}) {
        world.LoseList();
        world.Write("levels/old.kva", list.substr(0, size));
        ASSERT_TRUE(world.Recover()) << world.host.AllTold();
        EXPECT_EQ(world.Names().at(1), "First");
        EXPECT_EQ(world.Names().at(2), "Łódź");
        EXPECT_EQ(world.session.archive.levels[1].authorName, "Ada");
        EXPECT_TRUE(world.session.archive.header.wavInMp3);
        EXPECT_EQ(world.Read("levels/old.kva"), list.substr(0, size));
    }
    // A newer list that knows a number alone does not hide it, and each list has its own file.
    world.LoseList();
    world.session.archive.levels.resize(1);
    world.session.archive.header.secondaryFolder = (world / "levels").native();
    LevelRecord numbered;
    numbered.levelCode = 1;
    numbered.levelName = "Level Name 1";
    world.session.archive.levels.push_back(numbered);
    ASSERT_TRUE(WriteArchive(world.session, world / "home/LevelArchive.kva"));
    world.Write("levels/old.kva", list);
    ASSERT_TRUE(world.Recover());
    EXPECT_EQ(world.Names().at(1), "First");
    EXPECT_EQ(world.session.ArchivePath(), world / "home/LevelArchive2.kva");
    ASSERT_TRUE(ReadArchive(world.session, world.session.ArchivePath())) << world.host.AllTold();
    EXPECT_EQ(world.Names().size(), 4U);
    EXPECT_TRUE(world.session.locks.Holds(world / "levels"));
}

TEST(RecoveredArchive, LeavesOddFoldersAlone)
{
    RecoverWorld world;
    world.LoseList();
    world.Write("levels/LEVEL_0004", "a file");
    world.Write("levels/LEVEL_05/files/e.tr4", "two digits");
    world.Write("levels/level_0001/files/a.tr4", "another spelling");
    world.Write("levels/LEVEL_99999999999/files/e.tr4", "no number");
    world.Write("levels/LEVEL_0000/files/e.tr4", "the original's");
    world.Write("levels/LEVEL_000x/files/e.tr4", "no digits");
    world.Write("levels/level_0006/files/e.tr4", "small letters");
    world.Write("levels/LEVEL_0007/.kv~intake", "");
    LevelRecord whole;
    whole.levelCode = 3;
    whole.levelName = "Wąwóz";
    world.Write("levels/LEVEL_0003/files/w.tr4", "whole");
    ASSERT_TRUE(MarkIntakeWhole(world / "levels/LEVEL_0003", whole));
    world.Write("elsewhere/files/l.tr4", "on another disk");
    fs::create_directory_symlink(world / "elsewhere", world / "levels/LEVEL_0008");
    world.Write("levels/LEVEL_0009.set-aside-2026-01-01_10.00.00/files/s.tr4", "set aside");
    ASSERT_TRUE(world.Recover()) << world.host.AllTold();
    EXPECT_EQ(world.Names(), (RecoverWorld::Listed{{1, "Level Name 1"},
                                                   {2, "Łódź"},
                                                   {3, "Wąwóz"},
                                                   {6, "Level Name 6"},
                                                   {8, "Level Name 8"}}));
    EXPECT_FALSE(world.Has("levels/LEVEL_0003/.kv~intake"));
    EXPECT_TRUE(world.host.WasTold("left alone: LEVEL_0000, LEVEL_0004, LEVEL_05, "
                                   "LEVEL_99999999999, level_0001"))
        << world.host.AllTold();
    EXPECT_TRUE(world.Has("levels/LEVEL_0009.set-aside-2026-01-01_10.00.00/files/s.tr4"));

    ASSERT_TRUE(world.Recover(true)) << world.host.AllTold();
    EXPECT_EQ(world.Read("levels/LEVEL_0009/files/s.tr4"), "set aside");
    EXPECT_EQ(world.Names().size(), 6U);
}

TEST(RecoveredArchive, IsNoneWhereNothingIsAndThenNothingChanges)
{
    RecoverWorld world;
    fs::create_directory(world / "empty");
    const FileContents before = world.Snapshot("");
    EXPECT_FALSE(RecoverArchive(world.session, {world / "empty", {}, false}));
    EXPECT_TRUE(world.host.WasTold("I've not found any 'LEVEL_###' subfolder in folder: " +
                                   (world / "empty").native()));
    EXPECT_FALSE(RecoverArchive(world.session, {world / "none", {}, false}));
    EXPECT_FALSE(RecoverArchive(world.session, {world / "levels", {world / "empty"}, false}));
    EXPECT_TRUE(world.host.WasTold("lies no disc of an archive"));
    world.host.WillAsk("If you have lost or damaged archive.kva", false);
    EXPECT_FALSE(RecoverArchive(world.session));
    EXPECT_EQ(world.Snapshot(""), before);
    EXPECT_EQ(world.session.ArchivePath(), world / "home/LevelArchive.kva");
    EXPECT_EQ(world.Names().size(), 2U);
}

TEST(RecoveredArchive, LearnsWhatLiesOnDiscs)
{
    RecoverWorld world;
    world.AddOnDisc("Third", 1, "one", {{"c.tr4", "level c"}});
    world.AddOnDisc("Fourth", 2, "two", {{"d.tr4", "level four"}});
    world.Write(RecoverWorld::DiscPlace("two", 2, 9) + "/files/e.tr4", "on the disc alone");
    world.LoseList();
    // As in the window: one disc after the other.
    fs::create_directory_symlink(world / "discs/two/levels2", world / "discs/one/levels2");
    world.host.WillAsk("If you have lost", true);
    world.host.WillChoose("Choose HD main folder", world / "levels");
    world.host.WillAsk("Is archive to restore also on CD?", true);
    world.host.WillChoose("Choose main folder on FIRST CD", world / "discs/one/levels1");
    world.host.WillAsk("Exits (next) CD #2", true);
    world.host.WillAsk("Exits (next) CD #3", false);
    ASSERT_TRUE(RecoverArchive(world.session)) << world.host.AllTold();
    const auto check = [&] {
        const Archive& archive = world.session.archive;
        EXPECT_EQ(archive.header.cdCount, 2);
        EXPECT_EQ(archive.Find(1)->cdNumber, 0);
        EXPECT_EQ(archive.Find(3)->cdNumber, 1);
        EXPECT_EQ(archive.Find(3)->filesSize, 7);
        EXPECT_EQ(archive.Find(4)->cdNumber, 2);
        ASSERT_NE(archive.Find(9), nullptr);
        EXPECT_EQ(archive.Find(9)->cdNumber, 2);
        EXPECT_TRUE(fs::is_directory(world / "levels/LEVEL_0009/savegames"));
        world.places.drives = {world.DriveWith("one"), world.DriveWith("two")};
        world.NewShelf();
        EXPECT_TRUE(world.Find(4)) << "the disc is found";
    };
    check();
    // By words: the folder in which a disc is mounted.
    ASSERT_TRUE(RecoverArchive(
        world.session,
        {world / "levels", {world / "discs/one", world / "discs/two/levels2"}, false}))
        << world.host.AllTold();
    check();
    world.host.WillAsk("If you have lost", true);
    world.host.WillChoose("Choose HD main folder", world / "levels");
    world.host.WillAsk("Is archive to restore also on CD?", true);
    world.host.WillChoose("Choose main folder on FIRST CD", world / "discs/two/levels2");
    EXPECT_FALSE(RecoverArchive(world.session));
    EXPECT_TRUE(world.host.WasTold("is NOT first folder archive"));
}

TEST(RecoveredArchive, KnowsItsDiscsByTheirNote)
{
    RecoverWorld world;
    world.AddOnDisc("Third", 1, "one", {{"c.tr4", "level c"}});
    DiscNote note;
    note.folder = "levels";
    NotedDisc disc;
    disc.number = 1;
    const auto files = NoteFilesOf(world / (RecoverWorld::DiscPlace("one", 1, 3) + "/files"));
    ASSERT_TRUE(files);
    disc.levels = {{3, true, *files}, {1, true, *files}};
    note.Put(disc);
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    world.LoseList();
    ASSERT_TRUE(world.Recover()) << world.host.AllTold();
    EXPECT_EQ(world.session.archive.Find(3)->cdNumber, 1);
    EXPECT_EQ(world.session.archive.Find(3)->filesSize, 7);
    EXPECT_EQ(world.session.archive.Find(1)->cdNumber, 0) << "its files are here";
    world.places.drives = {world.DriveWith("one")};
    EXPECT_TRUE(world.Find(3));

    // What came back before that was broken off is not the level.
    world.Write(RecoverWorld::DiscPlace("one", 1, 3) + "/files/c.wav", "all of it");
    disc.levels[0].files = *NoteFilesOf(world / (RecoverWorld::DiscPlace("one", 1, 3) + "/files"));
    note.Put(disc);
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    world.Write("levels/LEVEL_0003/files/c.tr4", "level c");
    ASSERT_TRUE(world.Recover()) << world.host.AllTold();
    EXPECT_EQ(world.session.archive.Find(3)->cdNumber, 1);
    world.Write("levels/LEVEL_0003/files/c.wav", "all of it");
    ASSERT_TRUE(world.Recover()) << world.host.AllTold();
    EXPECT_EQ(world.session.archive.Find(3)->cdNumber, 0);
}

TEST(RecoveredArchive, IsKilledAndFailsWithNothingLost)
{
    const auto prepare = [](RecoverWorld& world) {
        world.host.AnswerAll(true);
        world.Write("home/LevelArchive.kva", "damaged");
        world.session.archive = {};
        world.Write("levels/LEVEL_0009.set-aside-2026-01-01_10.00.00/files/s.tr4", "set aside");
    };
    for (const bool kills : {true, false})
        for (int step = 1; step < 1000; step = NextPoint(step)) {
            RecoverWorld world;
            prepare(world);
            bool reached = false;
            if (kills)
                reached = WithKillAt(step, [&] { return world.Recover(true); }).killed;
            else
                reached = WithFaultAt(step, [&] { return world.Recover(true); }).reached;
            SCOPED_TRACE(step);
            EXPECT_EQ(world.Read("home/LevelArchive.kva"), "damaged");
            EXPECT_EQ(world.Read("levels/LEVEL_0001/files/a.tr4"), "level a");
            EXPECT_TRUE(world.Has("levels/LEVEL_0003/files/s.tr4") ||
                        world.Has("levels/LEVEL_0009.set-aside-2026-01-01_10.00.00/files/s.tr4"));
            EXPECT_TRUE(world.Recover(true)) << world.host.AllTold();
            EXPECT_EQ(world.Names().size(), 3U);
            if (!reached || ::testing::Test::HasFailure()) {
                TellPoints(step - 1, 5);
                break;
            }
        }
}

TEST(RecoveredArchive, HasThreeThousandLevelsAtOnce)
{
    RecoverWorld world;
    world.LoseList();
    for (int code = 3; code <= 3000; ++code)
        fs::create_directories(world / ("levels/LEVEL_" + ZeroPadded(code, 4) + "/files"));
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(world.Recover()) << world.host.AllTold();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(took.count(), 10.0) << "it grows with the square of the levels";
    EXPECT_EQ(world.Names().size(), 3000U);
}

} // namespace kestrova::testing
