#include "upkeep/leftovers.h"

#include "core/staged_file.h"
#include "sandbox/faults.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

class Leftovers : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.host.AnswerAll(true);
        box.AddLevel("Salt Harbour", {{"level.tr4", "level"}});
    }
    [[nodiscard]] std::vector<std::string> Hidden() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(box.root)) {
            const std::string name = entry.path().filename().native();
            if ((name.starts_with(stagedPrefix) && name != lockFileName) || name.starts_with("_"))
                names.push_back(entry.path().lexically_relative(box.root));
        }
        return names;
    }
    World box;
};

/// Left by a process whose number is above what a system gives out, and by the first one, which
/// always runs.
const std::string dead = ".kv~7ffffff-1";
const std::string living = ".kv~1-7";

TEST_F(Leftovers, AreClearedWhereTheyWereNotedAndOnlyThose)
{
    for (const std::string place : {"trle/DATA/", "levels/LEVEL_0001/files/", "elsewhere/"}) {
        box.Write(place + dead, "half");
        box.Write(place + living, "half");
        box.Write(place + "mine", "whole");
    }
    box.Write("levels/LEVEL_0001/screenshots/" + dead, "nobody noted it");
    box.Write("home/_temp_zip/deep/file", "unpacked");
    box.Write("home/_temp_online/Config.zip", "downloaded");
    box.Write("home/_temp_online_zip/kestrova.cfg", "unpacked");
    box.Write("home/_temp_Savegame/savegame.1", "of an older program");
    box.Write("home/" + dead + "/file", "a folder to work in");
    box.Write("trle/.kv~ready/level.tr4", "expanded");
    box.Write("home/swap/work/7ffffff-1", (box / "trle/DATA").native() + '\0' +
                                              (box / "levels/LEVEL_0001/files").native() + '\0' +
                                              (box / "elsewhere").native() + '\0' +
                                              (box / "gone").native() + '\0' + "cut in the mid");
    box.Write("home/swap/work/1-1", (box / "levels/LEVEL_0001/shots").native() + '\0');
    ClearLeftovers(box.session.host, box.session.Folders(), box.session.archive);
    std::vector<std::string> kept = Hidden();
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(kept, (std::vector<std::string>{"elsewhere/" + living, "home/_temp_Savegame",
                                              "levels/LEVEL_0001/files/" + living,
                                              "levels/LEVEL_0001/screenshots/" + dead,
                                              "trle/DATA/" + living}));
    EXPECT_FALSE(box.Has("home/swap/work/7ffffff-1"));
    EXPECT_TRUE(box.Has("home/swap/work/1-1"));
    EXPECT_EQ(box.Read("elsewhere/mine"), "whole");
    ClearAllLeftovers(box.host, box.session.Folders(), box.session.archive,
                      box.session.preferences);
    EXPECT_FALSE(box.Has("levels/LEVEL_0001/screenshots/" + dead)) << "mend looks everywhere";
}

TEST_F(Leftovers, WhatCannotGoStaysNotedAndIsNamed)
{
    box.Write("trle/DATA/" + dead, "half");
    box.Write("home/swap/work/7ffffff-1", (box / "trle/DATA").native() + '\0');
    {
        const FailingCalls failing{platform::FileAction::Unlink, dead, -1};
        ClearLeftovers(box.session.host, box.session.Folders(), box.session.archive);
        ASSERT_EQ(LeftoversThatStay(box.session.Folders()),
                  std::vector<Path>{box / ("trle/DATA/" + dead)});
    }
    ClearLeftovers(box.session.host, box.session.Folders(), box.session.archive);
    EXPECT_TRUE(LeftoversThatStay(box.session.Folders()).empty());
    EXPECT_TRUE(Hidden().empty());
}

} // namespace

} // namespace kestrova::testing
