#include "formats/url_changes.h"

#include "core/text.h"
#include "formats/url_text.h"
#include "words/online.h"

#include <algorithm>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

constexpr std::string_view onlyTold = "*"; // the address of a notice without one

std::optional<UrlNotice> VersionNotice(const UrlRecord& record, std::int32_t ownVersion)
{
    constexpr std::string_view digits = "0123456789";
    const std::size_t from = record.description.find_first_of(digits);
    if (from == std::string::npos)
        return std::nullopt;
    const std::int32_t version = LeadingNumber(std::string_view{record.description}.substr(from));
    if (version <= ownVersion)
        return std::nullopt;
    const std::size_t colon = record.description.find(':');
    const std::string_view remark =
        colon == std::string::npos ? std::string_view{}
                                   : Trim(std::string_view{record.description}.substr(colon + 1));
    const std::string told =
        fmt::format("{}.{:02}{}{}{}", version / 100, version % 100, lineBreak, remark, lineBreak);
    return UrlNotice{GetMsg(Msg::NoticeNewVersion, {told}), std::string{Trim(record.url)}, true};
}

UrlNotice PlainNotice(const UrlRecord& record)
{
    if (Trim(record.url) == onlyTold)
        return {record.description};
    return {record.description + std::string{lineBreak} + GetMsg(Msg::NoticeDownloadNow),
            std::string{Trim(record.url)}, true};
}

} // namespace

UrlList MergedUrls(const UrlList& own, const UrlList& fromServer, double now)
{
    UrlList merged;
    merged.updateDate = now;
    std::copy_if(own.records.begin(), own.records.end(), std::back_inserter(merged.records),
                 [](const UrlRecord& record) { return record.user; });
    for (const UrlRecord& record : fromServer.records) {
        merged.records.push_back(record);
        merged.records.back().user = false;
    }
    return merged;
}

std::vector<UrlDouble> DoublesOf(const UrlList& list, const UrlRecord& entry,
                                 std::optional<std::size_t> except)
{
    const std::string host = UrlHostPart(entry.url);
    std::vector<UrlDouble> doubles;
    for (std::size_t i = 0; i < list.records.size(); ++i) {
        const UrlRecord& old = list.records[i];
        if (old.kind != entry.kind || except == i)
            continue;
        if (EqualNames(old.url, entry.url))
            doubles.push_back({i, true});
        else if (EqualNames(UrlHostPart(old.url), host))
            doubles.push_back({i, false});
    }
    return doubles;
}

std::vector<UrlNotice> NoticesOf(const UrlList& list, std::int32_t ownVersion)
{
    std::vector<UrlNotice> notices;
    for (const UrlRecord& record : list.records) {
        if (record.kind == UrlKindNotice)
            notices.push_back(PlainNotice(record));
        else if (record.kind == UrlKindVersion)
            if (const auto notice = VersionNotice(record, ownVersion))
                notices.push_back(*notice);
    }
    return notices;
}

} // namespace kestrova
