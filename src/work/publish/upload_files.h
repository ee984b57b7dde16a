#pragma once

#include "intake/source_tree.h"
#include "publish/upload_wizard.h"

/// The files of the package.
namespace kestrova
{

/// The person chooses a file, a package or a folder; its files come in, those of packages unpacked.
bool AddChosenFile(UploadWizard& wizard);
bool AddChosenFolder(UploadWizard& wizard);
/// The same for what was dropped or named. True when all of it came in. `package`: where the result
/// is to go, which is none of the files when an older one lies among them.
bool AddSources(UploadWizard& wizard, const std::vector<Path>& sources,
                Subfolders subfolders = Subfolders::Ask, const Path& package = {});
/// Takes a file out of the package after a question; a row that is none: nothing is selected.
void RemoveFile(UploadWizard& wizard, std::size_t row);

/// Lists the files anew. A configuration file among them is read into the pages and goes. False,
/// with a message, when the folder cannot be listed.
bool RefreshFiles(UploadWizard& wizard);

/// The stems of the tom files, and the patterns of wads: the Level Editor's own and the package's.
std::vector<std::string> TomFiles(const UploadWizard& wizard);
std::vector<std::string> WadPatterns(const UploadWizard& wizard);

} // namespace kestrova
