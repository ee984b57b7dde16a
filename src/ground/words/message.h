#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace kestrova
{

/// The rows of the catalogue: every text that a person can see and every fragment of a path.
/// The first row is 101; the rows follow each other without a gap.
enum class Msg : int {
    BeforeFirst = 100,
#define KV_MSG(name, text) name,
#include "words/messages.def"
#undef KV_MSG
    BehindLast,
};

/// The row as it stands, its markers `~1`, `~2` … included.
std::string_view RowText(Msg id);

/// The row with its markers filled from the left: element 0 fills `~1`. Of each marker only the
/// first occurrence is filled, one round a marker in ascending order; a marker without an argument
/// stays, and an argument's own markers are not protected from a later round. A marker that stands
/// for a line break is given `lineBreak`.
std::string GetMsg(Msg id, std::initializer_list<std::string_view> args = {});

inline constexpr std::string_view lineBreak = "\r\n";

} // namespace kestrova
