#pragma once

#include "core/files.h"
#include "session/machine.h"

#include <map>

namespace kestrova
{

/// The room that files take while they are overwritten: a new content stands beside the old one
/// until it has its name.
class RoomNeeded
{
public:
    /// The file that stands there gives way to one of that size.
    void Add(const Path& file, std::uint64_t size);
    /// `NoSpace` where a folder's disk has less. What cannot be asked has enough.
    Status IsThere(Machine& machine) const;

private:
    struct OfFolder {
        std::uint64_t largest = 0;
        std::uint64_t more = 0; ///< than stood there before
    };
    std::map<Path, OfFolder> folders_;
};

} // namespace kestrova
