#pragma once

#include "originals/standing_tree.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"

/// What stands in the Level Editor's folder, kept before a program of which nobody knows what it
/// does there gets at it.
namespace kestrova
{

/// Sets `kept` of each file whose content the backup does not have under its name. False when the
/// progress stopped it.
bool MarkWhatBackupLacks(const Folders& folders, StandingTree& tree, ProgressScope& progress);
[[nodiscard]] std::uint64_t BytesOfKept(const StandingTree& tree);
/// `Refused`, in words, when so many bytes do not fit there, with those that are to stay free.
Status RoomForKept(Machine& machine, std::uint64_t bytes, const Path& place,
                   std::uint64_t spare = 0);
/// A copy of one of the folder's files, read back.
Status CopyKept(const Path& folder, const StandingFile& file, const Path& copy,
                ProgressScope& progress);

} // namespace kestrova
