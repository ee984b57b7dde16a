#include "tools/run_to_end.h"

#include "core/text.h"
#include "sandbox/patience.h"
#include "words/tools.h"
#include "world/tool_box.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
constexpr milliseconds second{1000};

/// The last label, the furthest bar, and how long the window was left without a step.
class WatchedProgress : public ProgressScope
{
public:
    std::string label = "before";
    std::vector<std::uint64_t> bars;
    Clock::duration longestPause{};
    int steps = 0;
    Clock::time_point stopAt = Clock::time_point::max();

    void SetLabel(const std::string& text) override { label = text; }
    void SetBar(std::uint64_t done, std::uint64_t) override { bars.push_back(done); }
    void AllowStop() override {}
    bool Step() override
    {
        ++steps;
        const auto now = Clock::now();
        longestPause = std::max(longestPause, now - last_);
        last_ = now;
        return now < stopAt;
    }

private:
    Clock::time_point last_ = Clock::now();
};

/// Tools as a floor describes them. What they do is in the scripts of the tests.
const Tool unzip{.name = "unzip",
                 .package = "unzip",
                 .environment = {{"LC_ALL", "C.UTF-8"}},
                 .worstSuccess = 1,
                 .complaints = {"skipping:"}};
const Tool zip{.name = "zip",
               .package = "zip",
               .environment = {{"LC_ALL", "C.UTF-8"}, {"ZIPOPT", ""}},
               .outlivesParser = true};
const Tool bsdtar{.name = "bsdtar", .package = "libarchive-tools"};

/// Counts the lines that hold a word; asks to stop at the last one.
class WordCounter : public LineParser
{
public:
    WordCounter(std::string_view word, std::uint64_t total, bool lastStops)
        : word_(word), total_(total), lastStops_(lastStops)
    {
    }
    LineAnswer Feed(std::string_view line) override
    {
        if (line.find(word_) == std::string_view::npos)
            return {};
        ++count_;
        return {count_, total_, !lastStops_ || count_ != total_};
    }

private:
    std::string_view word_;
    std::uint64_t total_;
    bool lastStops_;
    std::uint64_t count_ = 0;
};

std::function<std::unique_ptr<LineParser>()> Counting(std::string_view word, std::uint64_t total,
                                                      bool lastStops = false)
{
    return [=] { return std::make_unique<WordCounter>(word, total, lastStops); };
}

class RunToEnd : public ::testing::Test
{
protected:
    ToolBox box;
    WatchedProgress progress;
    ToolWatch state{&progress};

    RunToEnd()
    {
        state.tell = [this](const std::string& text) { box.host.Tell(Tone::Plain, text); };
    }

    bool Run(const std::string& script)
    {
        box.AddTool("unzip", script);
        return state.Done(RunTool(ToolsOf(box.session),
                                  {.tool = unzip, .parser = Counting("inflating", 4)}, state,
                                  state.report));
    }
};

TEST_F(RunToEnd, ShowsEachLineAndMovesTheBarWhileTheToolRuns)
{
    EXPECT_TRUE(Run("echo Archive: a; echo '  inflating: one '; sleep 0.5; echo inflating: two\n"
                    "echo inflating: two; echo 'what it says at the end' >&2; printf 'no end'"));
    EXPECT_EQ(state.report.output, "Archive: a\r\n  inflating: one \r\ninflating: two\r\n"
                                   "what it says at the end\r\n");
    EXPECT_EQ(progress.bars, (std::vector<std::uint64_t>{0, 25, 50}));
    EXPECT_EQ(progress.label, "what it says at the end");
    EXPECT_EQ(state.error, "");
    EXPECT_GE(progress.steps, 4) << "ten, with a pause of 50 ms, on a machine that is not busy";

    // The same tool in its own folder, with no input, told quietly.
    state.quiet = true;
    progress.label = "kept";
    EXPECT_TRUE(Run("pwd; cat; printf '\\033[2J\\tx\\n'"));
    EXPECT_EQ(state.report.output, box.session.programFolder.native() + "\r\n\x1B[2J    x\r\n");
    EXPECT_EQ(progress.label, "kept");
    EXPECT_EQ(state.details.find('\x1B'), std::string::npos);
}

