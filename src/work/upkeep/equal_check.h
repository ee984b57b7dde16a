#pragma once

#include "session/session.h"

namespace kestrova
{

/// Two levels of the archive that hold the same `.tr4`.
struct EqualPair {
    std::size_t level = 0; ///< index in the archive
    std::size_t other = 0;
    std::string file;
};

/// Compares every level of the archive with the others by names and sizes of their `.tr4` and hands
/// each pair on; an answer of False ends it. False, with a message, when a disc that is needed is
/// not there: a level's files are looked at only where it has no `tr4.inf`.
bool FindEqualLevels(Host& host, const Folders& folders, const Archive& archive,
                     const std::function<bool(const EqualPair&)>& found);
/// The same, asking at each pair whether to go on; tells the count at the end.
bool CheckEqualLevels(Host& host, const Folders& folders, const Archive& archive);

} // namespace kestrova
