#include "platform/http.h"

#include "platform/proxy.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <curl/curl.h>
#include <fcntl.h>
#include <mutex>
#include <string_view>
#include <sys/socket.h>

namespace kestrova::platform
{

namespace
{

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr const char* agentName = "VB OpenUrl"; // not shown
constexpr const char* webSchemes = "http,https";
constexpr long mostRedirects = 10;
constexpr long longestConnect = 30; // seconds
// What a read takes from a connection at the most. The library reads up to a hundred times before
// it lets anybody else go on.
constexpr long bufferBytes = 32L << 10;
constexpr std::size_t longestHead = 256'000; // bytes of all head lines of one fetch
constexpr milliseconds lookupPause{10};

struct EasyEnd {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct AddressEnd {
    void operator()(CURLU* address) const { curl_url_cleanup(address); }
};
struct WordsEnd {
    void operator()(curl_slist* words) const { curl_slist_free_all(words); }
};
using Address = std::unique_ptr<CURLU, AddressEnd>;

} // namespace

struct HttpClient::Shared {
    HttpOptions options;
    CURLM* multi = nullptr;
    std::vector<HttpFetch::State*> running;
};

struct HttpFetch::State {
    HttpRequest request;
    HttpSink* sink = nullptr;
    HttpClient::Shared* client = nullptr;
    std::unique_ptr<CURL, EasyEnd> easy;
    Address address;
    std::unique_ptr<curl_slist, WordsEnd> headers;
    std::unique_ptr<ProxyLookup> lookup; ///< while it is there nothing was sent
    bool added = false;                  ///< to the client's handle
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

    void Leave();
    void End(CURLcode code);
    bool Begin();
    bool Take(std::span<const std::byte> bytes);
    bool Fail(HttpError kind);
};

namespace
{

using State = HttpFetch::State;

std::string HeaderOf(CURL* easy, const char* name)
{
    curl_header* header = nullptr;
    constexpr int last = -1; // of all the answers that redirects brought
    return curl_easy_header(easy, name, 0, CURLH_HEADER, last, &header) == CURLHE_OK
               ? std::string{header->value}
               : std::string{};
}

/// What a later request may name the file by: a tag that stands for its bytes, or else its time.
std::string ValidatorOf(CURL* easy)
{
    const std::string tag = HeaderOf(easy, "ETag");
    return tag.starts_with('"') ? tag : HeaderOf(easy, "Last-Modified");
}

bool ReadNumber(std::string_view& text, std::uint64_t& number)
{
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return failure == std::errc{};
}

/// `bytes 200-999/1000`, or with `*` for a length that the server does not know.
bool ReadContentRange(std::string_view text, HttpAnswer& answer)
{
    std::uint64_t last = 0;
    if (!text.starts_with("bytes "))
        return false;
    text.remove_prefix(6);
    if (!ReadNumber(text, answer.from) || !text.starts_with('-'))
        return false;
    text.remove_prefix(1);
    if (!ReadNumber(text, last) || !text.starts_with('/') || last < answer.from)
        return false;
    text.remove_prefix(1);
    answer.total = last + 1;
    std::uint64_t total = 0;
    return text == "*" || (ReadNumber(text, total) && text.empty() && total == last + 1);
}

HttpError KindOf(CURLcode code, bool redirected)
{
    switch (code) {
    case CURLE_OK:
        return HttpError::None;
    case CURLE_UNSUPPORTED_PROTOCOL:
        return redirected ? HttpError::Redirects : HttpError::Other; // an answer that is no http
    case CURLE_URL_MALFORMAT:
    case CURLE_LOGIN_DENIED:
        return redirected ? HttpError::Redirects : HttpError::BadAddress;
    case CURLE_TOO_MANY_REDIRECTS:
        return HttpError::Redirects;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return HttpError::NoHost;
    case CURLE_COULDNT_CONNECT:
    case CURLE_SSL_CONNECT_ERROR:
        return HttpError::NoConnection;
    case CURLE_PEER_FAILED_VERIFICATION:
        return HttpError::Certificate;
    case CURLE_OPERATION_TIMEDOUT:
        return HttpError::Silent;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return HttpError::Cut;
    default:
        return HttpError::Other;
    }
}

std::size_t OnBody(char* bytes, std::size_t, std::size_t count, void* data)
{
    auto& state = *static_cast<State*>(data);
    return state.Take(std::as_bytes(std::span{bytes, count})) ? count : 0;
}

std::size_t OnHead(char* line, std::size_t, std::size_t count, void* data)
{
    auto& state = *static_cast<State*>(data);
    state.headWhole = count > 0 && (line[0] == '\r' || line[0] == '\n');
    state.heard = Clock::now();
    state.headBytes += count;
    return state.headBytes <= longestHead || state.Fail(HttpError::Other) ? count : 0;
}

/// A connection that no child of this program inherits.
curl_socket_t OnSocket(void*, curlsocktype, curl_sockaddr* address)
{
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

/// The address in parts, with what no address holds (blanks, letters beyond ASCII) encoded; null
/// for one that is none of the web.
Address ReadAddress(const std::string& url)
{
    Address address{curl_url()};
    const std::string whole = url.find("://") == std::string::npos ? "http://" + url : url;
    if (curl_url_set(address.get(), CURLUPART_URL, whole.c_str(),
                     CURLU_URLENCODE | CURLU_ALLOW_SPACE) != CURLUE_OK)
        return nullptr;
    char* part = nullptr;
    if (curl_url_get(address.get(), CURLUPART_USER, &part, 0) == CURLUE_OK) {
        curl_free(part);
        return nullptr;
    }
    if (curl_url_get(address.get(), CURLUPART_SCHEME, &part, 0) != CURLUE_OK)
        return nullptr;
    const std::string scheme = part;
    curl_free(part);
    return scheme == "http" || scheme == "https" ? std::move(address) : nullptr;
}

void SetRules(CURL* easy, const HttpOptions& options)
{
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, webSchemes);
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, webSchemes);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, mostRedirects);
    curl_easy_setopt(easy, CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    curl_easy_setopt(easy, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    curl_easy_setopt(easy, CURLOPT_HTTPAUTH, CURLAUTH_NONE);
    curl_easy_setopt(easy, CURLOPT_USERAGENT, agentName);
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, longestConnect);
    curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, bufferBytes);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A name server that says nothing is left behind, so that nobody waits for it after Stop.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, OnSocket);
    if (!options.authorities.empty())
        curl_easy_setopt(easy, CURLOPT_CAINFO, options.authorities.c_str());
}

