#pragma once

#include "publish/upload_wizard.h"

/// The way through the wizard's steps.
namespace kestrova
{

/// Where the wizard begins. False, with a message, when there is no folder to work in.
bool OpenWizard(UploadWizard& wizard);
std::string StepTitle(UploadStep step);

/// Takes over what the page of the step says. False, with a message, when something of it is not
/// right; nothing behind that was taken then.
bool CheckStep(UploadWizard& wizard);
/// The check, and then the next step, unless this is the last one. True when the step is passed.
bool NextStep(UploadWizard& wizard);
/// One step back, without a check.
void BackStep(UploadWizard& wizard);

} // namespace kestrova
