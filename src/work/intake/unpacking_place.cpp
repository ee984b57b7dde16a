#include "intake/unpacking_place.h"

#include "core/removal.h"
#include "formats/program_folder.h"

namespace kestrova
{

Path UnpackingFolder(const Session& session)
{
    return InFolder(session.programFolder, OnDisk::DirTempZip);
}

UnpackingPlace::UnpackingPlace(const Session& session) : folder_(UnpackingFolder(session)) {}

UnpackingPlace::~UnpackingPlace()
{
    (void)ClearPlace(folder_); // what stays is cleared by the next package
}

} // namespace kestrova
