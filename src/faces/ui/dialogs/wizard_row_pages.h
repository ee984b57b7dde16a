#pragma once

#include "ui/dialogs/wizard_page.h"

namespace kestrova
{

/// The pages of lists that are worked on row by row: what players need from elsewhere, and the wads
/// of tom files.
UploadPage* MakeImportPage(UploadWizard& wizard, const UploadPage::Runner& run);
UploadPage* MakeTomPage(UploadWizard& wizard, const UploadPage::Runner& run);

} // namespace kestrova
