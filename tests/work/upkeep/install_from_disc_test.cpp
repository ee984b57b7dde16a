#include "discs/disc_notes.h"
#include "discs/disc_world.h"
#include "discs/install_from_disc.h"
#include "discs/setup_cd.h"
#include "formats/exact_names.h"
#include "sandbox/faults.h"
#include "upkeep/load_archive.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// Two discs of an archive from another computer; the first one has its file.
class InstallWorld : public DiscWorld
{
public:
    LevelCode one = 0;
    LevelCode two = 0;

    InstallWorld()
    {
        one = AddOnDisc("First", 1, "a", {{"data/one.tr4", "one"}, {"Read Me.txt", "read me"}});
        two = AddOnDisc("Łódź", 2, "b", {{"two.tr4.zl", "two"}});
        Write(DiscPlace("a", 1, one) + "/tr4.inf", "index");
        Archive onDisc = session.archive;
        onDisc.header.secondaryFolder = "C:\\Games\\levels";
        onDisc.header.mainFolderSize = 1000;
        onDisc.header.secondaryFolderSize = 10;
        onDisc.header.cdMovePending = true;
        PutFile(onDisc);
        ExactNames names;
        MergeExactNames(names, onDisc.levels);
        Write("discs/a/exact-names.jsonl", FormatExactNames(names));
        Write("discs/a/cd_install.cfg", "#ARCHIVE_PATH# \r\n\\Cd_Archive.kva\r\n");
        for (const auto& entry : fs::recursive_directory_iterator{root / "discs"})
            if (entry.is_regular_file())
                fs::permissions(entry, fs::perms::owner_read);
        places.drives = {DriveWith("a"), DriveWith("b")};
        Write("target/mine.txt", "mine");
        session.archive = {}; // another computer knows nothing of it
    }
    void PutFile(const Archive& archive) const
    {
        fs::remove(File());
        Write("discs/a/Cd_Archive.kva", FormatArchive(archive.header, archive.levels));
    }
    [[nodiscard]] Path File() const { return root / "discs/a/Cd_Archive.kva"; }
    std::optional<Path> Install(bool full)
    {
        return InstallArchive(session, File(), {root / "target", full});
    }
    [[nodiscard]] std::string Home(LevelCode code) const
    {
        return "target/levels/LEVEL_" + ZeroPadded(code, 4);
    }
};

} // namespace

TEST(InstallFromDisc, BringsTheSmallThingsOrAllOfThem)
{
    for (const bool full : {false, true}) {
        InstallWorld world;
        const auto file = world.Install(full);
        ASSERT_EQ(file, world / "target/levels/Cd_Archive.kva") << world.host.AllTold();
        EXPECT_TRUE(world.host.WasTold("TR Level archive has been saved in " +
                                       (world / "target/levels/Cd_Archive.kva").native()));
        EXPECT_EQ(world.Read(world.Home(world.one) + "/tr4.inf"), "index");
        for (const char* part : {"SCREENSHOTS", "SAVEGAMES", "BACKUP_SAVEGAMES"})
            EXPECT_TRUE(FolderExists(world / (world.Home(world.two) + "/" + part))) << part;
        EXPECT_EQ(world.Has(world.Home(world.one) + "/files/Read Me.txt"), full);
        const auto installed = ReadArchiveRecords(world.session.settings, *file);
        ASSERT_TRUE(installed);
        EXPECT_EQ(installed->levels[2].levelName, "Łódź");
        EXPECT_EQ(installed->header.secondaryFolder, (world / "target/levels").native());
        EXPECT_FALSE(installed->header.cdMovePending);
        EXPECT_EQ(installed->header.cdCount, full ? 0 : 2);
        EXPECT_EQ(installed->levels[1].cdNumber, full ? 0 : 1);
        if (full) {
            EXPECT_EQ(world.Read(world.Home(world.two) + "/files/two.tr4.zl"), "two");
            for (const auto& entry : fs::recursive_directory_iterator{world / "target/levels"})
                EXPECT_NE(entry.status().permissions() & fs::perms::owner_write, fs::perms::none)
                    << entry.path();
        }
        // A second one finds the place taken, and changes nothing.
        const FileContents before = world.Snapshot("target");
        EXPECT_FALSE(world.Install(full));
        EXPECT_TRUE(world.host.WasTold("holds something already"));
        EXPECT_EQ(world.Snapshot("target"), before);
    }
}

