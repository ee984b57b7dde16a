#include "ui/main/list_place.h"

#include <algorithm>
#include <iterator>

namespace kestrova
{

ListPlace PlaceIn(const Library& shown, std::optional<LevelCode> chosen)
{
    ListPlace place;
    for (int row = 0; row < shown.Count(); ++row)
        place.codes.push_back(shown.At(row).code);
    place.row = chosen ? std::max(shown.RowOf(*chosen), 0) : 0;
    return place;
}

LevelCode NearestTo(const Library& shown, const ListPlace& place)
{
    const auto isShown = [&](LevelCode code) { return shown.RowOf(code) >= 0; };
    const auto from = place.codes.begin() + place.row;
    if (const auto behind = std::find_if(from, place.codes.end(), isShown);
        behind != place.codes.end())
        return *behind;
    const auto before = std::find_if(std::make_reverse_iterator(from), place.codes.rend(), isShown);
    return before != place.codes.rend() ? *before : shown.At(0).code;
}

} // namespace kestrova
