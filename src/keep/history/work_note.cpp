#include "history/work_note.h"

#include "core/look.h"
#include "core/staged_file.h"

namespace kestrova
{

Status WriteWorkNote(const Path& file, std::string_view text, bool flush)
{
    if (auto status = MakeFolders(file.parent_path()); !status)
        return status;
    return WriteWholeFile(file, text, flush);
}

Result<bool> DropWorkNote(const Path& file)
{
    const auto isFree = IsFree(file);
    if (!isFree || *isFree)
        return isFree ? Result<bool>{false} : isFree.Error();
    const auto deleted = DeleteFile(file);
    return deleted ? Result<bool>{true} : deleted.Error();
}

} // namespace kestrova
