#pragma once

#include "core/copying.h"
#include "editor/tom_compile.h"
#include "editor/wad_routing.h"
#include "originals/imported_files.h"

/// The files of an import, and what its tom files become. Each of these fails when nothing may go
/// on: the person stopped it, or what stands in the way could not be kept. All else is a line of
/// the report.
namespace kestrova
{

/// What the steps of an import share.
struct WadWork {
    const CompileParts& parts;
    ImportedFiles& files;
    std::string& report; ///< lines with CR LF
    Path package;        ///< the folder of the package's files
    Path newScripts;     ///< the one of its sources of scripts
};

/// The heartbeat of an import: False once Stop was pressed.
Heartbeat BeatOf(const WadWork& work);
/// A line of the report; the outcome stands behind the parts.
void ReportOutcome(const WadWork& work, std::initializer_list<std::string> parts, bool done);

/// Copies the file to its name in that folder (`\graphics\wads\`) of the backup, and then of the
/// Level Editor's folder, a line for each. Both places are watched.
Status InstallFile(const WadWork& work, const Path& source, const std::string& subfolder);
/// The file over another one, as long as nobody stops it.
Status CopyWadFile(const WadWork& work, const Path& source, const Path& target,
                   std::uint32_t rights = plainRights);

/// The tom files that are to be compiled: those of the package, and those that the Level Editor's
/// folder has for a wad of the package. By name.
Result<std::vector<Path>> TomsToCompile(const Folders& folders, const WadRoutes& routes);
/// Keeps what stands at the places of all these files and of what the tom files become.
Status WatchFiles(const WadWork& work, const WadRoutes& routes, const std::vector<Path>& toms);
/// Each file to its place.
Status InstallFiles(const WadWork& work, const WadRoutes& routes);
/// The tom files in their place become levels in both trees. `failed`: the names of levels that did
/// not come out; what stood in their place stands there again.
Status CompileToms(const WadWork& work, const std::vector<Path>& toms,
                   std::vector<std::string>& failed);

} // namespace kestrova
