#pragma once

#include "pictures/bitmap.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kestrova::testing
{

/// The file of a picture of one pixel; others have another shade.
inline std::string Pixel(int shade)
{
    return EncodeBitmap({1, 1, std::vector<std::uint8_t>(3, static_cast<std::uint8_t>(shade))});
}

} // namespace kestrova::testing
