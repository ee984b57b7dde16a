#pragma once

#include "originals/standing_tree.h"
#include "session/folders.h"
#include "session/machine.h"

/// The Level Editor's folder, or most of it, becomes as it was noted.
namespace kestrova
{

struct TreeWish {
    const StandingTree& before;
    std::function<Path(std::size_t file)> copyOf{}; ///< of a file that the backup lacks
    /// What stands there under such a name stays as it is; one that is gone comes back.
    std::function<bool(const Path& name)> mayStay{};
    bool keepsStrangers = false; ///< what came or changed goes to the vault first
    bool clearsOthers = false;   ///< pipes, devices and unlisted names that came go
};
struct TreeChanges {
    std::vector<Path> back; ///< had gone or changed, and are as they were
    std::vector<Path> gone; ///< had come
};

/// Deletes what came and brings back what went or changed, with times and rights. Goes on past what
/// fails; the first failure is the answer, and all of it may be done again.
Result<TreeChanges> BringTreeBack(Machine& machine, const Folders& folders, const TreeWish& wish);

} // namespace kestrova
