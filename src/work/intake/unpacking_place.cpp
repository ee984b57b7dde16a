#include "intake/unpacking_place.h"

#include "core/removal.h"
#include "formats/program_folder.h"

namespace kestrova
{

Path UnpackingFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirTempZip);
}

UnpackingPlace::UnpackingPlace(const Folders& folders) : folder_(UnpackingFolder(folders)) {}

UnpackingPlace::~UnpackingPlace()
{
    (void)ClearPlace(folder_); // what stays is cleared by the next package
}

} // namespace kestrova
