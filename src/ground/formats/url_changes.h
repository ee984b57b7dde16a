#pragma once

#include "formats/url_list.h"

#include <optional>

/// What happens to a list of web addresses, decided in memory.
namespace kestrova
{

/// The list after an update from a server: the person's own records first, then the server's, whose
/// records are never the person's. Doubles stay.
UrlList MergedUrls(const UrlList& own, const UrlList& fromServer, double now);

/// An old record that a new address may double.
struct UrlDouble {
    std::size_t record = 0; ///< place in the list
    bool sameUrl = false;   ///< otherwise only the host is the same
};
/// What a record like `entry` would double, in the list's order. `except`: a record that is being
/// changed.
std::vector<UrlDouble> DoublesOf(const UrlList& list, const UrlRecord& entry,
                                 std::optional<std::size_t> except = {});

/// What a list that just came has to say.
struct UrlNotice {
    std::string text;
    std::string url{}; ///< opened when the person says Yes
    bool asks = false; ///< otherwise it is only told
    bool operator==(const UrlNotice&) const = default;
};
/// In the list's order. `ownVersion`: a hundred times the program's version.
std::vector<UrlNotice> NoticesOf(const UrlList& list, std::int32_t ownVersion);

} // namespace kestrova
