#pragma once

#include "formats/archive_file.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the program notes about the Level Editor's folder beside the marker: who owns the state in
/// it, and, during a swap, how far the swap has come. Both are JSON; names are kept exactly (bytes
/// that are no UTF-8, and the per cent sign, as %XX).
namespace kestrova
{

/// A file of the Level Editor's folder as it was put there. Size and time tell it from a file that
/// somebody changed since; the time of its last change of any kind and its inode prove it.
struct OwnedFile {
    std::string name; ///< `\data\level1.tr4`, exact
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    std::int64_t changedNs = 0; ///< 0: not noted
    std::uint64_t inode = 0;
};

/// A savegame, note or shot with its content's hash.
struct StateFile {
    std::string name;
    std::string hash;
};

/// Tells a folder from another one of the same path.
struct FolderMark {
    std::string path;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
};

inline constexpr std::string_view absentMarker = "absent";

struct OwnerRecord {
    FolderMark folder;
    std::string marker;             ///< hash of the marker's bytes, or `absentMarker`
    std::optional<LevelCode> owner; ///< whose savegames stand in the folder; none: nobody's
    FolderMark home;                ///< that level's own folder; no path in notes of old versions
    std::string levelName;
    std::string token;            ///< of that level's folder; empty: it had none, or an old note
    std::vector<OwnedFile> added; ///< what levels brought, leftovers of a failed removal too
    std::vector<std::string> overwritten;
    /// Those of them that should be back and are not.
    std::vector<std::string> owed{};
    /// Savegames, notes and shots of another level that could not be taken out of the folder.
    std::vector<OwnedFile> strangers;
    /// Names in the owner's store of what could not be brought in.
    std::vector<std::string> waiting;
    std::string bootId;
};

enum class SwapPhase {
    Planned, ///< the live state is untouched; the store may be emptied
    Stored,  ///< the live state is in its store; it may be gone from the folder
    Coming,  ///< the new level owns the state in the folder
    Restore, ///< a full restore: critical files may be gone
};

struct SwapJournal {
    FolderMark folder;
    SwapPhase phase = SwapPhase::Planned;
    LevelCode from = 0;    ///< whose store takes the live state
    std::string fromStore; ///< that store's folder
    std::string toStore;   ///< the coming level's store
    FolderMark fromRoot;   ///< the archive's folder above `fromStore`; inode 0: not noted
    FolderMark toRoot;     ///< the one above `toStore`
    /// The level of `live` has no folder any more: its state stays live and is in the history.
    bool liveIsKept = false;
    /// The needed store's archive is given up: what was to go there goes to that level's history.
    bool storeLetGo = false;
    LevelCode to = 0;                 ///< the level that comes; -1: none
    std::vector<StateFile> live;      ///< the state in the folder at the beginning
    std::vector<StateFile> store;     ///< the store of `from` at the beginning
    std::vector<OwnedFile> strangers; ///< as in the owner record
    std::vector<OwnedFile> remove;    ///< what the old level brought
    std::vector<std::string> restore; ///< what comes back from the backup
    std::vector<OwnedFile> install;   ///< what the new level brings
};

std::string FormatOwner(const OwnerRecord& record);
/// `Damaged` for anything that this program did not write.
Result<OwnerRecord> ParseOwner(std::string_view text);
std::string FormatJournal(const SwapJournal& journal);
Result<SwapJournal> ParseJournal(std::string_view text);

} // namespace kestrova
