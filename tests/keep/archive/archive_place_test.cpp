#include "archive/archive_place.h"

#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(ArchivePlace, IsNoFolderThatIsExchangedOrCopiedAsAWhole)
{
    World world;
    world.MakeTrle();
    const Folders folders = world.session.Folders();
    std::filesystem::create_directories(world / "home/Backup_TRLE/data");
    std::filesystem::create_directory_symlink(world / "home/Backup_TRLE", world / "link");
    std::filesystem::create_directory_symlink(world / "home", world / "also home");
    for (const char* place :
         {"trle", "trle/data/new", "TRLE/new", "home/backup_trle", "home/backup_trle/x/y",
          "home/backup_trle_1/x", "home/swap/work", "home/history/originals", "home/History/x",
          "home/discs/seen", "home/level_0000/files", "home/LEVEL_0000", "home/_temp_burn",
          "home/_audio_temp/x", "home/.kv~backup_new", "home/out_files", "link/x",
          "also home/swap/x"}) {
        const Status may = MayHoldLevels(folders, world / place);
        ASSERT_FALSE(may) << place;
        EXPECT_NE(may.Error().sentence.find("Levels are not safe in"), std::string::npos);
    }
    for (const char* place :
         {"home", "home/LevelFolder", "home/practice/library", "home/LEVEL_0001", "home/swapped",
          "home/discs2", "levels", "trle2", "elsewhere/swap"})
        EXPECT_TRUE(MayHoldLevels(folders, world / place)) << place;
}

} // namespace kestrova::testing
