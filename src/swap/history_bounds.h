#pragma once

#include "swap/history.h"

#include <set>

namespace kestrova
{

/// Takes the oldest entries out of a level's history until it keeps its bounds of the settings. An
/// entry whose content exists nowhere else stays, whatever the bounds say. Failures leave more than
/// the bound, never less, and are tried again with the next entry. `fresh`: hashes just kept, whose
/// files are about to go.
void BoundHistory(Session& session, const LevelPlace& level, const std::set<std::string>& fresh);

/// A level's index as it stands in its file: lines that this version cannot read are carried along.
struct HistoryIndex {
    std::vector<HistoryEntry> entries;
    std::string strangeLines;
};
/// Empty when there is none; a failure when it cannot be read.
Result<HistoryIndex> ReadHistoryIndex(const Session& session, LevelCode code);
Status WriteHistoryIndex(const Session& session, LevelCode code, const HistoryIndex& index);

} // namespace kestrova