TEST(InstallFromDisc, WritesNowhereElseWhateverTheFileNames)
{
    for (const char* folder : {"C:\\..", "/etc/..", "", "D:\\", "/", "C:\\a|b\\.kv~x", "/tmp/."}) {
        InstallWorld world;
        auto archive = ReadArchiveRecords(world.session.settings, world.File());
        archive->header.secondaryFolder = folder;
        world.PutFile(*archive);
        const FileContents before = world.Snapshot(".");
        EXPECT_FALSE(world.Install(true)) << folder;
        EXPECT_EQ(world.Snapshot("."), before) << folder;
    }
    // Only the last part of a folder that stands here counts; nothing comes into that one.
    InstallWorld world;
    auto archive = ReadArchiveRecords(world.session.settings, world.File());
    archive->header.secondaryFolder = (world / "person/levels").native();
    fs::create_directories(world / "person/levels");
    world.PutFile(*archive);
    ASSERT_TRUE(world.Install(false)) << world.host.AllTold();
    EXPECT_TRUE(fs::is_empty(world / "person/levels"));
    EXPECT_TRUE(world.Has("target/levels/Cd_Archive.kva"));
}

TEST(InstallFromDisc, SaysWhatIsMissingAndLeavesNothingBehind)
{
    InstallWorld world;
    world.places.drives = {world.DriveWith("a")};
    const FileContents before = world.Snapshot("target");
    EXPECT_FALSE(world.Install(false));
    EXPECT_TRUE(world.host.WasTold("Error: cd missing"));
    EXPECT_EQ(world.Snapshot("target"), before);
    world.places.drives = {world.DriveWith("a"), world.DriveWith("b")};
    world.machine.free = 500;
    EXPECT_FALSE(world.Install(true));
    EXPECT_TRUE(world.host.WasTold("has not sufficient free space for setup files (1010)"));
    EXPECT_TRUE(world.Install(false)) << world.host.AllTold();
    fs::remove_all(world / "target/levels");
    world.machine.free = UINT64_C(1) << 40;
    // A level that cannot be copied whole stays on its disc, when the person goes on.
    const FailingCalls damaged{platform::FileAction::Open, "two.tr4.zl", -1};
    world.host.WillAsk("Error copying file in subfolder '", false);
    EXPECT_FALSE(world.Install(true));
    EXPECT_EQ(world.Snapshot("target"), before);
    world.host.WillAsk("Error copying file in subfolder '", true);
    const auto file = world.Install(true);
    ASSERT_TRUE(file) << world.host.AllTold();
    const auto installed = ReadArchiveRecords(world.session.settings, *file);
    EXPECT_EQ(installed->levels[1].cdNumber, 0);
    EXPECT_EQ(installed->levels[2].cdNumber, 2);
    EXPECT_FALSE(FolderExists(world / (world.Home(world.two) + "/files")));
}

TEST(InstallFromDisc, FollowsNoLinkOnADisc)
{
    InstallWorld world;
    world.Write("person/private.tr4", "the person's own");
    const Path level = world / InstallWorld::DiscPlace("a", 1, world.one);
    const Path files = level / "files";
    const FileContents before = world.Snapshot("target");
    const auto refuses = [&](const std::string& what) {
        EXPECT_FALSE(world.Install(true)) << what;
        EXPECT_TRUE(world.host.WasTold("is a link, and no link on a disc is followed"))
            << what << world.host.AllTold();
        EXPECT_EQ(world.Snapshot("target"), before) << what;
        world.host.told.clear();
    };
    fs::create_symlink(world / "person/private.tr4", files / "data/more.tr4");
    refuses("a file");
    fs::remove(files / "data/more.tr4");
    fs::rename(files, world / "kept");
    fs::create_directory_symlink(world / "person", files);
    refuses("the files");
    fs::remove(files);
    fs::rename(world / "kept", files);
    fs::rename(level, world / "kept");
    fs::create_directory_symlink(world / "kept", level);
    refuses("the level");
}

