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
    /// `NoSpace` where a disk has less than all of its folders need; the subject is one of them.
    /// What cannot be asked has enough.
    Status IsThere(Machine& machine) const;

private:
    struct Room {
        std::uint64_t largest = 0;
        std::uint64_t more = 0; ///< than stood there before
    };
    std::map<Path, Room> folders_;
};

} // namespace kestrova
