#pragma once

#include "ui/dialogs/wizard_page.h"

namespace kestrova
{

/// The page of the level's files.
UploadPage* MakeFilesPage(UploadWizard& wizard, const UploadPage::Runner& run);

} // namespace kestrova
