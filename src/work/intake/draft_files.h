#pragma once

#include "intake/intake.h"

/// The files that a draft has, one by one and as a list.
namespace kestrova
{

/// Reads the texts and the folder, which is known by now. False, with a message, when it cannot be
/// read.
bool ReadDraft(Intake& intake);

/// Lists the folder anew; packages in it are unpacked one level deep first. False, with a message,
/// when the folder cannot be listed; the list is as before then.
bool RefreshFiles(Intake& intake);

/// Deletes a file of the folder after a question; an empty path: none is selected.
bool RemoveFile(Intake& intake, const Path& file);
/// Opens a file with the desktop's program, a compressed one after expanding it.
void OpenFile(Intake& intake, const Path& file);
bool SetMyLanguage(Intake& intake);

} // namespace kestrova
