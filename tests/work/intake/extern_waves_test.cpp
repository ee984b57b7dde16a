#include "formats/nul_list.h"
#include "intake/config_world.h"
#include "sandbox/faults.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// A level that wants sounds of the disc in `disc`.
class WavesWorld : public ConfigWorld
{
public:
    explicit WavesWorld(const std::vector<std::string>& groups)
    {
        config.externWaves = JoinNulList(groups);
        Write("in/level.tr4", "level");
    }
};

constexpr const char* haveCd = "in Tr4 The Last Revelation CD\r\nHave you this CD?";
constexpr const char* insertCd = "Please insert Tr4 The Last Revelation CD in unit ";

} // namespace

TEST(ExternWaves, ComeFromTheDiscOrFromWhatIsAtHand)
{
    WavesWorld world{{"TR4", "105.wav",  "200.WAV", "", // replaces the level's own
                      "TR4", "106.wav",  "201.wav", "none.wav",
                      "TR4", "gone.wav", "202.wav", "short.wav", // the level has it
                      "TR9", "gone.wav", "203.wav", "104.wav",   // the editor has it
                      "TR5", "gone.wav", "105.wav", "105.wav",   // the game will find it
                      "TR5", "gone.wav", "204.wav", "none.wav"}};
    world.Write("disc/AUDIO/105.Wav", "from the disc");
    world.Write("disc/AUDIO/106.wav", "too");
    world.Write("in/200.wav", "the level's own");
    world.Write("in/SHORT.wav", "short");
    world.Write("trle/audio/104.wav", "the editor's 104");
    world.Write("trle/audio/105.wav", "the editor's 105");
    fs::create_directory_symlink(world / "disc", world / "cdrom");
    world.machine.discs = {world / "empty", world / "cdrom"};
    world.host.WillAsk(haveCd, false);
    world.host.WillAsk("Tr5 Chronicles CD", false);
    ASSERT_TRUE(world.Add()) << world.host.AllTold();
    const FileContents wanted{{"level.tr4", "level"}, {"200.wav", "from the disc"},
                              {"201.wav", "too"},     {"202.wav", "short"},
                              {"SHORT.wav", "short"}, {"203.wav", "the editor's 104"}};
    EXPECT_EQ(world.Files(), wanted);
    EXPECT_TRUE(world.host.WasTold("original cd for extern wave unknown (TR9)"));
    EXPECT_TRUE(world.host.WasTold("request extern wave file is missing (gone.wav204.wav)"));
    EXPECT_EQ(world.host.told.size(), 2U) << world.host.AllTold();
    EXPECT_TRUE(world.Draft().configApplied) << "a sound that is missing keeps no level out";
}

TEST(ExternWaves, WhatTheLevelBringsItselfIsCompleteAndWhatIsReplacedIsListedAnew)
{
    WavesWorld own{{"TR4", "105.wav", "105.wav", "105.WAV"}};
    own.Write("in/105.wav", "the level's own");
    own.host.WillAsk(haveCd, false);
    ASSERT_TRUE(own.Add()) << own.host.AllTold();
    EXPECT_EQ(own.Files().at("105.wav"), "the level's own");
    EXPECT_TRUE(own.host.told.empty()) << own.host.AllTold();

    WavesWorld replaced{{"TR4", "105.wav", "105.wav", "", "TR4", "106.wav", "106.wav", ""}};
    replaced.config.files = {{"106.wav", 1}, {" 105.WAV ", 1}, {"105.wav", 1}};
    replaced.Write("in/105.wav", "x");
    replaced.Write("disc/audio/105.wav", "seven b");
    replaced.Write("disc/audio/106.wav", "it was not there");
    replaced.machine.discs = {replaced / "disc"};
    ASSERT_TRUE(replaced.Add()) << replaced.host.AllTold();
    const auto& listed = replaced.Draft().listedFiles;
    ASSERT_EQ(listed.size(), 3U);
    EXPECT_EQ(listed[0].size, 1);
    EXPECT_EQ(listed[1].size, 7);
    EXPECT_EQ(listed[2].size, 1);
}

TEST(ExternWaves, APersonPutsTheDiscInOrChoosesAFolder)
{
    WavesWorld world{{"TR4", "1.wav", "1.wav", "", "TR4", "2.wav", "2.wav", ""}};
    world.Write("copied/Audio/1.wav", "one");
    world.Write("copied/Audio/2.wav", "two");
    world.host.WillAsk(haveCd, true);
    world.host.WillAsk(insertCd, true);
    world.host.WillChoose("files of Tr4 The Last Revelation CD", world / "level");
    world.host.WillAsk("File '1.wav' not found\r\nDo you want retry?", true);
    world.host.WillAsk(insertCd, true);
    world.host.WillChoose("files of Tr4", world / "copied");
    ASSERT_TRUE(world.Add()) << world.host.AllTold();
    EXPECT_EQ(world.Files().at("2.wav"), "two") << "the folder is asked for once";

    WavesWorld other{{"TR4", "1.wav", "1.wav", ""}};
    other.machine.discs = {other / "disc"};
    other.host.WillAsk(haveCd, true);
    other.host.WillAsk(insertCd + (other / "disc").native(), true);
    other.host.WillAsk("Do you want retry?", true);
    other.host.WillAsk(insertCd, false);
    ASSERT_TRUE(other.Add());
    EXPECT_TRUE(other.host.WasTold("is missing (1.wav1.wav)"));

    std::vector<std::string> groups;
    for (int i = 0; i < 30; ++i)
        groups.insert(groups.end(), {i < 15 ? "TR4" : "TR9", std::to_string(i), "t", "n"});
    WavesWorld many{groups};
    many.host.WillAsk(haveCd, true);
    many.host.WillAsk(insertCd, false);
    ASSERT_TRUE(many.Add()) << many.host.AllTold();
    EXPECT_EQ(many.host.told.size(), 21U) << "a disc is asked for once, and boxes are counted";
    EXPECT_TRUE(many.host.WasTold("25 more such errors"));

    WavesWorld script{{"TR4", "1.wav", "1.wav", ""}};
    script.host.attended = false;
    script.host.AnswerAll(true);
    ASSERT_TRUE(script.Add());
    EXPECT_TRUE(script.host.WasTold("is missing (1.wav1.wav)")) << "nobody is asked for ever";
}

