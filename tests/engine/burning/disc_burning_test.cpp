#include "burning/disc_burning.h"

#include "burning/drive_commands.h"
#include "core/files.h"
#include "disc_world.h"
#include "sandbox/faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using ::testing::HasSubstr;

/// A world with a drive of the settings, in which a blank disc lies.
class BurnWorld : public BurningWorld
{
public:
    explicit BurnWorld(std::uint64_t megabytes = 10)
    {
        Write("medium.img", "");
        session.settings.drives = {{"burner", root / "medium.img", root / "seen", megabytes, true}};
        engine.settings = Settings();
        engine.settings.image = root / "disc.iso";
        EXPECT_TRUE(engine.Command(CwCommand::FindWriter)) << engine.error.detail;
        EXPECT_EQ(engine.result.text, "burner");
    }
    bool Run(CwCommand command, const std::string& argument = {})
    {
        return engine.Command(command, argument);
    }
    [[nodiscard]] std::string Words() const
    {
        return engine.error.title + ": " + engine.error.detail;
    }
    /// No file of a run stays beside what the person knows.
    [[nodiscard]] std::size_t Leftovers() const
    {
        std::size_t found = 0;
        for (const Path& folder : {root, session.programFolder})
            for (const auto& entry : std::filesystem::directory_iterator(folder))
                found += entry.path().filename().string().starts_with(stagedPrefix) ? 1U : 0U;
        return found;
    }

    BurnCd engine = Engine();
};

TEST(DiscBurning, AnImageIsBurnedVerifiedBlankedAndBurnedAgain)
{
    BurnWorld world;
    EXPECT_FALSE(world.Run(CwCommand::BurnImage));
    EXPECT_EQ(world.Words(), "Burning CD failed: No ISO image to burn");
    ASSERT_TRUE(world.Run(CwCommand::MakeImage)) << world.Words();
    EXPECT_EQ(world.engine.error.title, "") << "no warning of a plain label";
    world.engine.settings.speed = 1;
    ASSERT_TRUE(world.Run(CwCommand::BurnImage)) << world.Words() << world.engine.error.output;
    EXPECT_TRUE(world.Compare(world / "medium.img"));
    EXPECT_TRUE(world.Run(CwCommand::VerifyCd, "fast")) << world.Words();
    EXPECT_TRUE(world.Run(CwCommand::VerifyCd, "ALL")) << world.Words();

    EXPECT_FALSE(world.Run(CwCommand::BurnImage));
    EXPECT_THAT(world.Words(), HasSubstr("not blank"));
    EXPECT_TRUE(world.Compare(world / "medium.img"));

    EXPECT_FALSE(world.Run(CwCommand::Blank, "half"));
    EXPECT_EQ(world.Words(),
              "Argument not valid for current command: CancellaCdRiscrivibile command allows like "
              "argument only values: 'ALL' or 'FAST'");
    ASSERT_TRUE(world.Run(CwCommand::Blank, "FAST")) << world.Words();
    EXPECT_EQ(world.Read("medium.img"), "");
    EXPECT_FALSE(world.Run(CwCommand::VerifyCd, "Fast"));
    EXPECT_THAT(world.Words(), HasSubstr("CD is empty"));
    ASSERT_TRUE(world.Run(CwCommand::DeleteImage));
    ASSERT_TRUE(world.Run(CwCommand::BurnWithoutImage)) << world.Words();
    EXPECT_TRUE(world.Compare(world / "medium.img")) << world.comparison.differences.size();
    EXPECT_FALSE(world.Has("disc.iso"));
    EXPECT_EQ(world.Leftovers(), 0U);
}

TEST(DiscBurning, WhatChangedOnTheDiscOrInItsSourceFailsTheVerification)
{
    BurnWorld world;
    ASSERT_TRUE(world.Run(CwCommand::BurnWithoutImage)) << world.Words();
    std::string bytes = world.Read("medium.img");
    bytes[bytes.find("graft")] = 'G';
    world.Write("medium.img", bytes);
    EXPECT_TRUE(world.Run(CwCommand::VerifyCd, "Fast"));
    EXPECT_FALSE(world.Run(CwCommand::VerifyCd, "All"));
    EXPECT_THAT(world.Words(), HasSubstr("c=d.txt has on cd other content"));
    EXPECT_FALSE(world.engine.LastStatus());
    EXPECT_FALSE(world.Run(CwCommand::VerifyCd, "Some"));
    EXPECT_EQ(world.engine.error.title, "Argument not valid for cw_verificaCD command");
}

