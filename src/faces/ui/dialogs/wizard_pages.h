#pragma once

#include "ui/dialogs/wizard_page.h"

namespace kestrova
{

/// The pages in the order of the steps.
std::vector<UploadPage*> MakeUploadPages(UploadWizard& wizard, const UploadPage::Runner& run);

} // namespace kestrova
