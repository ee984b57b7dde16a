#pragma once

#include "discs/disc_set.h"

/// The discs of an archive, read back.
namespace kestrova
{

enum class Verifying {
    Fast, ///< each disc is there, with the names and sizes of what was put on it
    All,  ///< every file has the noted content
};

struct VerifiedLevel {
    std::int32_t disc = 0;
    LevelCode code = 0;
    bool good = false;
    std::string fault{}; ///< in words; empty where it is good
};

/// Looks at every level that lies on a disc, disc by disc; the person is asked for those that are
/// not there. What all of it proves, and what it refutes, is noted: a level that was not proved
/// when it was burnt is compared with its files on the hard disk. `Stopped` when the person gave
/// up.
Result<std::vector<VerifiedLevel>> VerifyDiscs(const DiscParts& parts, Verifying verifying);

} // namespace kestrova
