#pragma once

#include "originals/standing_tree.h"
#include "session/folders.h"
#include "session/machine.h"

/// The Level Editor's folder, or most of it, becomes as it was noted.
namespace kestrova
{

struct TreeWish {
    const StandingTree& before;
    std::function<Path(std::size_t file)> copyOf{};  ///< of a file that the backup lacks
    std::function<bool(const Path& name)> mayCome{}; ///< new names that stay; none: no such
    /// What was written into such a file stays; one that is gone comes back all the same.
    std::function<bool(const Path& name)> mayChange{};
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
