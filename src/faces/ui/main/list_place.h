#pragma once

#include "library/library.h"

namespace kestrova
{

/// Where the chosen level stands among those that are shown.
struct ListPlace {
    std::vector<LevelCode> codes;
    std::ptrdiff_t row = 0;
};
ListPlace PlaceIn(const Library& shown, std::optional<LevelCode> chosen);
/// The first level from that place on that is still shown, otherwise the last one before it. Some
/// level is shown.
LevelCode NearestTo(const Library& shown, const ListPlace& place);

} // namespace kestrova
