#include "intake/compile_sources.h"

#include "editor/tom_compile.h"
#include "intake/config_world.h"
#include "sandbox/faults.h"

#include <fstream>

namespace kestrova::testing
{

namespace
{

/// A level on its way that came as sources, without wads of its own, and a builder at work in the
/// Level Editor's folder under the same names.
class SourcesWorld : public ConfigWorld
{
public:
    SourcesWorld()
    {
        AddCompiler("tom2pc.exe", compiles);
        Write("trle/graphics/wads/city.wad", "the city's wad");
        Write("trle/graphics/wads/MILL.SWD", "the builder's own set");
        Write("trle/DATA/Mill.tr4", "the builder's own level");
        Write("trle/maps/Mine.prj", "the builder's own map");
        Write("trle/sound/samples/Wheel.wav", "the builder's own wheel");
        before = Standing();
        Write("in/mill.tom", "a tom, ");
        Write("in/mill.swd", "of the level");
        Write("in/wheel.wav", "a wheel");
        AddSourcesTo(Open(), {"in"});
        opened->draft.compile = Compile::Always;
        opened->draft.links = {{"mill.tom", "city.*"}};
        level = Files();
    }

    /// A person who presses the button for the compiler, and Done.
    void CompileByHand()
    {
        session.preferences.noAutoCompile = true;
        opened->windows.compile = [this](TomCompile& compile) {
            // The compiler's own call, which no fault of ours strikes.
            std::ofstream{*this / "trle/DATA/mill.tr4"} << "by hand";
            compile.TakeResults();
        };
    }

    static constexpr const char* compiles =
        "rm -rf maps script/script.txt; cat \"$1\" graphics/wads/mill.wad "
        "sound/samples/[Ww]heel.wav >DATA/mill.tr4";
    FileContents before;
    FileContents level; ///< what the level had at first
};

TEST(CompileLevel, TakesTheSourcesPlaceByItselfOrByHand)
{
    for (const bool byHand : {false, true}) {
        SourcesWorld world;
        if (byHand)
            world.CompileByHand();
        EXPECT_TRUE(CompileLevel(*world.opened)) << world.host.AllTold();
        EXPECT_EQ(
            world.Files(),
            (FileContents{{"mill.tr4", byHand ? "by hand" : "a tom, the city's wada wheel"}}));
        EXPECT_EQ(world.Standing(), world.before);
    }
}

/// After a kill or a failure the folder is as it was, and the level has its sources or its result.
void ExpectNothingLost(SourcesWorld& world)
{
    EXPECT_EQ(world.Standing(), world.before);
    EXPECT_FALSE(world.LoanWaitsHere());
    const FileContents now = world.Files();
    if (now.contains("mill.tr4"))
        return;
    for (const auto& [name, content] : world.level)
        EXPECT_EQ(now.contains(name) ? now.at(name) : "(gone)", content) << name;
}

TEST(CompileLevel, StruckAnywhereTheFolderComesBackAndTheLevelHasItsSources)
{
    for (const bool byHand : {false, true})
        for (const bool killed : {true, false})
            for (int step = 1;; step = NextPoint(step + step / 20)) {
                SourcesWorld world;
                world.host.AnswerAll(true);
                if (byHand)
                    world.CompileByHand();
                const auto compile = [&] { return CompileLevel(*world.opened); };
                const bool reached =
                    killed ? WithKillAt(step, compile).killed : WithFaultAt(step, compile).reached;
                SCOPED_TRACE("step " + std::to_string(step) + (byHand ? ", by hand" : "") +
                             (killed ? ", killed" : ", failed"));
                Session fresh = world.Reopened();
                ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
                ExpectNothingLost(world);
                ASSERT_LT(step, 1000) << "never finished";
                if (!reached || ::testing::Test::HasFailure()) {
                    TellPoints(step - 1, 30);
                    break;
                }
            }
}

} // namespace

} // namespace kestrova::testing
