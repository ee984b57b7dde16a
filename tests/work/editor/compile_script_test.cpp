#include "editor/compile_script.h"

#include "editor/compile_world.h"
#include "originals/vault.h"
#include "sandbox/faults.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// Results of an earlier compilation stand there.
class ScriptWorld : public CompileWorld
{
public:
    explicit ScriptWorld(const std::string& compiler)
    {
        Write("trle/script/SCRIPT.DAT", "old script");
        Write("trle/script/english.dat", "old english");
        Write("home/backup_trle/script/english.dat", "old english");
        if (!compiler.empty())
            AddCompiler("script/script.exe", compiler);
    }
    Status Compile(const std::string& language = "english.dat")
    {
        const auto progress = host.BeginProgress(ProgressWindow::Progress, {});
        return CompileScript(machine, session.Folders(), ToolsOf(session), language, *progress,
                             rest, {std::chrono::seconds{10}});
    }
    RestReturn rest;
    void ExpectOld() const
    {
        EXPECT_EQ(Snapshot("trle/script"), (FileContents{{"SCRIPT.DAT", "old script"},
                                                         {"english.dat", "old english"},
                                                         {"script.txt", "script source"}}));
        EXPECT_FALSE(LoanWaitsHere());
    }
};

const std::string writesBoth =
    "[ \"$1\" = script.txt ] && [ ! -e english.dat ] && [ ! -e SCRIPT.DAT ] && cat script.txt "
    ">script.dat && echo new >ENGLISH.DAT && echo new >french.dat";

TEST(CompileScript, NewResultsTakeThePlaceOfTheOldOnes)
{
    ScriptWorld world{writesBoth};
    const auto done = world.Compile();
    ASSERT_TRUE(done) << done.Error().sentence << done.Error().details;
    EXPECT_EQ(world.Read("trle/script/script.dat"), "script source");
    EXPECT_EQ(world.Read("trle/script/ENGLISH.DAT"), "new\n");
    EXPECT_FALSE(FileExists(world.root / "trle/.kv~lent/0"));
    const auto kept = KeptFiles(world.session.Folders());
    ASSERT_TRUE(kept);
    ASSERT_EQ(kept->size(), 1u) << "only what the backup lacks";
    EXPECT_EQ(*ReadWholeFile(kept->front().content), "old script");
}

TEST(CompileScript, UnlessBothCameOutTheOldOnesAreBack)
{
    for (const char* compiler :
         {"", "exit 0", "echo half >script.dat", "echo x >script.dat; : >english.dat",
          "echo a wrong line; echo x >script.dat; echo x >french.dat; exit 1", "kill -9 $$"}) {
        ScriptWorld world{compiler};
        const auto done = world.Compile();
        SCOPED_TRACE(compiler);
        ASSERT_FALSE(done);
        EXPECT_FALSE(done.Error().sentence.empty());
        world.ExpectOld();
    }
    ScriptWorld missing{""};
    EXPECT_EQ(missing.Compile().Error().sentence,
              "Program 'script.exe' not found in: " +
                  (missing / "trle/script/script.exe").native());
    ScriptWorld stopped{"echo x >script.dat; sleep 60"};
    stopped.host.StopAtStep(5);
    EXPECT_EQ(stopped.Compile().Error().code, ErrorCode::Stopped);
    stopped.ExpectOld();
}

TEST(CompileScript, KilledAnywhereTheOldOrTheNewOnesStand)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        ScriptWorld world{writesBoth};
        world.host.AnswerAll(true);
        const KillRun run = WithKillAt(step, [&] { return bool{world.Compile()}; });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        if (world.Read("trle/script/english.dat") == "old english")
            world.ExpectOld();
        else
            EXPECT_EQ(world.Snapshot("trle/script").size(), 4u);
        EXPECT_FALSE(world.LoanWaitsHere());
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 20);
    }
    FAIL() << "never finished";
}

} // namespace

} // namespace kestrova::testing
