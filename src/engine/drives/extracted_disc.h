#pragma once

#include "formats/seen_note.h"
#include "session/host.h"
#include "session/machine.h"
#include "tools/tools.h"

/// The files of a disc's image as a folder of copies, where no image can be mounted.
namespace kestrova
{

/// Takes all files out into a folder beside `place` under a name that no listing shows, and makes
/// them read-only. The room is looked at first; the person may stop it.
Result<Path> ExtractDisc(const Tools& tools, Machine& machine, Host& host, const Path& image,
                         const Path& place);

/// The hash of all names, sizes and times below a folder. No link and no other file system is
/// entered; both count by their names.
Result<std::string> HashOfTree(const Path& folder);

/// The folder goes if it is the one of the note, and as it was then. Otherwise it stays as it is,
/// and the failure `Differs` says so.
Status RemoveExtracted(const SeenNote& note);

} // namespace kestrova
