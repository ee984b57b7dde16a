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
/// True for a width and a height above 0 whose product is no more than `mostPixels`.
bool IsPictureSize(std::int64_t width, std::int64_t height,
                   std::int64_t mostPixels = maxPicturePixels);

/// A bitmap or a jpeg, told apart by the first bytes, never by a name. `Damaged` for what is
/// neither, is cut or contradicts itself; `Refused` for a size beyond the limit.
Result<Picture> DecodePicture(std::string_view bytes);

/// The same for a picture that is shown small: its sides are divided by a whole number as long as
/// the longer one is at least `side` then; a jpeg is decoded at a part of its size, which takes a
/// part of time and memory. `Refused` for more than `mostPixels` in the file.
Result<Picture> DecodeSmall(std::string_view bytes, int side, std::int64_t mostPixels);

} // namespace kestrova
