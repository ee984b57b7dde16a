#include "discs/disc_plan.h"

#include "world/world.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>

namespace kestrova::testing
{

namespace
{

constexpr int megabyte = 1048576;

/// A plan over levels whose files are holes of that many megabytes.
class DiscPlanTest : public ::testing::Test
{
protected:
    World world;
    DiscPlan plan;

    LevelCode Level(double megabytes)
    {
        const LevelCode code = world.AddLevel("Level", {{"data/level.tr4", ""}});
        const Path files = LevelFiles(code);
        std::filesystem::resize_file(files / "data/level.tr4",
                                     static_cast<std::uintmax_t>(megabytes * megabyte));
        return code;
    }
    Path LevelFiles(LevelCode code) const
    {
        return world / ("levels/LEVEL_" + std::string(code < 10 ? "000" : "00") +
                        std::to_string(code) + "/files");
    }
    void Divide(int megabytes)
    {
        const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
        ASSERT_TRUE(plan.Measure(world.session.Folders(), world.session.archive, *progress));
        plan.choice.megabytes = megabytes;
        plan.Divide();
    }
    std::vector<std::vector<LevelCode>> Levels() const
    {
        std::vector<std::vector<LevelCode>> levels;
        for (const PlannedDisc& disc : plan.Discs())
            levels.push_back(disc.levels);
        return levels;
    }
};

using Codes = std::vector<std::vector<LevelCode>>;

} // namespace

TEST_F(DiscPlanTest, TakesTheNextDiscWhenALevelDoesNotFitAndNeverChangesTheOrder)
{
    world.MakeBackupAndArchive();
    for (const double size : {300.0, 300.0, 300.0, 100.0})
        Level(size);
    Divide(650); // the first disc takes 643 MB, the others 645
    EXPECT_EQ(Levels(), (Codes{{1, 2}, {3, 4}}));
    EXPECT_EQ(plan.Discs()[0].label, "Kestrova #1");
    EXPECT_EQ(plan.Discs()[1].number, 2);
    EXPECT_TRUE(plan.TooLarge().empty());

    plan.extras = {44.0 * megabyte, 44 * megabyte};
    plan.Divide();
    EXPECT_EQ(Levels(), (Codes{{1}, {2, 3}, {4}}));

    // Numbers go on behind the largest of the archive; what lies on a disc is no candidate.
    plan.extras = {};
    world.session.archive.levels[2].cdNumber = 7;
    Divide(650);
    EXPECT_EQ(Levels(), (Codes{{1, 3}, {4}}));
    EXPECT_EQ(plan.Discs()[0].label, "Kestrova #8");

    for (LevelRecord& level : world.session.archive.levels)
        level.cdNumber = level.levelCode == originalCode ? 0 : 1;
    Divide(650);
    EXPECT_TRUE(plan.Discs().empty());
    plan.choice.setup = true;
    plan.Divide();
    ASSERT_EQ(Levels(), Codes{{}});
    EXPECT_EQ(plan.Discs()[0].number, 2);
}

TEST_F(DiscPlanTest, GivesALevelThatIsTooLargeADiscOfItsOwnAndSaysSo)
{
    world.MakeBackupAndArchive();
    for (const double size : {10.0, 700.0, 10.0, 645.5})
        Level(size);
    Divide(650);
    EXPECT_EQ(Levels(), (Codes{{1}, {2}, {3}, {4}}));
    EXPECT_EQ(plan.TooLarge(), (std::vector<LevelCode>{2, 4}));
    // The named megabytes of a DVD are more than such a disc takes.
    Level(4690);
    Divide(4700);
    EXPECT_EQ(plan.TooLarge(), std::vector<LevelCode>{5});
}

TEST_F(DiscPlanTest, LeavesOutWhatNoDiscTakesAndNamesIt)
{
    world.MakeBackupAndArchive();
    Level(1), Level(1), Level(1), Level(1);
    std::filesystem::remove_all(LevelFiles(1));
    std::filesystem::create_directories(LevelFiles(4) / "DATA");
    std::filesystem::resize_file(LevelFiles(4) / "data/level.tr4", 4);
    std::filesystem::copy(LevelFiles(4) / "data/level.tr4", LevelFiles(4) / "DATA/Level.TR4");
    std::filesystem::create_symlink("/etc/hostname", LevelFiles(3) / "link");
    Divide(650);
    EXPECT_EQ(Levels(), Codes{{2}});
    ASSERT_EQ(plan.LeftOut().size(), 3U);
    EXPECT_NE(plan.LeftOut()[2].reason.find("data is there twice"), std::string::npos)
        << plan.LeftOut()[2].reason;
    EXPECT_EQ(plan.LeftOut()[0].code, 1);
    EXPECT_NE(plan.LeftOut()[1].reason.find("/files/link"), std::string::npos);
}

/// Whatever the levels: each stands on one disc, in the archive's order, no disc is overfull but
/// those with one level, and none could have taken the first level of the next one.
TEST_F(DiscPlanTest, HoldsItsRulesForAnyLevelsAndIsQuick)
{
    std::mt19937 random{7};
    const auto any = [&](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    for (int round = 0; round < 200; ++round) {
        DiscPlan any_plan;
        std::vector<DiscCandidate> levels;
        const int largest = 1 + any(400);
        for (int i = 0; i < any(100); ++i) {
            const auto bytes = static_cast<std::uint64_t>(any(largest)) * megabyte;
            levels.push_back(
                {static_cast<std::size_t>(i + 1),
                 i + 1,
                 {static_cast<double>(bytes), bytes + static_cast<std::uint64_t>(any(megabyte))}});
        }
        any_plan.choice.megabytes = 100;
        any_plan.Take(levels, any(5));
        any_plan.Divide();
        std::size_t next = 0;
        std::int32_t number = any_plan.Discs().empty() ? 0 : any_plan.Discs()[0].number;
        for (const PlannedDisc& disc : any_plan.Discs()) {
            EXPECT_EQ(disc.number, number++);
            double bytes = 0;
            for (const LevelCode code : disc.levels) {
                EXPECT_EQ(code, levels.at(next).code);
                bytes += levels.at(next++).size.bytes;
            }
            const double free =
                (disc.number == any_plan.Discs()[0].number ? 93.0 : 95.0) * megabyte;
            EXPECT_TRUE(bytes <= free || disc.levels.size() == 1);
            EXPECT_EQ(disc.tooLarge, bytes > free);
        }
        EXPECT_EQ(next, levels.size());
    }
    DiscPlan large;
    std::vector<DiscCandidate> levels;
    for (int i = 0; i < 10'000; ++i)
        levels.push_back({static_cast<std::size_t>(i + 1), i + 1, {30e6, 30'000'000}});
    large.choice.megabytes = 700;
    large.Take(std::move(levels), 0);
    const auto begin = std::chrono::steady_clock::now();
    large.Divide();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds{100});
    EXPECT_EQ(large.LevelCount(), 10'000U);
}

} // namespace kestrova::testing
