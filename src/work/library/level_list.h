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
    double extras = 0; ///< bytes of savegames and screen-shots, as they are now
    bool current = false;
    bool folderGone = false; ///< what it holds cannot be told
    std::string info;        ///< the line of path and counts as the window shows it
};
/// A level's live savegames, where they lie now, and those of its archive slots. Only shown: a
/// folder that cannot be read shows nothing of what it holds.
struct SavegameCount {
    int live = 0;
    int archived = 0;
    friend bool operator==(const SavegameCount&, const SavegameCount&) = default;
};
SavegameCount CountSavegames(const Folders& folders, const Archive& archive, LevelCode code);

/// Everything the selection of a level shows; loads its savegame records on the way. No value, with
/// a message, for a code that the archive does not have.
std::optional<LevelFacts> SelectLevel(Host& host, const Folders& folders, const Archive& archive,
                                      const PreferencesRecord& preferences, LevelCode code);
/// The same without loading anything: nothing is written.
std::optional<LevelFacts> LookAtLevel(Host& host, const Folders& folders, const Archive& archive,
                                      LevelCode code);

/// "Kestrova: levels.kva (12 levels)".
std::string WindowTitle(const Archive& archive);

} // namespace kestrova
