#include "upkeep/move_target.h"

#include "archive/archive_entries.h"
#include "core/inside.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "platform/places.h"
#include "platform/real_path.h"
#include "session/telling.h"
#include "upkeep/new_archive.h"
#include "words/moving.h"

namespace kestrova
{

namespace
{

bool RefuseTarget(Host& host, Message words, std::initializer_list<std::string_view> values)
{
    host.Tell(Tone::Error, GetMsg(words, values));
    return false;
}

/// The folder itself or the nearest one above it that is there.
Path NearestFolder(Path folder)
{
    while (!FolderExists(folder) && folder.has_parent_path() && folder != folder.parent_path())
        folder = folder.parent_path();
    return ResolvePath(folder);
}

bool LiesElsewhere(Host& host, const Path& from, const Path& to)
{
    Path realFrom;
    Path realTo;
    if (platform::RealPathSoFar(from, realFrom) || platform::RealPathSoFar(to, realTo))
        return RefuseTarget(host, Msg::MoveNoFolder, {TextOf(to)});
    if (realFrom == realTo || IsSameFolder(from, to))
        return RefuseTarget(host, Msg::MoveSameFolder, {TextOf(to)});
    return !LiesInside(realTo, realFrom) || RefuseTarget(host, Msg::MoveInside, {TextOf(to)});
}

/// The copy of a tree takes no room where its files can have a second name; one of them tells.
double RoomOfCopy(const MovingFolder& moving, const Path& to)
{
    const double all = static_cast<double>(moving.tree.bytes);
    if (moving.tree.files.empty())
        return all;
    const Path near = NearestFolder(to);
    NotePlace(near); // a kill may leave the probe
    const Path probe = StagedNameFor(near / moving.tree.files.front().name.filename());
    if (platform::HardLink(ResolvePath(moving.folders.levels) / moving.tree.files.front().name,
                           probe))
        return all;
    (void)platform::Unlink(probe); // a leftover by its name
    return 0;
}

bool HoldsNoLevels(Host& host, const Path& to)
{
    const auto isFree = IsFree(to);
    if (!isFree)
        return TellFolderNotRead(host, isFree.Error());
    if (*isFree)
        return true;
    const auto isThere = IsFolder(to);
    if (!isThere)
        return TellFolderNotRead(host, isThere.Error());
    if (!*isThere)
        return RefuseTarget(host, Msg::MoveNoFolder, {TextOf(to)});
    const auto names = NamesOfArchive(ResolvePath(to));
    if (!names)
        return TellFolderNotRead(host, names.Error());
    return names->empty() ||
           RefuseTarget(host, Msg::MoveLevelsThere, {TextOf(to), ShownNames(*names)});
}

bool HasRoomFor(Host& host, Machine& machine, const Path& folder, double bytes)
{
    const auto free = machine.FreeSpace(folder);
    if (!free)
        return DoneOrTold(host, free.Error());
    return static_cast<double>(*free) > bytes ||
           RefuseTarget(host, Msg::MoveNoRoom, {TextOf(folder), FormatSize(bytes), lineBreak});
}

} // namespace

std::optional<Path> ChooseTarget(Host& host, Machine& machine, const MovingFolder& moving,
                                 const Path& said)
{
    const Path& from = moving.folders.levels;
    const auto fits = [&](const Path& to) {
        if (!MayBecomeArchive(host, moving.folders, to) || !LiesElsewhere(host, from, to) ||
            !HoldsNoLevels(host, to))
            return false;
        if (!platform::IsWritableFolder(NearestFolder(to)))
            return RefuseTarget(host, Msg::MoveNotWritable, {TextOf(to)});
        const double needed = moving.comesToo + RoomOfCopy(moving, to);
        return needed == 0 || HasRoomFor(host, machine, to, needed);
    };
    for (;;) {
        const auto chosen =
            said.empty() ? host.ChooseFolder(GetMsg(Msg::SelectTargetFolder), from.parent_path())
                         : std::optional{said};
        if (!chosen)
            return {};
        // As it is spelled where it is there already.
        Path folder = ResolvePath(
            FolderFromText(platform::AbsolutePath(*chosen).lexically_normal().native()));
        if (fits(folder))
            return folder;
        if (!said.empty())
            return {};
    }
}

} // namespace kestrova
