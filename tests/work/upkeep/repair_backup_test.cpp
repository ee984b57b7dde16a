#include "upkeep/repair_backup.h"

#include "originals/backup_sums.h"
#include "originals/imported_files.h"
#include "originals/vault.h"
#include "sandbox/faults.h"
#include "swap/backup.h"
#include "swap/verify.h"
#include "swap/verify_backup.h"
#include "upkeep/repair_world.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// A backup as the program makes it, with what is noted of it.
class BackupWorld : public RepairWorld
{
public:
    static constexpr const char* original = "home/backup_trle/Script.dat";

    BackupWorld()
    {
        fs::remove_all(root / "home/backup_trle");
        Write("trle/Script.dat", "the original script");
        Write("trle/graphics/wads/deep.wad", "a wad");
        EXPECT_TRUE(MakeTrleBackup(session, true, {BackupForm::Full, true})) << host.AllTold();
        made = Snapshot("home/backup_trle");
    }
    /// What a look at the Level Editor's folder says of a file; nothing: it says nothing.
    std::vector<Mismatch> Said(const std::string& file)
    {
        std::vector<Mismatch> kinds;
        const auto found = VerifyFolder(session);
        EXPECT_TRUE(found);
        for (const Difference& difference : found ? *found : std::vector<Difference>{})
            if (difference.file == file)
                kinds.push_back(difference.kind);
        return kinds;
    }
    bool RepairIt(const Path& offered = {})
    {
        LevelChecks checks{session};
        return checks.Check({originalCode}) && checks.Repair(offered) && checks.Harmed() == 0;
    }
    FileContents made;
};

} // namespace

TEST(RepairBackup, TellsADamagedBackupFromAChangedFolderAndBringsItBack)
{
    BackupWorld world;
    const std::vector<Mismatch> damaged{Mismatch::BackupDamaged};
    EXPECT_TRUE(world.Said("\\Script.dat").empty());
    world.Write("trle/Script.dat", "a changed script");
    EXPECT_EQ(world.Said("\\Script.dat"), std::vector<Mismatch>{Mismatch::Differs});
    world.Write("trle/Script.dat", "the original script");
    world.Write(BackupWorld::original, "the original scrixt");
    EXPECT_EQ(world.Said("\\Script.dat"), damaged);
    fs::remove(world / "home/backup_trle/graphics/wads/deep.wad");
    EXPECT_EQ(world.Said("\\graphics\\wads\\deep.wad"), damaged);

    LevelChecks checks{world.session};
    ASSERT_TRUE(
        checks.Check(LevelChecks::Everything(world.session.Folders(), world.session.archive)));
    ASSERT_EQ(checks.Rows().size(), 2U);
    for (const CheckedRow& row : checks.Rows()) {
        EXPECT_EQ(row.code, originalCode);
        EXPECT_EQ(row.source, "the Level Editor's folder") << row.fault.file;
    }
    EXPECT_TRUE(checks.Repair({})) << world.host.AllTold();
    EXPECT_EQ(checks.Harmed(), 0U);
    EXPECT_EQ(world.Snapshot("home/backup_trle"), world.made);
    const auto kept = KeptFiles(world.session.Folders());
    ASSERT_TRUE(kept && kept->size() == 1) << "what was replaced is kept";
    EXPECT_EQ(*ReadWholeFile(kept->front().content), "the original scrixt");
}

TEST(RepairBackup, TakesNothingThatIsNotTheVeryFile)
{
    BackupWorld world;
    world.Write("trle/Script.dat", "a changed script");
    world.Write(BackupWorld::original, "the original scrixt");
    EXPECT_EQ(world.Said("\\Script.dat"),
              (std::vector<Mismatch>{Mismatch::BackupDamaged, Mismatch::Differs}));
    const FileContents before = world.Snapshot("home/backup_trle");
    EXPECT_FALSE(world.RepairIt());
    EXPECT_EQ(world.Snapshot("home/backup_trle"), before);
    world.Write("download/other name.bin", "the original script");
    EXPECT_TRUE(world.RepairIt(world / "download")) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("home/backup_trle"), world.made);
    EXPECT_EQ(world.Read("trle/Script.dat"), "a changed script")
        << "the folder is not its business";
}

