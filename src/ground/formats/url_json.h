#pragma once

#include "formats/url_list.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A list of web addresses as text that a person writes:
///
///     {"updated": 45123.5,
///      "records": [
///        {"kind": 1, "description": "My site - Levels", "url": "http://…", "user": false},
///        {"kind": 8, "url": "http://…/config.zip", "package": "config.zip",
///         "level": "The lost valley", "folder": "valley", "files": ["data/valley.tr4"]}]}
///
/// The list of records alone will do. `user` may be left out. A record of kind 8 without a
/// description is made from files: `level` may be left out where the package tells the name.
namespace kestrova
{

/// A record, and for one of kind 8 what its description is to be made from.
struct UrlDraft {
    UrlRecord record;
    std::string package;
    std::string level;
    std::string folder;
    std::vector<std::string> files;
    bool operator==(const UrlDraft&) const = default;
};

struct UrlListDraft {
    std::optional<double> updateDate;
    std::vector<UrlDraft> records;
};

/// What stands wrong in a text, counted from 1; place 0: it is no list at all.
struct UrlJsonFault {
    std::size_t record = 0;
};

/// The faults stop at the first.
std::optional<UrlListDraft> ParseUrlJson(std::string_view text, UrlJsonFault& fault);
/// Read again it gives the same list.
std::string FormatUrlJson(const UrlList& list);

} // namespace kestrova
