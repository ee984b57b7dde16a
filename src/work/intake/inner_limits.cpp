#include "intake/inner_limits.h"

#include "core/files.h"

#include <algorithm>

namespace kestrova
{

Status InnerLimits::Restart(const Path& folder)
{
    came_ = {};
    const auto bytes = FolderSize(folder);
    if (!bytes)
        return bytes.Error();
    bytesBefore_ = *bytes;
    return {};
}

void InnerLimits::Count(const Amount& came)
{
    came_.entries += came.entries;
    came_.bytes += came.bytes;
}

UnpackLimits InnerLimits::Rest() const
{
    UnpackLimits limits;
    const std::uint64_t most =
        std::max(limits.alwaysAllowed, static_cast<std::uint64_t>(bytesBefore_) * limits.mostTimes);
    limits.alwaysAllowed = most - std::min(most, came_.bytes);
    limits.mostTimes = 0;
    limits.mostFiles -= std::min(limits.mostFiles, came_.entries);
    return limits;
}

} // namespace kestrova
