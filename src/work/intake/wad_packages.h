#pragma once

#include "editor/wad_import.h"
#include "editor/wad_windows.h"
#include "intake/source_tree.h"

/// How the files of wad packages come into an import.
namespace kestrova
{

/// The person chooses a file, a package or a folder; its files come in, those of packages unpacked.
bool AddChosenWadFile(WadImport& import);
bool AddChosenWadFolder(WadImport& import);
/// The same for what was dropped or named. True when all of it came in.
bool AddWadSources(WadImport& import, const std::vector<Path>& sources,
                   Subfolders subfolders = Subfolders::Ask);

/// The import's folder holds the package's files; an empty path stands for none. Of a package that
/// cannot be unpacked, what came out of it counts. False, told, when there is nothing to work with.
bool PrepareWadImport(WadImport& import, const Path& package);
/// Imports one package from its beginning to its end, in a window where one can be shown. True when
/// it ran to its end.
bool ImportWadZip(Session& session, const Path& package, const WadWindows& windows);
/// The same of several packages together, unseen. False, told, when nothing of them came in.
bool ImportWads(Session& session, const std::vector<Path>& packages, const AskLevelName& askName,
                std::string& report);

} // namespace kestrova
