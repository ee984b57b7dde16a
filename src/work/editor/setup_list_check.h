#pragma once

#include "core/files.h"

#include <string>
#include <vector>

/// The files of a setup, held against its `list.txt`.
namespace kestrova
{

struct SetupListCheck {
    bool hasList = true;
    std::vector<std::string> missing; ///< as they are shown, ten at most
    bool hasMore = false;             ///< the list was not read to its end
};

/// Which files a setup's list names.
enum class SetupState {
    Source,   ///< all of them
    Installed ///< but for sounds that became waves, and pictures and manuals of other languages
};

/// Looks in the folder for every file that its `list.txt` names, in whatever spelling; ahead of a
/// name the folder `trle` may stand. A name that leads out is of a file that is missing.
Result<SetupListCheck> CheckSetupFiles(const Path& folder, SetupState state,
                                       const Heartbeat& heartbeat);

/// The question that the result asks; empty when nothing is wrong.
std::string SetupListQuestion(const SetupListCheck& check, const Path& folder);

} // namespace kestrova
