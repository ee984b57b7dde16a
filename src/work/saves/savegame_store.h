#pragma once

#include "formats/archive_file.h"
#include "formats/preferences.h"
#include "formats/savegame_records.h"
#include "session/folders.h"

namespace kestrova
{

/// A level's two records beside its archived savegames.
struct SavegameStore {
    SavegameArchiveHeader header;
    SavegameToolPrefs tool;
};

/// Of a level: what its files hold, and where they hold nothing the defaults. A file that is
/// missing is created where its folder allows it; failures of that are ignored. Fails when a file
/// is there that cannot be read.
Result<SavegameStore> LoadSavegameStore(const Folders& folders,
                                        const PreferencesRecord& preferences, LevelCode code);

} // namespace kestrova
