#include "platform/child_process.h"

#include "core/text.h"
#include "platform/file_content.h"
#include "sandbox/patience.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

using platform::ChildEnd;
using platform::ChildProcess;
using platform::ChildStreams;
using platform::Launch;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds slice{30};

struct Seen {
    std::error_code failure;
    std::string output;
    std::string errors;
    ChildEnd end;
};

Seen RunToEnd(const Launch& launch, const ChildStreams& streams = {})
{
    Seen run;
    ChildProcess child;
    run.failure = child.Start(launch, streams);
    if (!run.failure) {
        while (child.Read(slice, run.output, run.errors))
            ;
        run.end = child.Finish();
    }
    return run;
}

Seen Shell(const std::string& script, const ChildStreams& streams = {})
{
    return RunToEnd({{"/bin/sh", "-c", script}, {}, {}}, streams);
}

TEST(ChildProcess, GetsItsArgumentsFolderAndVariablesAndNothingElse)
{
    const Sandbox box;
    const int own = ::dup(0); // a file of this program that lacks the mark against inheriting
    const std::vector<std::string> odd{"-x",        "a b",   "quo\"te", "it's",
                                       "line\nend", "$(id)", "é",       ""};
    std::vector<std::string> argv{"sh", "-c", R"(printf '%s|' "$@")", "sh"};
    argv.insert(argv.end(), odd.begin(), odd.end());
    EXPECT_EQ(RunToEnd({argv, {}, {}}).output, Join(odd, "|") + "|");

    const std::vector<std::pair<std::string, std::string>> variables{{"KV_A", "1 2"},
                                                                     {"LC_ALL", "C.UTF-8"}};
    EXPECT_EQ(RunToEnd({{"sh", "-c", "echo $KV_A,$LC_ALL; pwd"}, box.root, variables}).output,
              "1 2,C.UTF-8\n" + box.root.native() + "\n");
    // No terminal, no input, no other files, signals as a fresh program has them.
    EXPECT_EQ(Shell("cat; (: </dev/tty) 2>/dev/null || echo none").output, "none\n");
    EXPECT_EQ(Shell("ls /proc/self/fd | wc -l").output, "4\n") << "three streams and ls's own";
    EXPECT_EQ(Shell("kill -PIPE $$; echo alive").end.signal, SIGPIPE);
    ::close(own);
}

TEST(ChildProcess, TellsHowItEndedAndWhatItWrote)
{
    EXPECT_EQ(Shell("exit 7").end.code, 7);
    EXPECT_EQ(Shell("kill -9 $$").end.signal, 9);
    EXPECT_EQ(Shell("printf o; printf e >&2; printf o").output, "oeo") << "in the order of writing";
    const Seen parted = Shell("printf o; printf e >&2; printf o", {{}, false});
    EXPECT_EQ(parted.output + "," + parted.errors, "oo,e");
    const std::string megabytes(3'000'000, 'x');
    EXPECT_EQ(Shell("cat", {megabytes, true}).output.size(), megabytes.size());
    EXPECT_EQ(Shell("exit 3", {megabytes, true}).end.code, 3) << "input that nobody reads";
    EXPECT_EQ(Shell("exec >&- 2>&-; sleep 0.1; exit 5").end.code, 5) << "output closed early";
}

TEST(ChildProcess, ThatCannotBeStartedSaysWhy)
{
    const Sandbox box;
    box.Write("text", "not a program");
    EXPECT_EQ(RunToEnd({{(box / "missing").native()}, {}, {}}).failure,
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(RunToEnd({{(box / "text").native()}, {}, {}}).failure, std::errc::permission_denied);
    EXPECT_EQ(RunToEnd({{"/bin/true"}, box / "missing", {}}).failure,
              std::errc::no_such_file_or_directory);
    EXPECT_TRUE(RunToEnd({}).failure);
}

/// A tool that starts a server and ends: the server holds the pipe, and lives on.
TEST(ChildProcess, IsNotWaitedForThroughWhatItLeftBehind)
{
    const auto start = Clock::now();
    const Seen run = Shell("sleep 20 & echo $!");
    EXPECT_LT(Clock::now() - start, soon);
    const pid_t left = std::stoi(run.output);
    EXPECT_EQ(::kill(left, 0), 0);
    ::kill(left, SIGKILL);
}

TEST(ChildProcess, EndsWithAllOfItsChildren)
{
    const auto start = Clock::now();
    pid_t grandchild = 0;
    {
        // Neither listens to the request; what is not listened to is followed by force.
        ChildProcess child;
        ASSERT_FALSE(child.Start(
            {{"/bin/sh", "-c", "trap '' TERM; sleep 20 & echo $!; wait; wait"}, {}, {}}, {}));
        std::string output;
        std::string errors;
        while (output.find('\n') == std::string::npos)
            ASSERT_TRUE(child.Read(slice, output, errors));
        grandchild = std::stoi(output);
        child.Terminate();
        EXPECT_TRUE(child.Read(slice, output, errors));
        child.Kill();
        EXPECT_EQ(child.Finish().signal, SIGKILL);
    }
    EXPECT_LT(Clock::now() - start, soon);
    // An orphan that nobody waits for may stand as a zombie for a moment.
    std::string state;
    for (int i = 0; i < 50; ++i) {
        if (platform::ReadAll(Path{"/proc"} / std::to_string(grandchild) / "stat", state) ||
            state.find(") Z") != std::string::npos)
            break;
        ::usleep(20'000);
    }
    EXPECT_TRUE(state.empty() || state.find(") Z") != std::string::npos) << state;
}

} // namespace

} // namespace kestrova::testing
