#include "intake/exe_install.h"

#include "archive/level_folders.h"
#include "intake/add_level.h"
#include "intake/draft_files.h"
#include "intake/exe_level.h"
#include "intake/intake_steps.h"
#include "originals/folder_loan.h"
#include "originals/vault.h"
#include "sandbox/faults.h"
#include "session/held_folders.h"
#include "swap/recovery.h"
#include "world/tool_box.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <thread>

namespace kestrova::testing
{

namespace
{

/// What most installers of levels do, and more: they write the level's files, over originals and a
/// builder's own files too, leave litter, and delete.
const std::string installs =
    "t=\"$TRLE\"; echo level >$t/DATA/city.tr4; echo changed >$t/script.dat; "
    "echo over it >$t/DATA/own.tr4; rm -f $t/english.dat $t/DATA/kept.tr4; rm -rf $t/graphics; "
    "mkdir -p $t/audio $t/new/deep; echo sound >$t/audio/105.wav; echo x >$t/unins000.exe; "
    "echo l >$t/setup.bak; echo i >$t/deep.ini; echo d >$t/deep.dat; echo deep >$t/new/deep/a.txt; "
    "echo read >$t/readme.txt; ";

/// A builder's Level Editor's folder, and a level that comes as a program.
class ExeWorld : public ToolBox
{
public:
    explicit ExeWorld(const std::string& script = installs, bool enclosed = false)
    {
        session.programFolder = root / "home";
        MakeTrle();
        Write("trle/graphics/wads/city.was", "an original wad");
        MakeBackupAndArchive();
        Write("trle/DATA/own.tr4", "the builder's own level");
        Write("trle/DATA/kept.tr4", "another one");
        Write("trle/graphics/wads/own.was", "the builder's own wad");
        Write("trle/script/own.txt", "the builder's own script");
        before = Snapshot("trle");
        if (enclosed)
            machine.tools["bwrap"] = platform::FindOnPath("bwrap");
        AddProgram(script);
        progress = host.BeginProgress(ProgressWindow::Progress, {});
    }

    /// The level's `setup.exe`, a link to a script that lies where programs may be started from.
    void AddProgram(const std::string& script)
    {
        program = AddTool("setup.exe", "TRLE=" + (root / "trle").native() + "; " + script);
    }

    /// The draft with the program among its files.
    Intake& Begin()
    {
        record = {};
        record.levelCode = NextLevelCode(session.archive);
        EXPECT_TRUE(MakeLevelSubfolders(LevelHomeOf(session.Folders(), record.levelCode)));
        opened.emplace(session, record, NewLevelSteps(), *progress);
        EXPECT_TRUE(OpenNewLevel(*opened)) << host.AllTold();
        std::filesystem::create_symlink(program, opened->draft.workFolder / "setup.exe");
        Write("levels/LEVEL_0001/files/notes.txt", "came with it");
        opened->draft.files = {opened->draft.workFolder / "notes.txt",
                               opened->draft.workFolder / "setup.exe"};
        opened->draft.installer = IntoTrle(session.Folders());
        return *opened;
    }
    bool Install(ExeLevel level = {})
    {
        Intake& intake = opened ? *opened : Begin();
        const WorkFolder temp{root / "home/_temp_exe_lev", WorkFolder::Make::Now};
        level.tempFolder = temp.Folder();
        const bool done = InstallExeLevel(intake, level);
        result = Snapshot("home/_temp_exe_lev");
        return done;
    }

    void ExpectBack()
    {
        auto now = Snapshot("trle");
        now.erase("Kestrva.txt");
        for (const auto& [file, content] : now)
            EXPECT_TRUE(before.contains(file)) << file << " came";
        for (const auto& [file, content] : before)
            EXPECT_EQ(now[file], content) << file;
        EXPECT_FALSE(Has("trle/new"));
        EXPECT_FALSE(LoanWaits(session.Folders()));
        EXPECT_FALSE(Has("home/.kv~handed"));
    }

