#include "session/file_to_write.h"

#include "core/look.h"
#include "platform/real_path.h"
#include "session/telling.h"
#include "words/session.h"

namespace kestrova
{

std::optional<Path> FileToWrite(Host& host, const Path& named)
{
    const auto place = FindPath(named);
    const auto facts = place ? LookAt(*place) : place.Error();
    if (!facts) {
        TellFolderNotRead(host, facts.Error());
        return {};
    }
    if (facts->kind == platform::FileKind::Missing) {
        Path behind; // a link whose file is not there yet stays a link
        return platform::LinkTarget(*place, behind) ? *place : place->parent_path() / behind;
    }
    if (facts->kind != platform::FileKind::File) {
        host.Tell(Tone::Error, GetMsg(Msg::WriteNoFile, {TextOf(named)}));
        return {};
    }
    Path behind;
    return platform::RealPath(*place, behind) ? *place : behind;
}

std::optional<Path> FileToReplace(Host& host, const Path& named)
{
    auto file = FileToWrite(host, named);
    if (!file)
        return {};
    const auto isFree = IsFree(*file);
    if (!isFree) {
        TellFolderNotRead(host, isFree.Error());
        return {};
    }
    if (!*isFree && !host.AskYesNo(GetMsg(Msg::AskReplaceZip, {TextOf(*file)})))
        return {};
    return file;
}

} // namespace kestrova
