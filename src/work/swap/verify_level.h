#pragma once

#include "formats/stored_note.h"
#include "session/session.h"

/// The stored files of a level against what was noted when they were stored.
namespace kestrova
{

enum class FileFault {
    Missing,
    Differs,    ///< it can be read, and is not what was noted
    Cut,        ///< shorter than it was stored, as the index tells
    Damaged,    ///< a `.zl` that does not expand
    Unreadable, ///< the system gives it to nobody
    InTheWay,   ///< a folder, or a link that leads out, stands under its name
    Unexpected, ///< nobody noted it, while all others were: no harm by itself
};

struct LevelFault {
    FileFault kind = FileFault::Missing;
    std::string file;   ///< for a person: as it is called in the Level Editor's folder
    std::string stored; ///< in `files`; empty for what is known by its game's name alone
    std::optional<StoredEntry> noted; ///< no value: nobody knows what it was
    std::string reason;               ///< the system's
};

/// What a check of a level found.
struct CheckedLevel {
    std::vector<LevelFault> faults;
    std::size_t files = 0;   ///< how many stand there
    bool isNotedNow = false; ///< what stands there, and is whole, was noted by this very check
};

/// Whether a check may note what nobody has noted yet.
enum class Noting { No, Yes };

/// Reads each stored file of a level, on all cores: against the note of its hashes, a `.zl` without
/// one by expanding it; and names what the level is known to have and lacks. Touches nothing but
/// that note. `Stopped` when the heartbeat says so; `Missing`, in words, while its disc is away.
Result<CheckedLevel> VerifyLevel(const Folders& folders, const Archive& archive, LevelCode code,
                                 Noting noting, const Heartbeat& beat = {});

} // namespace kestrova
