#include "swap/backup_sizes.h"

#include "swap/backup.h"
#include "world/world.h"

#include <gtest/gtest.h>
#include <thread>

namespace kestrova::testing
{
namespace
{

std::uint64_t BytesOf(const World& box, const std::string& folder)
{
    std::uint64_t bytes = 0;
    for (const auto& [name, content] : box.Snapshot(folder))
        bytes += content.size();
    return bytes;
}

} // namespace

TEST(BackupSizes, AreThoseOfTheCopiesThatAreMade)
{
    for (const BackupForm form : {BackupForm::Full, BackupForm::Compact}) {
        World box;
        box.MakeTrle();
        box.Write("trle/notes.LOG", "twelve bytes");
        box.Write("trle/DATA/deep/er.bin", "five!");
        // What lies on another disk is copied, and counts.
        std::filesystem::rename(box / "trle/graphics", box / "elsewhere");
        std::filesystem::create_directory_symlink(box / "elsewhere", box / "trle/graphics");
        const auto sizes = MeasureBackup(box / "trle");
        ASSERT_TRUE(sizes);
        EXPECT_LT(sizes->compact, sizes->full);
        ASSERT_TRUE(MakeTrleBackup(box.session, false, {form, true})) << box.host.AllTold();
        EXPECT_EQ(form == BackupForm::Full ? sizes->full : sizes->compact,
                  BytesOf(box, "home/backup_trle"));
    }
}

TEST(BackupSizes, ComeFromBesideAndAFolderThatCannotBeReadHasNone)
{
    World box;
    box.MakeTrle();
    for (const char* folder : {"trle", "none"}) {
        const BackupMeasuring measuring{box / folder};
        while (!measuring.Done())
            std::this_thread::yield();
        EXPECT_EQ(measuring.Sizes().has_value(), FolderExists(box / folder)) << folder;
    }
    EXPECT_FALSE(MeasureBackup(box / "trle", [] { return false; })) << "it can be ended";
}

TEST(Backup, IsNotThereAfterAStopAndTheNextAttemptMakesIt)
{
    for (const BackupForm form : {BackupForm::Full, BackupForm::Compact}) {
        int stops = 0;
        for (int step = 1; step < 1000; step += 7) {
            World box;
            box.MakeTrle();
            box.host.StopAtStep(step);
            if (MakeTrleBackup(box.session, false, {form, true}))
                break;
            ++stops;
            EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
            EXPECT_FALSE(box.Has("home/backup_trle"));
            EXPECT_FALSE(box.Has("home/.kv~backup_new"));
            box.host.StopAtStep(0);
            ASSERT_TRUE(MakeTrleBackup(box.session, false, {form, true})) << box.host.AllTold();
        }
        EXPECT_GE(stops, 1);
    }
}

} // namespace kestrova::testing