TEST(DiscBurning, WhatDoesNotFitOrIsNoDiscIsSaidBeforeAnythingIsWritten)
{
    BurnWorld world{1};
    world.Write("level/large.tr4", std::string(std::size_t{2} << 20, 'x'));
    EXPECT_FALSE(world.Run(CwCommand::BurnWithoutImage));
    EXPECT_THAT(world.Words(), HasSubstr("Medium full"));
    ASSERT_TRUE(world.Run(CwCommand::MakeImage));
    EXPECT_FALSE(world.Run(CwCommand::BurnImage));
    EXPECT_THAT(world.Words(), HasSubstr("Medium full"));
    world.Write("disc.iso", world.Read("disc.iso").substr(0, 300'000));
    EXPECT_FALSE(world.Run(CwCommand::BurnImage));
    EXPECT_THAT(world.Words(), HasSubstr("shorter than it says"));
    EXPECT_EQ(world.Read("medium.img"), "");

    world.Write("medium.img", "the only copy of somebody's thesis");
    EXPECT_FALSE(world.Run(CwCommand::Blank, "all"));
    EXPECT_THAT(world.Words(), HasSubstr("is no disc"));
    EXPECT_FALSE(world.Run(CwCommand::BurnWithoutImage));
    EXPECT_EQ(world.Read("medium.img"), "the only copy of somebody's thesis");

    world.engine.settings.items.clear();
    EXPECT_FALSE(world.Run(CwCommand::BurnWithoutImage));
    EXPECT_EQ(world.Words(),
              "Burning CD without ISO image, failed: There are NO files to insert in "
              "ISO image");
}

TEST(DiscBurning, AMissingToolHasACodeOfItsOwn)
{
    BurnWorld world;
    ASSERT_TRUE(world.Run(CwCommand::MakeImage));
    world.UseDiscTools({"genisoimage"});
    BurnCd noBurner = world.Engine();
    noBurner.settings = world.engine.settings;
    EXPECT_FALSE(noBurner.Command(CwCommand::BurnImage));
    EXPECT_EQ(noBurner.error.code, BurnCode::BurnerMissing);
    EXPECT_THAT(noBurner.error.detail,
                HasSubstr("Missing 'Cdrecord.exe' utility in folder of current application"));
    world.UseDiscTools({});
    BurnCd none = world.Engine();
    none.settings = world.engine.settings;
    for (const CwCommand command : {CwCommand::MakeImage, CwCommand::BurnWithoutImage}) {
        EXPECT_FALSE(none.Command(command));
        EXPECT_EQ(none.error.code, BurnCode::ImagerMissing);
    }
    EXPECT_TRUE(world.Compare(world / "disc.iso")) << "the older image stays";
}

/// Each script writes half a disc and does one thing more.
TEST(DiscBurning, NoHalfDiscPassesForAWholeOneWhateverBecomesOfTheTool)
{
    const std::string half = "for word; do case \"$word\" in dev=stdio:*) echo half "
                             ">\"${word#dev=stdio:}\";; esac; done; ";
    for (const char* end : {"exit 0", "kill -9 $$", "echo 'xorriso : FAILURE : Sorry' >&2; exit 5",
                            "echo 'xorriso : FAILURE : Sorry' >&2; exit 0",
                            "yes xxxxxxxxxxxxxxxxxxxxxxxxxxx | tr -d '\\n'"}) {
        BurnWorld world;
        ASSERT_TRUE(world.Run(CwCommand::MakeImage));
        world.AddTool("xorriso", half + end);
        EXPECT_FALSE(world.Run(CwCommand::BurnImage)) << end;
        EXPECT_EQ(world.engine.error.code, BurnCode::BurnFailed) << end;
        EXPECT_EQ(world.engine.error.title, "Burning CD failed");
        EXPECT_FALSE(world.engine.error.detail.empty());
        EXPECT_EQ(world.Read("medium.img"), "") << end;
        EXPECT_EQ(world.Leftovers(), 0U) << end;
    }
}

/// The tool refuses to write to files for the system's own user, so it runs as nobody here.
TEST(DiscBurning, CdrskinWritesBothWaysToo)
{
    BurnWorld world;
    ASSERT_TRUE(world.Run(CwCommand::MakeImage));
    std::filesystem::permissions(world.root, std::filesystem::perms::all);
    const std::string real = platform::FindOnPath("cdrskin").native();
    world.UseDiscTools({"genisoimage"});
    world.AddTool("cdrskin", "[ $(id -u) = 0 ] || exec " + real + " \"$@\"\n" +
                                 "exec setpriv --reuid 65534 --clear-groups " + real + " \"$@\"");
    BurnCd engine = world.Engine();
    engine.settings = world.engine.settings;
    ASSERT_TRUE(engine.Command(CwCommand::BurnImage)) << engine.error.detail << engine.error.output;
    EXPECT_EQ(world.Read("medium.img"), world.Read("disc.iso"));
    ASSERT_TRUE(engine.Command(CwCommand::Blank, "fast"));
    ASSERT_TRUE(engine.Command(CwCommand::BurnWithoutImage))
        << engine.error.detail << engine.error.output;
    EXPECT_TRUE(world.Compare(world / "medium.img"));
}

class StoppingProgress : public ProgressScope
{
public:
    explicit StoppingProgress(int at) : at_(at) {}
    void SetLabel(const std::string& text) override { labels += text + "\n"; }
    void SetBar(std::uint64_t done, std::uint64_t) override { furthest = std::max(furthest, done); }
    void AllowStop() override {}
    bool Step() override { return ++steps != at_; }

    int steps = 0;
    std::uint64_t furthest = 0;
    std::string labels;

private:
    int at_;
};

TEST(DiscBurning, StopLeavesTheMediumAsItWasAtEveryPhase)
{
    int points = 0;
    for (int at = 1;; at += at < 5 ? 1 : 5, ++points) {
        BurnWorld world;
        StoppingProgress progress{at};
        world.engine.settings.progress = &progress;
        // The pipe is held open for a while, so that stops come into each of its phases.
        world.AddTool("xorriso",
                      "case \"$*\" in *print-size*) sleep 0.05;; *cdrecord*) sleep 0.1;; "
                      "esac; exec " +
                          platform::FindOnPath("xorriso").native() + " \"$@\"");
        const bool done = world.Run(CwCommand::BurnWithoutImage);
        if (done) {
            EXPECT_TRUE(world.Compare(world / "medium.img"));
            break;
        }
        EXPECT_EQ(world.engine.error.code, BurnCode::Stopped) << at << world.Words();
        EXPECT_EQ(world.engine.error.detail, "Operation stopped by user");
        EXPECT_EQ(world.engine.LastStatus().Error().code, ErrorCode::Stopped);
        EXPECT_EQ(world.Read("medium.img"), "");
        EXPECT_EQ(world.Leftovers(), 0U) << at;
        ASSERT_LT(at, 200);
    }
    EXPECT_GE(points, 4);
}

TEST(DiscBurning, APipeWhoseWriterFailsEndsAtOnceAndWritesNoDisc)
{
    for (const char* end : {"exit 32", "kill -9 $$", "head -c 100000 /dev/zero; exit 5"}) {
        BurnWorld world;
        const std::string real = platform::FindOnPath("xorriso").native();
        world.AddTool("xorriso", "case \"$*\" in *print-size*|*cdrecord*) exec " + real +
                                     " \"$@\";; *) " + end + ";; esac");
        EXPECT_FALSE(world.Run(CwCommand::BurnWithoutImage)) << end;
        EXPECT_EQ(world.engine.error.code, BurnCode::PipeBurnFailed) << end;
        EXPECT_EQ(world.Read("medium.img"), "");
        EXPECT_EQ(world.Leftovers(), 0U) << end;
    }
}

/// What a real drive would do, printed by a script in the words of that tool.
TEST(DiscBurning, AToolThatPrintsItsTimesIsJudgedByThem)
{
    struct Case {
        const char* times;
        bool dummy;
        bool done;
    };
    const Case cases[] = {
        {"Writing  time:   10.0s\\nFixating time:    5.0s", false, true},
        {"Writing  time:    9.9s\\nFixating time:    5.0s", false, false},
        {"Writing  time:   10.0s\\nFixating time:    0.0s", false, false},
        {"Writing  time:   10.0s\\nFixating time:    0.0s", true, true},
        {"Writing  time:   10.0s", true, false},
    };
    for (const Case& row : cases) {
        BurnWorld world;
        ASSERT_TRUE(world.Run(CwCommand::MakeImage));
        world.UseDiscTools({});
        world.AddTool("wodim", std::string{"printf '%s ' \"$@\" >words; printf '"} +
                                   "Last chance to quit, starting real write in 3 seconds.\\r"
                                   "wodim: Warning: the drive is old\\nwodim: Error: really\\n"
                                   "write at speed   8.0 in TAO mode\\n"
                                   "Track 01:    1 of    1 MB written.\\n" +
                                   row.times + "\\n'");
        StoppingProgress progress{0};
        BurnSettings& settings = world.engine.settings;
        settings.progress = &progress;
        settings.device = {"/dev/sr7", false, 0, "sr7"};
        settings.dummy = row.dummy;
        settings.eject = settings.overburn = settings.burnproof = true;
        settings.burnOptions = {"-tao"};
        settings.speed = 4;
        EXPECT_EQ(world.Run(CwCommand::BurnImage), row.done) << row.times;
        EXPECT_EQ(settings.speed, 8);
        EXPECT_THAT(progress.labels, HasSubstr("MB written"));
        EXPECT_THAT(progress.labels, ::testing::Not(HasSubstr("Last chance")));
        EXPECT_THAT(world.engine.error.output, ::testing::Not(HasSubstr("Last chance")));
        EXPECT_EQ(progress.furthest, 100U);
        if (!row.done) {
            EXPECT_EQ(world.engine.error.detail, "Warning: the drive is old");
        }
        EXPECT_EQ(world.Read("tools/words"),
                  std::string{"driveropts=burnproof -overburn -tao -eject "} +
                      (row.dummy ? "-dummy " : "") + "-v speed=4 dev=/dev/sr7 " +
                      (world / "disc.iso").native() + " ");
        for (const auto& [seconds, done] : {std::pair{"3.9", false}, {"4.0", true}}) {
            world.AddTool("wodim", std::string{"printf 'Blanking time:   "} + seconds + "s\\n'");
            EXPECT_EQ(world.Run(CwCommand::Blank, "All"), done);
        }
        EXPECT_TRUE(world.Run(CwCommand::Blank, "All"));
    }
}

/// What each command is done to: an older image, and a medium that is blank or a disc.
TEST(DiscBurning, KilledOrFailedAnywhereEachFileIsTheOldOneOrAWholeDisc)
{
    struct Case {
        CwCommand command;
        const char* argument;
        bool written; ///< the medium, beforehand
    };
    const Case cases[] = {{CwCommand::MakeImage, "", false},
                          {CwCommand::BurnImage, "", false},
                          {CwCommand::BurnWithoutImage, "", false},
                          {CwCommand::Blank, "all", true}};
    int points = 0;
    for (const Case& row : cases)
        for (const bool kill : {false, true})
            for (int at = 1;; at = NextPoint(at), ++points) {
                BurnWorld world;
                ASSERT_TRUE(world.Run(CwCommand::MakeImage));
                const std::string image = world.Read("disc.iso");
                if (row.written)
                    world.Write("medium.img", image);
                const std::string before = world.Read("medium.img");
                const auto work = [&] { return world.Run(row.command, row.argument); };
                bool reached = false;
                bool done = false;
                if (kill) {
                    const KillRun run = WithKillAt(at, work);
                    reached = run.killed;
                    done = run.answer;
                } else {
                    const FaultRun run = WithFaultAt(at, work);
                    reached = run.reached;
                    done = run.answer;
                }
                EXPECT_TRUE(world.Compare(world / "disc.iso")) << at;
                const std::string medium = world.Read("medium.img");
                EXPECT_TRUE(medium == before || (row.written && medium.empty()) ||
                            world.Compare(world / "medium.img"))
                    << at << " of command " << static_cast<int>(row.command);
                if (!kill && !done) {
                    EXPECT_FALSE(world.engine.error.detail.empty());
                }
                // What a killed run left goes at the next one.
                if (kill) {
                    world.Write("medium.img", "");
                    ASSERT_TRUE(world.Run(CwCommand::MakeImage)) << world.Words();
                    ASSERT_TRUE(row.written || world.Run(row.command)) << world.Words();
                    EXPECT_EQ(world.Leftovers(), 0U) << at << " was left";
                }
                if (!reached)
                    break;
            }
    TellPoints(points, 10);
}

} // namespace

} // namespace kestrova::testing
