#include "platform/folder_memory.h"

#include "core/copying.h"
#include "core/files.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "sandbox/listings.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using testing::Sandbox;

std::string NameOf(int number)
{
    return "File" + std::to_string(number) + ".wav";
}

TEST(FolderMemory, ListsAFolderOnceForManyNames)
{
    Sandbox box;
    const Path source = box / "source.wav";
    const Path folder = box / "Audio";
    ASSERT_TRUE(MakeFolder(folder));
    ASSERT_TRUE(WriteWholeFile(source, "sound", false));
    const testing::Listings counter;
    const platform::FolderMemory memory;
    constexpr int many = 300;
    for (int i = 0; i < many; ++i)
        ASSERT_TRUE(CopyFileOver(source, box / "AUDIO" / NameOf(i)));
    for (int i = 0; i < many; ++i) {
        EXPECT_TRUE(FileExists(folder / UpperCase(NameOf(i))));
        EXPECT_FALSE(FileExists(folder / ("No" + NameOf(i))));
        ASSERT_TRUE(DeleteFile(folder / UpperCase(NameOf(i))));
    }
    EXPECT_LT(counter.count, 20); // again and again after two seconds on a machine at work
    EXPECT_EQ(ListFiles(folder, "*")->size(), 0U);
}

TEST(FolderMemory, KeepsUpWithEveryChange)
{
    Sandbox box;
    const Path folder = box / "data";
    ASSERT_TRUE(MakeFolder(folder));
    const platform::FolderMemory memory;
    const auto spelling = [&](const char* name) {
        return ResolvePath(folder / name).filename().native();
    };
    EXPECT_EQ(spelling("ONE.TR4"), "ONE.TR4");
    ASSERT_TRUE(WriteWholeFile(folder / "one.tr4", "1", false));
    EXPECT_EQ(spelling("ONE.TR4"), "one.tr4");
    ASSERT_TRUE(MoveFileOver(folder / "one.tr4", folder / "Two.tr4"));
    EXPECT_EQ(spelling("ONE.TR4"), "ONE.TR4");
    EXPECT_EQ(spelling("two.tr4"), "Two.tr4");
    ASSERT_FALSE(platform::HardLink(folder / "Two.tr4", folder / "TWO.TR4"));
    EXPECT_EQ(CaseTwins(folder / "two.tr4")->size(), 2U);
    ASSERT_TRUE(DeleteFile(folder / "two.tr4"));
    EXPECT_EQ(CaseTwins(folder / "two.tr4")->size(), 1U);
    ASSERT_TRUE(DeleteFile(folder / "two.tr4"));
    EXPECT_EQ(spelling("two.tr4"), "two.tr4");
    ASSERT_TRUE(MakeFolder(folder / "Sub"));
    EXPECT_EQ(spelling("SUB"), "Sub");
    ASSERT_TRUE(RemoveTree(folder / "Sub"));
    EXPECT_EQ(spelling("SUB"), "SUB");

    // Another program's work, and another folder in this one's place.
    std::filesystem::last_write_time(folder, std::filesystem::file_time_type{});
    std::filesystem::create_directory(folder / "Made");
    EXPECT_EQ(spelling("MADE"), "Made");
    ASSERT_FALSE(platform::Rename(folder, box / "away"));
    ASSERT_TRUE(MakeFolder(folder));
    EXPECT_EQ(spelling("MADE"), "MADE");
}

} // namespace
} // namespace kestrova
