#include "tools/bounded_run.h"

#include "platform/file_content.h"
#include "platform/user_folders.h"
#include "tools/wine_server.h"
#include "world/tool_box.h"
#include "world/windows_program.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

class BoundedRun : public ::testing::Test
{
protected:
    Status Run(const std::string& script, RunBounds bounds = {std::chrono::seconds{20}})
    {
        const Path program = box.AddTool("strange.exe", script);
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        return RunBounded(ToolsOf(box.session), box.machine,
                          {program, {"one two"}, box.root / "trle", bounds}, *progress, report);
    }
    /// The process whose number the script wrote there; one that nobody has waited for yet has no
    /// words any more.
    [[nodiscard]] bool Runs(const std::string& file) const
    {
        std::string words;
        (void)platform::ReadAll("/proc/" + std::to_string(std::stoi(box.Read(file))) + "/cmdline",
                                words);
        return !words.empty();
    }
    /// The process whose number the script wrote there has become that program.
    [[nodiscard]] bool Is(const std::string& file, const std::string& program) const
    {
        std::string name;
        (void)platform::ReadAll("/proc/" + std::to_string(std::stoi(box.Read(file))) + "/comm",
                                name);
        return name == program + "\n";
    }
    ToolBox box;
    ToolReport report;
};

TEST_F(BoundedRun, WorksInItsFolderAndItsExitCodeIsItsOwnAffair)
{
    EXPECT_TRUE(Run("pwd >where; echo \"$1\" >>where; echo last words; exit 3"));
    EXPECT_EQ(box.Read("trle/where"), (box / "trle").native() + "\none two\n");
    EXPECT_EQ(report.end.code, 3);
    EXPECT_NE(report.lastLines.find("last words"), std::string::npos);
    EXPECT_TRUE(Run("head -c 3000000 /dev/zero")) << "whatever it prints";
}

TEST_F(BoundedRun, WhatItLeavesBehindIsWaitedFor)
{
    EXPECT_TRUE(Run("setsid sh -c 'sleep 0.4; echo late >late' >/dev/null 2>&1 &"));
    EXPECT_EQ(box.Read("trle/late"), "late\n");
}

TEST_F(BoundedRun, WhatAKilledRunLeftIsEndedLater)
{
    const pid_t killed = ::fork();
    if (killed == 0) {
        (void)Run("setsid sleep 60 >/dev/null 2>&1 & echo $! >left.new; mv left.new left; wait");
        ::_exit(0);
    }
    for (int i = 0; i < 500 && !(box.Has("trle/left") && Is("trle/left", "sleep")); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds{20});
    (void)::kill(killed, SIGKILL);
    (void)::waitpid(killed, nullptr, 0);
    ASSERT_TRUE(Runs("trle/left"));
    Tools others = ToolsOf(box.session);
    others.programFolder = box.root / "trle";
    EXPECT_TRUE(EndForgottenRuns(others).empty()) << "another Kestrova's run is its own affair";
    EXPECT_TRUE(Runs("trle/left"));
    const auto ended = EndForgottenRuns(ToolsOf(box.session));
    EXPECT_NE(std::find(ended.begin(), ended.end(), "sleep"), ended.end());
    EXPECT_FALSE(Runs("trle/left"));
}

TEST_F(BoundedRun, AnEncloserOnTrialIsNotEndedHalfway)
{
    // Halfway, the half that it had started would wait for it for ever.
    box.machine.tools["bwrap"] = box.AddTool(
        "slow-bwrap", "cd '" + (box / "trle").native() + "'; echo >begun; sleep 0.3; echo >ended");
    const auto comes = [&](const char* file) {
        for (int i = 0; i < 1000 && !box.Has(file); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds{20});
        return box.Has(file);
    };
    const pid_t killed = ::fork();
    if (killed == 0) {
        (void)EncloserOf(ToolsOf(box.session));
        ::_exit(0);
    }
    EXPECT_TRUE(comes("trle/begun"));
    (void)::kill(killed, SIGKILL);
    (void)::waitpid(killed, nullptr, 0);
    EXPECT_TRUE(comes("trle/ended"));
}

