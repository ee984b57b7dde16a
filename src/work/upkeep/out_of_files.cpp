#include "upkeep/out_of_files.h"

#include "core/copying.h"
#include "core/look.h"

namespace kestrova
{

Result<Path> TakeOutOfFiles(const Path& home, std::string_view into, const Path& file)
{
    const Path folder = ResolvePath(InFolder(home, into));
    if (auto made = MakeFolders(folder); !made)
        return made.Error();
    const Path plain = folder / file.filename();
    const auto isFree = IsFree(plain);
    auto aside = isFree && *isFree ? Result<Path>{plain} : FreeNumbered(plain);
    if (!aside)
        return aside;
    if (const auto failure = platform::Rename(file, *aside))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    return aside;
}

} // namespace kestrova