TEST(RepairBackup, ClaimsNothingOfWhatNobodyNotedOrTheProgramChanged)
{
    BackupWorld world;
    const Folders folders = world.session.Folders();
    {
        ImportedFiles import{world.machine, folders, "wads"};
        ASSERT_TRUE(import.Watch({{ImportTree::Backup, "\\Script.dat", {}, {}}}));
        world.Write(BackupWorld::original, "came with an import");
        ASSERT_TRUE(import.End());
    }
    EXPECT_EQ(world.Said("\\Script.dat"), std::vector<Mismatch>{Mismatch::Differs});
    auto checked = VerifyBackup(folders, Noting::No);
    ASSERT_TRUE(checked);
    EXPECT_TRUE(checked->faults.empty());
    // The next check notes it, and then it is known.
    ASSERT_TRUE(VerifyBackup(folders, Noting::Yes));
    for (const auto& [bytes, kind] : {std::pair{"CAME with an import", FileFault::Differs},
                                      std::pair{"came with", FileFault::Cut}}) {
        world.Write(BackupWorld::original, bytes);
        checked = VerifyBackup(folders, Noting::Yes);
        ASSERT_TRUE(checked && checked->faults.size() == 1);
        EXPECT_EQ(checked->faults.front().kind, kind) << bytes;
        EXPECT_EQ(checked->faults.front().file, "Script.dat");
    }

    // Another folder in its place is another backup, and a damaged note says nothing.
    fs::copy(world / "home/backup_trle", world / "copy", fs::copy_options::recursive);
    fs::rename(world / "home/backup_trle", world / "home/backup_trle_1");
    fs::rename(world / "copy", world / "home/backup_trle");
    EXPECT_TRUE(VerifyBackup(folders, Noting::No)->faults.empty());
    world.Write("home/swap/backup-content", "{\"version\":1}");
    EXPECT_TRUE(VerifyBackup(folders, Noting::No)->faults.empty());
    fs::remove_all(world / "home/backup_trle");
    EXPECT_FALSE(VerifyBackup(folders, Noting::Yes));
}

TEST(RepairBackup, KeepsCapitalsAndTheRightToRun)
{
    BackupWorld world;
    const Path backup = world / "home/backup_trle";
    const auto mode = [](const Path& file) { return platform::FactsOf(file).mode & 0777U; };
    ASSERT_FALSE(platform::SetMode(world / "trle/tomb4.exe", 0755));
    ASSERT_FALSE(platform::SetMode(backup / "Script.dat", 0755));
    fs::rename(backup / "Script.dat", backup / "SCRIPT.DAT");
    EXPECT_TRUE(VerifyBackup(world.session.Folders(), Noting::No)->faults.empty());
    world.Write("home/backup_trle/SCRIPT.DAT", "the original scrixt");
    fs::remove(backup / "tomb4.exe");
    EXPECT_TRUE(world.RepairIt()) << world.host.AllTold();
    EXPECT_FALSE(world.Has(BackupWorld::original)) << "no twin";
    EXPECT_EQ(world.Read("home/backup_trle/SCRIPT.DAT"), "the original script");
    EXPECT_EQ(mode(backup / "SCRIPT.DAT"), 0755U);
    EXPECT_EQ(mode(backup / "tomb4.exe"), 0755U) << "as the Level Editor's own";
}

