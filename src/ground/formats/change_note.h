#pragma once

#include "formats/archive_file.h"
#include "formats/swap_journal.h"

/// The note of a change of what a player has: savegames, notes, pictures, a level's files, its
/// record in the archive's list. While the change is made it lies in the program's folder, so that
/// a killed one is mended; afterwards the same text is the entry by which it can be undone. JSON;
/// names are kept exactly (bytes that are no UTF-8, and the per cent sign, as %XX). Notes of
/// earlier versions have the members up to `folders` alone.
namespace kestrova
{

/// A content that comes under a name, and the file that held it when the change was worked out: it
/// may be one that takes no other part.
struct ComingFile {
    std::string name;
    std::string hash;
    std::string source; ///< exact and absolute
};

struct ChangedFolder {
    std::string folder;            ///< exact
    bool made = false;             ///< the change makes it
    std::vector<StateFile> before; ///< files that change or go
    std::vector<ComingFile> after; ///< under a new name, or in place of one of `before`
    bool goes = false;             ///< nothing of it stays but what others put there
};

/// What a person did, as its note names it.
enum class ChangeKind {
    Unnamed, ///< of an earlier version: it is finished, but cannot be undone
    SlotsFreed,
    SlotsFilled,
    SavegamesImported,
    SavegamesExported,
    SavegameBroughtBack,
    ShotAdded,
    ShotCaptured,
    ShotReplaced,
    ShotDeleted,
    ShotRenamed,
    ShotsImported,
    LevelEdited,
    LevelRemoved,
    LanguageChanged,
    LanguageRestored,
};

/// A level's record in the list of an archive. Without `before` it comes in, without `after` it
/// goes.
struct ChangedRecord {
    std::string archive;   ///< the archive's file, exact
    std::size_t place = 0; ///< where the record stands, or stood, in the list
    std::optional<LevelRecord> before;
    std::optional<LevelRecord> after;
};

/// A folder that changes its name within its file system, with all that is in it.
struct MovedFolder {
    std::string from; ///< exact, as is `to`
    std::string to;
    std::uint64_t bytes = 0;
};

struct Change {
    LevelCode code = 0;             ///< whose history takes what loses its place
    std::string reason;             ///< the history's word for it
    std::string header;             ///< exact path of the store's `savegames.bva`; empty: not told
    std::int32_t archivedCount = 0; ///< what that record says afterwards
    std::vector<ChangedFolder> folders;

    ChangeKind kind = ChangeKind::Unnamed;
    std::int32_t id = 0;             ///< of the entry; larger is newer
    std::int64_t madeNs = 0;         ///< since 1970, UTC
    std::string subject;             ///< what it was done to: a picture's name, say
    std::string levelName;           ///< for who reads the entry
    std::string home;                ///< the level's own folder, exact: which archive's level it is
    std::string live;                ///< where its live savegames stood; empty: they take no part
    std::string kept;                ///< folder of the contents that went, by hash; exact
    std::int32_t archivedBefore = 0; ///< what `header` said
    std::int32_t extraBytes = 0;     ///< what the level's size of pictures grew by
    bool ofLevelsFiles = false;      ///< of what the level brought: the history keeps no such files
    std::int32_t undoes = 0;         ///< the entry that it undoes, or does again; 0: none
    bool isUndone = false;           ///< it undid one: whoever makes it again does that one again
    std::optional<ChangedRecord> record;
    std::optional<MovedFolder> moved;
};

std::string FormatChange(const Change& change);
/// `Damaged` for anything that this program did not write.
Result<Change> ParseChange(std::string_view text);

/// The change that leads back. Contents come from the folder `change.kept`, or from where the
/// change left them. It has no id and no folder of its own yet.
Change Inverse(const Change& change);

} // namespace kestrova
