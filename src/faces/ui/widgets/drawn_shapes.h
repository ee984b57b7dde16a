#pragma once

#include "ui/widgets/icons.h"

#include <QPainterPath>

namespace kestrova
{

/// What an icon is drawn of, in a square of 16 by 16.
struct DrawnShape {
    QPainterPath path;
    bool filled = false; ///< with colour; otherwise the path is a line
};
const DrawnShape& ShapeOf(Drawing drawing);

} // namespace kestrova
