#pragma once

#include "packages/unpack_guard.h"

namespace kestrova
{

/// What packages that lie in the level's folder may still become. They count together, however deep
/// they lie in each other and however often the folder is looked at again; otherwise a small one
/// could fill the disk step by step.
class InnerLimits
{
public:
    /// The folder's files came from outside. When its size cannot be told, the earlier one stays,
    /// which is the smaller, and so the narrower limit.
    Status Restart(const Path& folder);
    void Count(const Amount& came);
    [[nodiscard]] UnpackLimits Rest() const;

private:
    double bytesBefore_ = 0; ///< in the folder, before packages in it were unpacked
    Amount came_;            ///< out of those since then
};

} // namespace kestrova
