#pragma once

#include "session/session.h"

namespace kestrova
{

struct Finding {
    bool fine = false;
    std::string name;   ///< what was looked at
    std::string state;  ///< how it is
    std::string remedy; ///< what to do; empty when fine
};
/// Folder, backup, archive, tools, Wine, drives, interrupted work. Touches nothing.
std::vector<Finding> Examine(Session& session);

} // namespace kestrova
