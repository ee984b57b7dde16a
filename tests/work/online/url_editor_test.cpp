#include "online/url_editor.h"

#include "core/dates.h"
#include "core/staged_file.h"
#include "online/make_urls.h"
#include "online/url_file.h"
#include "packages/level_config_file.h"
#include "sandbox/faults.h"
#include "sandbox/web_servers.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <gmock/gmock.h>

namespace kestrova::testing
{

namespace
{

using ::testing::HasSubstr;

/// A program folder with a list, and a server's folder with others.
class UrlWorld : public ToolBox
{
public:
    UrlWorld()
    {
        folders = session.Folders();
        first.updateDate = DateSerialOf(machine.now) - 40;
        first.records = {{"http://a.example/1", "Site - Reviews", UrlKindLevels, false},
                         {"http://a.example/2", "own", UrlKindLevels, true},
                         {"http://b.example", "***hidden", UrlKindLevels, false},
                         {"http://c.example", "forum", UrlKindForums, false}};
        EXPECT_TRUE(SaveUrlList(UrlListPath(folders), first));
        UrlList fresh;
        fresh.records = {{"http://new.example", "new", UrlKindLevels, false},
                         {"*", "good news", UrlKindNotice, false},
                         {"mailto:a@b", "write", UrlKindNotice, false},
                         {"file:///bin/sh", "run", UrlKindNotice, false}};
        Write("served/urllist.bin", *FormatUrlList(fresh));
        Write("served/page.bin", "<html>");
    }

    Folders folders;
    UrlList first;
    UrlEditor Editor(UpdateServers servers = {}) { return {host, machine, folders, servers}; }
    bool Updates(UpdateServers servers)
    {
        return Editor(std::move(servers)).Update([](const std::string&) {});
    }
    [[nodiscard]] UrlList Saved() const { return *LoadUrlList(UrlListPath(folders)); }
};

TEST(UrlFile, IsReachedInBothSpellings)
{
    UrlWorld box;
    std::filesystem::rename(box.folders.program / "UrlList.bin",
                            box.folders.program / "urllist.BIN");
    EXPECT_EQ(box.Saved(), box.first);
    EXPECT_TRUE(SaveUrlList(UrlListPath(box.folders), {}));
    EXPECT_FALSE(std::filesystem::exists(box.folders.program / "UrlList.bin"));
    EXPECT_TRUE(box.Saved().records.empty());

    const Path file = UrlListPath(box.folders);
    EXPECT_TRUE(WriteWholeFile(file, "cut"));
    EXPECT_EQ(LoadUrlList(file).Error().code, ErrorCode::Damaged);
    EXPECT_TRUE(DeleteFile(file));
    EXPECT_EQ(LoadUrlList(file).Error().code, ErrorCode::Missing);
    UrlEditor editor = box.Editor();
    EXPECT_TRUE(editor.Rows().empty());
    EXPECT_EQ(editor.List().updateDate, DateSerialOf(box.machine.now));
}

TEST(UrlFile, IsTheOldOneOrTheNewOneWhereverItsWritingFails)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        UrlWorld box;
        UrlList other = box.first;
        other.records.resize(1);
        const bool done = WithFaultAt(
            step, [&] { return static_cast<bool>(SaveUrlList(UrlListPath(box.folders), other)); });
        EXPECT_TRUE(box.Saved() == other || (!done && box.Saved() == box.first)) << step;
        if (done)
            return;
    }
    FAIL() << "never finished";
}

