#include "core/dates.h"
#include "intake/add_level.h"
#include "intake/draft_files.h"
#include "intake/draft_sources.h"
#include "online/url_file.h"
#include "packages/level_config_file.h"
#include "sandbox/web_servers.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

constexpr const char* question = "level named 'Valley'";

/// A level without a configuration file, and a list that has one for it.
class OnlineIntakeTest : public ::testing::Test
{
protected:
    OnlineIntakeTest() : server{box / "served"}
    {
        box.UseRealTools();
        box.MakeTrle();
        box.MakeBackupAndArchive();
        LevelConfig config;
        config.name = "The lost valley";
        config.author = "Ada";
        bytes = *FormatLevelConfig(config);
        box.Write("served/Config.zip",
                  BuildZip({{"kestrova.cfg", bytes}, {"walkthrough.txt", "go on"}}));
        box.Write("in/valley.tr4", std::string(123, 'x'));
        List(server.Address("/Config.zip"));
    }
    void List(const std::string& url)
    {
        UrlList list;
        list.updateDate = DateSerialOf(box.machine.now);
        list.records = {{url, "Valley - valley.tr4;123", UrlKindConfig, false}};
        EXPECT_TRUE(SaveUrlList(UrlListPath(box.session.Folders()), list));
    }
    bool Add(const std::function<void(Intake&)>& work)
    {
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        LevelCode code = 0;
        return AddLevel(
            box.session, *progress,
            [&](Intake& level) {
                work(level);
                return Accept(level);
            },
            code);
    }

    ToolBox box;
    std::string bytes;
    RealServer server;
};

} // namespace

TEST_F(OnlineIntakeTest, WhatIsTakenIsAppliedAsIfTheLevelHadBroughtIt)
{
    box.host.WillAsk(question, false);
    EXPECT_TRUE(Add([&](Intake& level) {
        (void)AddSources(level, {box / "in"});
        EXPECT_FALSE(level.draft.configApplied);
        EXPECT_EQ(level.draft.name, "in");
        // The folder has changed again: the question comes again.
        box.host.WillAsk(question, true);
        (void)Refresh(level);
        EXPECT_TRUE(level.draft.configApplied) << box.host.AllTold();
        EXPECT_EQ(level.draft.name, "The lost valley");
        EXPECT_EQ(level.draft.files.size(), 2U);
        // From here on nobody is asked, and a later file goes unread.
        box.Write("more/kestrova.cfg", bytes);
        (void)AddSources(level, {box / "more/kestrova.cfg"});
        (void)Refresh(level);
    })) << box.host.AllTold();
    const LevelRecord& record = box.session.archive.levels.back();
    EXPECT_EQ(record.levelName, "The lost valley");
    EXPECT_EQ(record.authorName, "Ada");
    EXPECT_TRUE(box.Has("levels/LEVEL_0001/files/walkthrough.txt"));
    EXPECT_FALSE(box.Has("levels/LEVEL_0001/files/kestrova.cfg"));
}

TEST_F(OnlineIntakeTest, NobodyIsAskedAboutALevelThatBringsItsOwnOrIsNotLookedFor)
{
    box.session.preferences.checkEqualLevels = false;
    EXPECT_TRUE(Add([&](Intake& level) {
        level.draft.looksOnline = false;
        (void)AddSources(level, {box / "in"});
    }));
    box.Write("in/kestrova.cfg", bytes);
    EXPECT_TRUE(Add([&](Intake& level) {
        (void)AddSources(level, {box / "in"});
        EXPECT_TRUE(level.draft.configApplied);
    }));
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
}

TEST_F(OnlineIntakeTest, WhatCannotBeFetchedLeavesTheLevelToBeAddedByHand)
{
    List(server.Address("/missing.zip"));
    box.host.WillAsk(question, true);
    EXPECT_TRUE(Add([&](Intake& level) { (void)AddSources(level, {box / "in"}); }));
    EXPECT_TRUE(box.host.WasTold("Error unzipping file: ")) << box.host.AllTold();
    EXPECT_EQ(box.session.archive.levels.back().levelName, "in");
}

} // namespace kestrova::testing
