#pragma once

#include "core/names.h"

#include <cstdint>
#include <string>
#include <system_error>

namespace kestrova
{

/// What the game wrote at the head of a savegame: a title that ends at the first NUL, comma or line
/// end, and at byte 75 the save number, a signed 16-bit little-endian integer, which is the
/// savegame's identity and its age.
struct SavegameInfo {
    std::string title;
    std::int32_t number = 0;
    std::error_code unread; ///< why the file cannot be read
};
/// A file that cannot be read has number 0 and the title "<NOT READABLE>".
SavegameInfo ReadSavegameInfo(const Path& file);
SavegameInfo ParseSavegameInfo(std::string_view head);

} // namespace kestrova