TEST_F(RunToEnd, EndsInWordsWhateverTheToolDoes)
{
    const std::string megabyte = "head -c 1000000 /dev/zero | tr '\\0' x";
    const struct {
        std::string script;
        std::string error;
        std::string details;
    } cases[] = {
        {"echo first; echo 'the reason' >&2; exit 9", "code 9", "first\r\nthe reason"},
        {"echo before; kill -9 $$", "signal 9", "before"},
        {"exit 3", "code 3", ""},
        {"echo begun; " + megabyte, "more than 4352 characters", std::string(200, 'x')},
        {"echo '   skipping: a.txt  unable to get password'; exit 1", "left something out",
         "skipping: a.txt  unable to get password"},
    };
    for (const auto& entry : cases) {
        const auto start = Clock::now();
        EXPECT_FALSE(Run(entry.script)) << entry.script;
        EXPECT_NE(state.error.find(entry.error), std::string::npos) << state.error;
        EXPECT_TRUE(state.details.ends_with(entry.details)) << state.details;
        EXPECT_LT(state.details.size(), 3000U);
        EXPECT_LT(Clock::now() - start, soon);
    }
    EXPECT_TRUE(Run("exit 1")) << "a warning";
    EXPECT_TRUE(Run("exit 0")) << "nothing at all";
    EXPECT_EQ(state.report.output + state.details, "");

    EXPECT_TRUE(Run("printf '\\000\\377\\001\\033]0;x\\n\\000\\n'"));
    ASSERT_EQ(box.host.told.size(), 1U) << "once, however many there are";
    EXPECT_EQ(box.host.told[0].text, "Valore 0");
    EXPECT_TRUE(IsUtf8(state.details));

    box.Write("tools/unzip", "no program");
    EXPECT_FALSE(
        state.Done(RunTool(ToolsOf(box.session), {unzip, {"-l", "a b"}}, state, state.report)))
        << state.report.output;
    EXPECT_EQ(state.error, "Error creating subprocess: \"" +
                               (box.session.programFolder / "unzip").native() +
                               "\"\r\nWith command line: \"-l a b\"");
}

TEST_F(RunToEnd, EndsAHungToolWithItsChildrenSoon)
{
    // Deaf to the request, so that the force behind it is seen too.
    const std::string hangs = "trap '' TERM; echo begun; sleep 30 & sleep 30; sleep 30";
    const auto stopped = [&](const auto& run) {
        const auto start = Clock::now();
        progress.stopAt = start + milliseconds{100};
        EXPECT_FALSE(run());
        EXPECT_LT(Clock::now() - start, soon);
        progress.stopAt = Clock::time_point::max();
        return state.error;
    };
    EXPECT_EQ(stopped([&] { return Run(hangs); }), "Break user");
    EXPECT_EQ(state.details, "begun");
    EXPECT_EQ(stopped([&] { return Run("while :; do echo $((i=i+1)); done"); }), "Break user");
    const Path script = box.AddTool("program", hangs);
    EXPECT_EQ(stopped([&] {
                  return state.Done(
                      RunAndWait(ToolsOf(box.session), script, {}, state, state.report));
              }),
              "Break user");
    EXPECT_EQ(stopped([&] {
                  return state.Done(
                      ShellAndWait(ToolsOf(box.session), "sleep 30", state, state.report));
              }),
              "Break user");
    EXPECT_LT(progress.longestPause, soon);

    box.AddTool("unzip", hangs);
    const auto start = Clock::now();
    EXPECT_FALSE(state.Done(
        RunToolBatch(ToolsOf(box.session), unzip, {}, milliseconds{200}, state, state.report)));
    EXPECT_EQ(state.error, "Timeout");
    EXPECT_EQ(state.details, "begun");
    const auto watch = [] { return std::string{"the disk is nearly full"}; };
    EXPECT_FALSE(state.Done(
        RunTool(ToolsOf(box.session), {.tool = unzip, .watch = watch}, state, state.report)));
    EXPECT_EQ(state.error, "the disk is nearly full");
    EXPECT_LT(Clock::now() - start, soon);
}