    Path program;
    FileContents before;
    FileContents result;
    std::unique_ptr<ProgressScope> progress;
    LevelRecord record;
    std::optional<Intake> opened;
};

TEST(ExeInstall, TheLevelComesOutAndTheFolderIsAsItWas)
{
    for (const bool enclosed : {false, true}) {
        ExeWorld world{installs, enclosed};
        EXPECT_TRUE(world.Install()) << world.host.AllTold();
        world.ExpectBack();
        EXPECT_EQ(world.result, (FileContents{{"105.wav", "sound\n"},
                                              {"a.txt", "deep\n"},
                                              {"city.tr4", "level\n"},
                                              {"own.tr4", "over it\n"},
                                              {"readme.txt", "read\n"},
                                              {"script.dat", "changed\n"}}));
        EXPECT_TRUE(world.host.WasTold("Install procedure is finished: no error"));
        EXPECT_TRUE(world.host.WasTold("unins000.exe"));
    }
}

TEST(ExeInstall, AProgramThatFailsLeavesTheFolderAsItWas)
{
    const struct {
        const char* script;
        const char* told;
    } cases[] = {
        {"kill -9 $$", "broke down (signal 9)"},
        {"rm -rf $TRLE/*", "no tom or tr4 files found"},
        {"exit 0", "no tom or tr4 files found"},
        {"head -c 2000000 /dev/zero; exit 3", "ended with the code 3"},
        {"exec sleep 60", "Timeout"},
        {"(setsid sh -c 'while :; do echo >>$TRLE/beat; sleep 0.02; done' &); exit 0", "no tom"},
    };
    for (const auto& entry : cases)
        for (const bool enclosed : {false, true}) {
            ExeWorld world{entry.script[0] == 'r' || entry.script[0] == 'h'
                               ? entry.script
                               : installs + "rm -f $t/DATA/city.tr4 $t/DATA/own.tr4; " +
                                     entry.script,
                           enclosed};
            SCOPED_TRACE(std::string{entry.script} + (enclosed ? ", enclosed" : ""));
            ExeLevel level;
            level.bounds.time = std::chrono::milliseconds{1500};
            level.bounds.left = std::chrono::milliseconds{200};
            world.Install(level);
            EXPECT_TRUE(world.host.WasTold(entry.told)) << world.host.AllTold();
            world.ExpectBack();
        }
    ExeWorld stopped{installs + "exec sleep 60", true};
    stopped.host.StopAtStep(400);
    EXPECT_FALSE(stopped.Install());
    stopped.ExpectBack();
    ExeWorld notStarted;
    std::ofstream{notStarted.program} << "#!/nowhere/at/all\n";
    EXPECT_FALSE(notStarted.Install());
    EXPECT_TRUE(notStarted.host.WasTold("Error executing: "));
    notStarted.ExpectBack();
}

/// Kind, rights and time of all that stands in a folder, whatever shows it.
std::map<std::string, std::string> Standing(const Path& folder)
{
    namespace fs = std::filesystem;
    std::map<std::string, std::string> all;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator{folder}) {
        const fs::file_status status = entry.symlink_status();
        const bool isLock = entry.path().filename() == ".kv~lock" && fs::is_regular_file(status);
        if (isLock || entry.path().filename() == "Kestrva.txt")
            continue;
        std::string& facts = all[entry.path().lexically_relative(folder).native()];
        facts = std::to_string(static_cast<int>(status.type())) + ' ' +
                std::to_string(static_cast<unsigned>(status.permissions()));
        if (fs::is_regular_file(status))
            facts += ' ' + std::to_string(entry.last_write_time().time_since_epoch().count());
    }
    return all;
}

TEST(ExeInstall, WhateverStandsThereAfterwardsTheFolderIsAsItWas)
{
    const char* const cases[] = {
        "mkfifo $t/DATA/p.tr4; mkdir $t/n; mkfifo $t/n/p; echo x >$t/.kv~own; mkdir $t/.kv~lent",
        "rm $t/papers; mkfifo $t/papers",
        "rm $t/papers; mkdir $t/papers; mkfifo $t/papers/p",
        "rm $t/own.0; mkdir -p $t/own.0/deep; mkfifo $t/own.0/deep/p; echo x >$t/own.0/f",
        "rm -rf $t/script; mkfifo $t/script",
        "rm -rf $t/script; ln -s /etc $t/script",
        "rm -rf $t/.kv~lock; mkdir $t/.kv~lock",
        "for f in $t/*.dat $t/own.0 $t/audio/*; do touch -d 2001-01-01 $f; done",
        ("mkdir $t/n; echo x >$t/n/a; chmod 0 $t/n/a $t/n $t/own.0 $t/english.dat; "
         "chmod 0 $t/script $t/DATA; chmod 500 $t"),
        "n=$(printf %0200d 1); cd $t; for i in $(seq 30); do mkdir $n; cd $n; done; echo x >a",
        "mkdir d; echo x >d/x; chmod 0 d; chmod 500 .",
        "rm -rf $t/graphics \"$t/my work\"",
        "rm \"$t/my work/lnk\"; mkdir \"$t/my work/lnk\"; echo x >\"$t/my work/lnk/x\"",
        "rm $t/own.prj; echo other >$t/own.prj",
    };
    for (const char* const script : cases)
        for (const bool enclosed : {false, true}) {
            SCOPED_TRACE(std::string{script} + (enclosed ? ", enclosed" : ""));
            ExeWorld world{std::string{"t=$TRLE; echo level >$t/DATA/city.tr4; "} + script,
                           enclosed};
            world.Write("trle/own.0", "the builder's own");
            std::filesystem::permissions(world / "trle/own.0", std::filesystem::perms{0640});
            world.Write("elsewhere/manual.pdf", "read me");
            std::filesystem::create_directory_symlink("../elsewhere", world / "trle/papers");
            std::filesystem::create_symlink("../elsewhere/manual.pdf", world / "trle/own.prj");
            std::filesystem::create_directories(world / "trle/my work");
            std::filesystem::create_directory_symlink("../graphics", world / "trle/my work/lnk");
            world.before = world.Snapshot("trle");
            Intake& intake = world.Begin();
            ASSERT_TRUE(HoldFolder(world.session.locks, world / "trle"));
            const auto standing = Standing(world / "trle");
            EXPECT_EQ(RunExeInstall(intake, {}), StepAnswer::GoesOn) << world.host.AllTold();
            EXPECT_EQ(world.Read("levels/LEVEL_0001/files/city.tr4"), "level\n");
            EXPECT_TRUE(Standing(world / "trle") == standing);
            EXPECT_EQ(world.Read("elsewhere/manual.pdf"), "read me");
            world.ExpectBack();
        }
}

TEST(ExeInstall, MoreThanALevelMayTakeIsNotCopied)
{
    for (const char* const into : {"trle", "into"}) {
        ExeWorld world{"truncate -s 3G $TRLE/../" + std::string{into} + "/city.tr4"};
        world.Write("into/old.txt", "old");
        Intake& intake = world.Begin();
        intake.draft.installer = IntoFolder(world.session.Folders(), world / into);
        ExeLevel level;
        level.bounds.mostTaken = UINT64_C(1) << 30;
        EXPECT_FALSE(world.Install(level));
        EXPECT_TRUE(world.host.WasTold("3.0 GB")) << world.host.AllTold();
        EXPECT_TRUE(world.result.empty());
        world.ExpectBack();
    }
}

TEST(ExeInstall, ACompactBackupLeavesNewWavesInTheFolder)
{
    ExeWorld world{installs + "echo over >$t/Audio/001.wav"};
    world.session.preferences.fullBackup = false;
    std::filesystem::remove_all(world / "home/backup_trle/Audio");
    std::filesystem::remove_all(world / "home/backup_trle/script");
    EXPECT_TRUE(world.Install()) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("COMPACT trle backup"));
    EXPECT_EQ(world.Read("trle/audio/105.wav"), "sound\n");
    EXPECT_FALSE(world.result.contains("105.wav"));
    EXPECT_FALSE(world.result.contains("a.txt")) << "three folders count";
    EXPECT_TRUE(world.host.WasTold("new/deep/a.txt"));
    EXPECT_TRUE(world.result.contains("city.tr4"));
    std::filesystem::remove(world / "trle/audio/105.wav");
    world.ExpectBack();
}

