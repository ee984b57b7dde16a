#include "upkeep/out_of_files.h"

#include "core/files.h"
#include "core/look.h"
#include "core/removal.h"

namespace kestrova
{

Result<Path> TakeOutOfFiles(const Path& home, std::string_view into, const Path& file)
{
    const Path folder = ResolvePath(InFolder(home, into));
    if (auto made = MakeFolders(folder); !made)
        return made.Error();
    return RenameToFree(file, folder / file.filename());
}

} // namespace kestrova