/// The bytes that are asked for, and from nobody's memory but the server's.
void SetRequest(State& state)
{
    CURL* const easy = state.easy.get();
    curl_easy_setopt(easy, CURLOPT_CURLU, state.address.get());
    curl_slist* words = curl_slist_append(nullptr, "Cache-Control: no-cache"); // not shown
    words = curl_slist_append(words, "Pragma: no-cache");                      // not shown
    if (state.request.from > 0 && !state.request.validator.empty()) {
        const std::string range = std::to_string(state.request.from) + "-";
        curl_easy_setopt(easy, CURLOPT_RANGE, range.c_str());
        words = curl_slist_append(words, ("If-Range: " + state.request.validator).c_str());
    }
    state.headers.reset(words);
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, words);
}

void SetCalls(State& state)
{
    CURL* const easy = state.easy.get();
    curl_easy_setopt(easy, CURLOPT_PRIVATE, &state);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, state.words);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, OnBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &state);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, OnHead);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &state);
}

} // namespace

/// Lets go of the connection. What was heard stays.
void HttpFetch::State::Leave()
{
    if (client == nullptr)
        return;
    if (added)
        curl_multi_remove_handle(client->multi, easy.get());
    std::erase(client->running, this);
    added = false;
    client = nullptr;
    lookup.reset();
    easy.reset();
}

bool HttpFetch::State::Fail(HttpError kind)
{
    error = kind;
    return false;
}

