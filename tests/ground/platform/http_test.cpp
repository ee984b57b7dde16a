#include "platform/http.h"

#include "core/text.h"
#include "platform/proxy.h"
#include "sandbox/patience.h"
#include "sandbox/sandbox.h"
#include "sandbox/web_servers.h"

#include <cstdlib>
#include <fmt/format.h>
#include <gio/gio.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using namespace platform;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds pollSlice{30};

/// Keeps what comes.
class Kept : public HttpSink
{
public:
    std::string bytes;
    int begins = 0;
    std::size_t room = std::string::npos;

    std::error_code Begin(const HttpAnswer&) override
    {
        ++begins;
        return {};
    }
    std::error_code Take(std::span<const std::byte> more) override
    {
        if (bytes.size() + more.size() > room)
            return std::make_error_code(std::errc::no_space_on_device);
        bytes.append(reinterpret_cast<const char*>(more.data()), more.size());
        return {};
    }
};

struct Got {
    std::string bytes;
    HttpAnswer answer;
    HttpError error = HttpError::None;
    std::string reason;
    int begins = 0;
};

Got Get(const HttpRequest& request, HttpOptions options = {})
{
    HttpClient client{std::move(options)};
    Kept kept;
    HttpFetch fetch = client.Start(request, kept);
    while (client.Poll(pollSlice))
        ;
    return {kept.bytes, fetch.Answer(), fetch.Error(), fetch.Reason(), kept.begins};
}

/// A server that keeps silent about it may close while the next request is under way.
constexpr std::string_view goesAfterIt = "Connection: close\r\n";

std::string Head(std::string_view lines)
{
    return "HTTP/1.1 200 OK\r\n" + std::string{goesAfterIt} + std::string{lines} + "\r\n";
}

TEST(Http, BringsAFileOfARealServerWithItsStatusAndLength)
{
    const Sandbox box;
    const std::string level(3'000'000, 'x');
    box.Write("my level\xC3\xA9.zip", level);
    box.Write("empty", "");
    const RealServer server{box.root};

    const Got whole = Get({server.Address("/my level\xC3\xA9.zip")});
    EXPECT_EQ(whole.error, HttpError::None) << whole.reason;
    EXPECT_EQ(whole.bytes, level);
    EXPECT_EQ(whole.answer.status, 200);
    EXPECT_EQ(whole.answer.total, level.size());

    const Got part =
        Get({server.Address("/my level\xC3\xA9.zip"), 1'000'000, whole.answer.validator});
    EXPECT_EQ(part.answer.status, 206) << whole.answer.validator;
    EXPECT_EQ(part.answer.from, 1'000'000u);
    EXPECT_EQ(part.answer.total, level.size());
    EXPECT_EQ(part.bytes.size(), 2'000'000u);

    // The server's file is another one by now: all of it comes.
    const Got anew = Get({server.Address("/my level\xC3\xA9.zip"), 1'000'000, "\"another\""});
    EXPECT_EQ(anew.answer.status, 200);
    EXPECT_EQ(anew.answer.from, 0u);
    EXPECT_EQ(anew.bytes.size(), level.size());

    const Got page = Get({server.Address("/missing")});
    EXPECT_EQ(page.error, HttpError::None);
    EXPECT_EQ(page.answer.status, 404);
    EXPECT_NE(page.bytes.find("404"), std::string::npos);

    const Got empty = Get({server.Address("/empty")});
    EXPECT_EQ(empty.error, HttpError::None);
    EXPECT_EQ(empty.begins, 1);
}

