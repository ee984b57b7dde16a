#include "levels/export_level.h"

#include "packages/level_config_file.h"
#include "packages/unzip.h"
#include "storage/zl_file.h"
#include "swap/install.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;
using Files = std::map<std::string, std::string>;

class ExportTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.UseRealTools();
        // The original level and the archive lie in the program's folder.
        const Path link = box / "home";
        fs::remove(link);
        fs::create_directory_symlink(box.session.programFolder, link);
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.AddLevel("The: \"end\"", {{"a.tr4", "level"}, {"read me.txt", "text"}});
        box.Write("levels/LEVEL_0001/files/b.WAV", std::string(1000, 'w'));
        EXPECT_TRUE(CompressToZl(box / "levels/LEVEL_0001/files/b.WAV",
                                 box / "levels/LEVEL_0001/files/b.WAV.zl"));
        fs::remove(box / "levels/LEVEL_0001/files/b.WAV");
        LevelRecord& record = box.session.archive.levels[1];
        record.authorEmails = "a@b\0c@d"s;
        record.moreInfoFile = "read me.txt";
    }
    Files Unpacked(const Path& zip)
    {
        ToolWatch state;
        fs::remove_all(box / "out");
        EXPECT_TRUE(
            state.Done(UnzipWithProgress(ToolsOf(box.session), zip, box / "out", {}, state)))
            << state.error << state.details;
        return box.Snapshot("out");
    }
    bool IsTidy() const
    {
        return !fs::exists(box.session.programFolder / "out_files") &&
               !fs::exists(box.session.programFolder / "_temp_Dec");
    }
    ToolBox box;
};

TEST_F(ExportTest, PacksWhatTheGameNeedsAndTellsOfIt)
{
    box.host.WillChoose("Save exported level files", box / "my level");
    const Files before = box.Snapshot("levels");
    ASSERT_TRUE(ExportLevel(box.session, 1)) << box.host.AllTold();
    EXPECT_TRUE(
        box.host.WasTold("All files of current level saved in " + (box / "my level.zip").native()));
    Files files = Unpacked(box / "my level.zip");
    const auto read = ReadLevelConfig(box / "out/kestrova.cfg");
    ASSERT_TRUE(read);
    const LevelConfig& config = *read;
    files.erase("kestrova.cfg");
    EXPECT_EQ(
        files,
        (Files{{"a.tr4", "level"}, {"read me.txt", "text"}, {"b.WAV", std::string(1000, 'w')}}));
    EXPECT_EQ(config.name, "The: \"end\"");
    EXPECT_EQ(config.authorEmails, "a@b\0c@d"s);
    EXPECT_EQ(config.moreInfo, "read me.txt");
    EXPECT_EQ(config.exeFormat + config.tomWads + config.externWaves, "");
    std::map<std::string, std::int32_t> sizes;
    for (const ConfigFile& file : config.files)
        sizes[file.name] = file.size;
    EXPECT_EQ(sizes, (std::map<std::string, std::int32_t>{
                         {"a.tr4", 5}, {"b.WAV", 1000}, {"read me.txt", 4}}));
    EXPECT_TRUE(IsTidy());
    EXPECT_EQ(box.Snapshot("levels"), before);
}

TEST_F(ExportTest, SavegamesAndShotsComeInWhenTheyAreWanted)
{
    box.Write("levels/LEVEL_0001/backup_savegames/savegame.3", "game");
    box.Write("levels/LEVEL_0001/screenshots/one.jpg", "shot");
    box.Write("levels/LEVEL_0001/screenshots/A.TR4.bmp", "shot");
    box.Write("levels/LEVEL_0001/screenshots/notes.txt", "none");
    box.host.WillAsk("There are some screenshots", false);
    ASSERT_TRUE(ExportLevel(box.session, 1, {box / "no.zip", {}, {}})) << box.host.AllTold();
    EXPECT_EQ(Unpacked(box / "no.zip").size(), 4U);
    box.session.settings.exportSavegames = true;
    box.host.WillAsk("There are some screenshots", true);
    ASSERT_TRUE(ExportLevel(box.session, 1, {box / "all.zip", {}, {}}));
    const Files all = Unpacked(box / "all.zip");
    EXPECT_EQ(all.size(), 7U);
    EXPECT_EQ(all.at("savegame.3"), "game");
    EXPECT_EQ(all.at("one.jpg"), "shot");
    ASSERT_TRUE(ExportLevel(box.session, 1, {box / "no.zip", false, false}));
    EXPECT_EQ(Unpacked(box / "no.zip").size(), 4U) << "replaced";
}

