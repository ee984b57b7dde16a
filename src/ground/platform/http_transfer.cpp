#include "platform/http_transfer.h"

namespace kestrova::platform
{

namespace
{

constexpr std::size_t longestHead = 256'000; // bytes of all head lines of one fetch

std::size_t OnBody(char* bytes, std::size_t, std::size_t count, void* data)
{
    auto& transfer = *static_cast<HttpTransfer*>(data);
    return transfer.Take(std::as_bytes(std::span{bytes, count})) ? count : 0;
}

std::size_t OnHead(char* line, std::size_t, std::size_t count, void* data)
{
    return static_cast<HttpTransfer*>(data)->TakeHead({line, count}) ? count : 0;
}

void SetCalls(HttpTransfer& transfer)
{
    CURL* const easy = transfer.easy.get();
    curl_easy_setopt(easy, CURLOPT_PRIVATE, &transfer);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, transfer.words);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, OnBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &transfer);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, OnHead);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &transfer);
}

} // namespace

HttpTransfer::HttpTransfer(const HttpRequest& asked, HttpSink& into, HttpLoop& shared)
    : request(asked), sink(&into), loop(&shared), address(ReadAddress(asked.url))
{
    loop->running.push_back(this);
    if (!address)
        return;
    easy.reset(curl_easy_init());
    SetRules(easy.get(), loop->options);
    SetRequest();
    SetCalls(*this);
    lookup = std::make_unique<ProxyLookup>(WholeAddress(address.get()), loop->options.resolver);
}

void HttpTransfer::SetRequest()
{
    curl_easy_setopt(easy.get(), CURLOPT_CURLU, address.get());
    curl_slist* lines = curl_slist_append(nullptr, "Cache-Control: no-cache"); // not shown
    lines = curl_slist_append(lines, "Pragma: no-cache");                      // not shown
    if (request.from > 0 && !request.validator.empty()) {
        const std::string range = std::to_string(request.from) + "-";
        curl_easy_setopt(easy.get(), CURLOPT_RANGE, range.c_str());
        lines = curl_slist_append(lines, ("If-Range: " + request.validator).c_str());
    }
    headers.reset(lines);
    curl_easy_setopt(easy.get(), CURLOPT_HTTPHEADER, lines);
}

bool HttpTransfer::Send(const std::string& proxy)
{
    if (!proxy.empty())
        curl_easy_setopt(easy.get(), CURLOPT_PROXY, proxy.c_str());
    lookup.reset();
    heard = Clock::now();
    const CURLMcode code = curl_multi_add_handle(loop->multi, easy.get());
    added = code == CURLM_OK;
    if (!added)
        reason = curl_multi_strerror(code);
    return added || Fail(HttpError::Other);
}

void HttpTransfer::Leave()
{
    if (loop == nullptr)
        return;
    if (added)
        curl_multi_remove_handle(loop->multi, easy.get());
    std::erase(loop->running, this);
    added = false;
    loop = nullptr;
    lookup.reset();
    easy.reset();
}

bool HttpTransfer::Fail(HttpError kind)
{
    error = kind;
    return false;
}

bool HttpTransfer::TakeHead(std::string_view line)
{
    headWhole = line.starts_with('\r') || line.starts_with('\n');
    heard = Clock::now();
    headBytes += line.size();
    return headBytes <= longestHead || Fail(HttpError::Other);
}

bool HttpTransfer::Begin()
{
    begun = true;
    long status = 0;
    curl_off_t length = -1;
    curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(easy.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    answer.status = static_cast<int>(status);
    if (length >= 0)
        answer.total = static_cast<std::uint64_t>(length);
    if (answer.status == httpPartOfIt &&
        (!ReadPart(easy.get(), answer) || answer.from != request.from))
        return Fail(HttpError::OtherPart);
    answer.validator = ValidatorOf(easy.get());
    if (request.most > 0 && answer.total.value_or(0) > request.most)
        return Fail(HttpError::TooLong);
    sinkFailure = sink->Begin(answer);
    return !sinkFailure || Fail(HttpError::Sink);
}

bool HttpTransfer::Take(std::span<const std::byte> bytes)
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

void HttpTransfer::End(CURLcode code)
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

} // namespace kestrova::platform
