#include "intake/unpacking_place.h"

#include "formats/program_folder.h"

namespace kestrova
{

Path UnpackingFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirTempZip);
}

} // namespace kestrova
