#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The list of web addresses, `UrlList.bin`; what the update servers give bears the same form.
///
///     header, 12 bytes                       record, RecordCount times
///        0  4  RecordCount                      0  2  length n of the address
///        4  8  UpdateDate, date serial          2  n  Url
///                                             2+n  2  length m of the text
///                                             4+n  m  Description
///                                           4+n+m  4  Kind
///                                           8+n+m  2  UserRecord, truth value
///
/// What stands behind the last record is nobody's.
namespace kestrova
{

/// What a record's address is for. Numbers beyond them are kept and never shown.
enum UrlKind : std::int32_t {
    UrlKindLevels = 1,
    UrlKindEditor = 2,
    UrlKindProgram = 3,
    UrlKindForums = 4,
    UrlKindTools = 5,
    UrlKindVersion = 6, ///< tells of a new version of the program
    UrlKindNotice = 7,
    UrlKindConfig = 8, ///< an entry of the database of configuration files
};

struct UrlRecord {
    std::string url;
    std::string description;
    std::int32_t kind = UrlKindLevels;
    bool user = false; ///< the person added it; a server's otherwise
    bool operator==(const UrlRecord&) const = default;
};

struct UrlList {
    double updateDate = 0; ///< days since 30 December 1899, local time
    std::vector<UrlRecord> records;
    bool operator==(const UrlList&) const = default;
};

/// No value for bytes that end before the last record does.
std::optional<UrlList> ParseUrlList(std::string_view bytes);
/// No value when a text is longer than its length can say.
std::optional<std::string> FormatUrlList(const UrlList& list);

/// The record is kept and shown to nobody.
bool IsHidden(const UrlRecord& record);
/// Places of the records that the list of that kind shows.
std::vector<std::size_t> ListedRecords(const UrlList& list, std::int32_t kind);

} // namespace kestrova
