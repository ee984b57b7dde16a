#include "editor/kept_places.h"

#include "archive/archive_place.h"
#include "formats/level_folder_name.h"
#include "platform/real_path.h"

namespace kestrova
{

bool LiesAmongKept(const Folders& folders, const Path& place)
{
    if (!MayHoldLevels({folders.program, {}, {}}, place))
        return true;
    Path real;
    if (platform::RealPathSoFar(ResolvePath(place), real))
        real = place;
    for (Path above = real; above.has_relative_path(); above = above.parent_path())
        if (IsLevelFolderName(above.filename().native())) // of whatever archive
            return true;
    return false;
}

} // namespace kestrova
