#include "library/level_events.h"
#include "library/mark_levels.h"
#include "swap/install.h"
#include "world/world.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(LevelEvents, TellWhatHappenedToThatLevelTheNewestFirst)
{
    World box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const LevelCode dawn = box.AddLevel("Dawn", {{"a.tr4", "a"}, {"b.tr4", "b"}});
    const LevelCode dusk = box.AddLevel("Dusk", {{"c.tr4", "c"}});
    box.session.preferences.writeLogFiles = true;
    ASSERT_TRUE(InstallLevel(box.session, dawn)) << box.host.AllTold();
    box.session.preferences.writeLogFiles = false;
    LevelMarks marks;
    marks.stars = 3;
    ASSERT_TRUE(MarkLevels(box.session, {dawn}, marks));
    LevelNote note;
    note.added = 1000;
    const auto events = EventsOf(box.session.Folders(), box.session.archive, dawn, note);
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(events.back().words, "Added to the archive");
    const auto log = std::find_if(events.begin(), events.end(),
                                  [](const LevelEvent& event) { return !event.log.empty(); });
    ASSERT_NE(log, events.end());
    EXPECT_EQ(log->words, "Files put in or taken out, as LevelLog_000.txt tells");
    EXPECT_TRUE(std::any_of(events.begin(), events.end(), [](const LevelEvent& event) {
        return event.words == "Done: stars of \"Dawn\"";
    }));
    EXPECT_TRUE(EventsOf(box.session.Folders(), box.session.archive, dusk, {}).empty());

    const auto lines = LinesOfLog(box.session.Folders(), dawn, log->log);
    ASSERT_TRUE(lines);
    ASSERT_GE(lines->lines.size(), 2U);
    for (const std::string& line : lines->lines)
        EXPECT_NE(line.find("LEVEL_0001/"), std::string::npos) << line;
    EXPECT_EQ(lines->leftOut, 0U);
}

TEST(LevelEvents, PassOverLogsThatAreTooLongAndCutWhatIs)
{
    World box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const LevelCode dawn = box.AddLevel("Dawn", {{"a.tr4", "a"}});
    const std::string home = (box / "levels/LEVEL_0001/").native();
    std::string many;
    for (int i = 0; i < 2100; ++i)
        many += "COPY " + home + std::to_string(i) + "\r\n";
    box.Write("home/LevelLog_000.txt", many);
    box.Write("home/LevelLog_001.txt", home + std::string(5 << 20, 'x'));
    box.Write("home/LevelLog_002.txt", std::string("\xff\xfe\0\n", 4) + home + '\xe9');
    std::filesystem::create_directory(box / "home/LevelLog_003.txt");
    const auto events = EventsOf(box.session.Folders(), box.session.archive, dawn, {});
    EXPECT_EQ(events.size(), 2U) << "the long one is passed over, and so is what is no file";
    const auto lines = LinesOfLog(box.session.Folders(), dawn, box / "home/LevelLog_000.txt");
    ASSERT_TRUE(lines);
    EXPECT_EQ(lines->lines.size(), 2000U);
    EXPECT_EQ(lines->leftOut, 100U);
    EXPECT_FALSE(LinesOfLog(box.session.Folders(), dawn, box / "home/LevelLog_009.txt"));
}

} // namespace kestrova::testing
