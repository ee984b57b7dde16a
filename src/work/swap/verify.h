#pragma once

#include "swap/swap_parts.h"

namespace kestrova
{

enum class Mismatch {
    Missing,
    Differs,
    Unexpected,
    BackupDamaged ///< a file of the backup is not what was noted when it was made
};
struct Difference {
    Mismatch kind = Mismatch::Missing;
    std::string file;
};
/// What stands in the folder against marker, archive and backup. Touches nothing.
Result<std::vector<Difference>> VerifyFolder(const SwapParts& parts);

} // namespace kestrova
