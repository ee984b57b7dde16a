#include "intake/known_wads.h"

#include "formats/nul_list.h"
#include "intake/config_world.h"
#include "intake/listed_files.h"
#include "sandbox/web_servers.h"

namespace kestrova::testing
{

namespace
{

constexpr const char* haveIt = "Have you already in your pc file 'angkor.zip'?";
constexpr const char* fetchIt = "Do you want download now wads file: angkor.zip?";
constexpr const char* byHand = "Error downloading from url: \r\n";
constexpr const char* notImported = "Without importing wads it's not possible convert this level";

/// A level that needs a package of wads, and an import that notes what it was given.
class WadsWorld : public ConfigWorld
{
public:
    WadsWorld() { Write("in/level.tr4", "level"); }
    void Need(const std::string& url)
    {
        config.importWads = JoinNulList({"angkor.wad", url});
        config.importNotes = "It needs the wads of Angkor.";
    }
    Intake& Begin()
    {
        Intake& level = Open();
        level.windows.wads.show = [this](const Path& package) {
            imported.push_back(package);
            Write("trle/graphics/wads/angkor.wad", "wad");
            return works;
        };
        return level;
    }
    /// Brings the level in; true when its configuration was applied.
    bool Apply(bool fetches = false, bool attended = true)
    {
        EXPECT_TRUE(WriteConfig("in/kestrova.cfg"));
        Intake& level = Begin();
        level.draft.fetches = fetches;
        host.attended = attended;
        (void)AddSources(level, {root / "in"}, Subfolders::Take);
        EXPECT_NE(level.draft.configApplied, level.draft.givenUp) << host.AllTold();
        return level.draft.configApplied;
    }

