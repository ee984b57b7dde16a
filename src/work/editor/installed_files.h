#pragma once

#include "editor/compare_folders.h"
#include "originals/standing_tree.h"
#include "session/folders.h"

/// What an installer left in the Level Editor's folder, told by the folder's backup.
namespace kestrova
{

/// All files of the folder as it stands and of its backup, against each other: by length and date,
/// the names without regard to case. What belongs to installers themselves (`.exe`, `.lnk`, `.isu`)
/// is left out; where the backup is a compact one, all but the folder itself, `data` and
/// `graphics\wads`. `now`: what stands in the folder.
Result<std::vector<ComparedFile>> CompareWithBackup(const Folders& folders, bool fullBackup,
                                                    const StandingTree& now,
                                                    const Heartbeat& heartbeat = {});

/// The new and the changed ones that somebody wrote since `before`: a builder's own files that
/// stood there, and that nobody touched, are no installer's work. What has the name of another one
/// comes before what the game would rather read.
std::vector<ComparedFile> WrittenSince(const std::vector<ComparedFile>& files,
                                       const StandingTree& before, const StandingTree& now);

} // namespace kestrova
