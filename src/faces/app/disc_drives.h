#pragma once

#include "app/command.h"
#include "drives/cd_drives.h"

/// The drives for discs as the terminal tells of them.
namespace kestrova
{

/// What the words say of a drive, a value of `--drive` as well; told when there is none.
std::optional<CdDrive> DriveFromWord(Run& run, const std::string& word);

/// The settings name the drive of the practice folder to which that Level Editor's folder belongs,
/// where it does and they name none like it.
void AddPracticeDrive(ProgramSettings& settings, const Path& trle);

bool ListDrives(Run& run);
bool InsertDisc(Run& run);
bool EjectDisc(Run& run);

} // namespace kestrova
