#include "archive/level_folders.h"
#include "discs/verify_discs.h"
#include "making_world.h"
#include "sandbox/faults.h"

namespace kestrova::testing
{

TEST_F(CreateDiscsTest, MakesImagesProvesThemAndMarksTheLevelsOnlyAtTheEnd)
{
    Level("Alpha", 2 * millions), Level("Beta", 2 * millions), Level("Gamma", 1 * millions);
    Measure();
    ASSERT_EQ(plan.Discs().size(), 2U);
    world.host.WillAsk("Remove from local disk (hard disk) 3 levels", true);
    ASSERT_TRUE(Create()) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("CD creation complete: no errors"));

    const auto saved = Saved();
    EXPECT_TRUE(saved.header.cdMovePending);
    EXPECT_EQ(saved.header.cdCount, 2);
    EXPECT_EQ(saved.levels[1].cdNumber, 1);
    EXPECT_EQ(saved.levels[3].cdNumber, 2);
    EXPECT_TRUE(world.Has("images/Kestrova 01 levels.iso"));
    EXPECT_TRUE(world.Has("images/Kestrova 02 levels.iso"));
    EXPECT_FALSE(world.Has("home/_temp_burn"));
    const auto note = ReadDiscNote(world / "levels");
    ASSERT_TRUE(note);
    for (const LevelCode code : {1, 2, 3}) {
        const NotedLevel* level = FindNoted(*note, code == 1 ? 1 : 2, code);
        ASSERT_NE(level, nullptr);
        EXPECT_TRUE(level->verified);
        EXPECT_TRUE(HoldsNotedFiles(InFolder(LevelHomeOf(world.session.Folders(), code), "\\files"),
                                    *level));
    }
    EXPECT_EQ(note->Find(1)->image, (world / "images/Kestrova 01 levels.iso").native());
}

TEST_F(CreateDiscsTest, RefusesInWordsBeforeAnythingStarts)
{
    Level("Alpha", millions);
    Measure();
    const FileContents before = world.Snapshot("levels");
    const auto refuses = [&](const std::string& words) {
        EXPECT_FALSE(Create());
        EXPECT_TRUE(world.host.WasTold(words)) << words << '\n' << world.host.AllTold();
        world.host.told.clear();
        ExpectUntouched(world, before);
        EXPECT_TRUE(world.Snapshot("images").empty() || words.find("already") != std::string::npos);
    };
    const DiscChoice good = plan.choice;
    const auto with = [&](auto change) {
        plan.choice = good;
        change(plan.choice);
    };
    with([](DiscChoice& c) { c.megabytes = 0; });
    refuses("You must specify, CD capacity");
    with([](DiscChoice& c) { c.megabytes = 5; });
    refuses("from 10 to");
    with([](DiscChoice& c) { c.imagesOnly = false; });
    refuses("You must specify speed cd burn");
    with([](DiscChoice& c) { c.imagesOnly = false, c.speed = 2; });
    refuses("You must specify unit letter used by CD writer");
    with([](DiscChoice& c) { c.levels = false; });
    refuses("There is nothing to enclose in cd");
    world.Write("a file", "mine");
    with([&](DiscChoice& c) { c.images = world / "a file"; });
    refuses("is no folder");
    with([&](DiscChoice& c) { c.images = world / "levels"; });
    refuses("Choose a folder of its own");
    with([](DiscChoice&) {});
    world.machine.free = 1'000'000;
    refuses("Nothing has been changed");
    world.machine.free = UINT64_C(1) << 40;
    world.Write("images/kestrova 01 LEVELS.ISO", "mine");
    refuses("is there already");
    EXPECT_EQ(world.Read("images/kestrova 01 LEVELS.ISO"), "mine");
    std::filesystem::remove(world / "images/kestrova 01 LEVELS.ISO");
    world.machine.tools.clear();
    refuses("Install the package 'xorriso'");
    world.machine.tools["xorriso"] = "/usr/bin/xorriso";
    with([](DiscChoice& c) { c.trle = true; });
    world.host.WillAsk("enclose the setup", true);
    world.host.WillAsk("Now locate its files", true);
    world.Write("setup/setup.exe", "program");
    world.Write("setup/TrKestrova.cab", "files");
    world.host.WillChoose("Locate setup files", world / "setup/TrKestrova.cab");
    refuses("is missing file setup.lst");
    world.session.archive.levels[1].cdNumber = 3;
    Measure();
    with([](DiscChoice&) {});
    EXPECT_FALSE(Create());
    EXPECT_TRUE(
        world.host.WasTold("Current archive is already ALL on CDs. No operation to perform"));
}

