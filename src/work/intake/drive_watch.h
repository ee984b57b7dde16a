#pragma once

#include "originals/standing_tree.h"

namespace kestrova
{

/// What stands on Wine's drive C, as far as a program may be meant by it.
class DriveWatch
{
public:
    /// Looks at the drive of this prefix; an empty prefix has none.
    explicit DriveWatch(const Path& prefix);

    /// Files that came or changed since, outside these folders.
    [[nodiscard]] std::vector<std::string> Written(const std::vector<Path>& passedOver) const;

private:
    Path drive_;
    std::optional<StandingTree> before_;
};

} // namespace kestrova