TEST(Http, BringsSeveralFilesAtOnce)
{
    const Sandbox box;
    for (int i = 0; i < 5; ++i)
        box.Write(std::to_string(i), std::string(200'000, static_cast<char>('a' + i)));
    const RealServer server{box.root};
    HttpClient client;
    std::vector<Kept> kept(5);
    std::vector<HttpFetch> fetches;
    for (std::size_t i = 0; i < kept.size(); ++i)
        fetches.push_back(client.Start({server.Address("/" + std::to_string(i))}, kept[i]));
    while (client.Poll(pollSlice))
        ;
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_EQ(kept[i].bytes, std::string(200'000, static_cast<char>('a' + i)));
}

TEST(Http, TrustsAServerOnlyByItsCertificate)
{
    const Sandbox box;
    box.Write("list", "content");
    const RealServer server{box.root, "127.0.0.1"};
    const Got selfSigned = Get({server.Address("/list")});
    EXPECT_EQ(selfSigned.error, HttpError::Certificate) << selfSigned.reason;
    EXPECT_EQ(selfSigned.bytes, "");
    EXPECT_EQ(Get({server.Address("/list")}, {server.Certificate()}).bytes, "content");

    const RealServer other{box.root, "levels.example"};
    const Got wrongName = Get({other.Address("/list")}, {other.Certificate()});
    EXPECT_EQ(wrongName.error, HttpError::Certificate) << wrongName.reason;
}

TEST(Http, AsksLikeTheProgramAndTellsNothingElse)
{
    const ScriptedServer server{[](const Connection& client) {
        client.Send(Head("Set-Cookie: a=b\r\nContent-Length: 2\r\n") + "ok");
    }};
    HttpClient client;
    for (int i = 0; i < 2; ++i) {
        Kept kept;
        const HttpFetch fetch = client.Start({server.Address("/a?b=c")}, kept);
        while (client.Poll(pollSlice))
            ;
    }
    ASSERT_EQ(server.Requests().size(), 2u);
    const std::string asked = server.Requests().back();
    EXPECT_NE(asked.find("GET /a?b=c HTTP/1.1\r\n"), std::string::npos) << asked;
    EXPECT_NE(asked.find("\r\nUser-Agent: VB OpenUrl\r\n"), std::string::npos) << asked;
    EXPECT_NE(asked.find("\r\nCache-Control: no-cache\r\n"), std::string::npos) << asked;
    EXPECT_EQ(asked.find("Cookie"), std::string::npos) << asked;
    EXPECT_EQ(asked.find("Authorization"), std::string::npos) << asked;
}

struct Odd {
    const char* what;
    std::function<void(const Connection&)> talk;
    HttpError error;
    std::string bytes{};
    milliseconds silence = soon; ///< short where silence is the case
};

constexpr milliseconds shortSilence{300};

TEST(Http, HearsOutServersThatKeepToNothing)
{
    const std::vector<Odd> cases{
        {"no length", [](const Connection& c) { c.Send(Head("") + "all"); }, HttpError::None,
         "all"},
        {"chunks",
         [](const Connection& c) {
             c.Send(Head("Transfer-Encoding: chunked\r\n") + "2\r\nab\r\n1\r\nc\r\n0\r\n\r\n");
         },
         HttpError::None, "abc"},
        {"chunks that stop",
         [](const Connection& c) { c.Send(Head("Transfer-Encoding: chunked\r\n") + "5\r\nab"); },
         HttpError::Cut},
        {"too few bytes",
         [](const Connection& c) { c.Send(Head("Content-Length: 9\r\n") + "abc"); },
         HttpError::Cut},
        {"a length below nothing",
         [](const Connection& c) { c.Send(Head("Content-Length: -5\r\n") + "abc"); },
         HttpError::Other},
        {"nothing at all", [](const Connection&) {}, HttpError::Cut},
        {"half a head", [](const Connection& c) { c.Send("HTTP/1.1 200 OK\r\nContent-"); },
         HttpError::Cut},
        {"no http", [](const Connection& c) { c.Send("hello\r\n"); }, HttpError::Other},
        {"a head without end",
         [](const Connection& c) {
             c.Send("HTTP/1.1 200 OK\r\n");
             for (int i = 0; c.Send(fmt::format("X-{}: {}\r\n", i, std::string(900, 'x'))); ++i)
                 ;
         },
         HttpError::Other},
        {"a line without end",
         [](const Connection& c) {
             c.Send("HTTP/1.1 200 OK\r\nX: ");
             while (c.Send(std::string(10'000, 'x')))
                 ;
         },
         HttpError::Other},
        {"more than the bound",
         [](const Connection& c) {
             c.Send(Head(""));
             while (c.Send(std::string(10'000, 'x')))
                 ;
         },
         HttpError::TooLong},
        {"a length above the bound",
         [](const Connection& c) { c.Send(Head("Content-Length: 99999999\r\n") + "abc"); },
         HttpError::TooLong},
        {"silence", [](const Connection& c) { c.Wait(); }, HttpError::Silent, "", shortSilence},
        {"silence in between",
         [](const Connection& c) {
             c.Send(Head("Content-Length: 9\r\n") + "abc");
             c.Wait();
         },
         HttpError::Silent, "", shortSilence},
        {"a part that nobody asked for",
         [](const Connection& c) {
             c.Send("HTTP/1.1 206 Partial\r\nContent-Range: bytes 3-4/5\r\nContent-Length: "
                    "2\r\n\r\nab");
         },
         HttpError::OtherPart},
        {"a redirect to a file",
         [](const Connection& c) {
             c.Send("HTTP/1.1 302 Found\r\nLocation: file:///etc/passwd\r\n\r\npage");
         },
         HttpError::Redirects},
        {"a redirect with a password",
         [](const Connection& c) {
             c.Send("HTTP/1.1 302 Found\r\nLocation: http://a:b@127.0.0.1/\r\n\r\npage");
         },
         HttpError::Redirects},
        {"redirects in a circle",
         [](const Connection& c) {
             c.Send("HTTP/1.1 302 Found\r\nLocation: /again\r\nConnection: close\r\n"
                    "Content-Length: 4\r\n\r\npage");
         },
         HttpError::Redirects},
        {"a redirect",
         [](const Connection& c) {
             if (c.request.starts_with("GET /list "))
                 c.Send("HTTP/1.1 301 Moved\r\nLocation: /new\r\nConnection: close\r\n"
                        "Content-Length: 4\r\n\r\npage");
             else
                 c.Send(Head("Content-Length: 3\r\n") + "new");
         },
         HttpError::None, "new"},
    };
    for (const Odd& odd : cases) {
        const ScriptedServer server{odd.talk};
        HttpRequest request{server.Address("/list")};
        request.most = 1'000'000;
        request.silence = odd.silence;
        const Got got = Get(request);
        EXPECT_EQ(static_cast<int>(got.error), static_cast<int>(odd.error))
            << odd.what << ": " << got.reason;
        if (odd.error == HttpError::None || odd.error == HttpError::Redirects) {
            EXPECT_EQ(got.bytes, odd.bytes) << odd.what;
        }
    }
}

TEST(Http, GoesOnAfterEveryClosedConnection)
{
    std::string level;
    for (int i = 0; i < 5'000; ++i)
        level += static_cast<char>(i * 7);
    const ScriptedServer server{[&](const Connection& client) {
        const std::string range = client.Header("Range");
        const std::size_t from =
            range.empty() ? 0 : static_cast<std::size_t>(LeadingNumber(range.substr(6)));
        const std::string status = range.empty() ? "200 OK" : "206 Partial Content";
        client.Send(
            fmt::format("HTTP/1.1 {}\r\nConnection: close\r\nETag: \"1\"\r\nContent-Length: {}\r\n",
                        status, level.size() - from) +
            (range.empty() ? ""
                           : fmt::format("Content-Range: bytes {}-{}/{}\r\n", from,
                                         level.size() - 1, level.size())) +
            "\r\n" + level.substr(from, 1'024));
    }};
    std::string have;
    std::string validator;
    for (int tries = 0; have.size() < level.size() && tries < 10; ++tries) {
        const Got got = Get({server.Address("/level.zip"), have.size(), validator});
        ASSERT_EQ(got.answer.from, have.size());
        have += got.bytes;
        validator = got.answer.validator;
        EXPECT_EQ(got.error, have.size() < level.size() ? HttpError::Cut : HttpError::None)
            << got.reason;
    }
    EXPECT_TRUE(have == level);
    EXPECT_NE(server.Requests().back().find("If-Range: \"1\"\r\n"), std::string::npos);
}

TEST(Http, StopsAtOnceAndTicksMeanwhile)
{
    const ScriptedServer server{[](const Connection& client) { client.Wait(); }};
    HttpClient client;
    Kept kept;
    HttpFetch fetch = client.Start({server.Address("/")}, kept);
    const auto start = Clock::now();
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(client.Poll(pollSlice));
    fetch.Stop();
    EXPECT_FALSE(client.Poll(pollSlice));
    EXPECT_LT(Clock::now() - start, soon);
    EXPECT_EQ(fetch.Error(), HttpError::None);
    EXPECT_FALSE(fetch.IsRunning());
}

TEST(Http, EndsWhereNothingCanBePutAway)
{
    const ScriptedServer server{
        [](const Connection& client) { client.Send(Head("Content-Length: 3\r\n") + "abc"); }};
    HttpClient client;
    Kept kept;
    kept.room = 2;
    const HttpFetch fetch = client.Start({server.Address("/")}, kept);
    while (client.Poll(pollSlice))
        ;
    EXPECT_EQ(fetch.Error(), HttpError::Sink);
    EXPECT_EQ(fetch.SinkFailure(), std::errc::no_space_on_device);
}

TEST(Http, RefusesWhatIsNoAddressOfTheWeb)
{
    for (const char* url :
         {"", "file:///etc/passwd", "ftp://127.0.0.1/a", "http://", "http://a:b@c/",
          "http://127.0.0.1:99999/", "\x01", "javascript:x", "https://user@c/"})
        EXPECT_EQ(static_cast<int>(Get({url}).error), static_cast<int>(HttpError::BadAddress))
            << url;
    // Nobody listens there, and nobody knows that name.
    EXPECT_EQ(Get({"http://127.0.0.1:1/"}).error, HttpError::NoConnection);
    EXPECT_EQ(Get({"http://nowhere.invalid/"}).error, HttpError::NoHost);
}

TEST(Http, GoesThroughTheProxyOfTheEnvironment)
{
    const ScriptedServer proxy{
        [](const Connection& client) { client.Send(Head("Content-Length: 3\r\n") + "abc"); }};
    ::setenv("http_proxy", proxy.Address("").c_str(), 1);
    const Got got = Get({"http://levels.invalid/list"});
    ::unsetenv("http_proxy");
    EXPECT_EQ(got.bytes, "abc") << got.reason;
    ASSERT_EQ(proxy.Requests().size(), 1u);
    EXPECT_TRUE(proxy.Requests().front().starts_with("GET http://levels.invalid/list HTTP/1.1"));
}

TEST(Http, AsksTheDesktopForTheProxyOfAnAddressThatWasTypedShort)
{
    const ScriptedServer proxy{
        [](const Connection& client) { client.Send(Head("Content-Length: 3\r\n") + "abc"); }};
    GProxyResolver* const desktop = g_simple_proxy_resolver_new(nullptr, nullptr);
    g_simple_proxy_resolver_set_uri_proxy(G_SIMPLE_PROXY_RESOLVER(desktop), "http",
                                          proxy.Address("").c_str());
    HttpOptions options;
    options.resolver = desktop;
    const Got got = Get({"levels.invalid/my list"}, options);
    g_object_unref(desktop);
    EXPECT_EQ(got.bytes, "abc") << got.reason;
    ASSERT_EQ(proxy.Requests().size(), 1u);
    EXPECT_TRUE(proxy.Requests().front().starts_with("GET http://levels.invalid/my%20list "));
}

/// Starts another fetch of its client while the library hands it bytes, when it takes no more.
class StartsAnother : public Kept
{
public:
    explicit StartsAnother(HttpClient& client, std::string url)
        : client_(client), url_(std::move(url))
    {
    }
    bool ended = false;
    HttpError error = HttpError::None;

    std::error_code Take(std::span<const std::byte> more) override
    {
        Kept kept;
        const HttpFetch another = client_.Start({url_}, kept);
        for (const auto start = Clock::now(); another.IsRunning() && Clock::now() - start < soon;)
            client_.Poll(pollSlice);
        ended = !another.IsRunning();
        error = another.Error();
        return Kept::Take(more);
    }

private:
    HttpClient& client_;
    std::string url_;
};

TEST(Http, AFetchThatTheLibraryDoesNotTakeEnds)
{
    const ScriptedServer server{
        [](const Connection& client) { client.Send(Head("Content-Length: 3\r\n") + "abc"); }};
    HttpClient client;
    StartsAnother sink{client, server.Address("/another")};
    const HttpFetch fetch = client.Start({server.Address("/")}, sink);
    while (client.Poll(pollSlice))
        ;
    EXPECT_EQ(fetch.Error(), HttpError::None) << fetch.Reason();
    EXPECT_EQ(sink.bytes, "abc");
    EXPECT_TRUE(sink.ended);
    EXPECT_EQ(sink.error, HttpError::Other);
}

TEST(Proxy, IsTheOneThatTheDesktopNames)
{
    EXPECT_EQ(ProxyFrom({"http://proxy:8080", "direct://"}), "http://proxy:8080");
    EXPECT_EQ(ProxyFrom({"socks://proxy:1080"}), "socks5h://proxy:1080");
    EXPECT_EQ(ProxyFrom({"direct://", "http://proxy:8080"}), "");
    EXPECT_EQ(ProxyFrom({}), "");

    GProxyResolver* const desktop = g_simple_proxy_resolver_new("http://proxy:3128", nullptr);
    ProxyLookup lookup{"http://levels.example/", desktop};
    const auto start = Clock::now();
    std::optional<std::string> proxy;
    while (!proxy && Clock::now() - start < soon)
        proxy = lookup.Poll();
    EXPECT_EQ(proxy, "http://proxy:3128");
    g_object_unref(desktop);
}

} // namespace

} // namespace kestrova::testing
