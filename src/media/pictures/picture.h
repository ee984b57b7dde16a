#pragma once

#include "core/result.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kestrova
{

/// A picture in memory: rows from the top down, three bytes a pixel (red, green, blue), no padding.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;
};

/// More pixels than any screen-shot or load picture has; what claims more is refused before memory
/// is taken for it.
inline constexpr std::int64_t maxPicturePixels = 64 * 1024 * 1024;
/// True for a width and a height above 0 whose product stays within the limit.
bool IsPictureSize(std::int64_t width, std::int64_t height);

/// A bitmap or a jpeg, told apart by the first bytes, never by a name. `Damaged` for what is
/// neither, is cut or contradicts itself; `Refused` for a size beyond the limit.
Result<Picture> DecodePicture(std::string_view bytes);

} // namespace kestrova
