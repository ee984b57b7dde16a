#include "app/doctor.h"
#include "editor/find_trle.h"

#include "editor/folder_test.h"
#include "swap/swap_preview.h"
#include "swap/verify.h"
#include "world/tool_box.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

TEST(Doctor, NamesWhatOfPackagesCouldNotBeRemoved)
{
    ToolBox box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const auto told = [&] {
        std::string states;
        for (const Finding& finding : Examine(box.session))
            if (finding.state.find("left by a program") != std::string::npos)
                states += finding.state;
        return states;
    };
    for (const char* other : {".kv~backup_new", ".kv~", ".kv~lock", "swap"})
        std::filesystem::create_directories(box.session.programFolder / other);
    EXPECT_EQ(told(), "");
    std::filesystem::create_directories(box.session.programFolder / ".kv~7ffffff-2/dd");
    EXPECT_NE(told().find(".kv~7ffffff-2"), std::string::npos);
}

} // namespace

TEST(Doctor, FindsNothingWrongWithAProgramFolderThatIsNotMadeYet)
{
    World box;
    box.session.programFolder = box / "not/yet";
    const auto findings = Examine(box.session);
    ASSERT_FALSE(findings.empty());
    EXPECT_TRUE(findings.front().fine) << findings.front().state;
}

TEST(Doctor, NamesTwoFoldersOfSoundsAsWhatIsWrong)
{
    World box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    box.session.preferences.fullBackup = true;
    std::filesystem::create_directories(box / "trle/audio");
    box.Write("trle/audio/001.wav", "a wave");
    const auto lacks = WhatTrleLacks(box / "trle");
    ASSERT_TRUE(lacks);
    EXPECT_NE(lacks->find("audio"), std::string::npos) << *lacks;
    EXPECT_NE(lacks->find("Audio"), std::string::npos) << *lacks;
    const auto found = VerifyFolder(box.session);
    ASSERT_TRUE(found);
    EXPECT_TRUE(std::any_of(found->begin(), found->end(), [](const Difference& difference) {
        return difference.file == "\\audio" && difference.kind == Mismatch::Unexpected;
    }));
}

} // namespace kestrova::testing
