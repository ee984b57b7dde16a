#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "archive/tr4_index.h"
#include "session/telling.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

class ArchiveMemory : public ::testing::Test
{
protected:
    void SetUp() override { box.MakeBackupAndArchive(); }
    World box;
};

TEST_F(ArchiveMemory, LevelsAreFoundByCodeAndTheirFoldersByKind)
{
    Session& session = box.session;
    box.AddLevel("One", {});
    box.AddLevel("Two  ", {});
    EXPECT_EQ(FindLevel(session.archive, 2), 2);
    EXPECT_EQ(FindLevel(session.archive, 9), -1);
    EXPECT_EQ(LevelNameOf(session.archive, 2), "Two");
    EXPECT_EQ(NextLevelCode(session.archive), 3);
    session.archive.levels.erase(session.archive.levels.begin() + 2);
    EXPECT_EQ(NextLevelCode(session.archive), 2) << "the highest number is free again";
    session.archive.levels.clear();
    EXPECT_EQ(NextLevelCode(session.archive), 0);

    EXPECT_EQ(LevelFolderName(12), "\\LEVEL_0012");
    EXPECT_EQ(LevelFolderName(10000), "\\LEVEL_10000");
    session.archive.header.secondaryFolder = (box / "other").native() + "/  ";
    EXPECT_EQ(LevelHomeOf(session.Folders(), 3), box / "other/LEVEL_0003");
    EXPECT_EQ(*LevelFolderOf(session.Folders(), session.archive, 0), box / "home/LEVEL_0000");
    EXPECT_EQ(StateStoreOf(session.Folders(), 3), box / "other/LEVEL_0003/backup_savegames");
}

TEST_F(ArchiveMemory, ALevelOnADiscIsNotAvailable)
{
    const LevelCode code = box.AddLevel("Disc", {});
    box.session.archive.levels[1].cdNumber = 2;
    EXPECT_EQ(LevelFolderOf(box.session.Folders(), box.session.archive, code).Error().code,
              ErrorCode::Missing);
    EXPECT_EQ(LevelHomeOf(box.session.Folders(), code), box / "levels/LEVEL_0001");
    EXPECT_FALSE(DoneOrTold(box.host, GuardLevelOnCd(box.session.archive.levels[1])));
    EXPECT_TRUE(GuardLevelOnCd(box.session.archive.levels[0]));
    box.session.archive.header.cdCount = 2;
    EXPECT_TRUE(IsArchiveOnCd(box.session.archive));
}

TEST_F(ArchiveMemory, SizesAreSummedForAllButTheFirstRecord)
{
    Session& session = box.session;
    box.AddLevel("One", {{"a.tr4", "12345"}});
    box.Write("levels/LEVEL_0001/savegames/slot1/savegame.0", "123");
    box.Write("home/LEVEL_0000/files/manual.htm", "1234567");
    RefreshLevelSizes(session, 1);
    EXPECT_EQ(session.archive.levels[1].filesSize, 5);
    EXPECT_EQ(session.archive.levels[1].extrasSize, 3);
    EXPECT_EQ(session.archive.header.mainFolderSize, 5);
    AddLevelSize(session, 10, SizeKind::Files, 1);
    AddLevelSize(session, -1, SizeKind::Extras, 1);
    AddLevelSize(session, 100, SizeKind::Files, 0);
    EXPECT_EQ(session.archive.levels[0].filesSize, 100);
    EXPECT_EQ(session.archive.header.mainFolderSize, 15);
    EXPECT_EQ(session.archive.header.secondaryFolderSize, 2);
    EXPECT_EQ(ParseArchive(box.Read("home/LevelArchive.kva"))->header.mainFolderSize, 15)
        << "each change is saved";

    EXPECT_TRUE(RecomputeArchiveSize(session, true));
    EXPECT_EQ(session.archive.levels[0].filesSize, 7);
    EXPECT_EQ(session.archive.header.mainFolderSize, 5);
    EXPECT_EQ(session.archive.header.secondaryFolderSize, 3);
    session.archive.levels[1].cdNumber = 1;
    session.archive.levels[1].filesSize = 900;
    RefreshLevelSizes(session, 1);
    EXPECT_EQ(session.archive.levels[1].filesSize, 900) << "a disc is not read";
    AddLevelSize(session, 5e9, SizeKind::Files, 1);
    EXPECT_EQ(session.archive.levels[1].filesSize, 0x7FFFFFFF) << "what a field can hold";
}

