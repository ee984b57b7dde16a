#include "intake/draft_sources.h"
#include "intake/edit_level.h"
#include "intake/file_placing.h"
#include "intake/files_before.h"
#include "intake/intake_steps.h"
#include "intake/language_choice.h"
#include "sandbox/faults.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

} // namespace

TEST(UnlistedFolder, NoFileGoesThereUnderANameThatMayBeTaken)
{
    World box;
    box.Write("in/Level.TR4", "coming");
    box.Write("files/level.tr4", "stands");
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    SourceReport report;
    const auto put = [&] {
        return PutFile(box.session.host, box / "in/Level.TR4", box / "files",
                       {Replace::Silent, true, {}}, *progress, report);
    };
    {
        const FailingCalls failing{platform::FileAction::List, "/files"};
        EXPECT_FALSE(put());
        EXPECT_EQ(failing.Failed(), 1);
    }
    EXPECT_EQ(box.Snapshot("files"), (Files{{"level.tr4", "stands"}}));
    EXPECT_TRUE(put()) << "the folder is looked at once more";
    EXPECT_EQ(box.Snapshot("files"), (Files{{"level.tr4", "coming"}}));
}

TEST(UnlistedFolder, AnEditThatIsGivenUpDeletesNothingForIt)
{
    World box;
    box.Write("level/files/a.tr4", "old");
    FilesBefore before{box / "level/files", {}};
    {
        const FailingCalls failing{platform::FileAction::List, "/files"};
        EXPECT_FALSE(before.Keep({}));
        EXPECT_EQ(failing.Failed(), 1);
    }
    ASSERT_TRUE(before.Keep({}));
    box.Write("level/files/new.dat", "came with the edit");
    {
        const FailingCalls failing{platform::FileAction::List, "/.kv~before_edit/files"};
        EXPECT_FALSE(before.PutBack());
        EXPECT_EQ(failing.Failed(), 1);
    }
    EXPECT_EQ(box.Read("level/files/a.tr4"), "old");
    EXPECT_EQ(box.Read("level/.kv~before_edit/files/a.tr4"), "old");
}

TEST(UnlistedFolder, WhatComesInTakesNothingsPlaceUnasked)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        World box;
        box.host.AnswerAll(false); // what stands there is to stay
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.Write("in/Level.TR4", "coming");
        box.Write("files/level.tr4", "stands");
        box.Write("home/backup_trle/script.dat", "original script");
        box.Write("files/Script.dat", "the level's own script");
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        const FaultRun run = failing([&] {
            SourceReport report;
            const bool put = bool{PutFile(box.session.host, box / "in/Level.TR4", box / "files",
                                          {Replace::Ask, true, {}}, *progress, report)};
            return ChooseLanguageFile(box.session.host, box.session.Folders(), box / "files") &&
                   put;
        });
        EXPECT_EQ(box.Snapshot("files"),
                  (Files{{"level.tr4", "stands"}, {"Script.dat", "the level's own script"}}));
        return run;
    });
}

TEST(UnlistedFolder, OfSavegamesAndPicturesThatComeInNoneIsLost)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        World box;
        box.host.AnswerAll(true);
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.AddLevel("Stored", {{"a.tr4", "a"}});
        LevelRecord record = box.session.archive.levels.back();
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        const std::string mine = SavegameBytes("Mine", 7);
        const std::string theirs = SavegameBytes("Theirs", 9);
        box.Write("levels/LEVEL_0001/backup_savegames/savegame.0", mine);
        box.Write("levels/LEVEL_0001/screenshots/view.jpg", "my picture");
        box.Write("in/savegame.0", theirs);
        box.Write("in/view.jpg", "their picture");
        Intake level{box.session, record, EditSteps(), *progress};
        EXPECT_TRUE(OpenEdit(level) && AddSources(level, {box / "in"})) << box.host.AllTold();
        const FaultRun run = failing([&] { return Accept(level); });
        if (!run.answer)
            PutBack(level);
        std::set<std::string> contents;
        for (const auto& [file, content] : box.Snapshot(""))
            contents.insert(content);
        for (const std::string& content : {mine, theirs, std::string{"my picture"}})
            EXPECT_TRUE(contents.contains(content)) << content.substr(0, 10);
        if (!run.answer) {
            EXPECT_EQ(box.Read("levels/LEVEL_0001/backup_savegames/savegame.0"), mine);
            EXPECT_EQ(box.Read("levels/LEVEL_0001/screenshots/view.jpg"), "my picture");
        }
        return run;
    });
}

} // namespace kestrova::testing
