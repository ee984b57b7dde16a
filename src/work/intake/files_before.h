#pragma once

#include "core/files.h"
#include "formats/archive_file.h"
#include "formats/change_note.h"

namespace kestrova
{

/// The files of a level as they were before it was edited, for the case that the person gives the
/// change up or the program ends in the middle of it. Names of the same files where the file system
/// can, copies elsewhere. `intake/kept_edit.h` tells how they
/// lie.
class FilesBefore
{
public:
    /// `files`: the folder of the level's files, below its own. `record`: as the archive has it.
    FilesBefore(Path files, const LevelRecord& record);
    /// What was kept goes: the change is the level's now, or has been put back.
    ~FilesBefore();
    FilesBefore(const FilesBefore&) = delete;
    FilesBefore& operator=(const FilesBefore&) = delete;

    /// Before the folder's files change. Does its work once.
    Status Keep(const Heartbeat& heartbeat);
    /// Before a file of another of the level's folders is written as a copy of `source`, be it
    /// there or not. One that was not there goes again while it is as that copy; without a source
    /// it goes at all events.
    Status KeepTarget(const Path& target, const Path& source = {});
    /// What has changed since, once the change is the level's own: the contents that went lie by
    /// their hashes in `kept` then. Nothing where nothing was kept.
    [[nodiscard]] Result<std::vector<ChangedFolder>> TakeChanges(const Path& kept) const;
    /// The folder's files are those that were kept, and the targets too. What fails is tried again
    /// by `FinishKilledEdit`.
    Status PutBack();

private:
    const Path files_;
    const LevelRecord record_;
    bool isKept_ = false;
    int targets_ = 0;
};

/// What a killed edit kept in a level's folder, if it did: its files come back, unless the
/// archive's record is another one since, so that the edit was accepted. True when they came.
/// Repeatable.
Result<bool> FinishKilledEdit(const Path& levelFolder, const LevelRecord& record);

} // namespace kestrova
