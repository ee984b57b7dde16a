#pragma once

#include "session/session.h"

/// What every face shows of the levels.
namespace kestrova
{

struct LevelFacts {
    std::size_t index = 0;
    LevelRecord record;
    Path folder;
    int screenshots = 0;
    int liveSavegames = 0;
    int archivedSavegames = 0;
    bool current = false;
    bool folderGone = false; ///< what it holds cannot be told
    std::string info;        ///< the line of path and counts as the window shows it
};
/// Everything the selection of a level shows; loads its savegame records on the way. No value, with
/// a message, for a code that the archive does not have.
std::optional<LevelFacts> SelectLevel(Session& session, LevelCode code);
/// The same without loading anything into the session: nothing is written.
std::optional<LevelFacts> LookAtLevel(Host& host, const Folders& folders, const Archive& archive,
                                      LevelCode code);

/// The list's rows in its order (sorted by text): name, with " (*)" behind the current level's.
struct ListRow {
    std::string text;
    LevelCode code = 0;
};
std::vector<ListRow> ListRows(const Folders& folders, const Archive& archive);
/// "Kestrova: levels.kva (12 levels)".
std::string WindowTitle(const Archive& archive);

/// Finds the first row from `from` on (or before it, `step` -1) that holds the text; -1 when none.
/// `from` itself counts; an empty text is held by every row.
std::ptrdiff_t FindRow(const std::vector<ListRow>& rows, std::string_view text, std::ptrdiff_t from,
                       int step);

} // namespace kestrova
