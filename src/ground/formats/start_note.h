#pragma once

#include "core/result.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What was chosen at a first start that has not come to its end, `first-start.json` of the
/// program's folder. JSON; folders are kept exactly (bytes that are no UTF-8, and the per cent
/// sign, as %XX).
///
///     {"version": 1, "trle": "/games/trle", "levels": "/games/levels", "compact": false,
///      "fileTypes": true, "practice": false}
namespace kestrova
{

struct StartNote {
    std::string trle;      ///< the Level Editor's folder; empty: none yet
    std::string levels;    ///< where the levels shall lie, or the file of an archive; may be empty
    bool compact = false;  ///< the smaller form of the safety copy
    bool fileTypes = true; ///< the desktop shall open archives with this program
    bool practice = false; ///< a practice library is being made
    bool operator==(const StartNote&) const = default;
};

/// No note is longer.
inline constexpr std::uint64_t longestStartNote = UINT64_C(1) << 16;

std::string FormatStartNote(const StartNote& note);
/// `Damaged` for what this program did not write.
Result<StartNote> ParseStartNote(std::string_view text);

} // namespace kestrova
