#include "platform/steady_folders.h"

#include "core/files.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

namespace fs = std::filesystem;

TEST(SteadyFolders, KeepEveryChangeOutOfAnotherFolderInTheirPlace)
{
    testing::Sandbox box;
    const Path disk = box / "disk";
    ASSERT_TRUE(MakeFolders(disk / "level"));
    fs::create_symlink("disk", box / "link");
    const platform::SteadyFolders steady{{box / "link", box / "not there", {}}};
    ASSERT_TRUE(WriteWholeFile(disk / "level/note", "mine", false));
    fs::rename(disk, box / "away");
    // Gone altogether, then an empty mount point, then a stranger's disk.
    for (const char* there : {"", "disk", "disk/level"}) {
        if (*there != '\0')
            fs::create_directory(box / there);
        for (const char* name : {"link", "disk"}) {
            EXPECT_FALSE(MakeFolders(box / name / "level/deep"));
            EXPECT_FALSE(WriteWholeFile(box / name / "new", "lost", false));
        }
    }
    fs::copy(box / "away", disk, fs::copy_options::recursive | fs::copy_options::update_existing);
    EXPECT_FALSE(DeleteFile(disk / "level/note"));
    EXPECT_FALSE(RemoveTree(disk / "level"));
    EXPECT_TRUE(fs::exists(disk / "level/note"));
    fs::remove_all(disk);
    fs::rename(box / "away", disk);
    EXPECT_TRUE(WriteWholeFile(box / "link" / "new", "found", false));
}

} // namespace
} // namespace kestrova