TEST_F(RunToEnd, ObeysTheParsersStopWhereTheRowDoes)
{
    // The parser's stop at the last name would cost this zip its unfinished file.
    box.AddTool("zip", "echo adding: a; echo adding: b; sleep 0.1; echo done > finished");
    EXPECT_TRUE(state.Done(RunTool(ToolsOf(box.session),
                                   {.tool = zip, .parser = Counting("adding:", 2, true)}, state,
                                   state.report)));
    EXPECT_EQ(box.Read("tools/finished"), "done\n");
    box.AddTool("unzip", "echo inflating: a; echo inflating: b; sleep 0.2; echo > late");
    EXPECT_FALSE(state.Done(RunTool(ToolsOf(box.session),
                                    {.tool = unzip, .parser = Counting("inflating:", 1, true)},
                                    state, state.report)));
    EXPECT_EQ(state.error, "Break user");
    EXPECT_FALSE(box.Has("tools/late"));
}

TEST_F(RunToEnd, FindsToolsInTheProgramsFolderFirst)
{
    const Path elsewhere = box.AddTool("elsewhere", "echo elsewhere");
    ToolWork work{zip};
    EXPECT_FALSE(state.Done(RunTool(ToolsOf(box.session), work, state, state.report)));
    EXPECT_EQ(state.error,
              "Utility \"" + (box.session.programFolder / "zip").native() + "\" doesn't exist");
    EXPECT_NE(state.details.find("package 'zip'"), std::string::npos) << state.details;
    EXPECT_FALSE(
        state.Done(RunToolBatch(ToolsOf(box.session), bsdtar, {}, second, state, state.report)));
    EXPECT_EQ(state.error,
              "Missing utility \"" + (box.session.programFolder / "bsdtar").native() + "\"");

    box.machine.tools["zip"] = elsewhere;
    EXPECT_TRUE(state.Done(RunTool(ToolsOf(box.session), work, state, state.report)));
    EXPECT_EQ(state.report.output, "elsewhere\r\n");
    box.AddTool("zip", "echo own $LC_ALL,$ZIPOPT.");
    EXPECT_TRUE(state.Done(RunTool(ToolsOf(box.session), work, state, state.report)));
    EXPECT_EQ(state.report.output, "own C.UTF-8,.\r\n");
    // A Windows program goes through Wine; without it the words tell what is missing.
    box.Write("tools/zip", "MZ" + std::string(100, '\0'));
    EXPECT_FALSE(state.Done(RunTool(ToolsOf(box.session), work, state, state.report)));
    EXPECT_NE(state.details.find("Wine"), std::string::npos) << state.details;
    box.session.settings.wineCommand = box.AddTool("wine", "printf '%s|' \"$@\"").native();
    work.arguments = {"-9", "a b"};
    EXPECT_TRUE(state.Done(RunTool(ToolsOf(box.session), work, state, state.report)))
        << state.details;
    EXPECT_EQ(state.details, (box.session.programFolder / "zip").native() + "|-9|a b|");
}

TEST_F(RunToEnd, BatchTakesAllOfStandardOutput)
{
    const auto batch = [&](const std::string& script) {
        box.AddTool("unzip", script);
        return state.Done(
            RunToolBatch(ToolsOf(box.session), unzip, {"-l"}, 10 * second, state, state.report));
    };
    EXPECT_TRUE(batch("printf 'a\\na\\nlast'; echo lost >&2"));
    EXPECT_EQ(state.report.output, "a\r\na\r\nlast");
    EXPECT_TRUE(batch("printf 'a\\r\\nb\\n'"));
    EXPECT_EQ(state.report.output, "a\r\nb\n");
    EXPECT_TRUE(batch("head -c 1000000 /dev/zero")) << "no lines, no limit of a line";
    EXPECT_EQ(state.report.output.size(), 1'000'000U);
    EXPECT_FALSE(batch("echo why >&2"));
    EXPECT_EQ(state.error, "No text on standard output");
    EXPECT_EQ(state.details, "why");
    EXPECT_FALSE(batch("echo half; exit 9"));
    EXPECT_NE(state.error.find("code 9"), std::string::npos);
}

