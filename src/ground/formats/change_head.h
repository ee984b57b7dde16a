#pragma once

#include "core/result.h"
#include "formats/archive_file.h"

#include <optional>
#include <string>
#include <string_view>

/// The first line of a change's note: all that is shown of it, and whose it is. Many notes are told
/// apart by their first lines alone, however long they are.
namespace kestrova
{

/// What a person did, as its note names it.
enum class ChangeKind {
    Unnamed, ///< it is finished after a kill, but cannot be undone
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
    FilesLeft, ///< a level's files, which lie on a disc, left the hard disk
    SavegamesDeleted,
    LevelMarked,   ///< the subject is the word of the one thing that was said, if it was one
    LevelsMarked,  ///< the subject is how many
    LevelRepaired, ///< damaged files of a level gave way to those that were noted
};

/// A level's folder, or the one of its files, that changes its name within its file system, with
/// all that is in it.
struct MovedFolder {
    std::string from; ///< exact, as is `to`; one of both is the level's own place
    std::string to;
    std::uint64_t bytes = 0;
    std::string digest; ///< of what the folder held when it was set aside
};

struct ChangeHead {
    LevelCode code = 0; ///< whose history takes what loses its place
    ChangeKind kind = ChangeKind::Unnamed;
    std::int32_t id = 0;        ///< of the entry; larger is newer
    std::int64_t madeNs = 0;    ///< since 1970, UTC
    std::string subject;        ///< what it was done to: a picture's name, say
    std::string levelName;      ///< for who reads the entry
    std::string home;           ///< the level's own folder, exact
    std::string level;          ///< token of that folder: another level in its place has another
    std::string maker;          ///< token of the program's folder that made the change
    std::string archive;        ///< the archive's file then, exact; empty without one
    bool ofLevelsFiles = false; ///< of what the level brought: the history keeps no such files
    std::int32_t undoes = 0;    ///< the entry that it undoes, or does again; 0: none
    bool isUndone = false;      ///< it undid one: whoever makes it again does that one again
    std::optional<MovedFolder> moved;
};

/// Numbers of entries are below it.
inline constexpr std::int32_t undoIdLimit = 1'000'000'000;
/// No first line is longer.
inline constexpr std::size_t longestChangeHead = 64 << 10;

/// A line with its end.
std::string FormatChangeHead(const ChangeHead& head);
/// `Damaged` for anything that this program did not write, and for places that are not those of the
/// level: what is moved is the level's folder, or the one of its
/// files, under its own name and one that sets it aside.
Result<ChangeHead> ParseChangeHead(std::string_view line);

/// The folder that such a change moves: the level's own, or the one of its files.
std::string OwnPlaceOf(const ChangeHead& head);
/// True for the folder of the level, or one in it.
bool IsInHome(const ChangeHead& head, std::string_view folder);

} // namespace kestrova
