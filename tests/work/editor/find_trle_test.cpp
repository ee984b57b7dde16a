#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "sandbox/faults.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

class FindTrle : public ::testing::Test
{
protected:
    void SetUp() override { box.MakeTrle(); }
    void Remove(const std::string& relative) const { std::filesystem::remove(box / relative); }
    /// The words of the first test that fails; empty when none does.
    std::string Words()
    {
        box.host.told.clear();
        const bool fine = IsTrleFolder(box.session.host, box.session.Folders(),
                                       box.session.preferences, box / "trle", true);
        EXPECT_EQ(fine, box.host.told.empty());
        EXPECT_EQ(IsTrleFolder(box.session.host, box.session.Folders(), box.session.preferences,
                               box / "trle", false),
                  fine);
        return fine ? "" : box.host.told.front().text;
    }
    World box;
};

TEST_F(FindTrle, TheFirstTestThatFailsIsTold)
{
    const std::string folder = (box / "trle").native();
    EXPECT_EQ(Words(), "");
    Remove("trle/Audio/053.wav");
    EXPECT_EQ(Words(), "Not right folder: in AUDIO folder missing 1 .wav files");
    EXPECT_EQ(box.host.told.front().tone, Tone::Plain);
    Remove("trle/Script.dat");
    EXPECT_EQ(Words(), "Not right folder: in AUDIO folder missing 1 .wav files");
    Remove("trle/English.DAT");
    EXPECT_EQ(Words(), "Not right folder: Missing files '*.dat' in folder: " + folder);
    Remove("trle/DATA/Title.tr4");
    Remove("trle/DATA/tut1.tr4");
    EXPECT_EQ(Words(), "Not right folder: Missing files '*.tr4' in folder: " + folder + "\\data");
    EXPECT_EQ(box.host.told.front().tone, Tone::Error);
    Remove("trle/tomb4.exe");
    EXPECT_EQ(Words(), "Not right folder: Missing file 'tomb4.exe' in folder: " + folder);
}

TEST_F(FindTrle, OfAFolderThatCannotBeReadNobodySaysWhatItLacks)
{
    const FailingCalls failing{platform::FileAction::List, "/DATA", -1};
    EXPECT_FALSE(WhatTrleLacks(box / "trle"));
    const std::string words = Words();
    EXPECT_EQ(words.find("Not right folder"), std::string::npos) << words;
    EXPECT_NE(words.find((box / "trle/DATA").native()), std::string::npos) << words;
}

TEST_F(FindTrle, AWrongFolderIsNeverTaken)
{
    const std::string before = box.session.preferences.trlePath;
    TrleFinder finder{box.session};
    box.host.WillChoose("Choose TR Level Editor folder", box / "levels");
    finder.Browse();
    EXPECT_TRUE(finder.Folder().empty());
    EXPECT_FALSE(finder.Accept());
    EXPECT_EQ(box.session.preferences.trlePath, before);

    box.host.WillChoose("Choose TR Level Editor folder", box / "trle");
    finder.Browse();
    EXPECT_EQ(finder.Folder(), box / "trle");
    Remove("trle/tomb4.exe"); // between the choice and Ok
    EXPECT_FALSE(finder.Accept());
}

TEST_F(FindTrle, APathThatNoRecordHoldsIsRefusedInWords)
{
    const std::string deep = "deep/" + std::string(120, 'a') + "/" + std::string(120, 'b');
    std::filesystem::create_directories(box / deep);
    std::filesystem::rename(box / "trle", box / (deep + "/trle"));
    TrleFinder finder{box.session};
    EXPECT_FALSE(finder.Prepare());
    ASSERT_TRUE(finder.Take(box / (deep + "/trle")));
    EXPECT_FALSE(finder.Accept());
    EXPECT_TRUE(box.host.WasTold("too long"));
    EXPECT_EQ(box.session.TrleFolder(), box / "trle");
}

TEST_F(FindTrle, AnotherNameOfTheSameFolderKeepsItsLock)
{
    std::filesystem::create_directory_symlink(box / "trle", box / "link");
    TrleFinder finder{box.session};
    ASSERT_TRUE(finder.Take(box / "trle") && finder.Accept());
    ASSERT_TRUE(finder.Take(box / "link") && finder.Accept());
    FolderLocks another;
    EXPECT_FALSE(static_cast<bool>(another.Hold(box / "trle")));
}

} // namespace
} // namespace kestrova::testing
