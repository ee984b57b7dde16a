#include "upkeep/new_archive.h"

#include "archive/archive_place.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "platform/places.h"
#include "session/held_folders.h"
#include "session/machine.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/file_names.h"
#include "upkeep/load_archive.h"
#include "words/upkeep.h"

namespace kestrova
{

namespace
{

constexpr int mostNames = 100;

/// The first name that is free of those that grow from `row` with "", "2", "3" …
Path FreeNameIn(const Path& folder, std::string_view row)
{
    const auto nameOf = [&](int n) {
        return InFolder(folder, Filled(row, {n == 1 ? std::string{} : std::to_string(n)}));
    };
    return FirstFree(nameOf, 1, mostNames).ValueOr({}); // where nobody can look, none is free
}

/// Asks in the folder that is proposed, which stands while the chooser shows it.
std::optional<Path> AskForNewFolder(Host& host, Machine& machine, const Folders& folders)
{
    const Drive drive = FindLargestDrive(machine);
    Path proposed = DefaultArchiveFolder(drive.folder.empty() ? folders.program : drive.folder);
    if (!MakeFolder(proposed)) { // the drive's top is seldom a player's to write
        proposed = DefaultArchiveFolder(folders.program);
        (void)MakeFolder(proposed); // where it cannot be, the chooser opens elsewhere
    }
    const auto chosen = host.ChooseFolder(GetMsg(Msg::SelectArchiveFolder), proposed);
    if (!chosen || *chosen != proposed)
        (void)platform::RemoveFolder(proposed); // only when nothing was put into it
    return chosen;
}

Path Absolute(const Path& path)
{
    // As it is spelled where it is there already.
    return ResolvePath(FolderFromText(platform::AbsolutePath(path).lexically_normal().native()));
}

} // namespace

LevelRecord OriginalLevel(const Folders& folders)
{
    LevelRecord level;
    level.levelCode = originalCode;
    level.levelName = Told(Msg::OriginalLevelName);
    level.levelNote = Told(Msg::OriginalLevelNote);
    level.authorName = Told(Msg::OriginalAuthor);
    level.authorSites = Join(Split(OnDisk::OriginalSites, '|'), std::string_view{"\0", 1});
    const Path files = InFolder(LevelHomeOf(folders, originalCode), OnDisk::DirFiles);
    for (const std::string& pattern : Split(OnDisk::OriginalInfoPatterns, '|'))
        if (const auto found = ListFiles(files, pattern).ValueOr({}); !found.empty()) {
            level.moreInfoFile = found.front().filename().native();
            break;
        }
    return level;
}

bool FitsArchive(Host& host, const Path& folder)
{
    if (ToWindows1252(folder.native()).size() <= longestArchiveFolder)
        return true;
    host.Tell(Tone::Error, GetMsg(Msg::ArchiveFolderTooLong, {TextOf(folder)}));
    return false;
}

bool MayBecomeArchive(Host& host, const Folders& folders, const Path& folder)
{
    return FitsArchive(host, folder) && DoneOrTold(host, MayHoldLevels(folders, folder));
}

Path DefaultArchivePath(const Folders& folders)
{
    return FreeNameIn(folders.program, OnDisk::FragDefaultArchive);
}

Path DefaultArchiveFolder(const Path& parent)
{
    return FreeNameIn(parent, OnDisk::FragDefaultFolder);
}

namespace
{

/// A list with the original configuration alone, of no file. The folders are those of the archive
/// before until others are chosen: the level that is installed still has its store there.
void BeginNewList(const Folders& folders, Archive& archive)
{
    ArchiveHeader header;
    header.levelCount = 1;
    header.mainFolder = archive.header.mainFolder;
    header.secondaryFolder = archive.header.secondaryFolder;
    archive = {std::move(header), {OriginalLevel(folders)}};
}

/// Where the new archive is to lie; told where it cannot.
std::optional<Path> PlaceForArchive(Host& host, Machine& machine, const Folders& folders,
                                    const Path& wished)
{
    const auto chosen =
        wished.empty() ? AskForNewFolder(host, machine, folders) : std::optional{Absolute(wished)};
    if (!chosen)
        return std::nullopt;
    Path place = *chosen;
    const auto files = ListFiles(place, OnDisk::PatAll);
    const auto subfolders = ListSubfolders(place);
    if (!files || !subfolders) {
        TellFolderNotRead(host, files ? subfolders.Error() : files.Error());
        return std::nullopt;
    }
    if (!files->empty() || !subfolders->empty()) {
        place = DefaultArchiveFolder(place);
        host.Tell(Tone::Warning, GetMsg(Msg::ArchiveFolderChanged) + TextOf(place));
    }
    return MayBecomeArchive(host, folders, place) ? std::optional{place} : std::nullopt;
}

/// Folder and file of the new archive, measured and written.
bool FillNewArchive(const ArchiveParts& parts, const Path& place, const Path& file)
{
    const auto made = MakeFolders(place);
    if (!made || !platform::IsWritableFolder(ResolvePath(place))) {
        const std::string words = GetMsg(Msg::CannotWriteArchiveFolder) + TextOf(place);
        TellFailure(parts.host, words,
                    made ? Failure{ErrorCode::CannotWrite, {}, {}} : made.Error());
        return false;
    }
    const Path target = file.empty() ? DefaultArchivePath(parts.folders) : Absolute(file);
    if (target.empty()) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::NoArchiveNameFree));
        return false;
    }
    if (!DoneOrTold(parts.host, HoldArchiveFolder(parts.locks, parts.folders, place)))
        return false;
    parts.archive.file = target;
    DoneOrTold(parts.host, RecomputeArchiveSize(parts, false));
    return !parts.archive.dirty || !parts.preferences.autoSave;
}

} // namespace

bool CreateArchive(Session& session, const Path& folder, const Path& file)
{
    const Operation operation{session};
    const auto isFree = file.empty() ? Result<bool>{true} : IsFree(file);
    if (!isFree)
        return TellFolderNotRead(session.host, isFree.Error());
    if (!*isFree && !session.host.AskYesNo(GetMsg(Msg::AskReplaceArchive, {TextOf(file)})))
        return false;
    bool saved = false;
    if (!MayReplaceArchive(session, saved))
        return false;
    BeginNewList(session.Folders(), session.archive);
    const auto place = PlaceForArchive(session.host, session.machine, session.Folders(), folder);
    if (place)
        session.archive.header.mainFolder = session.archive.header.secondaryFolder =
            place->native();
    const bool made = place && FillNewArchive(session, *place, file);
    session.list.Refresh();
    return made;
}

} // namespace kestrova
