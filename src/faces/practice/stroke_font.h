#pragma once

#include <string_view>
#include <vector>

namespace kestrova
{

struct Stroke {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

/// The lines of one row of lettering: capital letters 4 wide and 6 high, 5.2 from letter to letter,
/// y downwards from 0 at the top. Text in Windows-1252; what the font lacks is a gap.
std::vector<Stroke> StrokesOf(std::string_view text);
/// How wide that row is.
double StrokeWidth(std::string_view text);

} // namespace kestrova
