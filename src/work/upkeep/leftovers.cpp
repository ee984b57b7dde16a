#include "upkeep/leftovers.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/inside.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "intake/files_before.h"
#include "levels/unfinished_intake.h"
#include "session/telling.h"
#include "storage/files_exchange.h"
#include "swap/recovery.h"
#include "words/upkeep.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

using platform::FileKind;

/// What cannot be looked at may be there.
bool MayBeThere(const Path& path)
{
    return !IsFree(path).ValueOr(false);
}

/// The folders whose locks a program that works holds.
std::vector<Path> HeldFolders(const Folders& folders, const Archive& archive)
{
    std::vector<Path> held{folders.program};
    for (const Path& folder : {folders.trle, Path{Trim(archive.header.secondaryFolder)}})
        if (!folder.empty() && FolderExists(folder))
            held.push_back(ResolvePath(folder));
    return held;
}

bool IsBelow(const Path& place, const std::vector<Path>& roots)
{
    return std::any_of(roots.begin(), roots.end(),
                       [&](const Path& root) { return LiesInside(place, root); });
}

/// The level of the archive whose own folder this is.
const LevelRecord* LevelOfFolder(const Folders& folders, const Archive& archive, const Path& folder)
{
    const auto& levels = archive.levels;
    const auto found = std::find_if(levels.begin(), levels.end(), [&](const LevelRecord& level) {
        return EqualNames(LevelFolderName(level.levelCode).substr(1), folder.filename().native()) &&
               IsSameFolder(LevelHomeOf(folders, level.levelCode), folder);
    });
    return found == levels.end() ? nullptr : &*found;
}

/// A killed edit or store of the level whose folder this is. False when something of it stays.
bool FinishLevel(Host& host, const Folders& folders, const Archive& archive, const Path& folder)
{
    const Path files = InFolder(folder, OnDisk::DirFiles);
    const bool exchanging = MayBeThere(BesideFiles(files, OnDisk::EndingNew)) ||
                            MayBeThere(BesideFiles(files, OnDisk::EndingOld));
    const bool edited = MayBeThere(InFolder(folder, OnDisk::FragBeforeEdit));
    if (!exchanging && !edited)
        return true;
    const LevelRecord* level = LevelOfFolder(folders, archive, folder);
    if (level == nullptr)
        return false; // another archive's; its own start or load sees to it
    const std::string name = Readable(Trim(level->levelName));
    const auto exchanged = exchanging ? FinishExchange(files) : Status{};
    const auto undone =
        exchanged ? FinishKilledEdit(folder, *level) : Result<bool>{exchanged.Error()};
    if (!undone)
        TellFailure(host, GetMsg(Msg::KilledEditNotUndone, {name}), undone.Error());
    else if (*undone)
        host.Tell(Tone::Warning, GetMsg(Msg::KilledEditUndone, {name}));
    return static_cast<bool>(undone);
}

/// False when something of a killed program stays in the folder.
bool Settle(Host& host, const Folders& folders, const Archive& archive, const Path& place,
            const std::vector<Path>& held)
{
    const auto isFolder = IsFolder(place);
    if (!isFolder || !*isFolder)
        return bool{isFolder}; // looked at another time
    bool settled = FinishLevel(host, folders, archive, place);
    const Path unpacking = InFolder(place, OnDisk::FragUnpacking);
    if (MayBeThere(unpacking))
        settled = IsBelow(place, held) && ClearPlace(unpacking) && settled;
    return ClearLeftoversIn(place).empty() && settled;
}

/// Folders of fixed names that belong to whoever holds the locks.
void ClearWorkFolders(const Folders& folders, const Archive& archive)
{
    for (const std::string_view name :
         {OnDisk::DirTemp, OnDisk::DirTempExe, OnDisk::DirTempDec, OnDisk::DirTempCompr,
          OnDisk::DirTempZip, OnDisk::DirAudioTemp, OnDisk::DirOutFiles, OnDisk::FragTempBitmap,
          OnDisk::DirOnlineTemp, OnDisk::DirOnlineUnpacked, OnDisk::DirTempBurn,
          OnDisk::FragBuildingLevel0})
        if (const Path place = InFolder(folders.program, name); MayBeThere(place))
            (void)ClearPlace(place); // the next use of it tries again
    const Path trle = folders.trle;
    const Path ready = InFolder(trle, OnDisk::DirReady);
    if (!trle.empty() && MayBeThere(ready) && InterruptedWork(folders, archive).empty())
        (void)ClearPlace(ready);
}

void SettleNotes(Host& host, const Folders& folders, const Archive& archive,
                 const std::vector<Path>& held)
{
    std::set<Path> done; // programs note the same folders again and again
    for (KilledNote& note : NotesOfKilled(WorkNotes(folders))) {
        std::erase_if(note.places, [&](const Path& place) {
            return done.contains(place) ||
                   (Settle(host, folders, archive, place, held) && done.insert(place).second);
        });
        RewriteNote(note);
    }
}

} // namespace

Path WorkNotes(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirWorkNotes);
}

void ClearLeftovers(Host& host, const Folders& folders, const Archive& archive)
{
    const std::vector<Path> held = HeldFolders(folders, archive);
    ClearWorkFolders(folders, archive);
    (void)Settle(host, folders, archive, folders.program,
                 held); // the doctor names what stays
    SettleNotes(host, folders, archive, held);
    ClearUnfinishedIntakes(host, folders, archive);
}

void ClearAllLeftovers(Host& host, const Folders& folders, const Archive& archive,
                       const PreferencesRecord& preferences)
{
    ClearLeftovers(host, folders, archive);
    const std::vector<Path> held = HeldFolders(folders, archive);
    if (const Path file = Path{Trim(preferences.archivePath)}; !file.empty())
        (void)Settle(host, folders, archive, file.parent_path(), held);
    std::vector<Path> places = held;
    while (!places.empty()) {
        const Path place = std::move(places.back());
        places.pop_back();
        (void)Settle(host, folders, archive, place, held);
        std::vector<platform::FolderEntry> entries;
        (void)platform::ListFolder(place, entries); // what cannot be seen now is seen another time
        for (const platform::FolderEntry& entry : entries)
            if (entry.kind == FileKind::Folder && !entry.name.starts_with(stagedPrefix))
                places.push_back(place / entry.name);
    }
}

std::vector<Path> LeftoversThatStay(const Folders& folders)
{
    std::set<Path> places{folders.program};
    for (const KilledNote& note : NotesOfKilled(WorkNotes(folders)))
        places.insert(note.places.begin(), note.places.end());
    std::vector<Path> found;
    for (const Path& place : places)
        for (Path& left : LeftoversIn(place))
            found.push_back(std::move(left));
    return found;
}

} // namespace kestrova