TEST(ExternWaves, NoNameAndNoLinkLeadsAnywhereElse)
{
    WavesWorld world{{"TR4", "..\\secret", "1.wav",           "..\\..\\..\\secret",
                      "TR4", "1.wav",      "..\\..\\out.wav", "",
                      "TR4", "1.wav",      "/etc/out.wav",    "",
                      "TR4", "linked.wav", "linked.wav",      "",
                      "TR4", "1.wav",      "*.wav",           "*.wav"}};
    world.Write("secret", "a person's own");
    world.Write("disc/audio/1.wav", "one");
    fs::create_symlink(world / "secret", world / "disc/audio/linked.wav");
    world.machine.discs = {world / "disc"};
    world.host.WillAsk(haveCd, false);
    ASSERT_TRUE(world.Add()) << world.host.AllTold();
    EXPECT_EQ(world.Files(), (FileContents{{"level.tr4", "level"}}));
    EXPECT_TRUE(world.host.WasTold("is missing (..\\secret1.wav)"));
    EXPECT_TRUE(world.host.WasTold("is missing (linked.wavlinked.wav)"));
    EXPECT_TRUE(world.host.WasTold("..\\..\\out.wav, /etc/out.wav, *.wav")) << world.host.AllTold();

    // So with the folder itself.
    WavesWorld away{{"TR4", "1.wav", "1.wav", ""}};
    away.Write("private/1.wav", "a person's own");
    away.Write("disc/readme.txt", "a disc");
    fs::create_directory_symlink(away / "private", away / "disc/audio");
    away.machine.discs = {away / "disc"};
    away.host.WillAsk(haveCd, false);
    ASSERT_TRUE(away.Add());
    EXPECT_EQ(away.Files().size(), 1U);
}

TEST(ExternWaves, AStopAFullDiskOrAFailureLeavesTheLevelAsItWas)
{
    const std::vector<std::string> groups{"TR4", "1.wav", "1.wav", "", "TR4", "2.wav", "2.wav", ""};
    const FileContents before{{"level.tr4", "level"}, {"1.wav", "own"}};
    const auto make = [&](WavesWorld& world) {
        world.Write("in/1.wav", "own");
        world.Write("disc/audio/1.wav", "one");
        world.Write("disc/audio/2.wav", "two");
        world.machine.discs = {world / "disc"};
    };
    WavesWorld full{groups};
    make(full);
    full.machine.free = (UINT64_C(64) << 20) + 2;
    full.Add();
    EXPECT_TRUE(full.host.WasTold("no room on the disk for the sound 1.wav"));
    EXPECT_EQ(full.Files(), before);
    EXPECT_FALSE(full.Draft().configApplied);

    int stops = 0;
    for (int step = 1; step < 60; ++step) {
        WavesWorld world{groups};
        make(world);
        Intake& level = world.Open();
        world.AddSourcesTo(level, {"in"});
        ASSERT_TRUE(world.WriteConfig("in/kestrova.cfg"));
        fs::copy(world / "in/kestrova.cfg", level.draft.workFolder / "kestrova.cfg");
        world.host.StopAtStep(step);
        (void)Refresh(level);
        if (level.draft.configApplied)
            break;
        ++stops;
        EXPECT_EQ(world.Files(), before) << step;
    }
    EXPECT_GE(stops, 4);

    int points = 0;
    for (int point = 1;; points = point, point = NextPoint(point)) {
        WavesWorld world{groups};
        make(world);
        Intake& level = world.Open();
        world.AddSourcesTo(level, {"in"});
        ASSERT_TRUE(world.WriteConfig("in/kestrova.cfg"));
        fs::copy(world / "in/kestrova.cfg", level.draft.workFolder / "kestrova.cfg");
        const FaultRun run = WithFaultAt(point, [&] {
            (void)Refresh(level);
            return level.draft.configApplied;
        });
        if (!run.reached)
            break;
        FileContents files = world.Files();
        files.erase("kestrova.cfg"); // it may be what could not be deleted
        EXPECT_TRUE(run.answer || files.at("1.wav") == "own" || files.at("1.wav") == "one");
        EXPECT_EQ(world.Snapshot("disc").size(), 2U);
    }
    TellPoints(points, 8);
}

} // namespace kestrova::testing
