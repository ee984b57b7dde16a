#include "app/doctor.h"
#include "archive/tr4_index.h"
#include "history/standing.h"
#include "platform/locale.h"
#include "play/game_launch.h"
#include "play/play_level.h"
#include "swap/folder_guard.h"
#include "swap/level_gaps.h"
#include "swap/swap_preview.h"
#include "swap/verify_level.h"
#include "world/windows_program.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

class Playing : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        code = box.AddLevel("Dawn", {{"dawn.tr4", "level"}, {"script.dat", "its script"}});
    }
    void MakeWine()
    {
        box.Write("usr/bin/wine", "");
        box.machine.tools["wine"] = box / "usr/bin/wine";
    }
    World box;
    LevelCode code = 0;
};

TEST_F(Playing, InstallsRefreshesStartsAndArmsTheHotKeys)
{
    ASSERT_TRUE(PlayLevel(box.session, code)) << box.host.AllTold();
    EXPECT_EQ(box.Read("trle/DATA/dawn.tr4"), "level");
    EXPECT_EQ(box.list.refreshes, 1);
    ASSERT_EQ(box.machine.started.size(), 1U);
    EXPECT_EQ(box.machine.started[0].argv,
              std::vector<std::string>{(box / "trle/tomb4.exe").native()});
    EXPECT_EQ(box.machine.started[0].folder, box / "trle");
    EXPECT_EQ(box.machine.clipboardCleared, 1);
    EXPECT_TRUE(box.session.running.hotKeys);
}

TEST_F(Playing, AnIncompleteLevelIsNamedByPlayVerifyAndDoctor)
{
    LevelRecord& level = box.session.archive.levels.back();
    ASSERT_TRUE(
        WriteTr4InfOf(box.session.Folders(), code,
                      {{"dawn.tr4", 1, 5}, {"zeni\xc4\x87.tr4", 1, 900}, {"big.tr4", 1, 9}}));
    box.Write("levels/LEVEL_0001/files/zeni\xc4\x87.tr4.zl", "(stored)");
    box.Write("levels/LEVEL_0001/files/big.tr4", "nine byte");
    level.moreInfoFile = "readme.txt";
    box.Write("levels/LEVEL_0001/files/readme.txt", "text");
    const auto gaps = [&] {
        const auto found = GapsOf(box.session.Folders(), level);
        return found ? AllGaps(*found) : std::vector<std::string>{"(failed)"};
    };
    EXPECT_EQ(gaps(), std::vector<std::string>{});

    std::filesystem::remove(box / "levels/LEVEL_0001/files/dawn.tr4");
    std::filesystem::remove(box / "levels/LEVEL_0001/files/readme.txt");
    std::filesystem::remove(box / "levels/LEVEL_0001/files/zeni\xc4\x87.tr4.zl");
    box.Write("levels/LEVEL_0001/files/big.tr4", "cut");
    // The index holds names as the code page has them.
    EXPECT_EQ(gaps(), (std::vector<std::string>{"dawn.tr4", "zeni?.tr4", "big.tr4", "readme.txt"}));
    const auto differences =
        VerifyLevel(box.session.Folders(), box.session.archive, code, Noting::No);
    ASSERT_TRUE(differences);
    EXPECT_EQ(differences->faults.size(), 4U);
    bool named = false;
    for (const Finding& finding : Examine(box.session))
        named = named || (!finding.fine && finding.state.find("0001") != std::string::npos);
    EXPECT_TRUE(named);

    const auto before = box.Snapshot("trle");
    box.host.WillAsk("dawn.tr4", false);
    EXPECT_FALSE(PlayLevel(box.session, code));
    EXPECT_EQ(box.Snapshot("trle"), before);
    box.host.WillAsk("It lacks: ", true);
    EXPECT_TRUE(PlayLevel(box.session, code)) << box.host.AllTold();

    // Nothing knows the names any more, but the record knows the size.
    std::filesystem::remove(box / "levels/LEVEL_0001/tr4.inf");
    level.moreInfoFile.clear();
    level.filesSize = 5'000'000;
    ASSERT_EQ(gaps().size(), 1U);
    EXPECT_NE(gaps().front().find("the archive noted 4.8 MB"), std::string::npos);
    // What stands in the Level Editor's folder has the names of what was installed.
    std::filesystem::remove(box / "levels/LEVEL_0001/files/big.tr4");
    const auto standing = VerifyLevel(box.session.Folders(), box.session.archive, code, Noting::No);
    ASSERT_TRUE(standing);
    ASSERT_EQ(standing->faults.size(), 1U);
    EXPECT_EQ(standing->faults.front().file, "big.tr4");

    level.cdNumber = 1;
    const auto away =
        VerifyLevel(box.session.Folders(), box.session.archive, level.levelCode, Noting::No);
    ASSERT_FALSE(away);
    EXPECT_NE(away.Error().sentence.find("not available"), std::string::npos);
}

TEST_F(Playing, WithoutAStartOnlyTheLevelComes)
{
    ASSERT_TRUE(PlayLevel(box.session, code, false));
    EXPECT_TRUE(box.machine.started.empty());
    EXPECT_EQ(box.machine.clipboardCleared, 0);
    EXPECT_FALSE(box.session.running.hotKeys);
    EXPECT_EQ(CurrentLevelCode(box.session.Folders(), box.session.archive), code);
}