TEST_F(ArchiveMemory, AStoppedMeasureKeepsWhatItHas)
{
    box.AddLevel("One", {{"a.tr4", "1"}});
    box.AddLevel("Two", {{"a.tr4", "22"}});
    box.host.StopAtStep(2);
    const auto measured = RecomputeArchiveSize(box.session, true);
    ASSERT_FALSE(measured);
    EXPECT_EQ(measured.Error().code, ErrorCode::Stopped);
    EXPECT_EQ(box.session.archive.levels[1].filesSize, 1);
    EXPECT_EQ(box.session.archive.levels[2].filesSize, 0);
    EXPECT_EQ(box.session.archive.header.mainFolderSize, 1);
}

TEST_F(ArchiveMemory, AShrunkArchiveKeepsItsOldTailAndReadsByItsCount)
{
    box.AddLevel("One", {});
    box.AddLevel("Two", {});
    ASSERT_TRUE(SaveArchive(box.session));
    EXPECT_EQ(box.Read("home/LevelArchive.kva").size(), 546U + 3 * 1634);
    box.session.archive.levels.pop_back();
    ASSERT_TRUE(SaveArchive(box.session));
    const std::string bytes = box.Read("home/LevelArchive.kva");
    EXPECT_EQ(bytes.size(), 546U + 3 * 1634);
    EXPECT_EQ(ParseArchive(bytes)->levels.size(), 2U);
    EXPECT_EQ(bytes.substr(546 + 2 * 1634, 3), "Two");
}

TEST_F(ArchiveMemory, AFailedSaveIsToldAndLeavesTheArchiveDirty)
{
    box.session.archive.file = box / "none/a.kva";
    EXPECT_FALSE(SaveArchive(box.session));
    EXPECT_TRUE(box.session.archive.dirty);
    EXPECT_TRUE(box.host.WasTold("Error while saving archive: " + (box / "none/a.kva").native()));
    box.session.archive.file = box / "home/b.kva";
    EXPECT_EQ(AskSaveChanges(box.session), Changes::Saved) << "saved without a question";
    EXPECT_FALSE(box.session.archive.dirty);
    EXPECT_TRUE(box.Has("home/b.kva"));

    box.session.archive.header.mainFolder = "/" + std::string(256, 'x');
    const auto status = WriteArchive(box.session, box / "home/c.kva");
    ASSERT_FALSE(status);
    EXPECT_EQ(status.Error().code, ErrorCode::Refused) << "a folder is never cut";
    EXPECT_FALSE(box.Has("home/c.kva"));
    EXPECT_EQ(box.session.ArchivePath(), box / "home/b.kva");
}

TEST_F(ArchiveMemory, TheIndexHoldsTrueNamesAndSizes)
{
    box.AddLevel("One", {{"Grün.TR4", "12345"}, {"b.tr4", "1"}, {"c.tr4.zl", "stream"}});
    const auto entries = *ScanTr4Files(box / "levels/LEVEL_0001/files");
    ASSERT_EQ(entries.size(), 2U);
    ASSERT_TRUE(WriteTr4Inf(box.session.Folders(), box.session.archive, 1, entries));
    EXPECT_EQ(Tr4InfPath(box.session.Folders(), box.session.archive, 1),
              box / "levels/LEVEL_0001/tr4.inf");
    const auto back = ReadTr4Inf(box.session.Folders(), box.session.archive, 1);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->at(1).name, "Grün.TR4");
    EXPECT_EQ(back->at(1).size, 5);
    EXPECT_EQ(Tr4EntryOf(std::string(100, 'n'), box / "none").name, std::string(80, 'n'));
    box.Write("levels/LEVEL_0001/tr4.inf", "cut");
    EXPECT_EQ(ReadTr4Inf(box.session.Folders(), box.session.archive, 1).Error().code,
              ErrorCode::Damaged);
    EXPECT_FALSE(ReadTr4Inf(box.session.Folders(), box.session.archive, 0));
}

} // namespace

} // namespace kestrova::testing
