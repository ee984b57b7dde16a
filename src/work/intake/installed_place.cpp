#include "intake/installed_place.h"

#include "core/look.h"
#include "formats/config_values.h"
#include "words/installers.h"

namespace kestrova
{

InstalledInto IntoTrle(const Folders& folders)
{
    return {std::string{OnDisk::ExeTrle}, folders.trle};
}

InstalledInto IntoFolder(const Folders& folders, const Path& folder)
{
    if (IsSameFolder(folder, folders.trle))
        return IntoTrle(folders);
    return {std::string{OnDisk::ExeZip}, folder};
}

bool InstalledPlace::Browse()
{
    const auto folder = host_.ChooseFolder(GetMsg(Msg::InstallerChooseFolder), folders_.trle);
    if (!folder) {
        host_.Tell(Tone::Warning, GetMsg(Msg::InstallerNeedsFolder));
        return false;
    }
    answer_ = IntoFolder(folders_, *folder);
    return true;
}

} // namespace kestrova
