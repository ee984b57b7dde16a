#include "archive/equal_levels.h"

#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

class EqualLevels : public ::testing::Test
{
protected:
    void SetUp() override { box.MakeBackupAndArchive(); }
    void Add(const std::vector<Tr4Entry>& files)
    {
        box.AddLevel("Level", {});
        ASSERT_TRUE(WriteTr4Inf(box.session.Folders(), box.session.archive,
                                box.session.archive.levels.size() - 1, files));
    }
    /// Index and name, or nothing.
    std::string Find(std::size_t level, const std::string& folder = {})
    {
        const auto found = FindEqualTr4(box.session.Folders(), box.session.archive,
                                        folder.empty() ? Path{} : box / folder, level, nullptr);
        EXPECT_TRUE(found);
        return *found ? std::to_string((*found)->level) + " " + (*found)->name : std::string{};
    }
    World box;
};

TEST_F(EqualLevels, AreFoundByNameAndSizeAlone)
{
    Add({{"one.tr4", 1, 100}, {"title.tr4", 1, 7}});
    Add({{"two.tr4", 1, 200}, {"ONE.TR4", 2, 100}});
    Add({{"one.tr4", 1, 101}, {"three.tr4", 1, 100}});
    Add({{"CAF\u00c9.tr4", 0, 5}});
    Add({{"three.tr4", 0, 100}, {"caf\u00e9.tr4", 0, 5}, {"three.tr4", 0, 100}});
    Add({});
    EXPECT_EQ(Find(0), "");
    EXPECT_EQ(Find(1), "2 one.tr4");
    EXPECT_EQ(Find(2), "1 ONE.TR4");
    EXPECT_EQ(Find(3), "5 three.tr4"); // same name, other size: no match with 1
    EXPECT_EQ(Find(4), "5 CAF\u00c9.tr4");
    EXPECT_EQ(Find(5), "3 three.tr4"); // the first level in the archive's order
    EXPECT_EQ(Find(6), "");

    // A new level is not in the archive yet; a folder goes before what the archive has.
    box.Write("work/Three.tr4", std::string(100, 'x'));
    EXPECT_EQ(Find(7, "work"), "3 Three.tr4");
    EXPECT_EQ(Find(3, "work"), "5 Three.tr4");
    box.Write("work/Three.tr4", std::string(99, 'x'));
    EXPECT_EQ(Find(7, "work"), "");
}

TEST_F(EqualLevels, PassesOverWhatCannotBeReadAndFindsFoldersInAnySpelling)
{
    Add({{"one.tr4", 1, 100}});
    Add({{"one.tr4", 1, 100}});
    Add({{"one.tr4", 1, 100}});
    const std::string damaged = box.Read("levels/LEVEL_0001/tr4.inf").substr(0, 50);
    box.Write("levels/LEVEL_0001/tr4.inf", damaged);
    EXPECT_EQ(Find(1), "");
    EXPECT_EQ(Find(2), "3 one.tr4");
    std::filesystem::rename(box / "levels/LEVEL_0003", box / "levels/Level_0003");
    std::filesystem::rename(box / "levels/Level_0003/tr4.inf", box / "levels/Level_0003/TR4.Inf");
    EXPECT_EQ(Find(2), "3 one.tr4");
    std::filesystem::remove_all(box / "levels");
    EXPECT_EQ(Find(2), "");
}

} // namespace

} // namespace kestrova::testing
