#pragma once

#include "publish/upload_wizard.h"

/// What an author filled in for a package that could not be made, kept in the program's folder
/// until a wizard that is opened later has brought it to a package.
namespace kestrova
{

/// Keeps the pages. False, with words, when they could not be kept: then they must stay in sight.
bool KeepUploadTexts(UploadWizard& wizard);
/// Fills the pages with what was kept, if anything was and the author wants it back.
void OfferUploadTexts(UploadWizard& wizard);
/// The package is made, or the author wants nothing back.
void ForgetUploadTexts(const Folders& folders);

} // namespace kestrova
