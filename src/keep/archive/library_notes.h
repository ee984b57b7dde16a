#pragma once

#include "formats/library_note.h"
#include "platform/file_facts.h"
#include "session/archive.h"
#include "session/folders.h"

#include <functional>
#include <unordered_map>

/// The notes of an archive's levels, in `library.json` of the folder that its levels' savegames lie
/// in. Without the file everything works. An entry counts for the level whose folder bears its
/// token, so that a removed level's entry waits for its return and never shows on another one.
namespace kestrova
{

/// What is noted of all levels of an archive, for who asks often. A value; one thread owns it.
class LibraryNotes
{
public:
    /// Reads again what has changed: the file, by its time and size, or the list's codes and names.
    /// True when a note may be another one now. Cheap when nothing has changed.
    bool Follow(const Folders& folders, const Archive& archive);
    /// An empty note where nothing is noted.
    [[nodiscard]] const LevelNote& Of(LevelCode code) const;
    /// The tags of all these levels, in the order of their names.
    [[nodiscard]] std::vector<std::string> Tags() const;
    /// Why nothing is known: the file cannot be read, or is damaged. Empty when all is well.
    [[nodiscard]] const std::optional<Failure>& Trouble() const { return trouble_; }
    /// How many entries of the file could not be understood; they stay in it.
    [[nodiscard]] std::size_t DamagedEntries() const { return damaged_; }

private:
    Path file_;
    platform::FileFacts facts_;
    std::uint64_t list_ = 0; ///< a sum over codes and names
    bool followed_ = false;
    std::unordered_map<LevelCode, LevelNote> notes_;
    std::optional<Failure> trouble_;
    std::size_t damaged_ = 0;
};

/// The note of one level, read now; an empty one where nothing is noted or the file is damaged.
/// A failure while the file cannot be read.
Result<LevelNote> NoteOf(const Folders& folders, const Archive& archive, LevelCode code);

struct ChangedNote {
    LevelCode code = 0;
    LevelNote before;
    LevelNote after;
};

struct NotesChange {
    std::vector<ChangedNote> levels; ///< in the order in which they were asked for
    Path setAside;                   ///< where a damaged file lies now; empty: there was none
};

/// Reads the file, changes the notes of those levels, and writes it in one step. Codes that the
/// archive does not have are passed over. Nothing is written while nothing is different. The caller
/// holds the lock of the archive's folder.
Result<NotesChange> ChangeNotes(const Folders& folders, const Archive& archive,
                                const std::vector<LevelCode>& codes,
                                const std::function<void(LevelCode, LevelNote&)>& change);

/// The level came in now, at `seconds` since 1970: whatever was noted under its code is another
/// level's.
Status NoteAdded(const Folders& folders, const Archive& archive, LevelCode code,
                 std::int64_t seconds);

/// When a level that left its number had it, in seconds since 1970. Without an end nobody has had
/// it since, as far as is known.
struct TimeOfNumber {
    std::int64_t from = 0;
    std::optional<std::int64_t> to;
};
/// The level whose folder bears the token has the number `now` instead of `before`: what is noted
/// of it follows. Repeatable. Of a damaged file nothing is known.
Result<TimeOfNumber> NoteNewNumber(const Folders& folders, const Archive& archive,
                                   const std::string& token, LevelCode before, LevelCode now);

/// A picture of the level has another name now: where it stands for the level, it still does.
Status CoverFollows(const Folders& folders, const Archive& archive, LevelCode code,
                    const std::string& from, const std::string& to);

/// Where the notes lie; empty for a list without a folder.
Path LibraryFileOf(const Folders& folders);

} // namespace kestrova
