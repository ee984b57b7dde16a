#pragma once

#include "burning/burn_error.h"
#include "burning/burn_settings.h"
#include "drives/cd_drives.h"
#include "tools/tools.h"

/// What the disc engine does with a drive itself.
namespace kestrova
{

/// The drive as something to write to.
BurnDevice DeviceOf(const CdDrive& drive);

/// The drives as they are to be found.
struct DriveParts {
    Host& host;
    Machine& machine;
    const Tools& tools;
    const ProgramSettings& settings;
};

/// The settings' device becomes the drive that writes; its name. `warning` has words when another
/// one writes too.
bool FindWriter(const DriveParts& parts, BurnSettings& settings, std::string& name,
                std::string& warning, BurnError& error);

/// `extent`: "Fast", a disc lies in the writer and is not empty, or "All", every file of the items
/// is on it, byte by byte; in any case.
bool VerifyCd(const DriveParts& parts, const BurnSettings& settings, const std::string& extent,
              BurnError& error);

bool MoveCdDoor(const DriveParts& parts, const std::string& drive, platform::DoorMove move,
                BurnError& error);

} // namespace kestrova
