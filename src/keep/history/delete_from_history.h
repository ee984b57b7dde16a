#pragma once

#include "history/history_index.h"

#include <set>

namespace kestrova
{

/// Takes the entries of these ids out of a level's history for good. A content goes with the last
/// entry of any level that names it. A failure also when the entries are gone and a content stays.
Status DeleteFromHistory(const Folders& folders, LevelCode code, const std::set<std::string>& ids);

/// Of these contents those go that no level's history names any more. `Refused`, in words, where
/// nobody can tell which those are: all of them stay then.
Status DropUnnamed(const Folders& folders, std::set<std::string> hashes);

} // namespace kestrova
