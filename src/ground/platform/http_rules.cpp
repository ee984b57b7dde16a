#include "platform/http_rules.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <sys/socket.h>

namespace kestrova::platform
{

namespace
{

constexpr const char* agentName = "VB OpenUrl"; // not shown
constexpr const char* webSchemes = "http,https";
constexpr long mostRedirects = 10;
constexpr long longestConnect = 30; // seconds
// What a read takes from a connection at the most. The library reads up to a hundred times before
// it lets anybody else go on.
constexpr long bufferBytes = 128L << 10;

std::string HeaderOf(CURL* easy, const char* name)
{
    curl_header* header = nullptr;
    constexpr int last = -1; // of all the answers that redirects brought
    return curl_easy_header(easy, name, 0, CURLH_HEADER, last, &header) == CURLHE_OK
               ? std::string{header->value}
               : std::string{};
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

/// A connection that no child of this program inherits.
curl_socket_t OnSocket(void*, curlsocktype, curl_sockaddr* address)
{
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

} // namespace

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

std::string WholeAddress(CURLU* address)
{
    char* text = nullptr;
    if (curl_url_get(address, CURLUPART_URL, &text, 0) != CURLUE_OK)
        return {};
    std::string whole = text;
    curl_free(text);
    return whole;
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

std::string ValidatorOf(CURL* easy)
{
    const std::string tag = HeaderOf(easy, "ETag");
    return tag.starts_with('"') ? tag : HeaderOf(easy, "Last-Modified");
}

bool ReadPart(CURL* easy, HttpAnswer& answer)
{
    return ReadContentRange(HeaderOf(easy, "Content-Range"), answer);
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

} // namespace kestrova::platform
