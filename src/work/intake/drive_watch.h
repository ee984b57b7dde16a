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

/// What changed below a folder, as far as one can look in a short while.
struct ChangedBelow {
    std::vector<std::string> names; ///< from the folder on
    bool whole = true;              ///< all of it was looked at
};
/// Files of this disk that came or changed at that time or later, outside
/// these folders. Links are not followed; what nobody may look at is passed over.
ChangedBelow ChangedSince(const Path& folder, std::int64_t sinceNs,
                          const std::vector<Path>& passedOver, const Heartbeat& heartbeat);

} // namespace kestrova
