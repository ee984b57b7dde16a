#include "editor/tom_compile.h"

#include "editor/compile_tom_file.h"
#include "editor/compile_world.h"
#include "originals/vault.h"
#include "sandbox/faults.h"
#include "world/windows_program.h"

#include <gtest/gtest.h>
#include <set>

namespace kestrova::testing
{

namespace
{

/// A compiler that wants the wads of its tom file in the folder, and leaves litter there.
const std::string compiles =
    "name=$(basename \"$1\" .tom); wad=$(find graphics/wads -iname \"$name.wad\"); "
    "sample=$(find sound/samples -iname splash.wav); [ -n \"$sample\" ] || exit 1; "
    "[ -n \"$wad\" ] && cat \"$1\" \"$wad\" >\"DATA/$name.tr4\"";

/// Two levels as sources, and a builder's own wads under the same names.
class TomWorld : public CompileWorld
{
public:
    explicit TomWorld(const std::string& compiler = compiles)
    {
        Write("trle/graphics/wads/Mill.WAD", "the builder's own wad");
        Write("trle/DATA/Tower.tr4", "the builder's own level");
        Write("trle/sound/samples/Splash.wav", "the builder's own splash");
        before = Standing();
        for (const char* stem : {"mill", "tower"}) {
            Write("level/" + std::string{stem} + ".tom", std::string{stem} + " tom, ");
            Write("level/" + std::string{stem} + ".wad", std::string{stem} + " wad");
        }
        Write("level/mill.txt", "of the set");
        Write("level/readme.txt", "a readme");
        Write("level/load.tga", "a picture");
        Write("level/splash.wav", "a sample");
        if (!compiler.empty())
            AddCompiler("tom2pc.exe", compiler);
    }

    /// Compiles; true when it is done.
    bool Compile(bool automatic = true)
    {
        progress = host.BeginProgress(ProgressWindow::Progress, {});
        CompileParts parts = CompilePartsOf(session, *progress);
        parts.bounds.time = std::chrono::seconds{10};
        compile = std::make_unique<TomCompile>(std::move(parts));
        const auto files = ListFiles(root / "level", "*.*");
        EXPECT_TRUE(files);
        compile->Prepare(SourcesAmong(*files), root / "level", automatic);
        return compile->IsDone();
    }

    void ExpectBack() const
    {
        EXPECT_EQ(Standing(), before);
        EXPECT_FALSE(LoanWaitsHere());
    }

