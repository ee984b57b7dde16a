#include "online/config_database.h"

#include "core/dates.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "online/url_file.h"
#include "packages/level_config_file.h"
#include "sandbox/web_servers.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gmock/gmock.h>

namespace kestrova::testing
{

namespace
{

/// A level without a configuration file, a list with entries, and a server with what they lead to.
class OnlineWorld : public ToolBox
{
public:
    OnlineWorld() : server{root / "served"}
    {
        UseRealTools();
        folders = session.Folders();
        Write("level/data/Valley.tr4", std::string(123, 'x'));
        Write("level/script.dat", "1234");
        LevelConfig config;
        config.name = "Valley";
        Write("served/plain.cfg", *FormatLevelConfig(config));
        Write("served/Config.zip",
              BuildZip({{"KESTROVA.cfg", *FormatLevelConfig(config)}, {"readme.txt", "read me"}}));
        Write("served/other.zip", BuildZip({{"readme.txt", "read me"}}));
        Write("served/broken.zip", "PK");
        Write("served/Kestrova.prf", "hostile");
    }

    RealServer server;
    Folders folders;

    void SetList(const std::vector<std::pair<std::string, std::string>>& entries,
                 double daysOld = 0)
    {
        UrlList urls;
        urls.updateDate = DateSerialOf(machine.now) - daysOld;
        for (const auto& [description, url] : entries)
            urls.records.push_back({url, description, UrlKindConfig, false});
        EXPECT_TRUE(SaveUrlList(UrlListPath(folders), urls));
    }
    bool Find()
    {
        return FindOnlineConfig(host, machine, folders, ToolsOf(session), root / "level");
    }
    [[nodiscard]] bool HasConfig() const { return FileExists(root / "level/kestrova.cfg"); }
};

constexpr const char* valley = "Valley - data\\valley.TR4;123;SCRIPT.dat;4";

TEST(OnlineConfig, IsOfferedForALevelWithAllItsFiles)
{
    OnlineWorld box;
    const std::string plain = box.server.Address("/plain.cfg");
    box.SetList({{"Longer - script.dat;5", plain},
                 {"Absent - other.dat;4", plain},
                 {"First - script.dat;4", plain},
                 {valley, box.server.Address("/Config.zip")},
                 {"Third - script.dat;4", plain}});
    box.host.WillAsk("level named 'First'", false);
    box.host.WillAsk(
        "Probably there is a configuration file in online database for this "
        "level.\r\nMain files of current level coincide with level named "
        "'Valley'\r\n\r\nIf current level is really 'Valley' it's advisable download "
        "now the configuration file to install correctly this level.\r\nThis operation "
        "will require only few seconds.\r\nDo you want now download configuration file "
        "for level: Valley ?",
        true);
    EXPECT_TRUE(box.Find()) << box.host.AllTold();
    EXPECT_TRUE(box.HasConfig());
    EXPECT_EQ(box.Read("level/readme.txt"), "read me");
    const auto config = ReadLevelConfig(LevelConfigPath(box / "level"));
    ASSERT_TRUE(config);
    EXPECT_EQ(config->name, "Valley");
}

TEST(OnlineConfig, APackageReachesTheLevelsOwnFolderAlone)
{
    OnlineWorld box;
    constexpr std::uint32_t link = 0120777;
    box.Write("served/hostile.zip", BuildZip({{"kestrova.cfg", box.Read("served/plain.cfg")},
                                              {"../up.txt", "up"},
                                              {"..\\..\\up.txt", "up"},
                                              {"/tmp/kestrova-up.txt", "up"},
                                              {"sub/deep.txt", "deep"},
                                              {".kv~lock", "lock"},
                                              {"out", "/etc", 0x0314, 0, link},
                                              {"out/passwd", "up"}}));
    box.SetList({{valley, box.server.Address("/hostile.zip")}});
    FileContents before = box.Snapshot(".");
    box.host.WillAsk("level named 'Valley'", true);
    (void)box.Find(); // whether some of it comes or none
    for (const auto& [file, content] : box.Snapshot(".")) {
        const bool isNew = !before.contains(file) || before[file] != content;
        EXPECT_TRUE(!isNew || Path{file}.parent_path().filename() == "level") << file;
    }
    EXPECT_FALSE(box.Has("level/sub"));
    EXPECT_FALSE(box.Has("level/.kv~lock"));
    EXPECT_FALSE(std::filesystem::is_symlink(box / "level/out"));
    EXPECT_FALSE(std::filesystem::exists("/tmp/kestrova-up.txt"));
}

TEST(OnlineConfig, APlainFileBecomesTheConfigurationFile)
{
    OnlineWorld box;
    box.SetList({{valley, box.server.Address("/plain.cfg")}});
    box.host.WillAsk("level named 'Valley'", true);
    EXPECT_TRUE(box.Find()) << box.host.AllTold();
    EXPECT_EQ(box.Read("level/kestrova.cfg"), box.Read("served/plain.cfg"));
}

TEST(OnlineConfig, WhatIsNoneLeavesTheLevelAsItWas)
{
    OnlineWorld box;
    EXPECT_FALSE(box.Find()); // no list, no word
    EXPECT_TRUE(box.host.told.empty());
    const FileContents before = box.Snapshot("level");
    EXPECT_TRUE(WriteWholeFile(box.folders.program / "Kestrova.prf", "the person's"));
    struct Case {
        const char* file;
        const char* told;
        const char* reason;
    };
    for (const Case& odd : {Case{"/other.zip", "Error unzipping file: ", "no level configuration"},
                            Case{"/broken.zip", "Error unzipping file: ", ""},
                            Case{"/missing.zip", "Error unzipping file: ", "answered 404"},
                            Case{"/missing.cfg", "Error trying to download file: ", "answered 404"},
                            Case{"/Kestrova.prf", "Error trying to download file: ", ""},
                            Case{"/", "Error trying to download file: ", ""},
                            Case{"/..", "Error trying to download file: ", ""}}) {
        box.SetList({{valley, box.server.Address(odd.file)}});
        box.host.told.clear();
        box.host.WillAsk("level named 'Valley'", true);
        EXPECT_FALSE(box.Find()) << odd.file;
        ASSERT_FALSE(box.host.told.empty()) << odd.file;
        EXPECT_THAT(box.host.told.back().text, ::testing::StartsWith(odd.told)) << odd.file;
        EXPECT_THAT(box.host.told.back().reason, ::testing::HasSubstr(odd.reason)) << odd.file;
        EXPECT_EQ(box.Snapshot("level"), before) << odd.file;
    }
    box.SetList({{valley, "http://127.0.0.1:1/c.zip"}});
    box.host.WillAsk("level named 'Valley'", true);
    EXPECT_FALSE(box.Find());
    EXPECT_TRUE(box.host.WasTold("Error trying to download file: http://127.0.0.1:1/c.zip"));
    const auto prefs = ReadWholeFile(box.folders.program / "Kestrova.prf");
    ASSERT_TRUE(prefs);
    EXPECT_EQ(*prefs, "the person's");
}

TEST(OnlineConfig, ALevelIsKnownInItsFoldersAndInOneFolder)
{
    OnlineWorld box;
    box.Write("taken-in/valley.tr4", std::string(123, 'x'));
    box.Write("taken-in/SCRIPT.DAT", "1234");
    box.Write("level/other/valley.tr4", "a later one of that name");
    const auto known = [&](const char* folder, const std::string& files) {
        const UrlList list{0, {{"u", "Valley - " + files, UrlKindConfig, false}}};
        const auto configs = ConfigsFor(list, box / folder);
        return configs && !configs->empty();
    };
    for (const char* folder : {"level", "taken-in"}) {
        EXPECT_TRUE(known(folder, "data\\valley.tr4;123;script.dat;4")) << folder;
        EXPECT_TRUE(known(folder, "valley.tr4;123")) << folder;
        EXPECT_FALSE(known(folder, "data\\valley.tr4;124")) << folder;
        EXPECT_FALSE(known(folder, "..\\taken-in\\valley.tr4;123")) << folder;
    }
    EXPECT_FALSE(known("level", "other\\valley.tr4;123"));
}

TEST(OnlineConfig, AHundredThousandEntriesTakeOneLookAtTheLevel)
{
    OnlineWorld box;
    UrlList list;
    for (int i = 0; i < 100'000; ++i)
        list.records.push_back({"u", "Level - missing" + std::to_string(i) + ".tr4;5;script.dat;4",
                                UrlKindConfig, false});
    list.records.push_back({" u ", "Found - script.dat;4", UrlKindConfig, false});
    const auto configs = ConfigsFor(list, box / "level");
    ASSERT_TRUE(configs);
    ASSERT_EQ(configs->size(), 1u);
    EXPECT_EQ(configs->front().level, "Found");
    EXPECT_EQ(configs->front().url, "u");
    EXPECT_FALSE(ConfigsFor(list, box / "missing"));
    // A list without entries decides nothing about the folder.
    list.records.assign(1, {"u", "site", UrlKindLevels, false});
    EXPECT_TRUE(ConfigsFor(list, box / "missing"));
}

TEST(OnlineConfig, IsToldOfADiskOnceAndOfAStopNever)
{
    OnlineWorld box;
    const ScriptedServer silent{[](const Connection& client) { client.Wait(); }};
    box.SetList({{valley, silent.Address("/plain.cfg")}});
    box.host.WillAsk("level named 'Valley'", true);
    box.host.StopAtStep(1);
    EXPECT_FALSE(box.Find());
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();

    box.SetList({{valley, box.server.Address("/plain.cfg")}});
    box.host.StopAtStep(0);
    box.machine.free = 10;
    box.host.WillAsk("level named 'Valley'", true);
    EXPECT_FALSE(box.Find());
    ASSERT_EQ(box.host.told.size(), 1u) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("Download error: "));
    EXPECT_FALSE(box.HasConfig());
}

TEST(OnlineConfig, IsAskedAboutAMonthAfterTheLastUpdate)
{
    OnlineWorld box;
    EXPECT_FALSE(WantsDatabaseUpdate(box.host, box.machine, box.folders));
    box.SetList({}, 29.9);
    EXPECT_FALSE(WantsDatabaseUpdate(box.host, box.machine, box.folders));
    for (const bool answer : {true, false}) {
        box.SetList({}, 30);
        box.host.WillAsk("It's advisable update online database because It's spent 30 days from "
                         "last updating\r\n\r\nThis operation requires only few "
                         "seconds.\r\n\r\nUpdate online database?",
                         answer);
        EXPECT_EQ(WantsDatabaseUpdate(box.host, box.machine, box.folders), answer);
    }
}

} // namespace

} // namespace kestrova::testing
