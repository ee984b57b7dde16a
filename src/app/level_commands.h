#pragma once

#include "session/session.h"
#include "swap/folder_guard.h"

/// What the main window's buttons do to the selected level, for every face.
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
std::optional<LevelFacts> LookAtLevel(Session& session, LevelCode code);

/// Installs and starts: asks first while a program runs in the Level Editor's folder, for the level
/// that stands there too, since a second game would write into the same slots. With `start` False
/// the game is not started. True when all of that went well.
bool PlayLevel(Session& session, LevelCode code, bool start = true);

/// How the game would be started: as it is, or through Wine when the file begins with `MZ`; the
/// prefix is the folder above `drive_c` on the way to the game. The failure's reason says in words
/// what is missing.
Result<platform::Launch> GameLaunch(Session& session);

/// Starts the sibling tool on the selected level with its two records prepared; asks first whether
/// a level that is not installed shall be. False when it was not started.
bool StartSavegameTool(Session& session);

/// Opens the level's readme with the desktop's program; says why when it cannot.
bool ShowMoreInfo(Session& session, LevelCode code);

/// The list's rows in its order (sorted by text): name, with " (*)" behind the current level's.
struct ListRow {
    std::string text;
    LevelCode code = 0;
};
std::vector<ListRow> ListRows(Session& session);
/// "Kestrova: levels.kva (12 levels)".
std::string WindowTitle(const Session& session);

/// Finds the first row from `from` on (or before it, `step` -1) that holds the text; -1 when none.
/// `from` itself counts; an empty text is held by every row.
std::ptrdiff_t FindRow(const std::vector<ListRow>& rows, std::string_view text, std::ptrdiff_t from,
                       int step);

} // namespace kestrova
