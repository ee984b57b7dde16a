#pragma once

#include "platform/http_rules.h"
#include "platform/proxy.h"

#include <chrono>

namespace kestrova::platform
{

struct EasyEnd {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct WordsEnd {
    void operator()(curl_slist* words) const { curl_slist_free_all(words); }
};

/// What the fetches of one client share.
struct HttpLoop {
    HttpOptions options;
    CURLM* multi = nullptr;
    std::vector<HttpTransfer*> running;
};

/// One file on its way, as the transfer library sees it. It is in its loop's list until it ends.
struct HttpTransfer {
    using Clock = std::chrono::steady_clock;

    HttpRequest request;
    HttpSink* sink = nullptr;
    HttpLoop* loop = nullptr; ///< null once it has ended
    std::unique_ptr<CURL, EasyEnd> easy;
    Address address; ///< null: the request's is none of the web
    std::unique_ptr<curl_slist, WordsEnd> headers;
    std::unique_ptr<ProxyLookup> lookup; ///< while it is there nothing was sent
    bool added = false;                  ///< to the loop's handle
    bool begun = false;                  ///< the sink knows the answer
    bool headWhole = false;              ///< the last line of the head was the empty one
    std::size_t headBytes = 0;
    Clock::time_point heard{}; ///< when the server last said anything
    HttpAnswer answer;
    std::uint64_t received = 0; ///< bytes that came
    HttpError error = HttpError::None;
    std::error_code sinkFailure;
    std::string reason;
    char words[CURL_ERROR_SIZE] = {};

    HttpTransfer(const HttpRequest& asked, HttpSink& into, HttpLoop& shared);
    /// Hands the transfer, whose proxy is known (empty: the environment's), to the library. False
    /// when it is not taken.
    bool Send(const std::string& proxy);
    /// Lets go of the connection and of the loop. What was heard stays.
    void Leave();
    /// The transfer has ended.
    void End(CURLcode code);

    /// A line of the head came.
    bool TakeHead(std::string_view line);
    /// A piece of the file came.
    bool Take(std::span<const std::byte> bytes);

private:
    /// Reads the answer's head and hands it to the sink.
    bool Begin();
    bool Fail(HttpError kind);
    /// The bytes that are asked for, and from nobody's memory but the server's.
    void SetRequest();
};

} // namespace kestrova::platform
