#pragma once

#include "formats/change_head.h"
#include "formats/marked_level.h"
#include "formats/swap_journal.h"

/// The note of a change of what a player has: savegames, notes, pictures, a level's files, its
/// record in the archive's list. While the change is made it lies in the program's folder, so that
/// a killed one is mended; afterwards the same text is the entry by which it can be undone. JSON;
/// names are kept exactly (bytes that are no UTF-8, and the per cent sign, as %XX). The head is a
/// line of its own.
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

/// A level's record in the list of an archive. Without `before` it comes in, without `after` it
/// goes.
struct ChangedRecord {
    std::size_t place = 0; ///< where the record stands, or stood, in the list
    std::optional<LevelRecord> before;
    std::optional<LevelRecord> after;
};

/// Numbers that are shown, as they were before the change: what follows it is counted once.
struct SizesBefore {
    double files = 0; ///< the archive's totals
    double extras = 0;
    std::int32_t extrasOfLevel = 0;
};

struct Change : ChangeHead {
    std::string reason;             ///< the history's word for it
    std::string header;             ///< exact path of the store's `savegames.bva`; empty: not told
    std::int32_t archivedCount = 0; ///< what that record says afterwards
    std::vector<ChangedFolder> folders;
    std::string live;                ///< where its live savegames stood; empty: they take no part
    std::string kept;                ///< folder of the contents that went, by hash; it is not noted
    std::int32_t archivedBefore = 0; ///< what `header` said
    std::int32_t extraBytes = 0;     ///< what the level's size of pictures grew by
    SizesBefore sizes;
    std::optional<ChangedRecord> record;
    std::vector<MarkedLevel> marks; ///< what was said of levels, that of `code` first
};

/// No note is longer.
inline constexpr std::uint64_t longestChange = UINT64_C(64) << 20;

std::string FormatChange(const Change& change);
/// `Damaged` for anything that this program did not write, and for a change of other places than
/// the level's own folder and the one of its live savegames.
Result<Change> ParseChange(std::string_view text);

/// The change that leads back. Contents come from the folder `change.kept`, or from where the
/// change left them. It has no id and no folder of its own yet.
Change Inverse(const Change& change);

} // namespace kestrova
