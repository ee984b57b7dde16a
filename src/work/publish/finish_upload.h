#pragma once

#include "publish/upload_wizard.h"

namespace kestrova
{

/// Writes the configuration file and packs it with the level's files, or alone. The author says
/// where, unless `given` does. An older package of that name is whole until the new one is. True
/// when the package is there. Otherwise why was told, unless the author cancelled; once packing has
/// begun, the wizard is over all the same (`isOver`).
bool FinishUpload(UploadWizard& wizard, const Path& given = {});

/// What the package is called, by the level's name.
std::string UploadNameFor(const UploadWizard& wizard);

} // namespace kestrova
