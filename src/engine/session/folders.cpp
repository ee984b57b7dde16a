#include "session/folders.h"

#include "formats/program_folder.h"
#include "formats/trle_folder.h"

namespace kestrova
{

Path Folders::Backup() const
{
    return InFolder(program, OnDisk::DirTrleBackup);
}

Path Folders::Marker() const
{
    return InFolder(trle, OnDisk::FragMarker);
}

} // namespace kestrova
