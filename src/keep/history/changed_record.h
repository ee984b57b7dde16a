#pragma once

#include "formats/change_note.h"
#include "session/archive.h"

/// The record of a level in the list of its archive, before a change and after it.
namespace kestrova
{

/// The record without what changes while nobody edits it: its size of pictures follows the files.
std::string BytesOfRecord(LevelRecord record);
/// True when both say the same of the level by that.
bool IsSameRecord(const LevelRecord& one, const LevelRecord& other);

enum class RecordState {
    Before, ///< as it was before the change
    After,  ///< as the change left it
    Other   ///< neither: somebody else changed it since
};
RecordState StateOf(const std::vector<LevelRecord>& levels, const ChangedRecord& change);

/// The list as it is after the change, whatever it is now, the record in its old place. The sizes
/// of the header are left to the caller.
void PutRecord(std::vector<LevelRecord>& levels, const ChangedRecord& change);

/// The sizes of a level that leaves with its folder, or of pictures that came or went, unless they
/// are counted by now. True when the list is another one then.
bool CountOnce(ArchiveHeader& header, std::vector<LevelRecord>& levels, const Change& change);

/// Record and sizes in the archive's file, for a change that a killed program left. A file that is
/// as it shall be is not written.
Status PutRecordInFile(const Change& change);

} // namespace kestrova