TEST_F(Playing, ASecondPlayChangesNoFileAndStartsNoSecondGameUnasked)
{
    ASSERT_TRUE(PlayLevel(box.session, code));
    EXPECT_TRUE(StandsInTrle(box.machine, box.session.Folders(), box.session.archive, code));
    const auto before = box.Snapshot("");
    ASSERT_TRUE(PlayLevel(box.session, code)) << box.host.AllTold();
    EXPECT_EQ(box.Snapshot(""), before);
    EXPECT_EQ(box.machine.started.size(), 2U);

    // A game that runs already shares its slots with nobody unasked.
    box.machine.running = {{77, "tomb4.exe"}};
    box.host.WillAsk("runs already in the Level Editor's folder: tomb4.exe", false);
    EXPECT_FALSE(PlayLevel(box.session, code));
    EXPECT_EQ(box.machine.started.size(), 2U);
    EXPECT_TRUE(box.host.told.empty()) << "the person's own answer is no failure";
    EXPECT_TRUE(PlayLevel(box.session, code, false)) << "nothing is to be started";
    box.host.WillAsk("runs already in the Level Editor's folder: tomb4.exe", true);
    EXPECT_TRUE(PlayLevel(box.session, code));
    EXPECT_EQ(box.machine.started.size(), 3U);
    EXPECT_EQ(box.Snapshot(""), before);
    box.machine.running.clear();

    box.machine.bootId = "boot-2"; // whether the files reached the disk is not known
    EXPECT_FALSE(StandsInTrle(box.machine, box.session.Folders(), box.session.archive, code));
}

TEST_F(Playing, AsksBeforeASwapUnderARunningProgram)
{
    box.machine.running = {{77, "tomb4.exe"}, {78, "winroomedit.exe"}};
    const auto before = box.Snapshot("trle");
    box.host.WillAsk("tomb4.exe, winroomedit.exe", false);
    EXPECT_FALSE(PlayLevel(box.session, code));
    EXPECT_EQ(box.Snapshot("trle"), before);
    EXPECT_TRUE(box.machine.started.empty());

    box.host.WillAsk("winroomedit.exe", true);
    EXPECT_TRUE(PlayLevel(box.session, code));
}

TEST_F(Playing, AFailedStartIsToldAndTheLevelStays)
{
    box.machine.startFails = true;
    EXPECT_FALSE(PlayLevel(box.session, code));
    EXPECT_TRUE(box.host.WasTold("could not be started"));
    EXPECT_FALSE(box.session.running.hotKeys);
    EXPECT_EQ(CurrentLevelCode(box.session.Folders(), box.session.archive), code);
    EXPECT_FALSE(PlayLevel(box.session, 99));
    EXPECT_TRUE(box.host.WasTold("unknown level code: 99"));
}

TEST_F(Playing, AWindowsGameGoesThroughWineWithThePrefixAboveIt)
{
    MakeWine();
    box.Write("trle/tomb4.exe", WindowsProgram(machine64));
    auto launch = GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session));
    ASSERT_TRUE(launch) << launch.Error().reason;
    EXPECT_EQ(launch->argv, (std::vector<std::string>{(box / "usr/bin/wine").native(),
                                                      (box / "trle/tomb4.exe").native()}));
    const auto variable = [&](const std::string& name) {
        std::string found;
        for (const auto& [key, value] : launch->environment)
            found = key == name ? value : found;
        return found;
    };
    EXPECT_EQ(variable("WINEPREFIX"), "");
    EXPECT_EQ(variable("LC_ALL"), platform::UsesUtf8() ? "" : "C.UTF-8")
        << "umlauts of other locales are lost";

    const std::string inPrefix = "prefix/Drive_C/Games/trle";
    std::filesystem::create_directories(box / "prefix/Drive_C/Games");
    std::filesystem::rename(box / "trle", box / inPrefix);
    box.session.preferences.trlePath = (box / inPrefix).native();
    box.session.settings.wineCommand = (box / "usr/bin/wine").native();
    box.session.settings.wineWords = " explorer  /desktop=kv,640x480 ";
    launch = GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session));
    ASSERT_TRUE(launch) << launch.Error().reason;
    EXPECT_EQ(launch->argv.size(), 4U);
    EXPECT_EQ(launch->argv[1], "explorer");
    EXPECT_EQ(launch->argv[2], "/desktop=kv,640x480");
    EXPECT_EQ(variable("WINEPREFIX"), (box / "prefix").native());
    EXPECT_EQ(launch->folder, box / inPrefix);
}

TEST_F(Playing, WhatWouldEndSilentlyIsSaidBeforehand)
{
    box.Write("trle/tomb4.exe", WindowsProgram(machine32));
    auto launch = GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session));
    ASSERT_FALSE(launch);
    EXPECT_NE(launch.Error().reason.find("apt-get install wine"), std::string::npos);

    MakeWine();
    launch = GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session));
    ASSERT_FALSE(launch);
    EXPECT_NE(launch.Error().reason.find("wine32"), std::string::npos);
    EXPECT_FALSE(PlayLevel(box.session, code));
    EXPECT_TRUE(box.machine.started.empty());

    box.Write("usr/lib/wine/i386-windows/zlib1.dll", "");
    EXPECT_FALSE(GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session)))
        << "a library of something else";
    box.Write("usr/lib/wine/i386-windows/ntdll.dll", "");
    EXPECT_TRUE(GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session)));

    // Cut headers are no 32-bit programs, and none of them is read beyond its end.
    std::filesystem::remove_all(box / "usr/lib");
    const std::string whole = WindowsProgram(machine32);
    for (std::size_t size = 2; size < 0x86; ++size) {
        box.Write("trle/tomb4.exe", whole.substr(0, size));
        EXPECT_TRUE(
            GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session)))
            << size;
    }
    box.session.preferences.tombExeName = "other.exe";
    EXPECT_FALSE(GameLaunch(box.session.Folders(), box.session.preferences, ToolsOf(box.session)));
}

} // namespace
} // namespace kestrova::testing