TEST_F(CreateDiscsTest, TheFirstDiscHoldsWhatSetsItUp)
{
    Level("Alpha", 100);
    for (const char* name : {"TrKestrova.cab", "setup.exe", "setup.lst", "readme.txt"})
        world.Write(std::string{"setup/"} + name, name);
    world.Write("home/cd_installer.exe", "installer");
    plan.choice.megabytes = 650;
    plan.choice.trle = plan.choice.setup = true;
    plan.choice.setupFile = world / "setup/TrKestrova.cab";
    plan.choice.remove = true;
    Measure();
    ASSERT_TRUE(Create()) << world.host.AllTold();
    const Path out = world / "out";
    const std::string take =
        "xorriso -osirrox on -indev 'stdio:" + (world / "images/Kestrova 01 levels.iso").native() +
        "' -extract / '" + out.native() + "' >/dev/null 2>&1 && chmod -R u+w '" + out.native() +
        "'";
    ASSERT_EQ(std::system(take.c_str()), 0);
    EXPECT_EQ(world.Read("out/cd_install.cfg"),
              "#TRLE_SETUP# \r\nTRLE\r\n#KESTROVA_SETUP# \r\n\\Kestrova\\Setup.exe\r\n"
              "#ARCHIVE_PATH# \r\n\\Cd_Archive.kva\r\n");
    for (const char* name : {"cd_installer.exe", "Kestrova/setup.lst", "trle/tomb4.exe",
                             "levels1/LEVEL_0001/files/data/Alpha.tr4"})
        EXPECT_TRUE(world.Has(std::string{"out/"} + name)) << name;
    const auto list = ReadArchiveFile(out / "Cd_Archive.kva");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->levels[1].cdNumber, 1);
    EXPECT_EQ(list->header.cdCount, 1);
    EXPECT_FALSE(list->header.cdMovePending);
    EXPECT_EQ(world.Read("out/autorun.inf"), "[autorun]\r\nOPEN=cd_installer.exe\r\n");
    // What the disc tells of itself is what it holds; no place of this machine stands there.
    const auto note = ReadDiscNote(out);
    ASSERT_TRUE(note);
    const NotedLevel* level = FindNoted(*note, 1, 1);
    ASSERT_NE(level, nullptr);
    EXPECT_EQ(level->files.size(), 2U);
    EXPECT_FALSE(level->verified);
    EXPECT_TRUE(HoldsNotedFiles(out / "levels1/LEVEL_0001/files", *level));
    EXPECT_EQ(note->Find(1)->image, "");
}

TEST_F(CreateDiscsTest, AStopAtAnyStepLeavesAllAsItWas)
{
    for (int step = 1; step < 400; step += 5) {
        World fresh;
        fresh.MakeTrle();
        fresh.MakeBackupAndArchive();
        fresh.machine.tools["xorriso"] = "/usr/bin/xorriso";
        std::filesystem::create_directories(fresh / "images");
        fresh.AddLevel("Alpha", {{"data/a.tr4", std::string(2 * millions, 'a')}});
        fresh.AddLevel("Beta", {{"data/b.tr4", std::string(2 * millions, 'b')}});
        const FileContents before = fresh.Snapshot("levels");
        DiscPlan plan2;
        plan2.choice = plan.choice;
        plan2.choice.images = fresh / "images";
        plan2.choice.remove = true;
        const auto scope = fresh.host.BeginProgress(ProgressWindow::Progress, {});
        ASSERT_TRUE(plan2.Measure(fresh.session.Folders(), fresh.session.archive, *scope));
        plan2.Divide();
        fresh.host.StopAtStep(step);
        if (CreateDiscs({fresh.session, *scope}, plan2))
            return TellPoints(step, 2);
        EXPECT_TRUE(fresh.host.WasTold("No disc is made any more")) << fresh.host.AllTold();
        ExpectUntouched(fresh, before);
        EXPECT_TRUE(fresh.Snapshot("images").empty());
    }
    FAIL() << "never finished";
}

