#include "history/standing.h"
#include "sandbox/faults.h"
#include "saves/savegame_store.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

class SavegameRecords : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        code = box.AddLevel("Level", {});
    }
    Result<SavegameStore> Load()
    {
        return LoadSavegameStore(box.session.Folders(), box.session.preferences, code);
    }
    World box;
    LevelCode code = 0;
};

TEST_F(SavegameRecords, LiesWhereTheLevelIs)
{
    EXPECT_EQ(*LiveStateFolder(box.session.Folders(), box.session.archive, 0), box / "trle")
        << "no marker: the original";
    EXPECT_EQ(*LiveStateFolder(box.session.Folders(), box.session.archive, code),
              box / "levels/LEVEL_0001/backup_savegames");
    box.Write("trle/KESTRVA.TXT", "#LEVEL_CODE=0001#");
    EXPECT_EQ(*LiveStateFolder(box.session.Folders(), box.session.archive, code), box / "trle");
    EXPECT_EQ(*LiveStateFolder(box.session.Folders(), box.session.archive, 0),
              box / "home/LEVEL_0000/backup_savegames");
}

TEST_F(SavegameRecords, ComesIntoBeingWithItsDefaults)
{
    ASSERT_TRUE(Load());
    const auto header =
        ParseSavegameArchiveHeader(box.Read("levels/LEVEL_0001/savegames/savegames.bva"));
    const auto tool = ParseSavegameToolPrefs(box.Read("levels/LEVEL_0001/savegames/manager.prf"));
    ASSERT_TRUE(header && tool);
    const std::string root = (box / "levels/LEVEL_0001/savegames").native();
    EXPECT_EQ(header->slotPrefix, "slot");
    EXPECT_EQ(header->archiveRoot, root);
    EXPECT_EQ(header->liveFolder, (box / "trle").native());
    EXPECT_EQ(header->gameExe, (box / "trle/tomb4.exe").native());
    EXPECT_EQ(header->slotCount, 15);
    EXPECT_EQ(tool->archivePath, root + "/savegames.bva");
    EXPECT_EQ(tool->shotFolder, (box / "levels/LEVEL_0001/screenshots").native());
    EXPECT_EQ(tool->flag4, -1);
}

TEST_F(SavegameRecords, WhatTheFilesHoldComesOverTheDefaults)
{
    SavegameArchiveHeader header;
    header.slotPrefix = "slot";
    header.archivedCount = 12;
    SavegameToolPrefs tool;
    tool.flag0 = 7;
    box.Write("levels/LEVEL_0001/savegames/Savegames.BVA", FormatSavegameArchiveHeader(header));
    box.Write("levels/LEVEL_0001/savegames/manager.prf", FormatSavegameToolPrefs(tool));
    const auto before = box.Snapshot("levels");
    const auto store = Load();
    ASSERT_TRUE(store);
    EXPECT_EQ(store->header.archivedCount, 12);
    EXPECT_EQ(store->tool.flag0, 7);
    EXPECT_EQ(box.Snapshot("levels"), before);
}

TEST_F(SavegameRecords, ACutFileOrAMissingFolderLeavesTheDefaultsInMemory)
{
    box.Write("levels/LEVEL_0001/savegames/savegames.bva", std::string(1029, 'x'));
    box.Write("levels/LEVEL_0001/savegames/manager.prf", "");
    const auto before = box.Snapshot("levels");
    const auto store = Load();
    ASSERT_TRUE(store);
    EXPECT_EQ(store->header.archivedCount, 0);
    EXPECT_EQ(store->tool.flag1, -1);
    EXPECT_EQ(box.Snapshot("levels"), before);
    const auto elsewhere = LoadSavegameStore(box.session.Folders(), box.session.preferences, 77);
    ASSERT_TRUE(elsewhere);
    EXPECT_EQ(elsewhere->header.slotCount, 15);
    EXPECT_FALSE(box.Has("levels/LEVEL_0077"));
}

TEST_F(SavegameRecords, RecordsThatCannotBeReadNowAreNotMadeAnew)
{
    SavegameArchiveHeader header;
    header.archivedCount = 12;
    box.Write("levels/LEVEL_0001/savegames/savegames.bva", FormatSavegameArchiveHeader(header));
    box.Write("levels/LEVEL_0001/savegames/manager.prf", FormatSavegameToolPrefs({}));
    const auto before = box.Snapshot("levels");
    AtEachReadAndLook([&](const FailingRun& failing) {
        std::int32_t archived = 0;
        const FaultRun run = failing([&] {
            const auto store = Load();
            archived = store ? store->header.archivedCount : 0;
            return bool{store};
        });
        EXPECT_TRUE(!run.answer || archived == 12);
        EXPECT_EQ(box.Snapshot("levels"), before);
        return run;
    });
}

} // namespace

} // namespace kestrova::testing
