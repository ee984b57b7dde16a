#include "online/download.h"

#include "core/text.h"
#include "online/download_words.h"
#include "sandbox/faults.h"
#include "sandbox/patience.h"
#include "sandbox/web_servers.h"
#include "world/world.h"

#include <chrono>
#include <fmt/format.h>
#include <gmock/gmock.h>

namespace kestrova::testing
{

namespace
{

using ::testing::Contains;
using ::testing::HasSubstr;
using Clock = std::chrono::steady_clock;

TEST(DownloadWords, TellSizesAndTimes)
{
    EXPECT_EQ(MinutesText(0), "00' 00\"");
    EXPECT_EQ(MinutesText(135), "02' 15\"");
    EXPECT_EQ(MinutesText(6'001), "100' 01\"");
    EXPECT_EQ(DownloadLabel("a.zip", {0, 2'047, 0, 9'000}), "Downloaded 1 Kb");
    // Ten whole seconds for a third: thirty in all.
    EXPECT_EQ(DownloadLabel("a.zip", {0, 1'000, 3'000, 10'999}),
              "Download a.zip (1000 / 2 Kb) - Left time = 00' 20\" - Elapsed time = 00' 10\"");
    // What lay there before took no time now.
    EXPECT_EQ(SecondsLeft({2'000, 3'000, 5'000, 10'000}), 20);
    EXPECT_EQ(DownloadLabel("a.zip", {0, 0, 3'000, 10'000}), "Download a.zip (0 / 2 Kb)");
    EXPECT_EQ(SecondsLeft({0, 5, 5, 10'000}), 0);
    EXPECT_GT(SecondsLeft({0, 1, UINT64_MAX, 9'000'000'000}), 0);
}

std::string Answer(std::string_view status, std::string_view lines)
{
    return "HTTP/1.1 " + std::string{status} + "\r\nConnection: close\r\n" + std::string{lines} +
           "\r\n";
}

/// A server with one file that it sends from where it is asked to. Of the first request it sends a
/// part alone, and keeps the connection.
class SlowServer
{
public:
    explicit SlowServer(std::string content) : content_(std::move(content)) {}

    std::string content_;
    std::string mark_ = "\"1\"";
    bool stalls_ = true;
    ScriptedServer server_{[this](const Connection& client) {
        const std::string range = client.Header("Range");
        const bool rest = !range.empty() && client.Header("If-Range") == mark_;
        const std::size_t from =
            rest ? static_cast<std::size_t>(LeadingNumber(range.substr(6))) : 0;
        std::string lines =
            fmt::format("ETag: {}\r\nContent-Length: {}\r\n", mark_, content_.size() - from);
        if (rest)
            lines += fmt::format("Content-Range: bytes {}-{}/{}\r\n", from, content_.size() - 1,
                                 content_.size());
        client.Send(Answer(rest ? "206 Partial" : "200 OK", lines) +
                    content_.substr(from, stalls_ ? 1'000 : std::string::npos));
        if (stalls_)
            client.Wait();
    }};
};

/// Names in a folder, staged and kept ones too.
std::vector<std::string> NamesIn(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    EXPECT_FALSE(platform::ListFolder(folder, entries));
    std::vector<std::string> names;
    for (const auto& entry : entries)
        names.push_back(entry.name);
    std::sort(names.begin(), names.end());
    return names;
}

/// The download, stopped once the label tells that some of it came.
class StopsAfterSome : public World
{
public:
    void Stop(const Download& download, bool keeps = true)
    {
        const auto start = Clock::now();
        for (int step = 3; Clock::now() - start < soon; ++step) {
            host.progressTexts.clear();
            host.StopAtStep(step);
            const auto done = DownloadFile(host, machine, download);
            ASSERT_FALSE(done);
            ASSERT_EQ(done.Error().code, ErrorCode::Stopped);
            if (host.progressTexts.size() > 1) {
                EXPECT_THAT(done.Error().reason,
                            HasSubstr(keeps ? "goes on from there" : "begins anew"));
                return;
            }
        }
        FAIL() << "nothing came";
    }
};

TEST(DownloadFile, GoesOnWithWhatAStoppedOneLeft)
{
    StopsAfterSome box;
    SlowServer slow{std::string(5'000, 'x')};
    box.Write("folder/level.zip", "old");
    const Download download{slow.server_.Address("/level.zip"), box / "folder/level.zip"};
    box.Stop(download);
    EXPECT_EQ(box.Read("folder/level.zip"), "old");
    EXPECT_EQ(NamesIn(box / "folder").size(), 3u); // what came, and the note of what it is

    slow.stalls_ = false;
    std::filesystem::permissions(download.target, std::filesystem::perms::owner_all);
    box.Write("folder/.kv~7ffffff-1", "of a download that was killed");
    box.Write("folder/.kv~1-7", "of one that runs");
    box.host.StopAtStep(0);
    const auto done = DownloadFile(box.host, box.machine, download);
    ASSERT_TRUE(done) << done.Error().reason;
    EXPECT_EQ(done->status, 206);
    EXPECT_EQ(done->size, 5'000u);
    EXPECT_EQ(box.Read("folder/level.zip"), slow.content_);
    EXPECT_EQ(NamesIn(box / "folder"), (std::vector<std::string>{".kv~1-7", "level.zip"}));
    EXPECT_EQ(std::filesystem::status(download.target).permissions(),
              std::filesystem::perms::owner_all);
    EXPECT_THAT(slow.server_.Requests().back(), HasSubstr("Range: bytes=1000-\r\n"));
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
}

TEST(DownloadFile, BeginsAnewWhereTheServersFileIsAnotherOne)
{
    for (const char* change : {"content", "address", "part", "note"}) {
        StopsAfterSome box;
        SlowServer slow{std::string(5'000, 'x')};
        Download download{slow.server_.Address("/level.zip"), box / "level.zip"};
        box.Stop(download);
        slow.stalls_ = false;
        box.host.StopAtStep(0);
        if (std::string{"content"} == change) {
            slow.content_ = std::string(4'000, 'y');
            slow.mark_ = "\"2\"";
        } else if (std::string{"address"} == change) {
            download.url = slow.server_.Address("/another.zip");
        } else if (std::string{"part"} == change) {
            box.Write(".kv~part-level.zip", "cut");
        } else {
            box.Write(".kv~part-level.zip.json", R"({"url":"x","validator":"a\nb","size":1})");
        }
        const auto done = DownloadFile(box.host, box.machine, download);
        ASSERT_TRUE(done) << change << done.Error().reason;
        EXPECT_EQ(done->status, 200) << change;
        EXPECT_EQ(box.Read("level.zip"), slow.content_) << change;
        EXPECT_FALSE(box.Has(".kv~part-level.zip")) << change;
    }
}

TEST(DownloadFile, AServersPageIsAFileWhoseStatusIsKnown)
{
    StopsAfterSome box;
    SlowServer slow{std::string(5'000, 'x')};
    Download download{slow.server_.Address("/level.zip"), box / "level.zip"};
    box.Stop(download);

    // The part outlives a day on which the server has nothing but pages.
    const ScriptedServer missing{[](const Connection& client) {
        client.Send(Answer("404 Not Found", "Content-Length: 4\r\n") + "page");
    }};
    std::string note = box.Read(".kv~part-level.zip.json");
    const std::string other = missing.Address("/level.zip");
    note.replace(note.find("http://"), download.url.size(), other);
    box.Write(".kv~part-level.zip.json", note);
    download.url = other;
    box.host.StopAtStep(0);
    const auto page = DownloadFile(box.host, box.machine, download);
    ASSERT_TRUE(page) << page.Error().reason;
    EXPECT_EQ(page->status, 404);
    EXPECT_EQ(AnswerWords(*page), "the server answered 404");
    EXPECT_EQ(box.Read("level.zip"), "page");
    EXPECT_EQ(box.Read(".kv~part-level.zip").size(), 1'000u);

    // Who wants no pages keeps the file that is there.
    box.Write("level.zip", "old");
    const auto names = NamesIn(box.root);
    download.takesPages = false;
    const auto none = DownloadFile(box.host, box.machine, download);
    ASSERT_TRUE(none) << none.Error().reason;
    EXPECT_EQ(none->status, 404);
    EXPECT_EQ(box.Read("level.zip"), "old");
    EXPECT_EQ(NamesIn(box.root), names);

    // A server that has nothing behind the part gives the whole anew.
    const ScriptedServer shrunk{[](const Connection& client) {
        if (client.Header("Range").empty())
            client.Send(Answer("200 OK", "Content-Length: 3\r\n") + "new");
        else
            client.Send(Answer("416 Range Not Satisfiable", "Content-Length: 4\r\n") + "page");
    }};
    note = box.Read(".kv~part-level.zip.json");
    note.replace(note.find("http://"), other.size(), shrunk.Address("/level.zip"));
    box.Write(".kv~part-level.zip.json", note);
    download.url = shrunk.Address("/level.zip");
    const auto anew = DownloadFile(box.host, box.machine, download);
    ASSERT_TRUE(anew) << anew.Error().reason;
    EXPECT_EQ(box.Read("level.zip"), "new");
    EXPECT_EQ(AnswerWords(*anew), "");
}

TEST(DownloadFile, APartWithoutItsNoteTakesNoRoom)
{
    StopsAfterSome box;
    const SlowServer slow{std::string(5'000, 'x')};
    box.Write("folder/old", "old");
    const FailingCalls failing{platform::FileAction::Rename, ".kv~part-list.json", -1};
    box.Stop({slow.server_.Address("/list"), box / "folder/list"}, false);
    EXPECT_GT(failing.Failed(), 0);
    EXPECT_EQ(NamesIn(box / "folder"), std::vector<std::string>{"old"});
}

TEST(DownloadFile, AnAnswerThatBringsNoFileReplacesNone)
{
    World box;
    box.Write("own/old", "old");
    for (const char* status :
         {"204 No Content", "302 Found", "304 Not Modified", "400 Bad Request"}) {
        const ScriptedServer server{[&](const Connection& client) {
            const bool empty = std::string_view{status}.starts_with("204") ||
                               std::string_view{status}.starts_with("304");
            client.Send(Answer(status, empty ? "" : "Content-Length: 4\r\n") +
                        (empty ? "" : "page"));
        }};
        const auto none = DownloadFile(
            box.host, box.machine,
            {.url = server.Address("/a"), .target = box / "own/old", .takesPages = false});
        ASSERT_TRUE(none) << status << none.Error().reason;
        EXPECT_EQ(AnswerWords(*none), "the server answered " + std::string{status}.substr(0, 3));
        EXPECT_EQ(box.Read("own/old"), "old") << status;
    }
}

TEST(DownloadFile, SaysNothingOfTheNetworkAndAllOfTheDisk)
{
    World box;
    const ScriptedServer server{[](const Connection& client) {
        client.Send(Answer("200 OK", "Content-Length: 2000000\r\n") + "abc");
    }};
    box.Write("own/old", "old");
    const auto cut = DownloadFile(box.host, box.machine, {server.Address("/a"), box / "own/old"});
    ASSERT_FALSE(cut);
    EXPECT_EQ(cut.Error().reason, "the connection ended before the whole file was there; nothing "
                                  "of it was kept, so the next download begins anew");
    const auto bad = DownloadFile(box.host, box.machine, {"file:///etc/passwd", box / "own/old"});
    ASSERT_FALSE(bad);
    const auto tooLong =
        DownloadFile(box.host, box.machine, {server.Address("/a"), box / "own/old", 1'000});
    ASSERT_FALSE(tooLong);
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();

    box.machine.free = 1'000'000;
    const auto full = DownloadFile(box.host, box.machine, {server.Address("/a"), box / "own/old"});
    ASSERT_FALSE(full);
    EXPECT_EQ(full.Error().code, ErrorCode::NoSpace);
    EXPECT_TRUE(box.host.WasTold("Download error: "));
    EXPECT_NE(box.host.told.back().reason.find("; nothing of it was kept"), std::string::npos);
    box.Write("own/folder/file", "");
    EXPECT_FALSE(DownloadFile(box.host, box.machine, {server.Address("/a"), box / "own/folder"}));
    EXPECT_EQ(box.host.told.size(), 2u) << box.host.AllTold();
    EXPECT_EQ(box.Read("own/old"), "old");
    EXPECT_EQ(NamesIn(box / "own").size(), 2u);
}

TEST(DownloadFile, KeepsNothingWhereNobodyGoesOn)
{
    StopsAfterSome box;
    const SlowServer slow{std::string(5'000, 'x')};
    box.Write("folder/old", "old");
    box.Stop(
        {.url = slow.server_.Address("/list"), .target = box / "folder/list", .keepsParts = false},
        false);
    EXPECT_EQ(NamesIn(box / "folder"), std::vector<std::string>{"old"});
}

TEST(DownloadFile, AGivenUpOneIsHeardWhileTheServerSaysNothing)
{
    World box;
    ASSERT_TRUE(MakeFolder(box / "own"));
    const ScriptedServer server{[](const Connection& client) { client.Wait(); }};
    box.host.StopAtStep(2);
    const auto start = Clock::now();
    const auto stopped =
        DownloadFile(box.host, box.machine, {server.Address("/x.zip"), box / "own/x"});
    EXPECT_LT(Clock::now() - start, soon);
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
    EXPECT_EQ(box.host.progressTexts.front(), "Waiting response to download x.zip");
    EXPECT_TRUE(NamesIn(box / "own").empty());
}

TEST(DownloadFile, WithoutALengthTellsTheGrowingSize)
{
    World box;
    const ScriptedServer server{[](const Connection& client) {
        client.Send(Answer("200 OK", "") + "12");
        client.Send("34");
    }};
    const auto done = DownloadFile(box.host, box.machine, {server.Address("/x"), box / "x"});
    ASSERT_TRUE(done);
    EXPECT_EQ(done->size, 4u);
    EXPECT_EQ(box.Read("x"), "1234");
}

} // namespace

} // namespace kestrova::testing