TEST(ExeInstall, AnotherFolderGivesItsFiles)
{
    ExeWorld world{"mkdir -p $TRLE/../into; echo level >$TRLE/../into/city.tr4; "
                   "echo x >$TRLE/DATA/stray.tr4",
                   true};
    world.Write("into/old.txt", "old");
    Intake& intake = world.Begin();
    intake.draft.installer = IntoFolder(world.session.Folders(), world / "into");
    const ExeLevel level{world / "temp"};
    world.Write("temp/.keep", "");
    EXPECT_TRUE(InstallExeLevel(intake, level)) << world.host.AllTold();
    EXPECT_EQ(world.Read("temp/city.tr4"), "level\n");
    world.ExpectBack();
    std::filesystem::create_directory_symlink(world / "levels", world / "link");
    for (const Path& wrong : {world / "nowhere", world.root, world / "levels", world / "link",
                              world / "home/backup_trle"}) {
        world.host.told.clear();
        intake.draft.installer = IntoFolder(world.session.Folders(), wrong);
        EXPECT_FALSE(InstallExeLevel(intake, level)) << wrong;
        EXPECT_TRUE(world.host.WasTold(wrong == world / "nowhere" ? "is not there"
                                                                  : "it could change them"))
            << wrong << world.host.AllTold();
    }
}

