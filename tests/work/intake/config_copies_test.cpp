#include "intake/intake_steps.h"

#include "archive/level_folders.h"
#include "formats/nul_list.h"
#include "intake/config_world.h"
#include "intake/draft_sources.h"
#include "packages/level_config_file.h"
#include "sandbox/faults.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

TEST(ConfigCopies, SetsOfFilesComeInUnderOtherStems)
{
    ConfigWorld world;
    world.Write("in/title.tr4", "title");
    world.Write("in/Title.wad", "wad");
    world.Write("in/readme", "no ending");
    world.Write("in/City.TR4", "there already");
    world.config.duplicates = JoinNulList({
        "TITLE.*", "data\\city.tr4",                    // one name is taken, in other letters
        "title.tr4", "title.tr4",                       // onto itself
        "city.wad", "third.x",                          // of what a wish before it made
        "re*", "c:\\temp\\other.doc",                   // a file without an ending
        "title.tr4", "third.a", "title.tr4", "third.b", // one stem twice
    });
    ASSERT_TRUE(world.Add()) << world.host.AllTold();
    const FileContents files = world.Files();
    const FileContents wanted{{"title.tr4", "title"},  {"Title.wad", "wad"},
                              {"readme", "no ending"}, {"City.TR4", "there already"},
                              {"city.wad", "wad"},     {"third.wad", "wad"},
                              {"other", "no ending"},  {"third.tr4", "title"}};
    EXPECT_EQ(files, wanted);
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
    EXPECT_TRUE(world.Draft().configApplied);
}

TEST(ConfigCopies, TheWadsOfATomFileAreTheEditorsOrElseTheLevels)
{
    ConfigWorld world;
    world.Write("trle/graphics/wads/Angkor.WAD", "the editor's wad");
    world.Write("trle/graphics/wads/angkor.sam", "the editor's samples");
    world.Write("in/angkor.wad", "the level's, which is not asked");
    world.Write("in/own.wad", "the level's own");
    world.Write("in/mill.tom", "a tom");
    world.Write("in/mill.sam", "stays");
    world.Write("in/tower.tom", "a tom");
    world.config.tomWads =
        JoinNulList({"mill.tom", "angkor.*", "tower", "own.*", "gone.tom", "nothing.*"});
    const FileContents editor = world.Snapshot("trle");
    ASSERT_TRUE(world.Add()) << world.host.AllTold();
    const FileContents files = world.Files();
    EXPECT_EQ(files.at("mill.WAD"), "the editor's wad");
    EXPECT_EQ(files.at("mill.sam"), "stays");
    EXPECT_EQ(files.at("tower.wad"), "the level's own");
    EXPECT_EQ(files.size(), 7U);
    EXPECT_EQ(world.Snapshot("trle"), editor);
}

TEST(ConfigCopies, NoPatternAndNoTargetLeadsOutOfTheLevel)
{
    ConfigWorld world;
    world.Write("outside.tr4", "a stranger wants it");
    world.Write("in/level.tr4", "level");
    world.config.duplicates = JoinNulList({
        "..\\..\\..\\*.tr4",
        "stolen.tr4",
        "../outside.tr4",
        "stolen.tr4",
        (world / "outside.tr4").native(),
        "stolen.tr4",
        "level.tr4",
        "..\\..\\..\\..\\inside.tr4", // only its stem counts
        "level.tr4",
        "/etc/also.tr4",
        "level.tr4",
        ".kv~hidden.tr4",
        "level.tr4",
        "..",
        "level.tr4",
        "a*b.tr4",
        "level.tr4",
        "bell\a.tr4",
        "level.tr4",
        "pipe|.tr4",
        "level.tr4",
        "",
    });
    ASSERT_TRUE(world.Add()) << world.host.AllTold();
    const FileContents wanted{
        {"level.tr4", "level"}, {"inside.tr4", "level"}, {"also.tr4", "level"}};
    EXPECT_EQ(world.Files(), wanted);
    EXPECT_TRUE(world.host.WasTold("no file of a level can have")) << world.host.AllTold();
    EXPECT_EQ(world.host.told.size(), 1U) << world.host.AllTold();
    EXPECT_TRUE(world.Draft().configApplied);
}

TEST(ConfigCopies, WhatIsTooMuchIsRefusedBeforeTheFirstCopy)
{
    ConfigWorld world;
    for (int i = 0; i < 6'700; ++i)
        world.Write("in/a." + std::to_string(i), "");
    world.Write("in/level.tr4", "level");
    std::vector<std::string> wishes;
    for (const char* stem : {"b", "c", "d"})
        wishes.insert(wishes.end(), {"a.*", stem});
    world.config.duplicates = JoinNulList(wishes);
    world.Add();
    EXPECT_TRUE(world.host.WasTold("more than 20000 copies")) << world.host.AllTold();
    EXPECT_EQ(world.Files().size(), 6'701U);
    EXPECT_FALSE(world.Draft().configApplied);

    ConfigWorld full;
    full.Write("in/level.tr4", std::string(5'000, 'x'));
    full.config.duplicates = JoinNulList({"level.tr4", "a", "level.tr4", "b"});
    full.machine.free = (UINT64_C(64) << 20) + 9'999;
    full.Add();
    EXPECT_TRUE(full.host.WasTold("there is no room")) << full.host.AllTold();
    EXPECT_EQ(full.Files().size(), 1U);
    full.machine.free += 1;
    full.host.told.clear();
    full.Add();
    EXPECT_EQ(full.Files().size(), 3U) << full.host.AllTold();
}

TEST(ConfigCopies, AStopOrAFailureLeavesNoneOfThem)
{
    const auto make = [](ConfigWorld& world) {
        world.Write("in/level.tr4", "level");
        world.Write("in/level.wad", "wad");
        world.config.duplicates = JoinNulList({"level.*", "a", "level.*", "b"});
    };
    int points = 0;
    for (int point = 1;; points = point, point = NextPoint(point)) {
        ConfigWorld world;
        make(world);
        world.host.AnswerAll(false);
        Intake& level = world.Open();
        world.AddSourcesTo(level, {"in/level.tr4", "in/level.wad"});
        ASSERT_TRUE(world.WriteConfig("in/kestrova.cfg"));
        std::filesystem::copy(world / "in/kestrova.cfg", level.draft.workFolder / "kestrova.cfg");
        const FaultRun run = WithFaultAt(point, [&] {
            (void)Refresh(level);
            return level.draft.configApplied;
        });
        const std::size_t files = world.Files().size();
        if (!run.reached) {
            EXPECT_EQ(files, 6U);
            break;
        }
        // The file itself may be what could not be deleted.
        const std::size_t copies = files - 2 - world.Files().count("kestrova.cfg");
        EXPECT_EQ(copies, run.answer ? 4U : 0U) << run.call << world.host.AllTold();
    }
    TellPoints(points, 8);
    for (const int step : {3, 4, 5}) {
        ConfigWorld world;
        make(world);
        Intake& level = world.Open();
        world.AddSourcesTo(level, {"in/level.tr4", "in/level.wad"});
        ASSERT_TRUE(world.WriteConfig("in/kestrova.cfg"));
        std::filesystem::copy(world / "in/kestrova.cfg", level.draft.workFolder / "kestrova.cfg");
        world.host.StopAtStep(step);
        EXPECT_TRUE(IsStop(Refresh(level)));
        EXPECT_EQ(world.Files().size(), 2U) << step;
        EXPECT_FALSE(level.draft.configApplied);
        EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
    }
}

} // namespace

} // namespace kestrova::testing