TEST_F(ExportTest, WhatThePlayerMadeComesInBesideTheLevelsOwnFiles)
{
    box.Write("levels/LEVEL_0001/screenshots/Load.bmp", "shot 1");
    box.Write("levels/LEVEL_0001/files/view.jpg", "the level's");
    box.Write("levels/LEVEL_0001/screenshots/VIEW.jpg", "shot 2");
    box.Write("levels/LEVEL_0001/files/savegame.3", "the level's");
    box.Write("levels/LEVEL_0001/backup_savegames/savegame.3", "three, older");
    box.Write("levels/LEVEL_0001/backup_savegames/savegame.5", "five");
    ASSERT_TRUE(InstallLevel(box.session, 1)) << box.host.AllTold();
    box.Write("trle/savegame.3", "three");
    box.Write("trle/savegame.9", "nine");
    const Path zip = box / "mine.zip";
    const Path link = box / "link.zip";
    fs::create_symlink(zip, link);
    for (const bool again : {false, true}) {
        ASSERT_TRUE(ExportLevel(box.session, 1, {link, true, true})) << box.host.AllTold();
        EXPECT_TRUE(fs::is_symlink(link));
        const fs::perms own = fs::perms::owner_read | fs::perms::owner_write;
        EXPECT_TRUE(!again || fs::status(zip).permissions() == own);
        fs::permissions(zip, own);
        const Files all = Unpacked(zip);
        for (const auto& [name, content] : Files{{"Load_2.bmp", "shot 1"},
                                                 {"view.jpg", "the level's"},
                                                 {"VIEW_2.jpg", "shot 2"},
                                                 {"savegame.3", "the level's"},
                                                 {"savegame.0", "three"},
                                                 {"savegame.5", "five"},
                                                 {"savegame.9", "nine"}})
            EXPECT_EQ(all.contains(name) ? all.at(name) : "-", content) << name;
        EXPECT_FALSE(all.contains("Load.bmp"));
    }
    for (const char* name : {"Load_2.bmp", "VIEW_2.jpg", "savegame.0"})
        EXPECT_TRUE(box.host.WasTold(name)) << box.host.AllTold();
}

TEST_F(ExportTest, EndsInWordsWithTheOldZipAsItWas)
{
    box.Write("old.zip", "an old zip");
    const auto fails = [&](const std::string& words) {
        box.host.told.clear();
        EXPECT_FALSE(ExportLevel(box.session, 1, {box / "old.zip", false, false})) << words;
        EXPECT_TRUE(box.host.WasTold(words)) << box.host.AllTold();
        EXPECT_EQ(box.Read("old.zip"), "an old zip");
        EXPECT_TRUE(IsTidy());
    };
    box.AddTool("zip", "echo why; exit 14");
    fails("Error zipping files:");
    fs::remove(box.session.programFolder / "zip");
    box.machine.tools.erase("zip");
    fails("Zip program 'pkzip.exe' not found in: ");
    EXPECT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
    box.UseRealTools();
    box.Write("levels/LEVEL_0001/files/b.WAV.zl", "damaged");
    fails("Error decompressing level files");
    fs::remove_all(box / "levels/LEVEL_0001/files");
    fails("Cd not available");
    box.host.told.clear();
    box.Write("levels/LEVEL_0001/files/a.tr4", "x");
    box.host.WillChoose("Save exported level files", std::nullopt);
    EXPECT_FALSE(ExportLevel(box.session, 1));
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
    EXPECT_TRUE(IsTidy());
    EXPECT_FALSE(ExportLevel(box.session, 7));
}

} // namespace

} // namespace kestrova::testing
