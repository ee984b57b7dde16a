#pragma once

#include "intake/intake.h"

/// The files that a draft has, one by one and as a list.
namespace kestrova
{

/// Reads the texts and the folder, which is known by now. False, with a message, when it cannot be
/// read.
bool ReadDraft(Intake& intake);

/// Lists the folder anew; packages in it are unpacked one level deep first. A Stop leaves the rest
/// of them as they are, and the list is of now; any other failure is that of a folder that cannot
/// be listed, and the list is as before.
Status RefreshFiles(Intake& intake);
/// The same where a Stop ends nothing else. False, with a message, when the folder cannot be
/// listed.
bool ShowFiles(Intake& intake);

/// Deletes a file of the folder after a question; an empty path: none is selected.
bool RemoveFile(Intake& intake, const Path& file);
/// Opens a file with the desktop's program, a compressed one after expanding it.
void OpenFile(Intake& intake, const Path& file);
bool SetMyLanguage(Intake& intake);

} // namespace kestrova
