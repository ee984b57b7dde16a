#pragma once

#include "core/text.h"
#include "formats/preferences.h"
#include "session/archive.h"
#include "session/folder_locks.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"
#include "session/mp3_settings.h"
#include "session/running.h"
#include "session/settings.h"
#include "session/shown_list.h"

namespace kestrova
{

/// What one run of the program shares. One thread owns it.
struct Session {
    Host& host;
    Machine& machine;
    LevelList& list;

    Path programFolder;
    PreferencesRecord preferences = DefaultPreferences();
    ProgramSettings settings = DefaultSettings();
    Mp3Settings mp3Settings{}; ///< of this run alone

    Archive archive{};
    DiscReader* discs = nullptr; ///< finds levels on discs; null where none can be found
    FolderLocks locks{};         ///< of the folders that this run writes to

    Running running{};

    [[nodiscard]] Path TrleFolder() const { return FolderFromText(Trim(preferences.trlePath)); }
    /// The loaded archive's file; empty when none is loaded.
    [[nodiscard]] const Path& ArchivePath() const { return archive.file; }
    /// The archive that the next start loads.
    [[nodiscard]] Path RememberedArchive() const { return Path{Trim(preferences.archivePath)}; }
    /// Where things lie now.
    [[nodiscard]] kestrova::Folders Folders() const;
};

} // namespace kestrova
