#pragma once

#include "core/result.h"

#include <string>
#include <string_view>

/// The note of an archive's move to another folder, in `swap/move` of the program's folder while
/// the move goes on. JSON; names are kept exactly (bytes that are no UTF-8, and the per cent sign,
/// as %XX). How far the move has come is told by the list: the folder that it names has the whole
/// archive.
namespace kestrova
{

struct MoveNote {
    std::string archive; ///< the file of the list, exact and absolute
    std::string from;    ///< the folder of the levels before, exact and absolute
    std::string to;      ///< and after
    bool madeTo = false; ///< the move makes that folder
};

std::string FormatMoveNote(const MoveNote& note);
/// `Damaged` for anything that this program did not write.
Result<MoveNote> ParseMoveNote(std::string_view text);

} // namespace kestrova