TEST(UrlEditor, AddsChangesAndRemovesWithQuestionsAboutDoubles)
{
    UrlWorld box;
    UrlEditor editor = box.Editor();
    EXPECT_EQ(editor.Rows(), (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(editor.selected, 0u);

    box.host.WillAskText("Insert description for new record", "mine");
    box.host.WillAskText("Insert url address", "HTTP://A.example/1");
    box.host.WillAsk(
        "Warning: current url is same of old record: \r\nSite - Reviews\r\nDo you want "
        "insert it anyway?",
        true);
    box.host.WillAsk("Warning: server of current url 'HTTP://A.example' is same of old record: "
                     "\r\nhttp://a.example/2\r\nown\r\nDo you want insert it anyway?",
                     false);
    editor.Add();
    EXPECT_FALSE(editor.IsChanged());
    box.host.WillAskText("Insert description", std::nullopt);
    editor.Add();

    box.host.WillAskText("Insert description", "mine");
    box.host.WillAskText("Insert url address", "http://łódź.example");
    editor.Add();
    ASSERT_EQ(editor.Rows().size(), 3u);
    EXPECT_EQ(editor.List().records.back(),
              (UrlRecord{"http://%C5%82%C3%B3d%C5%BA.example", "mine", UrlKindLevels, true}));

    // Letters that the list cannot hold are not lost unasked.
    for (const bool wanted : {false, true}) {
        box.host.WillAsk("cannot hold all letters of this description. It would read:\r\n"
                         "?\u00f3d?? - caf\u00e9\r\nDo you want to keep it so?",
                         wanted);
        EXPECT_EQ(editor.AddRecord("\u0141\u00f3d\u017a\u0142 - caf\u00e9", "http://l.example"),
                  wanted);
    }
    EXPECT_EQ(editor.List().records.back().description, "?\u00f3d?? - caf\u00e9");

    editor.selected = 1;
    box.host.WillAskText("Change description of current record", "changed");
    box.host.WillAskText("Change url address of current record", "http://d.example");
    editor.Change();
    EXPECT_EQ(editor.List().records[1].description, "changed");
    box.host.WillAsk("Are you sure to remove record: changed", true);
    editor.Remove();
    EXPECT_EQ(editor.Rows(), (std::vector<std::size_t>{0, 3, 4}));
    EXPECT_EQ(box.Saved(), box.first); // until it is saved

    box.host.WillAsk("Current url list has been changed.\r\nAre you sure", false);
    EXPECT_FALSE(editor.MayLeave());
    EXPECT_TRUE(editor.Save());
    EXPECT_EQ(box.Saved(), editor.List());
    EXPECT_TRUE(editor.MayLeave());
}

TEST(UrlEditor, AsksOnceAboutVeryManyDoubles)
{
    UrlWorld box;
    UrlList many;
    many.records.assign(100'000, {"http://a.example/1", "site", UrlKindLevels, false});
    EXPECT_TRUE(SaveUrlList(UrlListPath(box.folders), many));
    UrlEditor editor = box.Editor();
    for (const bool answer : {false, true}) {
        for (int i = 0; i < 10; ++i)
            box.host.WillAsk("Do you want insert it anyway?", true);
        box.host.WillAsk("99990 more records", answer);
        EXPECT_EQ(editor.AddRecord("mine", "http://a.example/2"), answer);
    }
}

TEST(UrlEditor, SetsAListAsideThatItCouldNotRead)
{
    UrlWorld box;
    const Path file = UrlListPath(box.folders);
    const auto read = ReadWholeFile(file);
    ASSERT_TRUE(read);
    const std::string bytes = *read;
    for (const bool damaged : {true, false}) {
        box.host.told.clear();
        EXPECT_TRUE(WriteWholeFile(file, damaged ? "cut" : bytes));
        std::optional<UrlEditor> editor;
        {
            const FailingCalls failing{platform::FileAction::Open, "UrlList.bin", damaged ? 0 : -1};
            editor.emplace(box.Editor());
        }
        ASSERT_TRUE(editor->NotRead());
        EXPECT_TRUE(editor->Save()); // nothing was changed, nothing is written
        EXPECT_TRUE(editor->AddRecord("mine", "http://mine.example"));
        {
            const FailingCalls failing{platform::FileAction::Rename, damaged ? ".1" : ".2"};
            EXPECT_FALSE(editor->Save());
        }
        EXPECT_TRUE(box.host.WasTold("Error saving url list in file: "));
        EXPECT_EQ(ReadWholeFile(file).ValueOr(""), damaged ? "cut" : bytes);
        EXPECT_TRUE(editor->Save());
        EXPECT_EQ(box.Saved(), editor->List());
        const Path aside = file.native() + (damaged ? ".1" : ".2");
        EXPECT_TRUE(box.host.WasTold("The old file is kept: " + aside.native()));
        EXPECT_EQ(ReadWholeFile(aside).ValueOr(""), damaged ? "cut" : bytes);
        EXPECT_TRUE(editor->Save());
        EXPECT_EQ(box.host.told.size(), 2u) << box.host.AllTold();
    }
}

TEST(UrlEditor, OpensAndCopiesTheChosenOne)
{
    UrlWorld box;
    UrlEditor editor = box.Editor();
    std::string clipboard;
    editor.Copy([&](const std::string& text) { clipboard = text; });
    EXPECT_EQ(clipboard, "http://a.example/1");
    EXPECT_TRUE(box.host.WasTold("Current url copied in clipboard"));
    editor.Go();
    EXPECT_EQ(box.machine.opened, std::vector<std::string>{"http://a.example/1"});
    editor.Show(UrlKindTools);
    box.host.told.clear();
    editor.Go();
    editor.Change();
    editor.Remove();
    EXPECT_EQ(box.host.told.size(), 3u);
    EXPECT_TRUE(box.host.WasTold("No item selected"));
}

TEST(UrlEditor, UpdatesFromTheFirstServerThatGivesAList)
{
    UrlWorld box;
    const RealServer server{box / "served"};
    UrlEditor editor =
        box.Editor({"http://127.0.0.1:1/urllist.bin", server.Address("/urllist.bin")});
    box.host.WillAsk(
        "Error in previous loading attempt.\r\nDo you want try download from mirror #2 "
        "?\r\nhttp://127.0.0.1:",
        true);
    box.host.WillAsk("write\r\nDo you want download it now?", true);
    box.host.WillAsk("run\r\nDo you want download it now?", true);
    std::string line;
    EXPECT_TRUE(editor.Update([&](const std::string& text) { line = text; }));
    EXPECT_EQ(line, "Download update url list in progress...");
    EXPECT_TRUE(editor.IsChanged());
    ASSERT_EQ(editor.List().records.size(), 5u);
    EXPECT_EQ(editor.List().records[0].description, "own");
    EXPECT_EQ(editor.List().updateDate, DateSerialOf(box.machine.now));
    EXPECT_TRUE(box.host.WasTold("good news"));
    EXPECT_EQ(box.machine.opened, std::vector<std::string>{"mailto:a@b"});
    EXPECT_TRUE(box.host.WasTold("was not opened: file:///bin/sh"));
    EXPECT_TRUE(FileExists(box.folders.program / "new_list.bin"));
    EXPECT_EQ(box.Saved(), box.first);
}

TEST(UrlEditor, AnUpdateThatFailsLeavesTheListAlone)
{
    UrlWorld box;
    const RealServer server{box / "served"};
    EXPECT_FALSE(box.Updates({}));
    EXPECT_TRUE(box.host.WasTold("No update server is set"));

    EXPECT_FALSE(box.Updates({server.Address("/page.bin")}));
    EXPECT_TRUE(box.host.WasTold("Error loading (from HD) update list"));
    EXPECT_THAT(box.host.told.back().reason, HasSubstr("this is no list of addresses"));
    EXPECT_FALSE(box.Updates({server.Address("/missing.bin")}));
    EXPECT_EQ(box.host.told.back().reason, "the server answered 404");

    const UpdateServers dead(3, "http://127.0.0.1:1/urllist.bin");
    box.host.WillAsk("mirror #2", true);
    box.host.WillAsk("mirror #3", true);
    EXPECT_FALSE(box.Updates(dead));
    EXPECT_TRUE(box.host.WasTold("Failed download updated url list"));
    EXPECT_THAT(box.host.told.back().reason, HasSubstr("does not answer"));
    const std::size_t told = box.host.told.size();
    box.host.WillAsk("mirror #2", false);
    EXPECT_FALSE(box.Updates(dead));
    EXPECT_EQ(box.host.told.size(), told);

    // A Stop, and a disk that is full, are meant for all servers; the disk is told of once.
    const ScriptedServer silent{[](const Connection& client) { client.Wait(); }};
    box.host.StopAtStep(1);
    EXPECT_FALSE(box.Updates({silent.Address("/urllist.bin"), dead.front()}));
    EXPECT_EQ(box.host.told.size(), told);
    box.host.StopAtStep(0);
    box.machine.free = 1;
    EXPECT_FALSE(box.Updates({server.Address("/urllist.bin"), dead.front()}));
    EXPECT_EQ(box.host.told.size(), told + 1);
    EXPECT_TRUE(box.host.WasTold("Download error: "));
    EXPECT_EQ(box.Saved(), box.first);
}

TEST(UrlEditor, NobodyHasToReadAThousandNotices)
{
    UrlWorld box;
    UrlList many;
    many.records.assign(1'000, {"*", "buy", UrlKindNotice, false});
    box.Write("served/urllist.bin", *FormatUrlList(many));
    const RealServer server{box / "served"};
    EXPECT_TRUE(box.Updates({server.Address("/urllist.bin")}));
    EXPECT_EQ(box.host.told.size(), 21u);
    EXPECT_TRUE(box.host.WasTold("980 more notices"));
}

TEST(UpdateServers, AreThreeAtTheMost)
{
    EXPECT_EQ(ServersFrom("  a  b c d "), (UpdateServers{"a", "b", "c"}));
    EXPECT_TRUE(ServersFrom("").empty());
}

TEST(MakeUrls, MeasuresTheFilesThatALevelIsKnownBy)
{
    UrlWorld box;
    box.UseRealTools();
    LevelConfig config;
    config.name = "The lost valley";
    box.Write("made/Config.zip", BuildZip({{"kestrova.cfg", *FormatLevelConfig(config)}}));
    box.Write("made/valley/data/valley.tr4", std::string(123, 'x'));
    const auto make = [&](const std::string& records) {
        return MakeUrls(box.host, box.machine, box.folders, ToolsOf(box.session), records,
                        box / "made");
    };
    const auto list = make(R"([{"kind":8,"url":"http://u/c.zip","package":"Config.zip",
        "folder":"valley","files":["data/valley.tr4"]},
        {"kind":8,"url":"u","level":"Named","folder":"valley","files":["data\\valley.tr4"]},
        {"kind":1,"url":"http://łódź","description":"d"}])");
    ASSERT_TRUE(list) << list.Error().subject << list.Error().reason;
    EXPECT_EQ(list->records[0].description, "The lost valley - data\\valley.tr4;123");
    EXPECT_EQ(list->records[1].description, "Named - data\\valley.tr4;123");
    EXPECT_EQ(list->records[2].description + list->records[2].url, "dhttp://%C5%82%C3%B3d%C5%BA");
    EXPECT_EQ(list->updateDate, DateSerialOf(box.machine.now));
    EXPECT_FALSE(FolderExists(box.folders.program / "_temp_online_zip"));

    for (const char* odd :
         {R"([{"kind":8,"url":"u","level":"A-B","folder":"valley","files":["data/valley.tr4"]}])",
          R"([{"kind":8,"url":"u","level":"A","files":["missing"]}])",
          R"([{"kind":8,"url":"u","level":"A","files":["../Config.zip"]}])",
          R"([{"kind":8,"url":"u","package":"missing.zip","folder":"valley",
               "files":["data/valley.tr4"]}])",
          R"([{"kind":1,"url":"u"}])", R"([{"kind":1,"url":"u","description":"日本"}])", "{"}) {
        const auto refused = make(odd);
        ASSERT_FALSE(refused) << odd;
        EXPECT_THAT(refused.Error().subject, HasSubstr("of the list")) << odd;
        EXPECT_NE(refused.Error().reason, "") << odd;
    }
    EXPECT_EQ(make("{").Error().subject, "the text of the list");

    // What the tool said of a package is not lost.
    box.Write("made/Config.zip", "PK\x03\x04");
    const auto broken = make(R"([{"kind":8,"url":"u","package":"Config.zip","folder":"valley",
                                  "files":["data/valley.tr4"]}])");
    ASSERT_FALSE(broken);
    EXPECT_EQ(broken.Error().subject, "record 1 of the list");
    EXPECT_THAT(broken.Error().reason, HasSubstr("Config.zip"));
    EXPECT_NE(broken.Error().details, "");
}

} // namespace

} // namespace kestrova::testing
