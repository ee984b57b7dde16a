#include "session/held_folders.h"
#include "session/operation.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova
{

TEST(FolderLocks, AFolderInAnothersPlaceIsLeftAloneUntilItIsBack)
{
    namespace fs = std::filesystem;
    testing::World box;
    box.MakeTrle(1);
    box.MakeBackupAndArchive();
    Session& session = box.session;
    const Path levels = session.Folders().levels;
    fs::create_directories(levels);
    ASSERT_TRUE(HoldFolders(session.locks, session.Folders()));
    const auto mayWrite = [&] {
        const Operation operation{session};
        return bool{MakeFolders(levels / "LEVEL_0001" / "files")};
    };
    EXPECT_TRUE(mayWrite());
    const Path away = box / "away";
    fs::rename(levels, away);
    EXPECT_FALSE(mayWrite());
    fs::create_directories(levels / "LEVEL_0001"); // another archive's
    EXPECT_FALSE(mayWrite());
    EXPECT_TRUE(fs::is_empty(levels / "LEVEL_0001"));
    EXPECT_EQ(session.locks.Lost(), std::vector<Path>{levels});
    // The same folder comes back as another device tells of it.
    fs::remove_all(levels);
    fs::copy(away, levels, fs::copy_options::recursive);
    EXPECT_TRUE(mayWrite());
    EXPECT_TRUE(session.locks.Lost().empty());
    // A folder that is chosen anew is held as the one that stands there now.
    fs::remove_all(levels);
    fs::create_directories(levels);
    EXPECT_TRUE(HoldFolders(session.locks, session.Folders()));
    EXPECT_TRUE(mayWrite());
}

} // namespace kestrova
