#pragma once

#include "session/archive.h"
#include "session/machine.h"

/// Folders of levels that the list does not know, as after a list was brought back from a backup:
/// nobody can tell what they are worth, so that they are neither emptied nor removed.
namespace kestrova
{

/// True when something lies in the folder or below it; a failure when that cannot be known.
Result<bool> HoldsAnything(const Path& folder);

/// Gives every folder of that name, in whatever case it is written, a name that tells when it was
/// set aside. Answers the new names.
Result<std::vector<Path>> SetAside(Machine& machine, const Path& folder);

/// A name beside the folder that nothing has yet and that tells when it was set aside.
Result<Path> NameForAside(const Path& folder, std::int64_t nowNs);

struct UnknownFolders {
    std::vector<Path> unlisted; ///< named as a level's, but no record has that number
    std::vector<Path> setAside;
};
/// Those of the loaded archive's folder, sorted by name.
Result<UnknownFolders> FindUnknownFolders(const Archive& archive);

} // namespace kestrova