    std::vector<Path> imported;
    bool works = true;
};

/// A server with the package.
class WadServer : public WadsWorld
{
public:
    WadServer()
        : server([this](const Connection& connection) {
              const std::string head = missing ? "404 Not Found" : "200 OK";
              connection.Send("HTTP/1.1 " + head +
                              "\r\nConnection: close\r\nContent-Length: 7\r\n\r\npackage");
          })
    {
    }
    bool missing = false;
    ScriptedServer server;
};

TEST(KnownWads, APackageThatIsThereIsNotAskedFor)
{
    for (const std::uint64_t size : {3'000'000, 3'000'001}) {
        WadsWorld world;
        world.config.importWads =
            JoinNulList({"city.wad", "http://wads.example/pub/Revised_wads0110.zip"});
        world.Write("trle/graphics/wads/city.wad", "what stands there does not count");
        world.Write("home/backup_trle/graphics/wads/CITY.wad", std::string(size, 'x'));
        if (size == 3'000'000) {
            world.host.WillAsk("in your pc file 'Revised_wads0110.zip'?", false);
            world.host.WillAsk("Do you want download now", false);
        }
        EXPECT_EQ(world.Apply(), size > 3'000'000) << size;
        EXPECT_TRUE(world.imported.empty());
    }
    WadsWorld other;
    other.Need("http://127.0.0.1:1/angkor.zip");
    other.Write("trle/graphics/wads/ANGKOR.WAD", "wad");
    EXPECT_TRUE(other.Apply());
    EXPECT_TRUE(other.host.told.empty()) << other.host.AllTold();

    // A name that leads elsewhere is a file that is not there.
    WadsWorld hostile;
    hostile.config.importWads = JoinNulList({"..\\..\\tomb4.exe", "http://127.0.0.1:1/angkor.zip"});
    hostile.host.WillAsk(haveIt, false);
    hostile.host.WillAsk(fetchIt, false);
    EXPECT_FALSE(hostile.Apply());
}

TEST(KnownWads, ThePersonHasItFetchesItOrDoesWithout)
{
    WadsWorld has;
    has.Need("http://127.0.0.1:1/angkor.zip");
    has.host.WillAsk("\r\nIt needs the wads of Angkor.\r\nHave you already", true);
    has.host.WillChoose("Select wads file: angkor.zip", has / "mine.zip");
    EXPECT_TRUE(has.Apply());
    EXPECT_EQ(has.imported, std::vector<Path>{has / "mine.zip"});

    for (const bool chooses : {false, true}) {
        WadsWorld without;
        without.Need("http://127.0.0.1:1/angkor.zip");
        without.host.WillAsk(haveIt, chooses);
        if (chooses)
            without.host.WillChoose("Select wads file", std::nullopt);
        else
            without.host.WillAsk(fetchIt, false);
        EXPECT_FALSE(without.Apply());
        EXPECT_TRUE(without.host.WasTold(notImported));
        EXPECT_TRUE(without.imported.empty());
    }

    WadServer fetched;
    fetched.Need(fetched.server.Address("/a/angkor.zip"));
    fetched.host.WillAsk(haveIt, false);
    fetched.host.WillAsk(fetchIt, true);
    EXPECT_TRUE(fetched.Apply()) << fetched.host.AllTold();
    EXPECT_EQ(fetched.imported, std::vector<Path>{fetched / "home/angkor.zip"});
    EXPECT_EQ(fetched.Read("home/angkor.zip"), "package");

    // One package is fetched once, whatever it lacks.
    WadServer repeated;
    const std::string url = repeated.server.Address("/a/angkor.zip");
    repeated.config.importWads = JoinNulList({"none.wad", url, "angkor.wad", url, "other", url});
    EXPECT_TRUE(repeated.Apply(true)) << repeated.host.AllTold();
    EXPECT_EQ(repeated.imported.size(), 1U);

    WadServer broken;
    broken.Need(broken.server.Address("/a/angkor.zip"));
    broken.works = false;
    broken.host.WillAsk(haveIt, false);
    broken.host.WillAsk(fetchIt, true);
    EXPECT_FALSE(broken.Apply()) << "an import that fails gives the level up";
    EXPECT_EQ(broken.imported.size(), 1U);
}

TEST(KnownWads, WhatDoesNotComeIsFetchedByHand)
{
    WadServer missing;
    missing.missing = true;
    const std::string url = missing.server.Address("/a/angkor.zip");
    missing.Need(url);
    missing.host.WillAsk(haveIt, false);
    missing.host.WillAsk(fetchIt, true);
    missing.host.WillAsk(byHand + url, true);
    missing.host.WillAsk("When download is finished press [Ok]", true);
    missing.host.WillChoose("Select wads file: angkor.zip", missing / "got.zip");
    EXPECT_TRUE(missing.Apply());
    EXPECT_TRUE(missing.host.WasTold("Now download wads file 'angkor.zip'"));
    EXPECT_EQ(missing.machine.opened, std::vector<std::string>{url});
    EXPECT_FALSE(missing.Has("home/angkor.zip")) << "a server's page is no package";

    // What no download is made of: an address that is no zip, of another kind, without a name.
    const struct {
        const char* url;
        bool opens;
    } cases[] = {
        {"http://127.0.0.1:1/angkor.html", true}, {"mailto:wads@example.org", true},
        {"http://127.0.0.1:1/.zip", true},        {"http://127.0.0.1:1/..\\..\\a*.zip", true},
        {"file:///etc/angkor.zip", false},        {"javascript:alert(1).zip", false},
        {"/usr/bin/angkor.zip", false},           {"", false}};
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.url);
        WadsWorld world;
        world.Need(entry.url);
        world.host.WillAsk("Have you already", false);
        world.host.WillAsk("Do you want download now", true);
        world.host.WillAsk("When download is finished", false);
        EXPECT_FALSE(world.Apply());
        EXPECT_EQ(world.machine.opened.size(), entry.opens ? 1U : 0U);
        EXPECT_TRUE(world.imported.empty());
    }
}

TEST(KnownWads, AScriptFetchesNothingButByItsSwitch)
{
    WadServer world;
    world.Need(world.server.Address("/angkor.zip"));
    world.host.AnswerAll(false);
    EXPECT_FALSE(world.Apply(false, false));
    EXPECT_TRUE(world.host.WasTold("--fetch")) << world.host.AllTold();
    EXPECT_TRUE(world.server.Requests().empty());
    world.host.AnswerAll(true); // as --yes does: there is nobody who could choose a file
    EXPECT_FALSE(world.Apply(false, false));
    EXPECT_TRUE(world.server.Requests().empty());
    EXPECT_TRUE(world.Apply(true, false)) << world.host.AllTold();
    EXPECT_EQ(world.imported.size(), 1U);
    world.missing = true;
    std::filesystem::remove(world / "trle/graphics/wads/angkor.wad");
    EXPECT_FALSE(world.Apply(true, false));
    EXPECT_TRUE(world.host.WasTold("could not be fetched")) << world.host.AllTold();
}

