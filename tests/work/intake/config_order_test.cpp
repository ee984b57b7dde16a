#include "formats/nul_list.h"
#include "intake/config_world.h"
#include "sandbox/faults.h"
#include "sandbox/web_servers.h"
#include "swap/recovery.h"

namespace kestrova::testing
{

namespace
{

/// A wave for the game's `audio` folder: with four bits a sample.
std::string TrackWave(const std::string& data)
{
    return std::string(34, '\0') + std::string{"\4\0", 2} + data;
}

/// A level whose configuration file needs every step: wads of a package, a copy of a set, a sound
/// of a disc, a program that is none, a link to the package's wads, and the compiler.
class NeedyWorld : public ConfigWorld
{
public:
    NeedyWorld()
    {
        AddCompiler("tom2pc.exe", "name=$(basename \"$1\" .tom); "
                                  "cat \"$1\" \"graphics/wads/$name.wad\" >\"DATA/$name.tr4\"");
        Write("trle/graphics/wads/mill.wad", "a builder's own wad");
        Write("in/mill.tom", "tom ");
        Write("in/title.tr4", "title");
        Write("in/105.wav", TrackWave("short"));
        Write("in/readme.txt", "read");
        Write("disc/audio/9.wav", TrackWave("from the disc"));
        machine.discs = {root / "disc"};
        config.duplicates = JoinNulList({"title.*", "copy.tr4"});
        config.externWaves = JoinNulList({"TR4", "9.wav", "105.wav", ""});
        config.exeFormat = "ZIP";
        config.tomWads = JoinNulList({"mill.tom", "angkor.*"});
        config.moreInfo = "README.txt";
        config.files = {{"mill.tom", 4}, {"title.tr4", 5}, {"105.wav", 41}, {"readme.txt", 4}};
        before = Standing();
    }
    Intake& Begin()
    {
        Intake& level = Open();
        level.draft.compile = Compile::Asked;
        level.windows.wads.show = [this](const Path& package) {
            Write("trle/graphics/wads/angkor.wad", "wad of " + package.filename().native());
            return true;
        };
        AddSourcesTo(level, {"in"});
        return level;
    }
    FileContents before;
};

const FileContents made{{"title.tr4", "title"},
                        {"copy.tr4", "title"},
                        {"mill.tr4", "tom wad of angkor.zip"},
                        {"105.wav", TrackWave("from the disc")},
                        {"readme.txt", "read"}};

TEST(ConfigOrder, APackageThatNeedsEveryStepAsksOnlyWhatIsNotKnown)
{
    NeedyWorld world;
    const ScriptedServer server{[](const Connection& connection) {
        connection.Send("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 3\r\n\r\nzip");
    }};
    world.config.importWads = JoinNulList({"angkor.wad", server.Address("/angkor.zip")});
    Intake& level = world.Begin();
    world.ApplyTo(level);
    world.host.WillAsk("Have you already in your pc", false);
    world.host.WillAsk("Do you want download now", true);
    (void)Refresh(level);
    EXPECT_EQ(world.Files(), made);
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
    EXPECT_TRUE(level.draft.configApplied);
    EXPECT_EQ(level.draft.moreInfo, "readme.txt");
    EXPECT_FALSE(level.draft.config);
    FileContents standing = world.Standing();
    EXPECT_EQ(standing.erase("graphics/wads/angkor.wad"), 1U);
    EXPECT_EQ(standing, world.before);
    // Each step says what it is about, in the order in which they come.
    std::size_t from = 0;
    for (const char* label :
         {"Download file angkor.zip in progress", "Installing new wads",
          "Duplication source: title.*", "Request extern wave files: 9.wav",
          "Import extern wave file: 9.wav", "Copying wads for: mill", "Compiling mill.tom"}) {
        const auto& texts = world.host.progressTexts;
        while (from < texts.size() && texts[from].find(label) == std::string::npos)
            ++from;
        EXPECT_LT(from, texts.size()) << label;
    }
    world.ApplyTo(level);
    (void)Refresh(level);
    EXPECT_EQ(world.Files(), made) << "a second one goes unread";
}

TEST(ConfigOrder, ARowThatDoesNotGoOnEndsAllBehindIt)
{
    NeedyWorld sources; // one file is not as the list says: it is not compiled unasked
    sources.Write("trle/graphics/wads/angkor.wad", "wad of angkor.zip");
    sources.config.files.front().size = 5;
    Intake& level = sources.Begin();
    sources.ApplyTo(level);
    (void)Refresh(level);
    EXPECT_TRUE(level.draft.configApplied);
    EXPECT_TRUE(sources.Files().contains("mill.tom"));
    EXPECT_FALSE(sources.Files().contains("mill.tr4"));
    EXPECT_TRUE(sources.host.told.empty()) << sources.host.AllTold();

    NeedyWorld refused;
    refused.config.importWads = JoinNulList({"angkor.wad", "http://127.0.0.1:1/angkor.zip"});
    Intake& given = refused.Begin();
    refused.ApplyTo(given);
    const FileContents files = [&] {
        FileContents had = refused.Files();
        had.erase("kestrova.cfg");
        return had;
    }();
    refused.host.WillAsk("Have you already", false);
    refused.host.WillAsk("Do you want download now", false);
    (void)Refresh(given);
    EXPECT_TRUE(given.draft.givenUp);
    EXPECT_FALSE(given.draft.configApplied);
    EXPECT_EQ(refused.Files(), files);
    EXPECT_EQ(refused.Standing(), refused.before);
}

TEST(ConfigOrder, KilledAnywhereTheFoldersStayWhole)
{
    for (int step = 1;; step = NextPoint(step)) {
        NeedyWorld world;
        world.host.AnswerAll(false);
        world.Write("trle/graphics/wads/angkor.wad", "wad of angkor.zip");
        const FileContents standing = world.Standing();
        const FileContents in = world.Snapshot("in");
        Intake& level = world.Begin();
        world.ApplyTo(level);
        const KillRun run = WithKillAt(step, [&] {
            (void)Refresh(level);
            return level.draft.configApplied;
        });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        EXPECT_EQ(world.Standing(), standing);
        EXPECT_FALSE(world.LoanWaitsHere());
        EXPECT_EQ(world.Snapshot("in"), in);
        EXPECT_EQ(world.Read("disc/audio/9.wav"), TrackWave("from the disc"));
        // Each file of the level is one of what the steps make, whole.
        for (const auto& [name, content] : world.Files())
            EXPECT_TRUE(name == "kestrova.cfg" || name == "mill.tom" || name == "mill.wad" ||
                        content == made.at(name) ||
                        (name == "105.wav" && content == TrackWave("short")))
                << name;
        if (!run.killed || ::testing::Test::HasFailure()) {
            EXPECT_EQ(world.Files(), made);
            return TellPoints(step - 1, 40);
        }
    }
}

} // namespace

} // namespace kestrova::testing