/// A world with two levels, whose set is made without a question.
struct SmallSet {
    SmallSet()
    {
        world.MakeTrle();
        world.MakeBackupAndArchive();
        world.machine.tools["xorriso"] = "/usr/bin/xorriso";
        std::filesystem::create_directories(world / "images");
        world.AddLevel("Alpha", {{"data/a.tr4", std::string(2 * millions, 'a')}});
        world.AddLevel("Beta", {{"data/b.tr4", std::string(2 * millions, 'b')}});
        EXPECT_TRUE(SaveArchiveNow(world.session));
        before = world.Snapshot("levels");
        world.host.AnswerAll(true);
    }
    bool Make()
    {
        DiscPlan made;
        made.choice.megabytes = 10;
        made.choice.imagesOnly = true;
        made.choice.images = world / "images";
        made.choice.remove = true;
        const auto scope = world.host.BeginProgress(ProgressWindow::Progress, {});
        if (!made.Measure(world.session.Folders(), world.session.archive, *scope))
            return false;
        made.Divide();
        return CreateDiscs({world.session, *scope}, made);
    }
    /// The archive loads; a level that is on a disc was proved on an image that still holds it; and
    /// all files are on the hard disk, since nothing has removed them yet.
    void Judge(const std::string& where)
    {
        const auto saved = ReadArchiveFile(world.session.archive.file);
        ASSERT_TRUE(saved) << where;
        const auto note = ReadDiscNote(world / "levels");
        ASSERT_TRUE(note) << where;
        for (const LevelRecord& level : saved->levels) {
            if (level.cdNumber == 0)
                continue;
            EXPECT_TRUE(saved->header.cdMovePending) << where;
            const NotedLevel* noted = FindNoted(*note, level.cdNumber, level.levelCode);
            ASSERT_NE(noted, nullptr) << where;
            EXPECT_TRUE(noted->verified) << where;
            EXPECT_TRUE(FileExists(Path{note->Find(level.cdNumber)->image})) << where;
        }
        FileContents now = world.Snapshot("levels");
        now.erase("discs.json");
        EXPECT_TRUE(now == before) << where;
    }

    World world;
    FileContents before;
};

TEST(CreateDiscs, KilledOrFailedAtAnyCallLosesNothing)
{
    int points = 0;
    for (int n = 1;; n = NextPoint(n)) {
        SmallSet set;
        const KillRun run = WithKillAt(n, [&] { return set.Make(); });
        set.Judge("killed before " + run.call);
        if (!run.killed)
            break;
        ++points;
    }
    TellPoints(points, 20);
    for (const std::errc error : {std::errc::io_error, std::errc::no_space_on_device})
        for (int n = 1;; n = NextPoint(n + 2)) {
            SmallSet set;
            const FaultRun run = WithFaultAt(
                n, [&] { return set.Make(); }, error);
            set.Judge("failed at " + run.call);
            if (!run.answer) {
                EXPECT_FALSE(set.world.host.told.empty()) << run.call;
            }
            if (!run.reached)
                break;
        }
}

TEST(CreateDiscs, AToolThatFailsOrIsKilledAndAnImageThatIsDamagedAreTold)
{
    const std::pair<const char*, const char*> tools[] = {
        {"echo 'xorriso : FAILURE : No space left on device' >&2; exit 5", "was not made"},
        {"kill -9 $$", "was not made"},
        {"/usr/bin/xorriso \"$@\" || exit; while [ \"$1\" != -o ]; do shift; done; "
         "printf X | dd of=\"$2\" bs=1 seek=1500000 conv=notrunc 2>/dev/null",
         "a.tr4"}};
    for (const auto& [script, words] : tools) {
        SmallSet set;
        const Path tool = ToolIn(set.world, script);
        set.world.machine.tools["xorriso"] = tool;
        EXPECT_FALSE(set.Make()) << script;
        EXPECT_TRUE(set.world.host.WasTold(words)) << set.world.host.AllTold();
        ExpectUntouched(set.world, set.before);
        EXPECT_TRUE(set.world.Snapshot("images").empty()) << script;
        std::filesystem::remove_all(tool.parent_path());
    }
}

/// Thousands of small files take more than their bytes: the plan counts no less than the image has.
TEST_F(CreateDiscsTest, AnImageIsNoLargerThanThePlanSays)
{
    FileContents files;
    for (int i = 0; i < 6000; ++i)
        files["folder " + std::to_string(i % 40) + "/" + std::string(1 + i % 90, 'n') +
              std::to_string(i) + ".txt"] = std::string(static_cast<std::size_t>(i % 900), 'x');
    world.AddLevel("Many", files);
    plan.choice.megabytes = 650;
    plan.choice.remove = false;
    Measure();
    const std::uint64_t room = plan.RoomOfImages();
    ASSERT_TRUE(Create()) << world.host.AllTold();
    const std::uint64_t image = FileSize(world / "images/Kestrova 01 levels.iso");
    EXPECT_LE(image, room);
    EXPECT_GT(image + image / 2, room) << "counted far too high";
    EXPECT_EQ(world.session.archive.levels[1].cdNumber, 0) << "the person said No";
}

} // namespace kestrova::testing