TEST(KnownWads, AKnownTomFileIsOfferedItsPackage)
{
    WadServer world;
    world.session.settings.wadServer = world.server.Address("/mirror/");
    Intake& level = world.Begin();
    level.windows.assistant = [](TomAssistant&) { return false; };
    world.Write("angkor.tom", "tom");
    world.AddSourcesTo(level, {"angkor.tom"});
    world.host.WillAsk("\r\nAngkor Wat wads (10 MB)\r\nIt's possible download now", false);
    EXPECT_FALSE(CheckTomSources(level, Checking::Interactive));
    EXPECT_TRUE(world.host.WasTold("\"Missing source file [angkor.wad] for file angkor.tom\r\n"
                                   "Now it will be started Tom/Tr4 Assistant"))
        << world.host.AllTold();
    EXPECT_FALSE(CheckTomSources(level, Checking::Silent)) << "without a word";
    world.host.WillAsk("Angkor Wat wads (10 MB)", true);
    world.host.WillAsk(haveIt, false);
    world.host.WillAsk(fetchIt, true);
    EXPECT_TRUE(CheckTomSources(level, Checking::Interactive)) << world.host.AllTold();
    ASSERT_EQ(world.server.Requests().size(), 1U);
    EXPECT_TRUE(world.server.Requests().front().starts_with(
        "GET /mirror/pub/othermedia/tomb_raider_5/angkor.zip "));

    WadsWorld noServer;
    Intake& other = noServer.Begin();
    noServer.Write("LIBRARY.TOM", "tom");
    noServer.AddSourcesTo(other, {"LIBRARY.TOM"});
    noServer.host.WillAsk("New_wads0110 : Library, Guard, Newcity (12.6 MB)", true);
    noServer.host.WillAsk("'new_wads0110.zip'?", false);
    noServer.host.WillAsk("Do you want download now", true);
    noServer.host.WillAsk("When download is finished", false);
    EXPECT_FALSE(CheckTomSources(other, Checking::Interactive));
    EXPECT_TRUE(noServer.host.WasTold("No server of wads is set")) << noServer.host.AllTold();
    EXPECT_TRUE(noServer.host.WasTold(notImported));
    EXPECT_TRUE(noServer.machine.opened.empty());
}

TEST(KnownWads, TheRevisedPackageIsOfferedOnceToALevelWhoseReadmeNamesIt)
{
    for (const char* words :
         {"it wants REVISED_WADS", "revised wads", "RevisedWads.", "Revised-Wads"}) {
        WadsWorld world;
        Intake& level = world.Begin();
        world.Write("a/mill.tom", "tom");
        world.Write("a/mill.wad", "wad");
        world.Write("a/read.txt", std::string{"First line\r\n"} + words);
        world.AddSourcesTo(level, {"a"});
        world.host.WillAsk("Revised_wads (11.2 MB)", false);
        EXPECT_TRUE(CheckTomSources(level, Checking::Silent));
        EXPECT_TRUE(world.host.WasTold("Failed import of revised_wads\r\nProbably"));
        EXPECT_TRUE(CheckTomSources(level, Checking::Interactive)) << "one No is enough";
        EXPECT_EQ(world.host.told.size(), 1U);
    }
    WadsWorld world;
    Intake& level = world.Begin();
    world.Write("a/mill.tom", "tom");
    world.Write("a/mill.wad", "wad");
    world.Write("a/script.txt", "revised wads");
    world.Write("a/read.txt", "revised the wads");
    world.AddSourcesTo(level, {"a"});
    EXPECT_TRUE(CheckTomSources(level, Checking::Silent));
}

} // namespace

} // namespace kestrova::testing
