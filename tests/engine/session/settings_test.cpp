#include "session/settings.h"

#include "sandbox/faults.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova
{

TEST(Settings, AFileThatMakesNoSenseGivesWhatDoesAndReadsTheSameAgain)
{
    testing::World box;
    const Path home = box / "home";
    const ProgramSettings first = DefaultSettings();
    const struct {
        std::string_view text;
        std::int32_t historyCount;
        std::map<std::string, std::string> folders;
    } cases[] = {
        {"", first.historyCount, {}},
        {"\xff\xfe no settings\n[", first.historyCount, {}},
        {"[program]\nhistory-count=7\n", 7, {}},
        {"[program]\nhistory-count=-7\n", 0, {}},
        {"[program]\nhistory-count=seven\n", first.historyCount, {}},
        {"[exact-folders]\na=/x%FFy%\nb=/x%00y\nc=%2\n",
         first.historyCount,
         {{"a", "/x\xFFy%"}, {"c", "%2"}}},
    };
    for (const auto& row : cases) {
        box.Write("home/kestrova.ini", row.text);
        for (int pass = 0; pass < 2; ++pass) {
            const auto settings = ReadSettings(home);
            ASSERT_TRUE(settings) << row.text;
            EXPECT_EQ(settings->historyCount, row.historyCount) << row.text;
            EXPECT_EQ(settings->wineCommand, first.wineCommand) << row.text;
            EXPECT_EQ(settings->exactFolders, row.folders) << row.text;
            ASSERT_TRUE(WriteSettings(home, *settings));
        }
    }
}

TEST(Settings, WhatCannotBeReadNowIsNotWrittenOver)
{
    testing::AtEachReadAndLook([](const testing::FailingRun& failing) {
        testing::World box;
        box.Write("home/kestrova.ini", "[program]\nhistory-count=7\n[other]\nkey=x\n");
        const auto run = failing([&] {
            const auto settings = ReadSettings(box / "home");
            return settings && WriteSettings(box / "home", *settings);
        });
        EXPECT_NE(box.Read("home/kestrova.ini").find("history-count=7"), std::string::npos);
        EXPECT_NE(box.Read("home/kestrova.ini").find("key=x"), std::string::npos);
        return run;
    });
}

} // namespace kestrova
