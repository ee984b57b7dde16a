#include "storage/files_exchange.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"

namespace kestrova
{

Path BesideFiles(const Path& files, std::string_view ending)
{
    return files.native() + std::string{ending};
}

namespace
{

Status RenameFolder(const Path& from, const Path& to)
{
    if (const auto failure = platform::Rename(from, to))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure);
    return {};
}

/// The folder's files go; sub-folders, which are no part of a level but somebody's, move to `heir`.
Status ClearOut(const Path& folder, const Path& heir)
{
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return {};
    const auto children = ListSubfolders(folder);
    if (!children)
        return children.Error();
    for (const Path& child : *children)
        if (auto status = RenameFolder(child, heir / child.filename()); !status)
            return status;
    return RemoveFolder(folder);
}

} // namespace

Status FinishExchange(const Path& files)
{
    const Path old = BesideFiles(files, OnDisk::EndingOld);
    const auto hasFiles = IsFolder(files);
    const auto hasOld = IsFolder(old);
    if (!hasFiles || !hasOld)
        return hasFiles ? hasOld.Error() : hasFiles.Error();
    if (!*hasFiles && *hasOld)
        if (auto status = RenameFolder(old, files); !status)
            return status;
    if (auto status = MakeFolder(files); !status)
        return status;
    if (auto status = ClearOut(old, files); !status)
        return status;
    return ClearOut(BesideFiles(files, OnDisk::EndingNew), files);
}

Status ExchangeFiles(const Path& files)
{
    const Path fresh = BesideFiles(files, OnDisk::EndingNew);
    const Path old = BesideFiles(files, OnDisk::EndingOld);
    Path leaving = fresh; // after an exchange the old files bear the new folder's name
    if (const auto failure = platform::Exchange(fresh, files)) {
        if (failure != std::errc::operation_not_supported &&
            failure != std::errc::function_not_supported)
            return MakeFailure(ErrorCode::CannotWrite, TextOf(files), failure);
        leaving = old;
        if (auto status = RenameFolder(files, old); !status)
            return status;
        if (auto status = RenameFolder(fresh, files); !status) {
            (void)RenameFolder(old, files); // the way back; if it fails, `FinishExchange` goes it
            return status;
        }
    }
    (void)ClearOut(leaving, files); // the level stands; what stays is cleared by the next store
    return {};
}

} // namespace kestrova
