#include "swap/backup.h"

#include "core/size_words.h"
#include "sandbox/faults.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_preview.h"
#include "swap/swap_world.h"
#include "swap/verify.h"

namespace kestrova::testing
{

namespace
{

/// A first start: an original folder, no backup.
class FirstStart : public World
{
public:
    FirstStart() { MakeTrle(); }
};

} // namespace

TEST(MakeTrleBackup, AsksOnceAndCopiesWhatWasChosen)
{
    FirstStart world;
    world.host.WillAsk("is original?", true);
    // What this folder needs stands beside the figures of the whole distribution.
    world.host.WillAsk(SizeInWords(*FolderSize(world / "trle")) + " for a full backup", false);
    ASSERT_TRUE(MakeTrleBackup(world.session, false)) << world.host.AllTold();
    EXPECT_FALSE(world.session.preferences.fullBackup);
    EXPECT_EQ(world.Read("home/backup_trle/Script.dat"), "original script");
    EXPECT_EQ(world.Read("home/backup_trle/data/Title.tr4"), "original title");
    EXPECT_EQ(world.Read("home/backup_trle/graphics/wads/city.was"), "wad");
    EXPECT_TRUE(world.Has("home/backup_trle/sound/levelsfx creator"));
    EXPECT_TRUE(world.Has("home/backup_trle/audio"));
    EXPECT_FALSE(world.Has("home/backup_trle/audio/003.wav"));
    EXPECT_FALSE(world.Has("home/backup_trle/tomb4.exe"));

    ASSERT_TRUE(MakeTrleBackup(world.session, false)); // a second start asks nothing

    world.host.WillAsk("Remove old backup files", true);
    ASSERT_TRUE(RefreshFullBackup(world.session, {BackupForm::Full, true}));
    EXPECT_TRUE(world.session.preferences.fullBackup);
    EXPECT_EQ(world.Snapshot("home/backup_trle"), world.Snapshot("trle"));
    EXPECT_TRUE(world.Has("home/Kestrova.prf")); // the choice is saved at once
}

TEST(MakeTrleBackup, TouchesNothingWhenItMayNot)
{
    FirstStart world;
    world.host.WillAsk("is original?", false);
    EXPECT_FALSE(MakeTrleBackup(world.session, false));
    EXPECT_TRUE(world.host.WasTold("You must perform a new setup"));

    world.machine.free = 1000;
    EXPECT_FALSE(MakeTrleBackup(world.session, false, {BackupForm::Full, true}));
    EXPECT_TRUE(world.host.WasTold("has not sufficient free space for setup files (240 Mb)") ||
                world.host.WasTold("(240.0 Mb)"))
        << world.host.AllTold();
    EXPECT_NE(world.host.told.back().reason.find("for a compact one"), std::string::npos);
    EXPECT_FALSE(world.Has("home/backup_trle"));

    // With a level in the folder its files would be taken for originals.
    SwapWorld played;
    played.PlayFirst();
    const auto backup = played.Snapshot("home/backup_trle");
    played.host.WillAsk("already FULL", true);
    EXPECT_FALSE(RefreshFullBackup(played.session, {BackupForm::Full, true}));
    EXPECT_EQ(played.Snapshot("home/backup_trle"), backup);
}

TEST(RefreshFullBackup, IsTheOldOrTheNewBackupWhereverItIsStopped)
{
    const auto refresh = [](SwapWorld& world) {
        return RefreshFullBackup(world.session, {BackupForm::Full, true});
    };
    // A small folder keeps the number of steps small.
    const auto prepare = [](SwapWorld& world) {
        world.host.AnswerAll(true);
        std::filesystem::remove_all(world / "trle/Audio");
        world.Write("trle/Audio/000.wav", "wave");
        world.Write("trle/Script.dat", "patched script");
    };
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        SwapWorld world;
        prepare(world);
        const auto old = world.Snapshot("home/backup_trle");
        const auto fresh = world.Configuration();
        const KillRun run = WithKillAt(step, [&] { return refresh(world); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session next = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(next));
        auto backup = world.Snapshot("home/backup_trle");
        std::erase_if(backup, [](const auto& file) {
            return file.first.starts_with("savegame.") || file.first.starts_with("note");
        });
        EXPECT_TRUE(backup == old || backup == fresh);
        EXPECT_TRUE(InterruptedWork(next.Folders(), next.archive).empty());
        if (!run.killed || HasFailure())
            break;
    }
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        SwapWorld world;
        prepare(world);
        const auto old = world.Snapshot("home/backup_trle");
        const FaultRun run = WithFaultAt(step, [&] { return refresh(world); });
        SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
        if (!run.answer) {
            EXPECT_EQ(world.Snapshot("home/backup_trle"), old);
            EXPECT_FALSE(world.host.told.empty());
        }
        if (!run.reached || HasFailure())
            break;
    }
}

