#include "intake/intake_steps.h"

#include "archive/level_folders.h"
#include "intake/draft_files.h"
#include "intake/draft_sources.h"
#include "intake/edit_level.h"
#include "packages/level_config_file.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

bool Always(const Intake& /*intake*/)
{
    return true;
}

bool Never(const Intake& /*intake*/)
{
    return false;
}

/// Writes its letter into the note.
template <char letter, StepAnswer answer = StepAnswer::GoesOn> StepAnswer Write(Intake& intake)
{
    intake.draft.note += letter;
    return answer;
}

StepAnswer ReadSome(Intake& intake)
{
    intake.draft.config.emplace();
    return StepAnswer::GoesOn;
}

class IntakeStepsTest : public ::testing::Test
{
protected:
    IntakeStepsTest()
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        box.Write("in/level.tr4", "level");
    }
    Intake& Begin(std::span<const IntakeStep> steps)
    {
        record = {};
        record.levelCode = NextLevelCode(box.session.archive);
        EXPECT_TRUE(MakeLevelSubfolders(LevelHomeOf(box.session.Folders(), record.levelCode)));
        opened.emplace(box.session, record, steps, *progress);
        EXPECT_TRUE(OpenNewLevel(*opened)) << box.host.AllTold();
        return *opened;
    }
    Intake& Edit()
    {
        box.AddLevel("Stored", {{"a.tr4", "stored"}});
        record = box.session.archive.levels.back();
        opened.emplace(box.session, record, EditSteps(), *progress);
        EXPECT_TRUE(OpenEdit(*opened)) << box.host.AllTold();
        return *opened;
    }

    ToolBox box;
    std::unique_ptr<ProgressScope> progress;
    LevelRecord record;
    std::optional<Intake> opened;
};

TEST_F(IntakeStepsTest, ARowsAnswerEndsItsTimeOrAllThatFollows)
{
    const auto rowsWith = [](StepAnswer (*second)(Intake&)) {
        return std::vector<IntakeStep>{
            {StepTime::Accept, "Last", Always, Write<'z'>},
            {StepTime::Config, "Reads", Always, ReadSome},
            {StepTime::Config, "PassedOver", Never, Write<'-'>},
            {StepTime::Config, "Second", Always, second},
            {StepTime::Config, "Behind", Always, Write<'b'>},
            {StepTime::Change, "Change", Always, Write<'c'>},
            {StepTime::Source, "Source", Always, Write<'s'>},
        };
    };
    const struct {
        StepAnswer (*second)(Intake&);
        std::string_view done;
        bool all;
    } cases[] = {
        {Write<'a'>, "abcs", true},
        {Write<'r', StepAnswer::Refused>, "rcs", true},
        {Write<'s', StepAnswer::Stopped>, "s", false},
        {Write<'g', StepAnswer::GivenUp>, "g", true},
    };
    for (const auto& entry : cases) {
        const auto rows = rowsWith(entry.second);
        Intake& level = Begin(rows);
        record.authorName = "changed by a step";
        EXPECT_EQ(bool{AddSources(level, {box / "in"})}, entry.all) << entry.done;
        EXPECT_EQ(level.draft.note, entry.done);
        EXPECT_FALSE(level.draft.config) << "nothing of it is taken up again";
        const bool givenUp = entry.done == "g";
        EXPECT_EQ(level.draft.givenUp, givenUp);
        EXPECT_EQ(level.endedAt, givenUp || !entry.all ? "Second" : "");
        EXPECT_EQ(record.authorName.empty(), givenUp) << "the record is as it was";
        EXPECT_EQ(Accept(level), !givenUp);
        std::filesystem::remove_all(box / "levels/LEVEL_0001");
    }
    // A look at the folder is no source.
    const auto rows = rowsWith(Write<'a'>);
    Intake& level = Begin(rows);
    (void)Refresh(level);
    EXPECT_EQ(level.draft.note, "abc");
}

TEST_F(IntakeStepsTest, AnEditTakesWhatComesAndDecidesNothingForThePerson)
{
    LevelConfig config;
    config.name = "The author's name";
    ASSERT_TRUE(WriteLevelConfig(box / "in/kestrova.cfg", config));
    box.Write("in/setup.exe", "MZ");
    box.Write("in/walkthrough.txt", "walk");
    box.Write("in/script.dat", "script");
    box.Write("in/one.dat", "one");
    box.Write("in/two.dat", "two");
    // An equal level is there already: a new one would be asked about.
    box.Write("twin/level.tr4", "level");
    Intake& twin = Begin(NewLevelSteps());
    ASSERT_TRUE(AddSources(twin, {box / "twin"}) && Accept(twin)) << box.host.AllTold();
    box.session.archive.levels.push_back(record);
    Intake& level = Edit();
    ASSERT_TRUE(AddSources(level, {box / "in"})) << box.host.AllTold();
    (void)Refresh(level);
    EXPECT_EQ(level.draft.name, "Stored");
    EXPECT_EQ(level.draft.moreInfo, "");
    ASSERT_TRUE(Accept(level)) << box.host.AllTold();
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
    const Files files = box.Snapshot("levels/LEVEL_0002/files");
    EXPECT_EQ(files.size(), 8U);
    EXPECT_TRUE(files.contains("kestrova.cfg"));
}

TEST_F(IntakeStepsTest, AcceptingEndsAtTheFirstRowThatIsRefusedAndGoesOnFromItsBeginning)
{
    box.session.preferences.checkEqualLevels = false;
    Intake& level = Begin(NewLevelSteps());
    const auto endsAt = [&](std::string_view step) {
        EXPECT_FALSE(Accept(level)) << step;
        EXPECT_EQ(level.endedAt, step) << box.host.AllTold();
        EXPECT_TRUE(box.Snapshot("levels/LEVEL_0001/backup_savegames").empty()) << step;
    };
    endsAt("TakeName");
    level.draft.name = "My level";
    level.draft.note = "my note";
    endsAt("CheckFiles");
    EXPECT_EQ(record.levelName, "My level");
    EXPECT_EQ(record.levelNote, "");
    box.Write("in/savegame.1", "saved");
    ASSERT_TRUE(AddSources(level, {box / "in"}));
    box.host.told.clear();
    for (const int step : {1, 3}) { // before the savegame, and while it is copied
        box.host.StopAtStep(step);
        endsAt("TakeSavegames");
        EXPECT_EQ(box.host.AllTold(), "") << "a Stop is nobody's news";
    }
    EXPECT_EQ(record.levelNote, "my note");
    box.host.StopAtStep(0);
    ASSERT_TRUE(Accept(level)) << box.host.AllTold();
    EXPECT_EQ(level.endedAt, "");
    EXPECT_EQ(box.Snapshot("levels/LEVEL_0001/backup_savegames").size(), 1U);
}

} // namespace

} // namespace kestrova::testing
