#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <vector>

struct _GProxyResolver;

/// Files from the web: http and https, certificates verified, redirects inside both and bounded,
/// never a cached copy, no cookies, no credentials. Nothing here waits for a server: fetches are
/// started, polled, stopped, and several may be under way in one loop.
namespace kestrova::platform
{

struct HttpLoop;
struct HttpTransfer;

/// Kinds of failure that callers tell apart.
enum class HttpError {
    None,
    BadAddress, ///< no address of http or https, or one with a password in it
    NoHost,
    NoConnection,
    Certificate, ///< not signed by whom this machine trusts, or another host's
    Cut,         ///< the connection ended before all was there
    OtherPart,   ///< not the part that was asked for came
    TooLong,     ///< above the request's bound
    Redirects,   ///< in a circle, or out of the web
    Silent,      ///< nothing came for the request's longest silence
    Sink,        ///< what came could not be put away
    Other
};

struct HttpRequest {
    std::string url;
    /// The bytes before it are there already. They are gone on with only while the server's file
    /// still bears `validator`, otherwise all of it comes.
    std::uint64_t from = 0;
    std::string validator{};
    std::uint64_t most = 0;                    ///< bytes of the whole file; 0: no bound
    std::chrono::milliseconds silence{60'000}; ///< after which it is given up
};

/// The answer that brings the rest of a file alone.
inline constexpr int httpPartOfIt = 206;
/// Whether an answer of that status brings the file that was asked for. Every other one brings a
/// page about something else, or nothing: an error, a redirect that leads nowhere, "no content".
constexpr bool BringsFile(int status)
{
    constexpr int whole = 200;
    constexpr int wholeFromProxy = 203;
    return status == whole || status == wholeFromProxy || status == httpPartOfIt;
}

/// The head of what the server answered, redirects behind it.
struct HttpAnswer {
    int status = 0;
    std::uint64_t from = 0;               ///< where the bytes that come stand in the file
    std::optional<std::uint64_t> total{}; ///< bytes of the whole file, where the server says it
    std::string validator{};              ///< for going on later; empty: it cannot be gone on with
};

/// Where a fetch puts what comes. Its failure ends the fetch.
class HttpSink
{
public:
    virtual ~HttpSink() = default;
    /// Once, before the first byte; of an empty file too. Whatever the status: a server's page
    /// about an error is a file like any other.
    virtual std::error_code Begin(const HttpAnswer& answer) = 0;
    virtual std::error_code Take(std::span<const std::byte> bytes) = 0;
};

/// One file on its way. Its sink and its client outlive it; its end stops it.
class HttpFetch
{
public:
    explicit HttpFetch(std::unique_ptr<HttpTransfer> transfer);
    ~HttpFetch();
    HttpFetch(HttpFetch&& other) noexcept;
    HttpFetch& operator=(HttpFetch&& other) noexcept;

    /// At once, whatever the server does.
    void Stop();
    [[nodiscard]] bool IsRunning() const;
    /// Bytes of the whole file that are there, with those that were there before.
    [[nodiscard]] std::uint64_t Received() const;
    [[nodiscard]] const HttpAnswer& Answer() const;
    /// `None` while it runs, and when all came. A stopped one has failed for no reason.
    [[nodiscard]] HttpError Error() const;
    /// What the sink answered.
    [[nodiscard]] std::error_code SinkFailure() const;
    /// The library's own words for the failure; may be empty.
    [[nodiscard]] const std::string& Reason() const;

private:
    std::unique_ptr<HttpTransfer> transfer_;
};

struct HttpOptions {
    /// A file of certificates to trust in place of the system's.
    std::filesystem::path authorities{};
    /// Whom to ask for the proxy; null for the desktop.
    _GProxyResolver* resolver = nullptr;
};

/// What fetches share: connections, which are used again, and the one loop that moves all of them.
class HttpClient
{
public:
    explicit HttpClient(HttpOptions options = {});
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    /// Begins; a bad address shows at the first `Poll`.
    [[nodiscard]] HttpFetch Start(const HttpRequest& request, HttpSink& sink);
    /// Works on all fetches until `most` has passed or one of them has ended. True while any runs.
    bool Poll(std::chrono::milliseconds most);

private:
    std::unique_ptr<HttpLoop> loop_;
};

} // namespace kestrova::platform