    FileContents before;
    std::unique_ptr<ProgressScope> progress;
    std::unique_ptr<TomCompile> compile;
};

TEST(TomSources, AreSortedByWhatTheyAreFor)
{
    const Sandbox box;
    for (const char* file : {"a.TOM", "a.swd", "A.tga", "b.was", "b.txt", "c.wad", "c.TXT",
                             "load.tga", "x.lar", "y.tr4", "step.wav", "notes.txt"})
        box.Write(file, file);
    for (const char* file : {"105.wav", "door.wav"}) // with four bits a sample
        box.Write(file, std::string(34, '\0') + std::string{"\4\0", 2} + "data");
    const auto names = [](const std::vector<Path>& files) {
        std::string text;
        for (const Path& file : files)
            text += file.filename().native() + " ";
        return text;
    };
    const TomSources sources = SourcesAmong(*ListFiles(box.root, "*.*"));
    EXPECT_EQ(names(sources.toms), "a.TOM ");
    EXPECT_EQ(names(sources.wads), "a.swd A.tga a.TOM b.was c.TXT c.wad x.lar ");
    EXPECT_EQ(names(sources.samples), "step.wav ");
    EXPECT_EQ(names(sources.misplaced), "door.wav ");
    EXPECT_EQ(names(SourcesOfTom(sources, box / "a.TOM").wads), "a.swd A.tga a.TOM ");
}

TEST(TomCompile, ResultsComeOutAndTheFolderIsAsItWas)
{
    TomWorld world;
    EXPECT_TRUE(world.Compile()) << world.host.AllTold();
    EXPECT_EQ(world.Read("level/mill.tr4"), "mill tom, mill wad");
    EXPECT_EQ(world.Read("level/tower.tr4"), "tower tom, tower wad");
    world.ExpectBack();
    EXPECT_TRUE(world.host.told.empty());
}

TEST(TomCompile, AFailureGivesTheFolderBack)
{
    for (const char* compiler :
         {"exit 0", "exit 1", "echo half >DATA/mill.tr4; kill -9 $$", ": >DATA/mill.tr4",
          "ln -s /etc/passwd DATA/mill.tr4", "head -c 2000000 /dev/zero; exit 3", ""}) {
        TomWorld world{compiler};
        SCOPED_TRACE(compiler);
        EXPECT_FALSE(world.Compile());
        EXPECT_TRUE(world.host.WasTold("Error in auto tom files compilation"));
        EXPECT_TRUE(world.compile->NeedsPerson());
        EXPECT_EQ(world.Read("trle/graphics/wads/Mill.WAD").substr(0, 4), "mill");
        EXPECT_FALSE(world.compile->TakeResults());
        EXPECT_TRUE(world.host.WasTold("Missing \"mill.tr4\" file"));
        world.compile->GiveUp();
        world.ExpectBack();
        EXPECT_FALSE(world.Has("level/mill.tr4"));
    }
    TomWorld stopped{"sleep 60"};
    stopped.host.StopAtStep(12);
    EXPECT_FALSE(stopped.Compile());
    EXPECT_FALSE(stopped.compile->NeedsPerson());
    EXPECT_TRUE(stopped.host.WasTold("was stopped"));
    stopped.ExpectBack();
}

TEST(TomCompile, WhatElseTheCompilerDidIsUndone)
{
    for (const bool whole : {true, false}) {
        TomWorld world{"echo other >script/script.txt; rm -r maps; chmod 444 tomb4.exe; "
                       "echo log >DATA/log; mkdir -p left/in; echo x >left/in/x; ln -s / root; " +
                       std::string{whole ? compiles : "exit 1"}};
        world.Write("trle/graphics/wads/other.wad", "the builder's other wad");
        world.Write("trle/script/script.txt", "a script");
        world.Write("trle/maps/Mine/mine.prj", "the builder's map");
        world.Write("trle/savegame.0", "of the game that runs");
        world.before = world.Standing();
        EXPECT_EQ(world.Compile(), whole) << world.host.AllTold();
        EXPECT_TRUE(world.host.WasTold("they are back as they were: "));
        EXPECT_TRUE(world.host.WasTold("maps/Mine/mine.prj"));
        EXPECT_TRUE(world.host.WasTold("script/script.txt"));
        EXPECT_TRUE(world.host.WasTold("DATA/log, left/in/x"));
        EXPECT_FALSE(world.host.WasTold("Mill.WAD"));
        EXPECT_EQ(world.Read("trle/maps/Mine/mine.prj"), "the builder's map")
            << "before a person goes on by hand";
        world.compile->GiveUp();
        world.ExpectBack();
        EXPECT_FALSE(FileExists(world / "trle/left/in"));
        EXPECT_FALSE(std::filesystem::is_symlink(world / "trle/root"));
        std::set<std::string> kept;
        const auto files = KeptFiles(world.session.Folders());
        for (const KeptFile& file : *files)
            kept.insert(file.file);
        EXPECT_EQ(kept,
                  (std::set<std::string>{"\\DATA\\log", "\\left\\in\\x", "\\script\\script.txt"}));
    }
}

TEST(TomCompile, AGameThatRunsMayWrite)
{
    TomWorld world{compiles + "; echo newer >savegame.0; echo new >savegame.1; rm savegame.2"};
    world.Write("trle/savegame.0", "older");
    world.Write("trle/savegame.2", "the only one");
    EXPECT_TRUE(world.Compile()) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/savegame.0"), "newer\n");
    EXPECT_EQ(world.Read("trle/savegame.1"), "new\n");
    EXPECT_EQ(world.Read("trle/savegame.2"), "the only one");
}

TEST(TomCompile, WhatItMadeOfTheSourcesIsHeldToTheBounds)
{
    TomWorld world{compiles + "; for f in graphics/wads/*.wad; do echo $f $$ >$f; done"};
    world.Write("trle/graphics/wads/other.wad", "the builder's other wad");
    world.session.settings.undoCount = 3;
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(world.Compile()) << world.host.AllTold();
        BoundVault(world.session.Folders(), world.session.settings);
    }
    int program = 0;
    int person = 0;
    const auto files = KeptFiles(world.session.Folders());
    for (const KeptFile& file : *files)
        ++(file.madeBy == MadeBy::Program ? program : person);
    EXPECT_EQ(program, 3) << "mill.wad and tower.wad, four times, the newest of them";
    EXPECT_EQ(person, 4) << "other.wad: who knows";
}

TEST(TomCompile, AFolderThatTheCompilerMadeGivesWay)
{
    for (const char* litter : {"mkdir DATA/mill.tr4; echo work >DATA/mill.tr4/part",
                               "mkdir DATA/Tower.tr4; echo work >DATA/Tower.tr4/part",
                               "mkdir DATA/TOWER.tr4; echo work >DATA/TOWER.tr4/part",
                               "cd graphics/wads; rm -f mill.wad; mkdir -p mill.wad/in/empty; "
                               "ln -s / mill.wad/in/link; mkfifo mill.wad/in/pipe; "
                               "echo work >mill.wad/in/part"}) {
        TomWorld world{litter};
        SCOPED_TRACE(litter);
        EXPECT_FALSE(world.Compile());
        world.host.told.clear();
        world.compile->GiveUp();
        world.ExpectBack();
        EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
        for (const char* place : {"DATA/mill.tr4", "DATA/TOWER.tr4", "graphics/wads/mill.wad"})
            EXPECT_FALSE(std::filesystem::is_directory(world.root / "trle" / place)) << place;
        const auto kept = KeptFiles(world.session.Folders());
        ASSERT_TRUE(kept);
        EXPECT_TRUE(std::any_of(kept->begin(), kept->end(), [](const KeptFile& file) {
            return ReadWholeFile(file.content).ValueOr("") == "work\n";
        }));
    }
}

TEST(TomCompile, ByHandThePersonGoesOnOrCancels)
{
    TomWorld world{"exit 0"};
    EXPECT_FALSE(world.Compile(false));
    ASSERT_TRUE(world.compile->NeedsPerson());
    EXPECT_NE(world.compile->Instructions().find("files: \r\n * mill.tom\r\n * tower.tom\r\n4)"),
              std::string::npos);
    world.compile->StartByHand();
    ASSERT_EQ(world.machine.started.size(), 1u);
    EXPECT_EQ(Path{world.machine.started.front().argv.front()}.filename(), "tom2pc.exe");
    for (const char* stem : {"mill", "tower"})
        world.Write("trle/DATA/" + std::string{stem} + ".tr4", "made by hand");
    EXPECT_TRUE(world.compile->TakeResults());
    EXPECT_EQ(world.Read("level/tower.tr4"), "made by hand");
    world.ExpectBack();

    // The first level's result and a sample are there when the person gives up.
    TomWorld cancelled{compiles + "; [ $name = mill ]; rm -f DATA/tower.tr4"};
    cancelled.Write("level/new.wav", "a new sample");
    EXPECT_FALSE(cancelled.Compile());
    EXPECT_TRUE(cancelled.Has("trle/DATA/mill.tr4"));
    cancelled.compile->Cancel();
    EXPECT_EQ(cancelled.Read("trle/sound/samples/new.wav"), "a new sample");
    std::filesystem::remove(cancelled.root / "trle/sound/samples/new.wav");
    cancelled.ExpectBack();
}

TEST(TomCompile, OneTomFileOfABuildersIsCompiledBesideIt)
{
    TomWorld world;
    Path result;
    EXPECT_TRUE(CompileTomFile(world.session, world / "level/mill.tom", result))
        << world.host.AllTold();
    EXPECT_EQ(*ReadWholeFile(result), "mill tom, mill wad");
    EXPECT_TRUE(world.Has("level/mill.tom"));
    EXPECT_FALSE(world.Has("level/tower.tr4"));
    world.ExpectBack();
    world.host.WillAsk("mill.tr4", false);
    EXPECT_FALSE(CompileTomFile(world.session, world / "level/mill.tom", result));

    // In the very folder of the wads nothing has to be lent but the result's place.
    world.Write("trle/graphics/wads/own.tom", "own tom, ");
    world.Write("trle/graphics/wads/own.wad", "own wad");
    world.Write("trle/sound/samples/splash.wav", "any");
    EXPECT_TRUE(CompileTomFile(world.session, world / "trle/graphics/wads/own.tom", result))
        << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/graphics/wads/own.tr4"), "own tom, own wad");
    EXPECT_EQ(world.Read("trle/graphics/wads/own.wad"), "own wad");

    world.Write("elsewhere/lost.tom", "lost");
    EXPECT_FALSE(CompileTomFile(world.session, world / "elsewhere/lost.tom", result));
    EXPECT_TRUE(world.host.WasTold("lost.wad"));
    EXPECT_FALSE(CompileTomFile(world.session, world / "level/readme.txt", result));
}

TEST(TomCompile, KilledAnywhereTheFolderComesBackAtTheNextStart)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        TomWorld world;
        world.host.AnswerAll(true);
        const KillRun run = WithKillAt(step, [&] { return world.Compile(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectBack();
        EXPECT_TRUE(world.Has("level/mill.tom"));
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 40);
    }
    FAIL() << "never finished";
}

TEST(TomCompile, FailedAnywhereItIsToldAndTheFolderComesBack)
{
    for (int step = 1;; step = NextPoint(step)) {
        TomWorld world;
        world.host.AnswerAll(true);
        const FaultRun run = WithFaultAt(step, [&] {
            const bool done = world.Compile();
            world.compile->GiveUp();
            return done;
        });
        SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
        EXPECT_TRUE(run.answer || !world.host.told.empty()) << "a failure without a word";
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectBack();
        ASSERT_LT(step, 500) << "never finished";
        if (!run.reached || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 40);
    }
}

TEST(TomCompile, WhatOfWineIsMissingIsSaidBeforeTheFolderIsLent)
{
    TomWorld box;
    box.Write("trle/tom2pc.exe", WindowsProgram(machine32));
    box.before = box.Standing();
    box.Write("usr/bin/wine", "");
    for (const char* words : {"apt-get install wine", "wine32"}) {
        EXPECT_FALSE(box.Compile());
        EXPECT_TRUE(box.host.WasTold(words)) << box.host.AllTold();
        EXPECT_FALSE(box.compile->NeedsPerson());
        box.ExpectBack();
        box.machine.tools["wine"] = box / "usr/bin/wine";
    }
}

} // namespace

} // namespace kestrova::testing