TEST(ExeInstall, TheQuestionAndTheTextsComeInTheirOrder)
{
    ExeWorld world;
    Intake& intake = world.Begin();
    intake.draft.installer.reset();
    EXPECT_EQ(RunExeInstall(intake, {}), StepAnswer::GoesOn);
    EXPECT_TRUE(world.host.WasTold("--installer trle")) << "nobody can be asked";
    EXPECT_FALSE(world.Has("trle/DATA/city.tr4"));

    intake.draft.exeAsked = false;
    world.host.told.clear();
    int asked = 0;
    intake.windows.installed = [&](InstalledPlace& place) {
        ++asked;
        place.TakeTrle();
    };
    world.host.WillAsk("Have you load in list box ALL files", false);
    EXPECT_EQ(RunExeInstall(intake, {}), StepAnswer::GoesOn);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(RunExeInstall(intake, {}), StepAnswer::GoesOn) << "it is asked once";

    intake.draft.exeAsked = false;
    world.host.WillAsk("It could reach everything that you can", true);
    EXPECT_EQ(RunExeInstall(intake, "MIRROR"), StepAnswer::GoesOn) << world.host.AllTold();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(world.Read("levels/LEVEL_0001/files/city.tr4"), "level\n");
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/files/setup.exe"));
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/files/notes.txt"));
    EXPECT_FALSE(world.Has("home/_temp_exe_lev"));
    world.ExpectBack();
}

TEST(ExeInstall, WhatGoesWrongIsToldAndTheProgramGoes)
{
    ExeWorld world{"exit 0"};
    Intake& intake = world.Begin();
    EXPECT_EQ(RunExeInstall(intake, {}), StepAnswer::Refused);
    EXPECT_TRUE(world.host.WasTold("Error or cancel installing level in exe format"));
    EXPECT_FALSE(world.Has("levels/LEVEL_0001/files/setup.exe"));
    EXPECT_TRUE(world.Has("levels/LEVEL_0001/files/notes.txt"));
    world.ExpectBack();
}

/// Fake Wine, which runs what stands behind the two letters of a Windows program.
TEST(ExeInstall, WhatAWindowsProgramWroteElsewhereIsListed)
{
    ExeWorld world;
    const Path wine = world.AddTool("wine", "echo $WINEPREFIX >$WINEPREFIX/drive_c/stray.ini; "
                                            "echo level >" +
                                                (world / "trle/DATA/city.tr4").native());
    std::filesystem::rename(world / "trle", world / "lent");
    world.Write("prefix/drive_c/old.ini", "old");
    std::filesystem::rename(world / "lent", world / "prefix/drive_c/trle");
    std::filesystem::create_directory_symlink(world / "prefix/drive_c/trle", world / "trle");
    world.session.preferences.trlePath = (world / "prefix/drive_c/trle").native();
    world.session.settings.wineCommand = wine.native();
    Intake& intake = world.Begin();
    std::filesystem::remove(intake.draft.workFolder / "setup.exe");
    world.Write("levels/LEVEL_0001/files/setup.exe", "MZ");
    const ExeLevel level{world / "temp"};
    world.Write("temp/.keep", "");
    EXPECT_TRUE(InstallExeLevel(intake, level)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("stray.ini")) << world.host.AllTold();
    EXPECT_FALSE(world.host.WasTold("old.ini"));
    EXPECT_EQ(world.Read("prefix/drive_c/stray.ini"), (world / "prefix").native() + "\n");
    EXPECT_FALSE(world.Has("trle/DATA/city.tr4"));
}

TEST(ExeInstall, WhatChangedAtHomeWhileAProgramRanFreeIsTold)
{
    ExeWorld world{"echo level >$TRLE/DATA/city.tr4; mkdir -p $HOME/in; echo x >$HOME/in/stray"};
    world.Write("person/old.txt", "old");
    std::this_thread::sleep_for(std::chrono::milliseconds{50}); // the clock of a disk has ticks
    EXPECT_TRUE(world.Install()) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("in/stray")) << world.host.AllTold();
    EXPECT_FALSE(world.host.WasTold("old.txt"));
}

TEST(ExeInstall, KilledAnywhereTheFolderComesBackAtTheNextStart)
{
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        ExeWorld world;
        world.host.AnswerAll(true);
        world.Begin();
        const KillRun run = WithKillAt(step, [&] { return world.Install(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectBack();
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 60);
    }
    FAIL() << "never finished";
}

TEST(ExeInstall, FailedAnywhereItIsToldAndTheFolderComesBack)
{
    for (int step = 1;; step = NextPoint(step)) {
        ExeWorld world;
        world.host.AnswerAll(true);
        world.Begin();
        const FaultRun run = WithFaultAt(step, [&] { return world.Install(); });
        SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
        EXPECT_TRUE(run.answer || !world.host.told.empty()) << "a failure without a word";
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectBack();
        ASSERT_LT(step, 2000) << "never finished";
        if (!run.reached || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 60);
    }
}

} // namespace

} // namespace kestrova::testing
