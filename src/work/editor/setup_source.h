#pragma once

#include "editor/setup_parts.h"

/// What a setup of the Level Editor comes from.
namespace kestrova
{

/// The Level Editor's tree in a folder: its folder `trle`, or itself. Empty when it has neither.
Path SetupTreeIn(const Path& folder);

/// The room that the setup takes, with what becomes larger on its way, in bytes.
Result<std::uint64_t> RoomForSetup(const SetupParts& parts, const SetupWish& wish);

/// The zips come into the folder, one after the other; the failure names the one that did not.
Status UnpackSetup(const SetupParts& parts, const std::vector<Path>& zips, const Path& folder);

/// The tree's files and folders, those of others left out that links lead to, become `target`.
Status CopySetup(const SetupParts& parts, const Path& tree, const Path& target);

} // namespace kestrova