TEST(Backup, TakesNoLeftoverOfALevelForAnOriginal)
{
    SwapWorld world;
    // A compact backup: the sounds of a level stay when it goes.
    std::filesystem::remove_all(world / "home/backup_trle/Audio");
    world.session.preferences.fullBackup = false;
    world.Write("levels/LEVEL_0001/files/200.wav", "a wave of its own");
    ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    ASSERT_EQ(world.Read("trle/Audio/003.wav"), "first wave");

    world.host.WillAsk("Remove old backup files", true);
    ASSERT_TRUE(RefreshFullBackup(world.session, {BackupForm::Full, true})) << world.host.AllTold();
    EXPECT_EQ(world.Read("home/backup_trle/Audio/003.wav"), "wave 3");
    EXPECT_FALSE(world.Has("home/backup_trle/Audio/200.wav"));
    EXPECT_TRUE(world.host.WasTold("not taken for originals"));
    // The folder has its originals again, now and after the next swap.
    const auto originals = [&] {
        EXPECT_EQ(world.Read("trle/Audio/003.wav"), "wave 3");
        EXPECT_FALSE(world.Has("trle/Audio/200.wav"));
        const auto differences = VerifyFolder(world.session);
        EXPECT_TRUE(differences && differences->empty());
    };
    originals();
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    originals();
}

TEST(Backup, IsWholeAndOfOriginalsAloneWhereverALookFails)
{
    std::map<std::string, std::string> expected;
    int step = 1;
    for (bool reached = true; reached && !::testing::Test::HasFailure(); step += 11) {
        ASSERT_LT(step, 10000);
        SwapWorld world;
        world.host.AnswerAll(true);
        std::filesystem::remove_all(world / "home/backup_trle/Audio");
        world.session.preferences.fullBackup = false;
        ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
        ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
        std::filesystem::rename(world / "trle/graphics", world / "other disk");
        std::filesystem::create_directory_symlink(world / "other disk", world / "trle/graphics");
        const auto before = world.Snapshot("home/backup_trle");
        const auto refresh = [&](const FaultyWork& work) {
            return expected.empty() ? FaultRun{work(), true, {}} : WithLookFaultAt(step, work);
        };
        const FaultRun run = refresh([&] {
            return RefreshFullBackup(world.session, {BackupForm::Full, true});
        });
        reached = run.reached;
        const auto made = world.Snapshot("home/backup_trle");
        if (expected.empty())
            expected = made;
        EXPECT_EQ(made.at("Script.dat"), "original script");
        EXPECT_EQ(made, run.answer ? expected : before) << step << ": " << run.call;
        EXPECT_TRUE(run.answer || !world.host.told.empty());
    }
}

TEST(Backup, GoesThroughLinksToFolders)
{
    namespace fs = std::filesystem;
    SwapWorld world;
    fs::rename(world / "trle/DATA", world / "other disk");
    fs::create_directory_symlink(world / "other disk", world / "trle/DATA");
    fs::rename(world / "trle/graphics/wads", world / "wads");
    fs::create_directory_symlink("../../wads", world / "trle/graphics/wads");
    fs::create_directory_symlink(world / "trle", world / "trle/graphics/round");
    fs::remove_all(world / "home/backup_trle");
    ASSERT_TRUE(MakeTrleBackup(world.session, false, {BackupForm::Full, true}))
        << world.host.AllTold();
    EXPECT_EQ(world.Read("home/backup_trle/DATA/tut1.tr4"), "original tutorial");
    EXPECT_EQ(world.Read("home/backup_trle/graphics/wads/city.was"), "wad");
    EXPECT_FALSE(world.Has("home/backup_trle/graphics/round/tomb4.exe"));

    // Swaps, comparison and the full restore go through them too, and the links stay.
    ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    EXPECT_EQ(world.Read("other disk/Title.tr4"), "first title");
    fs::remove(world / "other disk/tut1.tr4");
    const auto differences = VerifyFolder(world.session);
    ASSERT_TRUE(differences);
    ASSERT_EQ(differences->size(), 1U);
    EXPECT_EQ(differences->front().file, "\\DATA\\tut1.tr4");
    world.host.WillAsk("Restore also folders", true);
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    EXPECT_TRUE(RestoreOriginalConfiguration(world.session, *progress)) << world.host.AllTold();
    EXPECT_EQ(world.Read("other disk/tut1.tr4"), "original tutorial");
    EXPECT_TRUE(fs::is_symlink(world / "trle/DATA"));

    // A link that leads nowhere would be missing from the backup, unsaid.
    const auto backup = world.Snapshot("home/backup_trle");
    fs::rename(world / "wads", world / "unplugged");
    world.host.WillAsk("already FULL", true);
    EXPECT_FALSE(RefreshFullBackup(world.session, {BackupForm::Full, true}));
    EXPECT_TRUE(world.host.WasTold("leads to a place that is not there"));
    EXPECT_EQ(world.Snapshot("home/backup_trle"), backup);
}

