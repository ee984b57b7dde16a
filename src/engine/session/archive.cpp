#include "session/archive.h"

#include <algorithm>

namespace kestrova
{

const LevelRecord* Archive::Find(LevelCode code) const
{
    const auto found = std::find_if(levels.begin(), levels.end(), [&](const LevelRecord& level) {
        return level.levelCode == code;
    });
    return found == levels.end() ? nullptr : &*found;
}

} // namespace kestrova
