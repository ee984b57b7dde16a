#pragma once

#include "formats/tool_listing.h"
#include "session/host.h"

/// What a tool unpacked, on its way into the folder that it is meant for.
namespace kestrova
{

/// What a package of anybody's making brought becomes plain files and folders: links, pipes and
/// other things are unlinked, never opened or entered; files have the rights 0644, folders 0755. A
/// name that is no text is made readable from the older code page; characters that would steer a
/// terminal or mean a folder, and the beginning by which unfinished files are known, become an
/// underscore. False when the heartbeat stopped it; the rest is as it came then.
bool MakePlain(const Path& folder, const Heartbeat& heartbeat = {});

/// A file of a package that could not keep its name.
struct RenamedFile {
    std::string name; ///< with its folder in the package
    std::string now;
};

/// True when two of the files would have the same name, case ignored, without their folders.
bool CollideWhenFlat(const std::vector<PackageEntry>& entries);

/// Moves the files of `staging`, a folder inside `folder` that `MakePlain` has seen, to `folder`
/// itself with their sub-folders or, `flat`, without. A file that was there before is replaced and
/// keeps its spelling; of two in the package that have the same name, case ignored, the later in
/// `entries` has it and the other one gets a number behind its own. What stays in `staging` are
/// folders. The answer names each of those others.
Result<std::vector<RenamedFile>> PlaceUnpacked(const Path& staging, const Path& folder, bool flat,
                                               const std::vector<PackageEntry>& entries,
                                               ProgressScope* progress);

} // namespace kestrova