TEST_F(RunToEnd, OnlyTheShellsOwnWayGoesThroughAShell)
{
    const Path echo = box.AddTool("echo args", "printf '%s|' \"$@\"; pwd; exit 5");
    EXPECT_TRUE(
        state.Done(RunAndWait(ToolsOf(box.session), echo,
                              {"a b", "$(id)", "*", "-x", "q\"'", "l\nf"}, state, state.report)));
    EXPECT_EQ(state.report.end.code, 5);
    EXPECT_EQ(state.details, "a b|$(id)|*|-x|q\"'|l\r\nf|" + box.session.programFolder.native());
    EXPECT_FALSE(
        state.Done(RunAndWait(ToolsOf(box.session), box / "missing", {}, state, state.report)));
    EXPECT_EQ(state.error, "Error executing utility: " + (box / "missing").native());
    EXPECT_TRUE(state.Done(ShellAndWait(ToolsOf(box.session), "'./echo args' $((1 + 1)) > list.txt",
                                        state, state.report)));
    EXPECT_TRUE(box.Read("tools/list.txt").starts_with("2|"));
}

/// An image is made while another one burns: each has its own window, and each its own end.
TEST_F(RunToEnd, SeveralGoOnInOneLoop)
{
    // The first can go on only when the second has got rid of more than a pipe holds.
    box.AddTool("zip", "while [ ! -e burned ]; do sleep 0.02; done; echo adding: image");
    box.AddTool("unzip", "i=0; while [ $i -lt 3000 ]; do i=$((i+1)); echo \"inflating: a file with "
                         "a name of some length $i\"; done; echo > burned; sleep 30");
    const Tools tools = ToolsOf(box.session);
    const auto start = [&](const ToolWork& work) {
        auto order = OrderOf(tools, work);
        EXPECT_TRUE(order) << order.Error().reason;
        order->silence = 10 * second; // so that it ends whatever happens
        return std::move(*order);
    };
    ToolRun image{start({.tool = zip, .parser = Counting("adding:", 1)})};
    ToolRun burning{start({.tool = unzip, .parser = Counting("inflating:", 3000)})};
    ASSERT_TRUE(image.Start() && burning.Start());
    WatchedProgress other;
    other.label = "of the burning";
    const auto stop = [&] { return std::string{image.IsRunning() ? "" : "the image is there"}; };
    const WatchedRun runs[] = {{image, &progress}, {burning, &other, true, {}, stop}};
    const auto begin = Clock::now();
    RunToEnds(runs);
    EXPECT_LT(Clock::now() - begin, soon);
    EXPECT_EQ(image.Report().trouble, ToolTrouble::None) << image.Report().status.Error().sentence;
    EXPECT_EQ(image.Report().output, "adding: image\r\n");
    EXPECT_EQ(progress.label, "adding: image");
    EXPECT_EQ(progress.bars, (std::vector<std::uint64_t>{100}));
    EXPECT_EQ(burning.Report().trouble, ToolTrouble::Refused);
    EXPECT_EQ(burning.Report().status.Error().sentence, "the image is there");
    EXPECT_TRUE(burning.Report().lastLines.ends_with("length 3000")) << burning.Report().lastLines;
    EXPECT_EQ(other.bars.size(), 3000U);
    EXPECT_EQ(other.bars.back(), 100U);
    EXPECT_EQ(other.label, "of the burning") << "quiet";
    EXPECT_LT(std::max(progress.longestPause, other.longestPause), soon);
    EXPECT_FALSE(image.Poll() || burning.Poll()) << "gone";
}

TEST(SetProgressPercent, CutsTheFractionAndTheExcess)
{
    WatchedProgress progress;
    SetProgressPercent(nullptr, 1, 1);
    for (const auto& [total, value] : std::vector<std::pair<std::uint64_t, std::uint64_t>>{
             {0, 0}, {0, 5}, {3, 2}, {10, 11}, {1'000'000'000'000, 999'999'999'999}})
        SetProgressPercent(&progress, total, value);
    EXPECT_EQ(progress.bars, (std::vector<std::uint64_t>{0, 100, 66, 100, 99}));
}

} // namespace

} // namespace kestrova::testing