TEST(InstallFromDisc, SaysWhatItCouldNotCompare)
{
    InstallWorld world;
    ASSERT_TRUE(world.Install(true)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("not compared with what their discs were made of: 2"));
    EXPECT_FALSE(world.host.WasTold("is damaged"));
    fs::remove_all(world / "target/levels");
    world.Write("discs/a/discs.json", "{\"version\": 1, \"discs\": [");
    world.host.told.clear();
    ASSERT_TRUE(world.Install(false)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("is damaged")) << world.host.AllTold();
    EXPECT_FALSE(world.host.WasTold("not compared with"));
}

TEST(InstallFromDisc, KilledOrFailedAnywhereItIsWholeOrNotThere)
{
    const auto judge = [](InstallWorld& world, const std::string& where) {
        EXPECT_EQ(world.Read("target/mine.txt"), "mine") << where;
        if (!FolderExists(world / "target/levels"))
            return;
        const auto installed =
            ReadArchiveRecords(world.session.settings, world / "target/levels/Cd_Archive.kva");
        ASSERT_TRUE(installed) << where;
        EXPECT_EQ(world.Read(world.Home(world.one) + "/files/data/one.tr4"), "one") << where;
        EXPECT_EQ(world.Read(world.Home(world.two) + "/files/two.tr4.zl"), "two") << where;
    };
    int points = 0;
    for (int point = 1;; point = NextPoint(point), ++points) {
        InstallWorld world;
        world.host.AnswerAll(false);
        const KillRun run = WithKillAt(point, [&] { return world.Install(true).has_value(); });
        judge(world, run.call);
        if (!run.killed)
            break;
        if (!FolderExists(world / "target/levels")) { // and then it works
            EXPECT_TRUE(world.Install(true)) << run.call << world.host.AllTold();
        }
    }
    TellPoints(points, 20 / WalkStride());
    for (int point = 1;; point = NextPoint(point)) {
        InstallWorld world;
        world.host.AnswerAll(false);
        const FaultRun run = WithFaultAt(point, [&] { return world.Install(true).has_value(); });
        judge(world, run.call);
        if (!run.reached)
            break;
        for (const auto& entry : fs::directory_iterator{world / "target"})
            if (entry.path().filename() != "mine.txt") {
                EXPECT_EQ(entry.path().filename(), "levels") << run.call;
            }
    }
}

TEST(InstallFromDisc, LoadingTheFileOnADiscAsksHow)
{
    InstallWorld world;
    ASSERT_FALSE(ReadArchive(world.session, world.File())); // in the terminal words say how
    EXPECT_TRUE(world.host.WasTold("kestrovactl discs install"));
    world.windows.setup = [&](SetupCd& setup) {
        EXPECT_NE(setup.Title().find("(levels: 2, discs: 2)"), std::string::npos) << setup.Title();
        EXPECT_EQ(setup.SizeText(false), "10");
        EXPECT_EQ(setup.SizeText(true), "1010");
        setup.full = true;
        return setup.Install();
    };
    world.NewShelf();
    world.host.WillChoose("Select an hard disk folder to install current archive", std::nullopt);
    EXPECT_FALSE(ReadArchive(world.session, world.File()));
    world.host.WillChoose("Select an hard disk folder", world / "target");
    ASSERT_TRUE(ReadArchive(world.session, world.File())) << world.host.AllTold();
    EXPECT_EQ(world.session.ArchivePath(), world / "target/levels/Cd_Archive.kva");
    EXPECT_EQ(world.session.preferences.archivePath,
              (world / "target/levels/Cd_Archive.kva").native());
    EXPECT_FALSE(world.Has("discs/a/.kv~lock"));
}

} // namespace kestrova::testing
