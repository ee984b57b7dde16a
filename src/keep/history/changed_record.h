#pragma once

#include "formats/change_note.h"
#include "session/archive.h"

/// The record of a level in the list of its archive, before a change and after it.
namespace kestrova
{

/// True when both say the same of the level; its size of pictures, which follows the files, may be
/// another one.
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

/// The same in the archive's file, the sizes with it, for a change that a killed program left. A
/// file that is as it shall be is not written.
Status PutRecordInFile(const ChangedRecord& change);

} // namespace kestrova
