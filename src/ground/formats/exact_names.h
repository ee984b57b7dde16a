#pragma once

#include "formats/archive_file.h"

#include <map>
#include <tuple>

/// The texts of level records whose letters the code page cannot hold, as they were written: one
/// JSON object a line,
///
///     {"code":12,"field":"name","text":"Łódź"}
///
/// with the fields `name`, `note`, `author`, `authorNote`, `emails`, `sites` and `document`; the
/// parts of a list are joined by NUL as in the record. A text counts for the record of its code
/// while that record holds the bytes that the text is written as: one that was changed elsewhere
/// speaks for itself. Lines that are none of this are passed over.
namespace kestrova
{

/// Code, place of the field, and what the record holds of the text.
using ExactKey = std::tuple<LevelCode, std::size_t, std::string>;
using ExactNames = std::map<ExactKey, std::string>;

/// Of two lines for the same bytes the later counts. What lies beyond a bound is passed over.
ExactNames ParseExactNames(std::string_view bytes);
std::string FormatExactNames(const ExactNames& names);

/// The exact texts in place of those that the records hold of them.
void ApplyExactNames(const ExactNames& names, std::vector<LevelRecord>& levels);
/// Takes over what the records' fields cannot hold. Other lines stay, since another list may know
/// those levels, until there are too many. True when anything changed.
bool MergeExactNames(ExactNames& names, const std::vector<LevelRecord>& levels);

/// The longest file that is read.
inline constexpr std::uint64_t longestExactNames = UINT64_C(64) << 20;

} // namespace kestrova
