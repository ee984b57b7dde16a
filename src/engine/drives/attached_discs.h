#pragma once

#include "drives/cd_drives.h"
#include "tools/tools.h"

/// Discs and images that are made readable as folders, and given back.
namespace kestrova
{

/// The folder in which the files of the drive's disc are seen, which is noted in the drive too. A
/// disc of the machine is mounted; the file in a drive of the settings is mounted or, where that
/// cannot be, taken out into the drive's folder, which has to be empty or missing.
Result<Path> AttachDisc(const Tools& tools, Machine& machine, Host& host, CdDrive& drive);

/// The same for the file of a disc that lies in no drive. The folder lies below the program's, and
/// all who ask for the same file share it. `Missing` for a file that is not there, `Damaged` for
/// one that is no disc.
Result<Path> AttachImage(const Tools& tools, Machine& machine, Host& host, const Path& image);

/// Each folder in which a disc is seen, once every disc that lies in a drive was attached; a disc
/// that cannot be is left out.
std::vector<Path> FoldersOfDiscs(const Tools& tools, Machine& machine, Host& host,
                                 const ProgramSettings& settings);

/// The drive's disc is seen nowhere afterwards.
Status DetachDisc(const Tools& tools, CdDrive& drive);

/// At the end of the program, and at its next start: what this run attached, and what runs left
/// that were killed, is given back. What another run uses stays; so does every folder that is not
/// as it was made here. The answer has words for those.
std::vector<std::string> DetachAll(const Tools& tools);

/// Puts a file as disc into a drive of the settings; an empty path takes out what lies in it. Where
/// the drive writes, a file that is not there yet is a new blank disc. What lay in it stays where
/// it is.
Status InsertMedium(const Tools& tools, CdDrive& drive, const Path& image);

/// A drive of the settings opens by giving up its disc; it shuts without anything.
Status MoveDoor(const Tools& tools, Machine& machine, CdDrive& drive, platform::DoorMove move);

} // namespace kestrova
