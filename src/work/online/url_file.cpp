#include "online/url_file.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "online/download.h"
#include "online/file_names.h"
#include "words/online.h"

namespace kestrova
{

Path UrlListPath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragUrlList);
}

Result<UrlList> LoadUrlList(const Path& file)
{
    const auto bytes = ReadFileIfThere(file, longestList);
    if (!bytes)
        return bytes.Error();
    if (!*bytes)
        return MakeFailure(ErrorCode::Missing, TextOf(file));
    auto list = ParseUrlList(**bytes);
    if (!list)
        return Failure{ErrorCode::Damaged, TextOf(file), GetMsg(Msg::UrlListDamaged)};
    return std::move(*list);
}

Status SaveUrlList(const Path& file, const UrlList& list)
{
    const auto bytes = FormatUrlList(list);
    if (!bytes)
        return Failure{ErrorCode::Refused, TextOf(file), GetMsg(Msg::UrlListTooLong)};
    return WriteDocument(file, *bytes);
}

} // namespace kestrova
