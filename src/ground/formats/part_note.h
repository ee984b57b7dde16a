#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What stands beside a download that was stopped, so that it can be gone on with:
///
///     {"url":"http://…","validator":"\"5f3a\"","size":1048576}
namespace kestrova
{

struct PartNote {
    std::string url;
    std::string validator;  ///< the server's mark of the file's content
    std::uint64_t size = 0; ///< of what is there
    bool operator==(const PartNote&) const = default;
};

/// No value for anything else, or a mark that no request could carry.
std::optional<PartNote> ParsePartNote(std::string_view text);
std::string FormatPartNote(const PartNote& note);

} // namespace kestrova
