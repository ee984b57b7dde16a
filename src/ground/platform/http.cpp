#include "platform/http.h"

#include "platform/http_transfer.h"

#include <algorithm>
#include <mutex>

namespace kestrova::platform
{

namespace
{

using std::chrono::milliseconds;

constexpr milliseconds lookupPause{10};

/// Sends what waits for the desktop's word about the proxy. True when any still waits, and `ended`
/// when any has ended: its address was none, or it could not be sent.
bool SendWaiting(HttpLoop& loop, bool& ended)
{
    bool waits = false;
    const auto running = loop.running; // one that ends leaves the list
    for (HttpTransfer* transfer : running) {
        if (!transfer->address) {
            transfer->error = HttpError::BadAddress;
            transfer->Leave();
            ended = true;
        } else if (transfer->lookup) {
            const auto proxy = transfer->lookup->Poll();
            waits = waits || !proxy;
            if (proxy && !transfer->Send(*proxy)) {
                transfer->Leave();
                ended = true;
            }
        }
    }
    return waits;
}

/// Gives up on servers that say nothing. True when any fetch has ended so.
bool DropSilent(HttpLoop& loop)
{
    bool ended = false;
    const auto now = HttpTransfer::Clock::now();
    const auto running = loop.running;
    for (HttpTransfer* transfer : running)
        if (transfer->added && now - transfer->heard > transfer->request.silence) {
            transfer->error = HttpError::Silent;
            transfer->Leave();
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
        HttpTransfer* transfer = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        transfer->End(code);
        ended = true;
    }
    return ended;
}

} // namespace

HttpFetch::HttpFetch(std::unique_ptr<HttpTransfer> transfer) : transfer_(std::move(transfer)) {}

HttpFetch::~HttpFetch()
{
    Stop();
}

HttpFetch::HttpFetch(HttpFetch&& other) noexcept = default;

HttpFetch& HttpFetch::operator=(HttpFetch&& other) noexcept
{
    Stop();
    transfer_ = std::move(other.transfer_);
    return *this;
}

void HttpFetch::Stop()
{
    if (transfer_)
        transfer_->Leave();
}

bool HttpFetch::IsRunning() const
{
    return transfer_->loop != nullptr;
}

std::uint64_t HttpFetch::Received() const
{
    return transfer_->answer.from + transfer_->received;
}

const HttpAnswer& HttpFetch::Answer() const
{
    return transfer_->answer;
}

HttpError HttpFetch::Error() const
{
    return transfer_->error;
}

std::error_code HttpFetch::SinkFailure() const
{
    return transfer_->sinkFailure;
}

const std::string& HttpFetch::Reason() const
{
    return transfer_->reason;
}

HttpClient::HttpClient(HttpOptions options) : loop_(std::make_unique<HttpLoop>())
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    loop_->options = std::move(options);
    loop_->multi = curl_multi_init();
}

HttpClient::~HttpClient()
{
    while (!loop_->running.empty())
        loop_->running.back()->Leave();
    curl_multi_cleanup(loop_->multi);
}

HttpFetch HttpClient::Start(const HttpRequest& request, HttpSink& sink)
{
    return HttpFetch{std::make_unique<HttpTransfer>(request, sink, *loop_)};
}

bool HttpClient::Poll(std::chrono::milliseconds most)
{
    const auto end = HttpTransfer::Clock::now() + most;
    for (;;) {
        bool ended = false;
        const bool waits = SendWaiting(*loop_, ended);
        int active = 0;
        curl_multi_perform(loop_->multi, &active);
        ended = TakeEnded(loop_->multi) || ended;
        ended = DropSilent(*loop_) || ended;
        const auto left = std::chrono::ceil<milliseconds>(end - HttpTransfer::Clock::now());
        if (ended || loop_->running.empty() || left.count() <= 0)
            return !loop_->running.empty();
        const auto pause = waits ? std::min(left, lookupPause) : left;
        curl_multi_poll(loop_->multi, nullptr, 0, static_cast<int>(pause.count()), nullptr);
    }
}

} // namespace kestrova::platform
