#pragma once

#include "formats/archive_file.h"

/// The note of what the last checks found, `swap/checked` of the program's folder. JSON; names are
/// kept exactly (bytes that are no UTF-8, and the per cent sign, as %XX).
///
///     {"version":1,"archive":"/home/me/My.kva","harmed":[4,11]}
namespace kestrova
{

struct CheckedNote {
    std::string archive;           ///< exact path of the list that was checked
    std::vector<LevelCode> harmed; ///< levels whose stored files are not whole, in order
    friend bool operator==(const CheckedNote&, const CheckedNote&) = default;
};

/// No note is longer.
inline constexpr std::uint64_t longestCheckedNote = UINT64_C(4) << 20;

std::string FormatCheckedNote(const CheckedNote& note);
/// `Damaged` for anything that this program did not write.
Result<CheckedNote> ParseCheckedNote(std::string_view text);

} // namespace kestrova
