#pragma once

#include "pictures/picture.h"

#include <string_view>

namespace kestrova
{

inline constexpr int sceneStyles = 6;

/// A landscape at dawn, night or noon with hills and an old building, the title drawn large into
/// it (in Windows-1252, may be empty). `style` from 0 to `sceneStyles` - 1.
Picture PaintScene(std::string_view title, int style, int width = 640, int height = 480);

} // namespace kestrova
