#include "core/copying.h"
#include "formats/nul_list.h"
#include "intake/add_level.h"
#include "intake/draft_sources.h"
#include "packages/level_config_file.h"
#include "packages/unzip.h"
#include "publish/finish_upload.h"
#include "publish/upload_files.h"
#include "publish/upload_lists.h"
#include "publish/upload_sounds.h"
#include "publish/upload_steps.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;

/// An author's folder, a wizard on it, and another home where its package is added.
class UploadTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.UseRealTools();
        const Path link = box / "home";
        fs::remove(link);
        fs::create_directory_symlink(box.session.programFolder, link);
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.Write("author/level.tr4", "level");
        box.Write("author/read me.txt", "text");
        box.Write("author/script.dat", "script");
        progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    }
    std::unique_ptr<UploadWizard> Wizard()
    {
        auto wizard = std::make_unique<UploadWizard>(box.session, *progress);
        EXPECT_TRUE(OpenWizard(*wizard));
        wizard->asksForDocument = false;
        return wizard;
    }
    /// The wizard at its last step.
    std::unique_ptr<UploadWizard> Filled()
    {
        auto wizard = Wizard();
        EXPECT_TRUE(AddSources(*wizard, {box / "author"}, Subfolders::Take)) << box.host.AllTold();
        wizard->name = "Level";
        WalkToEnd(*wizard);
        return wizard;
    }
    void WalkToEnd(UploadWizard& wizard)
    {
        while (wizard.step != UploadStep::End)
            ASSERT_TRUE(NextStep(wizard)) << box.host.AllTold();
    }
    /// What a player's archive has of the package.
    LevelRecord AddedOnAnotherHome(const Path& zip)
    {
        LevelCode code = 0;
        EXPECT_TRUE(AddLevel(
            box.session, *progress,
            [&](Intake& level) {
                return AddSources(level, {zip}, Subfolders::Take) && Accept(level);
            },
            code))
            << box.host.AllTold();
        added = "levels/LEVEL_" + ZeroPadded(code, 4) + "/files";
        return box.session.archive.levels.back();
    }
    LevelConfig ConfigIn(const Path& zip)
    {
        ToolWatch state;
        fs::remove_all(box / "out");
        EXPECT_TRUE(
            state.Done(UnzipWithProgress(ToolsOf(box.session), zip, box / "out", {}, state)))
            << state.error << state.details;
        auto config = ReadLevelConfig(box / "out/kestrova.cfg");
        return config ? *config : LevelConfig{};
    }

    ToolBox box;
    std::unique_ptr<ProgressScope> progress;
    std::string added;
};

TEST_F(UploadTest, WhatItWritesInstallsItself)
{
    box.Write("author/Łódź 日本.wad", std::string(70000, 'w'));
    box.Write("author/data/" + std::string(200, 'n') + ".wad", "long");
    box.Write("author/old/KESTROVA.cfg", "no configuration");
    fs::remove_all(box / "author/old");
    fs::create_symlink(box / "trle", box / "author/link");
    const auto before = box.Snapshot("author");
    {
        auto wizard = Wizard();
        ASSERT_TRUE(AddSources(*wizard, {box / "author"}, Subfolders::Take)) << box.host.AllTold();
        wizard->name = "My | Łevel";
        wizard->note = "a note";
        wizard->author = "Łukasz";
        wizard->authorNote = "first line\r\nsecond | line";
        wizard->emails.items = {"a@b", "c@d"};
        wizard->sites.items = {"http://s"};
        wizard->moreInfo = "read me.txt";
        WalkToEnd(*wizard);
        box.host.WillChoose("Save upload zip file", box / "my level");
        ASSERT_TRUE(FinishUpload(*wizard)) << box.host.AllTold();
    }
    EXPECT_TRUE(box.host.WasTold("Create zip file in: " + (box / "my level.zip").native()));
    EXPECT_EQ(box.Snapshot("author"), before);
    EXPECT_FALSE(fs::exists(box / "home/_temp_config"));

    const LevelRecord level = AddedOnAnotherHome(box / "my level.zip");
    EXPECT_EQ(level.levelName, "My | Łevel");
    EXPECT_EQ(level.levelNote, "a note");
    EXPECT_EQ(level.authorName, "Łukasz");
    EXPECT_EQ(level.authorNote, "first line\r\nsecond | line");
    EXPECT_EQ(level.authorEmails, "a@b\0c@d"s);
    EXPECT_EQ(level.authorSites, "http://s");
    EXPECT_EQ(level.moreInfoFile, "read me.txt");
    FileContents flat;
    for (const auto& [name, content] : before)
        if (!name.ends_with("link"))
            flat[Path{name}.filename()] = content;
    EXPECT_EQ(box.Snapshot(added), flat);
}

} // namespace

} // namespace kestrova::testing
