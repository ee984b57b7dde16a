#include "session/file_to_write.h"

#include "core/look.h"
#include "platform/real_path.h"
#include "session/telling.h"
#include "words/session.h"

namespace kestrova
{

Result<Path> FileToWrite(const Path& named)
{
    const auto place = FindPath(named);
    const auto facts = place ? LookAt(*place) : place.Error();
    if (!facts)
        return FolderNotRead(facts.Error());
    if (facts->kind == platform::FileKind::Missing) {
        Path behind; // a link whose file is not there yet stays a link
        return platform::LinkTarget(*place, behind) ? *place : place->parent_path() / behind;
    }
    if (facts->kind != platform::FileKind::File)
        return Saying(GetMsg(Msg::WriteNoFile, {TextOf(named)}),
                      MakeFailure(ErrorCode::Refused, TextOf(named)));
    Path behind;
    return platform::RealPath(*place, behind) ? *place : behind;
}

Result<Path> FileToReplace(Host& host, const Path& named)
{
    auto file = FileToWrite(named);
    if (!file)
        return file;
    const auto isFree = IsFree(*file);
    if (!isFree)
        return FolderNotRead(isFree.Error());
    if (!*isFree && !host.AskYesNo(GetMsg(Msg::AskReplaceZip, {TextOf(*file)})))
        return MakeFailure(ErrorCode::Stopped, TextOf(*file));
    return file;
}

} // namespace kestrova
