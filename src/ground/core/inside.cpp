#include "core/inside.h"

namespace kestrova
{

bool LiesInside(const Path& place, const Path& folder)
{
    const Path relative = place.lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

} // namespace kestrova