/// A restore copies whatever the backup holds, so nothing may be set aside in there.
TEST(RepairBackup, KeepsAFolderInTheWayOutsideOfTheBackup)
{
    BackupWorld world;
    const Path place = world / BackupWorld::original;
    fs::remove(place);
    world.Write(BackupWorld::original + std::string{"/mine/own.txt"}, "put there by hand");
    LevelChecks checks{world.session};
    ASSERT_TRUE(checks.Check({originalCode}));
    ASSERT_EQ(checks.Rows().size(), 1U);
    EXPECT_EQ(checks.Rows().front().fault.kind, FileFault::InTheWay);
    EXPECT_EQ(checks.Rows().front().source, "the Level Editor's folder");
    EXPECT_TRUE(checks.Repair({})) << world.host.AllTold();
    EXPECT_EQ(checks.Harmed(), 0U) << checks.ListText();
    EXPECT_EQ(world.Snapshot("home/backup_trle"), world.made);
    const auto kept = KeptFiles(world.session.Folders()).ValueOr({});
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(*ReadWholeFile(kept.front().content), "put there by hand");

    // Nor is a file that nobody can read.
    world.Write(BackupWorld::original, "cannot be read");
    {
        // By the check, and by whoever keeps it.
        const FailingCalls unreadable{platform::FileAction::Open, "backup_trle/Script.dat", 2};
        EXPECT_TRUE(world.RepairIt()) << world.host.AllTold();
        EXPECT_EQ(unreadable.Failed(), 2);
    }
    EXPECT_EQ(world.Snapshot("home/backup_trle"), world.made);
    bool isListed = false;
    for (const KeptFile& file : KeptFiles(world.session.Folders()).ValueOr({}))
        isListed = isListed || ReadWholeFile(file.content).ValueOr({}) == "cannot be read";
    EXPECT_TRUE(isListed);

    // What cannot be kept so stays, and the repair names it.
    for (const Path& inTheWay : {place, world / "home/backup_trle/graphics"}) {
        fs::remove_all(inTheWay);
        fs::create_symlink(world / "nowhere", inTheWay);
        EXPECT_FALSE(world.RepairIt());
        ASSERT_TRUE(checks.Check({originalCode}) && checks.Repair({}));
        ASSERT_FALSE(checks.Rows().empty());
        EXPECT_NE(checks.Rows().front().remedy.find("Move " + TextOf(inTheWay) + " away"),
                  std::string::npos)
            << checks.Rows().front().remedy;
        EXPECT_TRUE(fs::is_symlink(inTheWay));
        fs::remove(inTheWay);
        EXPECT_TRUE(world.RepairIt()) << world.host.AllTold();
        EXPECT_EQ(world.Snapshot("home/backup_trle"), world.made);
    }
}

TEST(RepairBackup, GoesThroughLinksToFoldersAsARestoreDoes)
{
    BackupWorld world;
    const Path folder = world / "home/backup_trle/graphics";
    fs::rename(folder, world / "disk");
    fs::create_directory_symlink(world / "disk", folder);
    EXPECT_TRUE(VerifyBackup(world.session.Folders(), Noting::No)->faults.empty());
    world.Write("disk/wads/deep.wad", "a w");
    const auto checked = VerifyBackup(world.session.Folders(), Noting::No);
    ASSERT_EQ(checked->faults.size(), 1U);
    EXPECT_EQ(checked->faults.front().kind, FileFault::Cut);
    EXPECT_TRUE(world.RepairIt()) << world.host.AllTold();
    EXPECT_TRUE(fs::is_symlink(folder));
    EXPECT_EQ(world.Read("disk/wads/deep.wad"), "a wad");
    EXPECT_EQ(KeptFiles(world.session.Folders()).ValueOr({}).size(), 1U) << "what was replaced";
}

TEST(RepairBackup, IsGuardedInACopiedProgramsFolder)
{
    BackupWorld world;
    fs::rename(world / "home", world / "old");
    fs::copy(world / "old", world / "home",
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    world.Write(BackupWorld::original, "the original scrixt");
    const auto checked = VerifyBackup(world.session.Folders(), Noting::Yes);
    ASSERT_TRUE(checked && checked->faults.size() == 1);
    EXPECT_EQ(checked->faults.front().file, "Script.dat");
    EXPECT_TRUE(world.RepairIt()) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("home/backup_trle"), world.made);
}

TEST(RepairBackup, KilledAnywhereIsOldOrNewAndCanBeDoneAgain)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        BackupWorld world;
        world.Write(BackupWorld::original, "the original scrixt");
        const KillRun run = WithKillAt(step, [&] { return world.RepairIt(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        const std::string now = world.Read(BackupWorld::original);
        EXPECT_TRUE(now == "the original scrixt" || now == "the original script") << now;
        EXPECT_TRUE(world.RepairIt()) << world.host.AllTold();
        EXPECT_EQ(world.Read(BackupWorld::original), "the original script");
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 5);
    }
    FAIL() << "never finished";
}

} // namespace kestrova::testing