TEST_F(BoundedRun, WhatWineStartsForItselfIsWaitedForByNobody)
{
    // As Debian calls them; the system cuts names behind the fifteenth letter.
    for (const char* name : {"wineserver64", "winemenubuilder", "services.exe"}) {
        const Path helper = box.AddTool(name, "");
        std::filesystem::copy_file("/bin/sleep", helper,
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_TRUE(Run("'" + helper.native() + "' 30 >/dev/null 2>&1 & echo $! >helper",
                        {std::chrono::seconds{5}}))
            << name;
        EXPECT_TRUE(Runs("trle/helper")) << name << " was ended";
        (void)::kill(std::stoi(box.Read("trle/helper")), SIGKILL);
    }
}

TEST_F(BoundedRun, ABoundEndsAllThatItStarted)
{
    const std::string tree = "setsid sh -c 'echo $$ >child; exec sleep 60' & echo $$ >own; ";
    const RunBounds short_{std::chrono::milliseconds{400}};
    ASSERT_FALSE(Run(tree + "exec sleep 60", short_));
    EXPECT_EQ(report.trouble, ToolTrouble::TimeOut);
    EXPECT_FALSE(Runs("trle/own"));
    EXPECT_FALSE(Runs("trle/child"));

    ASSERT_FALSE(Run(tree + "sleep 0.1", short_)) << "it returns early";
    EXPECT_EQ(report.trouble, ToolTrouble::TimeOut);
    EXPECT_FALSE(Runs("trle/child"));

    box.host.StopAtStep(10);
    ASSERT_FALSE(Run(tree + "exec sleep 60"));
    EXPECT_EQ(report.status.Error().code, ErrorCode::Stopped);
    EXPECT_FALSE(Runs("trle/child"));
}

/// A disk that fills from look to look.
class FillingMachine : public FakeMachine
{
public:
    Result<std::uint64_t> FreeSpace(const Path&) override
    {
        free -= UINT64_C(1) << 30;
        return free;
    }
};

TEST_F(BoundedRun, IsStoppedBeforeTheDiskIsFull)
{
    FillingMachine filling;
    const Path program = box.AddTool("greedy.exe", "exec sleep 60");
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    EXPECT_FALSE(RunBounded(ToolsOf(box.session), filling, {program}, *progress, report));
    EXPECT_EQ(report.trouble, ToolTrouble::Refused);
    EXPECT_NE(report.status.Error().sentence.find("greedy.exe"), std::string::npos);
}

/// Programs in an enclosure, where this machine allows one.
class EnclosedRun : public BoundedRun
{
protected:
    EnclosedRun()
    {
        box.machine.tools["bwrap"] = platform::FindOnPath("bwrap");
        box.Write("trle/own", "own");
        box.Write("private/letter", "a letter");
    }
    void SetUp() override
    {
        if (EncloserOf(ToolsOf(box.session)).empty())
            GTEST_SKIP() << "programs cannot be enclosed here";
    }
    Status RunInside(const std::string& script, RunBounds bounds = {std::chrono::seconds{20}})
    {
        const Path program = box.AddTool("strange.exe", script);
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        BoundedWork work{program, {"one two"}, box.root / "trle", bounds};
        work.enclosure =
            Enclosure{{box.root / "trle"}, {box.root / "shown"}, {box.root / "trle/kept"}};
        return RunBounded(ToolsOf(box.session), box.machine, work, *progress, report);
    }
};

TEST_F(EnclosedRun, ReachesItsFoldersAlone)
{
    box.Write("shown/text", "a text");
    box.Write("trle/kept/own", "a builder's");
    const std::string home = platform::HomeFolder();
    const std::string reaches =
        "echo new >" + (box / "shown/new").native() + "; echo new >" +
        (box / "private/new").native() + "; cat " + (box / "private/letter").native() + "; ls -A " +
        home + ' ' + box.session.programFolder.native() + "; grep -c : /proc/net/dev >nets; cat " +
        (box / "shown/text").native() + " >got; echo \"$1\" >>got; ";
    ASSERT_TRUE(RunInside(reaches + "rm -rf kept; ps -e | wc -l >count; exit 3"));
    EXPECT_EQ(report.end.code, 3);
    EXPECT_EQ(box.Read("trle/got"), "a textone two\n");
    EXPECT_EQ(box.Read("trle/nets"), "1\n") << "no network but its own";
    EXPECT_EQ(box.Read("trle/own"), "own");
    EXPECT_EQ(box.Read("trle/kept/own"), "a builder's");
    EXPECT_FALSE(box.Has("shown/new"));
    EXPECT_FALSE(box.Has("private/new"));
    EXPECT_EQ(report.lastLines.find("a letter"), std::string::npos);
    EXPECT_LT(std::stoi(box.Read("trle/count")), 8) << "the processes are its own";
    ASSERT_TRUE(RunInside("kill -9 $$"));
    EXPECT_EQ(report.end.signal, 9);
    ASSERT_TRUE(RunInside("head -c 3000000 /dev/zero"));
    box.Write("trle/text.exe", "MY own words\n");
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    BoundedWork notStarted{box / "trle/text.exe"};
    notStarted.enclosure = Enclosure{{box.root / "trle"}};
    EXPECT_FALSE(RunBounded(ToolsOf(box.session), box.machine, notStarted, *progress, report));
    EXPECT_EQ(report.trouble, ToolTrouble::NotStarted);
}

TEST_F(EnclosedRun, WhatIsReachedThroughALinkIsThereUnderThatName)
{
    // One of them is a link to a folder, the other lies on the way.
    std::filesystem::create_directories(box / "disk/trle/wads");
    std::filesystem::create_directory_symlink(box / "disk", box / "link");
    std::filesystem::create_directory_symlink(box / "disk/trle/wads", box / "wads");
    box.Write("disk/trle/kept/own", "a builder's");
    const Path trle = box / "link/trle";
    const Path program = box.AddTool("strange.exe", "pwd >where; echo >kept/own; echo >wads/new; "
                                                    "echo >" +
                                                        (box / "wads/other").native());
    std::filesystem::copy_file(program, trle / "strange.exe");
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    BoundedWork work{trle / "strange.exe", {}, trle};
    work.enclosure = Enclosure{{trle, box / "wads"}, {}, {trle / "kept"}};
    ASSERT_TRUE(RunBounded(ToolsOf(box.session), box.machine, work, *progress, report));
    EXPECT_EQ(report.end.code, 0) << report.lastLines;
    EXPECT_TRUE(box.Has("disk/trle/where"));
    EXPECT_TRUE(box.Has("disk/trle/wads/new"));
    EXPECT_TRUE(box.Has("disk/trle/wads/other"));
    EXPECT_EQ(box.Read("disk/trle/kept/own"), "a builder's");
}

TEST_F(EnclosedRun, WhatItStartsIsWaitedForAndEndsWithIt)
{
    EXPECT_TRUE(RunInside("setsid sh -c 'sleep 0.5; echo late >late' >/dev/null 2>&1 &"));
    EXPECT_EQ(box.Read("trle/late"), "late\n");
    const std::string beats = "setsid sh -c 'while :; do echo >>beats; sleep 0.02; done' & ";
    RunBounds bounds{std::chrono::seconds{20}};
    bounds.left = std::chrono::milliseconds{300};
    EXPECT_TRUE(RunInside(beats + "sleep 0.1", bounds)) << "it outstays its welcome";
    const std::string beaten = box.Read("trle/beats");
    // It may not even have begun on a machine at work.
    for (int limit = 400; limit < 60'000 && box.Read("trle/beats") == beaten; limit *= 2) {
        EXPECT_FALSE(RunInside(beats + "exec sleep 60", {std::chrono::milliseconds{limit}}));
        EXPECT_EQ(report.trouble, ToolTrouble::TimeOut);
    }
    box.host.StopAtStep(10);
    EXPECT_FALSE(RunInside(beats + "exec sleep 60"));
    EXPECT_EQ(report.status.Error().code, ErrorCode::Stopped);
    const std::string before = box.Read("trle/beats");
    EXPECT_GT(before.size(), beaten.size());
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    EXPECT_EQ(box.Read("trle/beats"), before) << "the whole tree ends";
}

TEST_F(EnclosedRun, AnEncloserThatDoesNotWorkIsNone)
{
    for (const char* broken : {"exit 1", "kill -9 $$", "echo >&2; exit 3"}) {
        box.machine.tools["bwrap"] = box.AddTool("broken-bwrap", broken);
        EXPECT_TRUE(EncloserOf(ToolsOf(box.session)).empty()) << broken;
    }
    box.machine.tools.erase("bwrap");
    EXPECT_TRUE(EncloserOf(ToolsOf(box.session)).empty());
    EXPECT_TRUE(RunInside("exit 0")) << "the program runs as it is";
}

/// Wine's server of a prefix, as far as others see it: its lock.
class OtherServer
{
public:
    explicit OtherServer(const Path& prefix)
    {
        const platform::FileFacts facts = platform::FactsOf(prefix);
        std::ostringstream name;
        name << "/tmp/.wine-" << ::getuid() << "/server-" << std::hex << facts.device << '-'
             << facts.inode;
        folder_ = name.str();
        std::filesystem::create_directories(folder_);
        lock_ = ::open((folder_ / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        struct flock wish {
        };
        wish.l_type = F_WRLCK;
        wish.l_len = 1;
        EXPECT_EQ(::fcntl(lock_, F_OFD_SETLK, &wish), 0);
    }
    ~OtherServer()
    {
        (void)::close(lock_);
        std::filesystem::remove_all(folder_);
    }
    OtherServer(const OtherServer&) = delete;
    OtherServer& operator=(const OtherServer&) = delete;

private:
    Path folder_;
    int lock_ = -1;
};

TEST_F(EnclosedRun, TheEndOfAnotherServerOnThePrefixIsAwaited)
{
    const Path prefix = box / "prefix";
    box.Write("prefix/drive_c/strange.exe", WindowsProgram(machine64));
    box.machine.tools["wine"] = box.AddTool("wine", "echo ran >ran");
    const auto run = [&] {
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        BoundedWork work{prefix / "drive_c/strange.exe", {}, box.root / "trle"};
        work.bounds.left = std::chrono::milliseconds{100};
        work.enclosure = Enclosure{{box.root / "trle"}};
        return RunBounded(ToolsOf(box.session), box.machine, work, *progress, report);
    };
    EXPECT_TRUE(run());
    EXPECT_TRUE(box.Has("trle/ran"));
    std::filesystem::remove(box / "trle/ran");
    {
        const OtherServer server{prefix};
        EXPECT_TRUE(WineServerRuns(prefix));
        const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
        const auto waited =
            AwaitWineServer(prefix, "strange.exe", *progress, std::chrono::milliseconds{50});
        ASSERT_FALSE(waited);
        EXPECT_NE(waited.Error().sentence.find(prefix.native()), std::string::npos);
        box.host.StopAtStep(20);
        EXPECT_EQ(run().Error().code, ErrorCode::Stopped);
    }
    EXPECT_FALSE(WineServerRuns(prefix));
    EXPECT_FALSE(box.Has("trle/ran"));
}

} // namespace

} // namespace kestrova::testing
