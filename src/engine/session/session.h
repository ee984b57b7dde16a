#pragma once

#include "core/activity_log.h"
#include "core/copying.h"
#include "core/text.h"
#include "formats/preferences.h"
#include "formats/savegame_records.h"
#include "platform/folder_memory.h"
#include "session/archive.h"
#include "session/folder_locks.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"
#include "session/mp3_settings.h"
#include "session/settings.h"

#include <optional>

namespace kestrova
{

/// The list of levels as some face shows it. The face without a list keeps just the selection.
class LevelList
{
public:
    virtual ~LevelList() = default;
    /// Rebuilds the list and the title from the session.
    virtual void Refresh() = 0;
    virtual void Select(LevelCode code) = 0;
    [[nodiscard]] virtual std::optional<LevelCode> Selected() const = 0;
    /// A line about what is going on, in place of the level's note, until the next refresh.
    virtual void ShowActivity(const std::string& text) = 0;
};

/// What one run of the program shares. One thread owns it.
struct Session {
    Host& host;
    Machine& machine;
    LevelList& list;

    Path programFolder;
    PreferencesRecord preferences = DefaultPreferences();
    ProgramSettings settings = DefaultSettings();
    FolderLocks locks{};
    Path lockedArchiveFolder{}; ///< the folder whose lock is held for the archive

    Mp3Settings mp3Settings{};

    Archive archive{};
    bool loadFailedAskAnother = false;
    bool level0Rebuilt = false;
    bool hotKeysActive = false;
    std::int64_t gamePid = 0; ///< the game started last; 0 when none was

    SavegameArchiveHeader savegameHeader{};
    SavegameToolPrefs savegameTool{};

    /// Above 0 while an operation runs: timers and notices return at once, commands are refused.
    int runningOperations = 0;
    /// The person goes on though a program runs in the Level Editor's folder; asked once for each
    /// operation.
    bool agreedToProgramsInTrle = false;

    [[nodiscard]] Path TrleFolder() const { return FolderFromText(Trim(preferences.trlePath)); }
    /// The loaded archive's file; empty when none is loaded.
    [[nodiscard]] const Path& ArchivePath() const { return archive.file; }
    /// The archive that the next start loads.
    [[nodiscard]] Path RememberedArchive() const { return Path{Trim(preferences.archivePath)}; }
    [[nodiscard]] Path BackupFolder() const { return Folders().Backup(); }
    [[nodiscard]] Path MarkerPath() const { return Folders().Marker(); }
    /// Where things lie now.
    [[nodiscard]] kestrova::Folders Folders() const;
};

/// Counts an operation for the length of its life; folders are listed once meanwhile.
class Operation
{
public:
    explicit Operation(Session& session) : session_(session) { ++session_.runningOperations; }
    ~Operation()
    {
        if (--session_.runningOperations == 0)
            session_.agreedToProgramsInTrle = false;
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    Session& session_;
    platform::FolderMemory folders_;
};

/// Shows a failure in words: `text`, and the failure's subject and system reason beside it.
void TellFailure(Host& host, const std::string& text, const Failure& failure);

/// Tells that a folder could not be listed, and that nothing was decided on it. Answers False.
bool TellFolderNotRead(Host& host, const Failure& failure);

/// True unless the person says that the old file must stay.
bool ConfirmReplace(Host& host, const Path& newFile, const Path& oldFile);

/// Removes a folder with all that is in it, label and bar following; shows its failure.
bool RemoveTreeWithProgress(Host& host, const Path& folder, ProgressScope& progress);

/// Copies a tree; the bar follows the bytes; shows its failure. Every file is compared with its
/// source when `verify` says so.
bool CopyTreeWithProgress(Host& host, const Path& source, const Path& target,
                          ProgressScope* progress, Verify verify = Verify::Size);

/// The fixed, writable drive with the most free space; the first of equals.
Drive FindLargestDrive(Machine& machine);

/// Takes a writer's lock on a folder; a folder that is not there needs none. False, with words that
/// name the holder.
bool HoldFolder(Session& session, const Path& folder);

/// The lock of the archive's writable folder in place of the one that was held for the archive
/// before. False, with words: then that one is still held.
bool HoldArchiveFolder(Session& session, const Path& folder);

/// The locks of a writer: the program's folder, the Level Editor's, the archive's writable one, as
/// far as they are there. False with words that name the holder. Repeatable.
bool HoldFolders(Session& session);

/// Writes the log as a new file of the program's folder when the preferences ask for it.
void WriteActivityLog(Host& host, const Folders& folders, const PreferencesRecord& preferences,
                      const ActivityLog& log);

} // namespace kestrova
