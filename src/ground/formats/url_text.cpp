#include "formats/url_text.h"

#include "core/text.h"
#include "words/online.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

struct SitePhrase {
    std::string_view english;
    Message shown;
};
// A server's phrases in small letters, in the order in which they are exchanged.
constexpr SitePhrase sitePhrases[] = {
    {"sorted by enter date", Msg::SiteByDate},        // not shown
    {"sorted by rating", Msg::SiteByRating},          // not shown
    {"search whereby keywords", Msg::SiteByKeywords}, // not shown
    {"sorted by title", Msg::SiteByTitle},            // not shown
    {"levels", Msg::SiteLevels},                      // not shown
    {"sorted by author name", Msg::SiteByAuthor},     // not shown
    {"reviews", Msg::SiteReviews},                    // not shown
    {" with ", Msg::SiteWith},                        // not shown
    {"various sorting standards", Msg::SiteVarious},  // not shown
    {"language: ", Msg::SiteLanguage},                // not shown
    {" and ", Msg::SiteAnd},                          // not shown
    {"walkthroughs", Msg::SiteWalkthroughs},          // not shown
};

constexpr ListedUrlKind listedKinds[] = {
    {UrlKindLevels, Msg::UrlKindLevels},   {UrlKindEditor, Msg::UrlKindEditor},
    {UrlKindProgram, Msg::UrlKindProgram}, {UrlKindForums, Msg::UrlKindForums},
    {UrlKindTools, Msg::UrlKindTools},     {UrlKindConfig, Msg::UrlKindConfigs},
};

/// What stands before the first "-" and behind it, trimmed.
struct SiteParts {
    std::string_view head; ///< empty without a "-"
    std::string_view rest;
};

SiteParts PartsOf(std::string_view text)
{
    const std::size_t dash = text.find('-');
    if (dash == std::string_view::npos)
        return {{}, Trim(text)};
    return {Trim(text.substr(0, dash)), Trim(text.substr(dash + 1))};
}

/// The text with small letters in place of the ASCII capitals: every byte keeps its place.
std::string SmallLetters(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

/// Exchanges a phrase wherever it stands. `small`: the text in small letters, which follows.
void Exchange(std::string& text, std::string& small, const SitePhrase& phrase)
{
    std::size_t found = small.find(phrase.english);
    if (found == std::string::npos)
        return;
    const std::string shown = GetMsg(phrase.shown);
    std::string result;
    std::size_t from = 0;
    for (; found != std::string::npos; found = small.find(phrase.english, from)) {
        result.append(text, from, found - from).append(shown);
        from = found + phrase.english.size();
    }
    text = result.append(text, from);
    small = SmallLetters(text);
}

} // namespace

std::string UrlFileName(std::string_view url)
{
    const std::size_t slash = url.find_last_of("/\\");
    return std::string{slash == std::string_view::npos ? url : url.substr(slash + 1)};
}

std::string UrlHostPart(std::string_view url)
{
    const std::size_t slashes = url.find("//");
    if (slashes == std::string_view::npos)
        return std::string{url};
    return std::string{url.substr(0, url.find('/', slashes + 2))};
}

bool IsWebAddress(std::string_view url)
{
    const std::size_t colon = url.find(':');
    const std::string_view scheme = url.substr(0, colon);
    return colon != std::string_view::npos && OnOneLine(url) == url &&
           (EqualNames(scheme, "http") || EqualNames(scheme, "https")) &&
           url.substr(colon + 1).starts_with("//");
}

bool IsServerAddress(std::string_view url)
{
    if (!IsWebAddress(url))
        return false;
    const std::string_view behind = url.substr(url.find("//") + 2);
    return behind.substr(0, behind.find_first_of("/?#")).find('@') == std::string_view::npos;
}

std::string StorableUrl(const std::string& url)
{
    if (FitsWindows1252(url))
        return url;
    std::string encoded;
    for (const char c : url) {
        const auto byte = static_cast<unsigned char>(c);
        encoded += byte < 0x80 ? std::string{c} : fmt::format("%{:02X}", byte);
    }
    return encoded;
}

bool IsOpenable(std::string_view url)
{
    constexpr std::string_view mail = "mailto:";
    return IsWebAddress(url) ||
           (OnOneLine(url) == url && EqualNames(url.substr(0, mail.size()), mail));
}

std::string LocalizeSiteText(std::string_view text)
{
    const SiteParts parts = PartsOf(text);
    const std::string head{parts.head};
    std::string rest{parts.rest};
    std::string small = SmallLetters(rest);
    for (const SitePhrase& phrase : sitePhrases)
        Exchange(rest, small, phrase);
    // Not by markers: a server's text may hold some.
    return head.empty() ? rest : head + GetMsg(Msg::SiteBetween) + rest;
}

std::span<const ListedUrlKind> ListedUrlKinds()
{
    return listedKinds;
}

std::string UrlRowText(const UrlRecord& record)
{
    const bool site = record.kind == UrlKindLevels;
    const std::string text = site ? LocalizeSiteText(record.description) : record.description;
    return OnOneLine((record.user ? GetMsg(Msg::UrlUserMark) : std::string{}) + text);
}

std::string SearchedText(const UrlRecord& record)
{
    std::string text = record.user ? GetMsg(Msg::UrlUserMark) : std::string{};
    text.reserve(text.size() + record.description.size() + record.url.size() + 4);
    // Of a site the phrases are left as they are: without regard to case they are the shown ones
    // of told English.
    const bool site = record.kind == UrlKindLevels;
    const bool asTold = Shown(Msg::SiteLevels) == Msg::SiteLevels.text;
    const std::string spoken = site && !asTold ? LocalizeSiteText(record.description) : "";
    const SiteParts parts = site && asTold ? PartsOf(record.description)
                                           : SiteParts{{}, site ? spoken : record.description};
    if (!parts.head.empty())
        text.append(parts.head).append(Shown(Msg::SiteBetween));
    text.append(parts.rest);
    text = OnOneLine(text);
    return FoldCase(text.append(1, '\n').append(record.url));
}

std::string ShownAddress(std::string_view url)
{
    constexpr int mostLetters = 75;
    const std::string line = OnOneLine(url);
    std::size_t end = 0;
    for (int letters = 0; letters < mostLetters && end < line.size(); ++letters)
        do
            ++end;
        while (end < line.size() && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U);
    return end == line.size() ? line : line.substr(0, end) + GetMsg(Msg::UrlGoesOn);
}

std::string UpdateDateText(double date)
{
    using namespace std::chrono;
    constexpr double earliest = -657'434; // the first day of the year 100
    constexpr double latest = 2'958'466;  // behind the last day of the year 9999
    if (!(date >= earliest && date < latest))
        return {};
    // Behind the point stands the time of the day, before 1900 as well.
    const double day = std::trunc(date);
    const auto whole = static_cast<std::int64_t>(std::llround(std::abs(date - day) * 86'400));
    const sys_days first{year{1899} / December / 30};
    const auto moment = first + days{static_cast<int>(day)} + seconds{whole};
    const year_month_day shown{floor<days>(moment)};
    const hh_mm_ss time{moment - floor<days>(moment)};
    return fmt::format("{:02}/{:02}/{:04}  {:02}:{:02}:{:02}", static_cast<unsigned>(shown.day()),
                       static_cast<unsigned>(shown.month()), static_cast<int>(shown.year()),
                       time.hours().count(), time.minutes().count(), time.seconds().count());
}

} // namespace kestrova