TEST(Backup, BelongsToItsFolderAndComesBackWithIt)
{
    namespace fs = std::filesystem;
    SwapWorld world;
    ASSERT_TRUE(MakeTrleBackup(world.session, false)); // notes which folder it is of
    const auto first = world.Snapshot("home/backup_trle");
    const auto choose = [&](const char* folder) {
        world.session.preferences.trlePath = (world / folder).native();
        return MakeTrleBackup(world.session, false, {BackupForm::Full, true});
    };
    // The same folder under another name, and a copy of it, ask nothing.
    fs::rename(world / "trle", world / "moved");
    EXPECT_TRUE(choose("moved"));
    fs::copy(world / "moved", world / "copied", fs::copy_options::recursive);
    EXPECT_TRUE(choose("copied"));
    EXPECT_TRUE(choose("moved"));

    fs::copy(world / "moved", world / "another", fs::copy_options::recursive);
    world.Write("another/DATA/tut1.tr4", "another edition's tutorial");
    world.host.WillAsk("The backup is of another Level Editor's folder", false);
    EXPECT_FALSE(choose("another"));
    EXPECT_TRUE(world.host.WasTold("kestrovactl backup --refresh"));
    EXPECT_EQ(world.Snapshot("home/backup_trle"), first);
    world.host.WillAsk("The backup is of another Level Editor's folder", true);
    EXPECT_TRUE(choose("another")) << world.host.AllTold();
    EXPECT_EQ(world.Read("home/backup_trle/DATA/tut1.tr4"), "another edition's tutorial");
    EXPECT_EQ(world.Snapshot("home/backup_trle_1"), first);

    world.session.preferences.fullBackup = false;
    EXPECT_TRUE(choose("moved")) << world.host.AllTold();
    EXPECT_TRUE(world.session.preferences.fullBackup);
    EXPECT_EQ(world.Snapshot("home/backup_trle"), first);
    EXPECT_TRUE(choose("another"));
    EXPECT_EQ(world.Read("home/backup_trle/DATA/tut1.tr4"), "another edition's tutorial");
}

TEST(RestoreOriginalConfiguration, ClearsWhatABrokenInstallLeft)
{
    SwapWorld world;
    world.PlayFirst();
    std::filesystem::remove_all(world / "levels/LEVEL_0001");
    world.Write("trle/DATA/stray.tr4", "stray");
    world.Write("trle/stray.h", "stray header");
    world.Write("trle/graphics/wads/city.was", "changed wad");
    world.host.WillAsk("Restore also folders", true);
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    RestoreOriginalConfiguration(world.session, *progress);
    EXPECT_TRUE(world.host.WasTold("I cann't find level folder"));
    EXPECT_TRUE(world.host.WasTold("Restored original Tomb Raider Level Editor configuration"));
    world.ExpectOriginal();
    EXPECT_EQ(world.Read("home/history/originals/DATA/stray.tr4"), "stray");
    world.host.told.clear();
    EXPECT_TRUE(InstallLevel(world.session, world.second)); // the next swap is clean
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
}

TEST(RestoreOriginalConfiguration, RemovesNothingWithoutABackup)
{
    SwapWorld world;
    std::filesystem::remove_all(world / "home/backup_trle");
    const auto before = world.Snapshot("trle");
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    RestoreOriginalConfiguration(world.session, *progress);
    EXPECT_TRUE(world.host.WasTold("There is no backup"));
    EXPECT_EQ(world.Snapshot("trle"), before);
}

} // namespace kestrova::testing
