#include "session/archive.h"

#include <algorithm>

namespace kestrova
{

const LevelRecord* Archive::Find(LevelCode code) const
{
    // Most lists have each level at the place that its code tells.
    if (const auto place = static_cast<std::size_t>(code);
        code >= 0 && place < levels.size() && levels[place].levelCode == code)
        return &levels[place];
    const auto found = std::find_if(levels.begin(), levels.end(), [&](const LevelRecord& level) {
        return level.levelCode == code;
    });
    return found == levels.end() ? nullptr : &*found;
}

} // namespace kestrova
