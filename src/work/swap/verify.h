#pragma once

#include "session/session.h"

namespace kestrova
{

enum class Mismatch {
    Missing,
    Differs,
    Cut, ///< shorter than it was stored
    Unexpected
};
struct Difference {
    Mismatch kind = Mismatch::Missing;
    std::string file;
};
/// What stands in the folder against marker, archive and backup; with a level's code instead, that
/// level's stored files: every one readable, every `.zl` whole. Touches nothing.
Result<std::vector<Difference>> VerifyFolder(Session& session);
Result<std::vector<Difference>> VerifyLevel(Session& session, LevelCode code);

} // namespace kestrova
