#include "formats/savegame_records.h"
#include "history/standing.h"
#include "play/savegame_tool.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(SavegameTool, IsStartedOnTheSelectedLevelWithItsTwoRecords)
{
    World box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const LevelCode code = box.AddLevel("Dawn", {{"dawn.tr4", "level"}, {"script.dat", "script"}});
    EXPECT_FALSE(StartSavegameTool(box.session)) << "nothing is selected, and nothing is said";
    EXPECT_TRUE(box.host.told.empty());

    box.list.selected = code;
    box.session.preferences.captureEnabled = false;
    box.host.WillAsk("Warning: level Dawn is not current level", false);
    EXPECT_FALSE(StartSavegameTool(box.session));
    EXPECT_TRUE(box.host.WasTold("Brivanta not found. \r\nIn folder \"" + (box / "home").native() +
                                 "\" is missing: brivanta.exe"))
        << box.host.AllTold();
    EXPECT_FALSE(box.session.archive.levels[1].extrasDirty);
    const auto records = [&] {
        const std::string root = "levels/LEVEL_0001/savegames/";
        return std::pair{ParseSavegameArchiveHeader(box.Read(root + "savegames.bva")).Value(),
                         ParseSavegameToolPrefs(box.Read(root + "manager.prf")).Value()};
    };
    const std::string level = (box / "levels/LEVEL_0001").native();
    EXPECT_EQ(records().first.liveFolder, level + "/backup_savegames");
    EXPECT_EQ(records().second.toolCapture, -1);

    box.Write("home/Brivanta.exe", "the tool");
    box.session.preferences.captureEnabled = true;
    box.host.WillAsk("Would you like set in TRLE this level", true);
    EXPECT_TRUE(StartSavegameTool(box.session)) << box.host.AllTold();
    EXPECT_EQ(CurrentLevelCode(box.session.Folders(), box.session.archive), code);
    EXPECT_EQ(records().first.liveFolder, (box / "trle").native());
    EXPECT_EQ(records().first.archiveRoot, level + "/savegames");
    EXPECT_EQ(records().second.toolCapture, 0);
    EXPECT_EQ(records().second.shotFolder, level + "/screenshots");
    ASSERT_EQ(box.machine.started.size(), 1U);
    EXPECT_EQ(box.machine.started[0].argv,
              std::vector<std::string>{(box / "home/Brivanta.exe").native()});
    EXPECT_EQ(box.machine.started[0].folder, box / "home");
    EXPECT_TRUE(box.session.archive.levels[1].extrasDirty) << "it may change the level's files";
    EXPECT_FALSE(box.session.archive.dirty) << "saved at once";

    // The level is current now: no question. What cannot be written is told, and it goes on.
    std::filesystem::remove(box / "levels/LEVEL_0001/savegames/savegames.bva");
    std::filesystem::create_directory(box / "levels/LEVEL_0001/savegames/savegames.bva");
    EXPECT_TRUE(StartSavegameTool(box.session));
    EXPECT_TRUE(box.host.WasTold("I cannot overwrite savegame archive: " + level +
                                 "/savegames/savegames.bva"));
}

} // namespace kestrova::testing