/// Reads the answer's head and hands it to the sink.
bool HttpFetch::State::Begin()
{
    begun = true;
    long status = 0;
    curl_off_t length = -1;
    curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(easy.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    answer.status = static_cast<int>(status);
    if (length >= 0)
        answer.total = static_cast<std::uint64_t>(length);
    constexpr int partOfIt = 206;
    if (answer.status == partOfIt &&
        (!ReadContentRange(HeaderOf(easy.get(), "Content-Range"), answer) ||
         answer.from != request.from))
        return Fail(HttpError::Cut);
    answer.validator = ValidatorOf(easy.get());
    if (request.most > 0 && answer.total.value_or(0) > request.most)
        return Fail(HttpError::TooLong);
    sinkFailure = sink->Begin(answer);
    return !sinkFailure || Fail(HttpError::Sink);
}

bool HttpFetch::State::Take(std::span<const std::byte> bytes)
{
    if (!begun && !Begin())
        return false;
    heard = Clock::now();
    received += bytes.size();
    if (request.most > 0 && answer.from + received > request.most)
        return Fail(HttpError::TooLong);
    sinkFailure = sink->Take(bytes);
    return !sinkFailure || Fail(HttpError::Sink);
}

/// The transfer has ended.
void HttpFetch::State::End(CURLcode code)
{
    long redirects = 0;
    curl_easy_getinfo(easy.get(), CURLINFO_REDIRECT_COUNT, &redirects);
    if (code == CURLE_OK && !headWhole)
        error = HttpError::Cut;
    else if (code == CURLE_OK && !begun)
        (void)Begin(); // its failure is noted
    else if (code != CURLE_OK && error == HttpError::None)
        error = KindOf(code, redirects > 0);
    if (error == HttpError::None && answer.total && answer.from + received != *answer.total)
        error = HttpError::Cut;
    if (code != CURLE_OK && code != CURLE_WRITE_ERROR)
        reason = words[0] != '\0' ? words : curl_easy_strerror(code);
    Leave();
}

HttpFetch::HttpFetch(std::unique_ptr<State> state) : state_(std::move(state)) {}

HttpFetch::~HttpFetch()
{
    Stop();
}

HttpFetch::HttpFetch(HttpFetch&& other) noexcept = default;

HttpFetch& HttpFetch::operator=(HttpFetch&& other) noexcept
{
    Stop();
    state_ = std::move(other.state_);
    return *this;
}

void HttpFetch::Stop()
{
    if (state_)
        state_->Leave();
}

bool HttpFetch::IsRunning() const
{
    return state_->client != nullptr;
}

std::uint64_t HttpFetch::Received() const
{
    return state_->answer.from + state_->received;
}

const HttpAnswer& HttpFetch::Answer() const
{
    return state_->answer;
}

HttpError HttpFetch::Error() const
{
    return state_->error;
}

std::error_code HttpFetch::SinkFailure() const
{
    return state_->sinkFailure;
}

const std::string& HttpFetch::Reason() const
{
    return state_->reason;
}

HttpClient::HttpClient(HttpOptions options) : shared_(std::make_unique<Shared>())
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    shared_->options = std::move(options);
    shared_->multi = curl_multi_init();
}

HttpClient::~HttpClient()
{
    while (!shared_->running.empty())
        shared_->running.back()->Leave();
    curl_multi_cleanup(shared_->multi);
}

HttpFetch HttpClient::Start(const HttpRequest& request, HttpSink& sink)
{
    auto state = std::make_unique<HttpFetch::State>();
    state->request = request;
    state->sink = &sink;
    state->client = shared_.get();
    shared_->running.push_back(state.get());
    state->address = ReadAddress(request.url);
    if (state->address) {
        state->easy.reset(curl_easy_init());
        SetRules(state->easy.get(), shared_->options);
        SetRequest(*state);
        SetCalls(*state);
        state->lookup = std::make_unique<ProxyLookup>(request.url);
    }
    return HttpFetch{std::move(state)};
}

namespace
{

/// Sends what waits for the desktop's word about the proxy. True when any still waits, and `ended`
/// when an address was none.
bool SendWaiting(HttpClient::Shared& shared, bool& ended)
{
    bool waits = false;
    const auto running = shared.running; // one that ends leaves the list
    for (State* state : running) {
        if (!state->address) {
            state->error = HttpError::BadAddress;
            state->Leave();
            ended = true;
        } else if (state->lookup) {
            const auto proxy = state->lookup->Poll();
            waits = waits || !proxy;
            if (!proxy)
                continue;
            if (!proxy->empty())
                curl_easy_setopt(state->easy.get(), CURLOPT_PROXY, proxy->c_str());
            state->lookup.reset();
            state->heard = Clock::now();
            state->added = curl_multi_add_handle(shared.multi, state->easy.get()) == CURLM_OK;
        }
    }
    return waits;
}

/// Gives up on servers that say nothing. True when any fetch has ended so.
bool DropSilent(HttpClient::Shared& shared)
{
    bool ended = false;
    const auto now = Clock::now();
    const auto running = shared.running;
    for (State* state : running)
        if (state->added && now - state->heard > state->request.silence) {
            state->error = HttpError::Silent;
            state->Leave();
            ended = true;
        }
    return ended;
}

/// True when any fetch has ended.
bool TakeEnded(CURLM* multi)
{
    bool ended = false;
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        const CURLcode code = message->data.result; // the message goes with its handle
        State* state = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &state);
        state->End(code);
        ended = true;
    }
    return ended;
}

} // namespace

bool HttpClient::Poll(std::chrono::milliseconds most)
{
    const auto end = Clock::now() + most;
    for (;;) {
        bool ended = false;
        const bool waits = SendWaiting(*shared_, ended);
        int active = 0;
        curl_multi_perform(shared_->multi, &active);
        ended = TakeEnded(shared_->multi) || ended;
        ended = DropSilent(*shared_) || ended;
        const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
        if (ended || shared_->running.empty() || left.count() <= 0)
            return !shared_->running.empty();
        const auto pause = waits ? std::min(left, lookupPause) : left;
        curl_multi_poll(shared_->multi, nullptr, 0, static_cast<int>(pause.count()), nullptr);
    }
}

} // namespace kestrova::platform
