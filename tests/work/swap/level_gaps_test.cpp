#include "swap/level_gaps.h"

#include "archive/tr4_index.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(LevelGaps, BlanksAroundANameAreNoGap)
{
    World box;
    box.MakeBackupAndArchive();
    const LevelCode code = box.AddLevel("Level", {{" lead.tr4", "level"}, {"b.tr4", "other"}});
    const auto entries = ScanTr4Files(box / "levels/LEVEL_0001/files");
    ASSERT_TRUE(entries && WriteTr4InfOf(box.session.Folders(), code, *entries));
    const auto whole = GapsOf(box.session.Folders(), box.session.archive.levels.back());
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->files, std::vector<std::string>{});
    std::filesystem::remove(box / "levels/LEVEL_0001/files/ lead.tr4");
    const auto gap = GapsOf(box.session.Folders(), box.session.archive.levels.back());
    ASSERT_TRUE(gap);
    EXPECT_EQ(gap->files, (std::vector<std::string>{"lead.tr4"}));
}

} // namespace kestrova::testing
