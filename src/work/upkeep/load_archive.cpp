#include "upkeep/load_archive.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "discs/install_from_disc.h"
#include "discs/remove_from_disk.h"
#include "formats/exact_names.h"
#include "formats/library_note.h"
#include "history/moved_homes.h"
#include "history/standing.h"
#include "levels/new_level.h"
#include "platform/places.h"
#include "session/held_folders.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/leftovers.h"
#include "upkeep/new_archive.h"
#include "words/archive.h"
#include "words/upkeep.h"

namespace kestrova
{

namespace
{

/// Sizes of the levels on which the savegame tool was at work.
void MeasureStaleExtras(const ArchiveParts& parts)
{
    bool changed = false;
    for (std::size_t i = 0; i < parts.archive.levels.size(); ++i) {
        LevelRecord& level = parts.archive.levels[i];
        if (!level.extrasDirty)
            continue;
        const auto size = ExtrasSizeOf(LevelHomeOf(parts.folders, level.levelCode));
        if (!size)
            continue; // it stays noted as stale
        CountLevelSize(parts.archive, *size - level.extrasSize, SizeKind::Extras, i);
        level.extrasDirty = false;
        changed = true;
    }
    if (changed)
        SaveArchive(parts);
}

/// Reads the file and takes the lock of its folder. What another program wrote before the lock was
/// there is read as well.
Load ReadAndHold(Host& host, const ProgramSettings& settings, FolderLocks& locks, const Path& file,
                 Archive& archive, Failure& why)
{
    for (bool again = true; again;) {
        auto records = ReadArchiveRecords(settings, file);
        if (!records) {
            why = records.Error();
            return Load::NotRead;
        }
        archive = std::move(*records);
        const Path folder{Trim(archive.header.secondaryFolder)};
        again = FolderExists(folder) && !locks.Holds(folder);
        if (again && !DoneOrTold(host, HoldFolder(locks, folder)))
            return Load::Held;
    }
    return Load::Done;
}

/// True when the folder of one of the archive's levels lies there, or when it has none.
Result<bool> HoldsLevels(const Archive& archive, const Path& folder)
{
    bool hasLevels = false;
    for (const LevelRecord& level : archive.levels) {
        if (level.levelCode == originalCode)
            continue;
        hasLevels = true;
        const auto isThere = IsFolder(InFolder(folder, LevelFolderName(level.levelCode)));
        if (!isThere || *isThere)
            return isThere;
    }
    return !hasLevels;
}

/// Saves an archive that is not in memory yet. False, with words.
bool SaveComing(Host& host, const Folders& folders, const PreferencesRecord& preferences,
                ProgramSettings& settings, Archive& archive)
{
    archive.dirty = true;
    if (!preferences.autoSave)
        return true;
    const Path file = archive.file;
    const auto status = WriteArchive(folders, settings, archive, file);
    if (!status)
        TellFailure(host, GetMsg(Msg::ErrorSavingArchive) + TextOf(file), status.Error());
    return bool{status};
}

/// The folder that the person named counts, not the one that the file names.
bool TakeNamedFolder(const ArchiveParts& parts, Archive& archive, const Path& folder)
{
    ArchiveHeader& header = archive.header;
    if (FolderFromText(Trim(header.secondaryFolder)) == folder)
        return true;
    const auto isThere = IsFolder(folder);
    const auto holds = isThere && *isThere ? HoldsLevels(archive, folder) : isThere;
    if (!holds)
        return TellFolderNotRead(parts.host, holds.Error());
    if (!*holds) {
        const Message words = *isThere ? Msg::NoLevelsThere : Msg::NoFolderThere;
        parts.host.Tell(Tone::Error, GetMsg(words, {TextOf(folder)}));
        return false;
    }
    if (!MayBecomeArchive(parts.host, parts.folders, folder) ||
        !DoneOrTold(parts.host, HoldFolder(parts.locks, folder)))
        return false;
    if (!IsArchiveOnCd(archive))
        header.mainFolder = folder.native();
    header.secondaryFolder = folder.native();
    return SaveComing(parts.host, parts.folders, parts.preferences, parts.settings, archive);
}

/// An empty folder that the person chose all the same is the archive's from now on, and not taken
/// for a mount point whose drive is away.
void MakeArchiveFolder(const Archive& archive, const Path& folder)
{
    if (!IsArchiveFolder(archive, folder).ValueOr(true))
        (void)WriteWholeFile(InFolder(folder, OnDisk::FragLibrary), FormatLibrary({}));
}

/// The new folder when the person chose one; no value when the check refuses the archive.
std::optional<Path> AskForFolder(const ArchiveParts& parts, const Archive& archive, Message warning,
                                 const std::string& missing)
{
    Host& host = parts.host;
    const std::string line{lineBreak};
    host.Tell(Tone::Warning, GetMsg(warning, {line + Readable(missing) + line}));
    const auto chosen = host.ChooseFolder(GetMsg(Msg::SelectFolder) + FileNameOf(missing),
                                          platform::CurrentFolder());
    if (!chosen && !host.CanAsk())
        host.Tell(Tone::Error, GetMsg(Msg::SayLevelsFolder));
    if (!chosen || !MayBecomeArchive(host, parts.folders, *chosen))
        return {};
    const auto holds = HoldsLevels(archive, *chosen);
    if (!holds)
        TellFolderNotRead(host, holds.Error());
    // Nothing is written before this program is the only one that works there.
    const bool taken =
        holds && (*holds || host.AskYesNo(GetMsg(Msg::AskNoLevelsThere, {TextOf(*chosen)}))) &&
        DoneOrTold(host, HoldFolder(parts.locks, *chosen));
    if (!taken)
        return {};
    MakeArchiveFolder(archive, *chosen);
    return chosen;
}

} // namespace

bool CheckArchiveFolders(const ArchiveParts& parts, Archive& archive)
{
    if (archive.levels.empty())
        return true;
    ArchiveHeader& header = archive.header;
    const auto stands = [&](const std::string& folder) {
        return IsArchiveFolder(archive, FolderFromText(Trim(folder)));
    };
    const auto hasMain = IsArchiveOnCd(archive) ? Result<bool>{true} : stands(header.mainFolder);
    const auto hasSecondary = stands(header.secondaryFolder);
    if (!hasMain || !hasSecondary)
        return TellFolderNotRead(parts.host, hasMain ? hasSecondary.Error() : hasMain.Error());
    if (!*hasMain) {
        const auto chosen = AskForFolder(parts, archive, Msg::MainFolderMissing, header.mainFolder);
        if (!chosen)
            return false;
        const bool same = Trim(header.mainFolder) == Trim(header.secondaryFolder);
        header.mainFolder = chosen->native();
        if (same)
            header.secondaryFolder = chosen->native();
        SaveComing(parts.host, parts.folders, parts.preferences, parts.settings, archive);
        if (same)
            return true;
    }
    if (*hasSecondary)
        return true;
    const auto chosen =
        AskForFolder(parts, archive, Msg::SecondaryFolderMissing, header.secondaryFolder);
    if (!chosen)
        return false;
    header.secondaryFolder = chosen->native();
    SaveComing(parts.host, parts.folders, parts.preferences, parts.settings, archive);
    return true;
}

namespace
{

/// The levels' folder was moved by hand from where the list had it: what is noted of the levels
/// follows. A folder that is still there is another copy, and keeps its notes.
void FollowByHand(Host& host, const Folders& folders, const Path& listed)
{
    const Path now = folders.levels;
    if (listed.empty() || listed == now || FolderExists(listed))
        return;
    DoneOrTold(host, FollowMovedHomes(folders, listed, now));
}

/// Memory holds the new archive when it is done, and otherwise what it held before.
Load LoadOrKeep(Session& session, Path file, const Path& levelFolder, Failure& why)
{
    // First of all: where a file on a disc says that its folder is nothing may be written.
    if (bool abort = false; !InstallFromCd(session, file, abort) && abort)
        return Load::FoldersRefused;
    const std::vector<Path> held = session.locks.Held();
    Archive archive;
    Load load = ReadAndHold(session.host, session.settings, session.locks, file, archive, why);
    const Path listed = FolderFromText(Trim(archive.header.secondaryFolder));
    if (load == Load::Done &&
        ((!levelFolder.empty() && !TakeNamedFolder(session, archive, levelFolder)) ||
         !CheckArchiveFolders(session, archive)))
        load = Load::FoldersRefused;
    if (load == Load::Done &&
        !DoneOrTold(session.host, HoldArchiveFolder(session.locks, session.Folders(),
                                                    Path{Trim(archive.header.secondaryFolder)})))
        load = Load::Held;
    if (load == Load::Done && archive.header.cdMovePending &&
        !RemoveFilesFoldersFromHd({session, archive}))
        load = Load::FoldersRefused;
    if (load != Load::Done) {
        session.locks.KeepOnly(held);
        return load;
    }
    session.archive = std::move(archive);
    RememberArchive(session);
    FollowByHand(session.host, session.Folders(), listed);
    return load;
}

/// `saved`: the file of the loaded archive holds all that memory holds. `damaged`: what is said
/// beside `notRead` of a file that can be read and is no archive.
Load ReadAfterAsking(Session& session, const Path& file, bool saved, const std::string& notRead,
                     const std::string& damaged = {}, const Path& levelFolder = {})
{
    Failure why;
    const Load load = LoadOrKeep(session, file, levelFolder, why);
    if (load != Load::Done) {
        session.archive.dirty = session.archive.Loaded() && !saved; // it is asked about again
        if (why.code == ErrorCode::Damaged && why.reason.empty())
            why.reason = damaged;
        if (load == Load::NotRead)
            TellFailure(session.host, notRead, why);
        return load;
    }
    ListWholeLevels(session);
    ClearLeftovers(session.host, session.Folders(), session.archive);
    MeasureStaleExtras(session);
    session.list.Refresh();
    session.list.Select(CurrentLevelCode(session.Folders(), session.archive));
    return load;
}

} // namespace

Result<Archive> ReadArchiveRecords(const ProgramSettings& settings, const Path& file)
{
    const Path place = ResolvePath(file);
    auto content = ReadArchiveFile(place);
    if (!content)
        return content.Error();
    Archive archive{std::move(content->header), std::move(content->levels), place};
    for (const auto& [folder, field] :
         {std::pair{&archive.header.mainFolder, ArchiveFolder::Main},
          std::pair{&archive.header.secondaryFolder, ArchiveFolder::Secondary}})
        *folder = ExactFolder(settings, ExactFolderField(field, place), *folder);
    // Where it cannot be read the records' own forms serve.
    if (const Path names = ExactNamesFile(archive.header); FileExists(names))
        if (const auto bytes = ReadWholeFile(names, longestExactNames))
            ApplyExactNames(ParseExactNames(*bytes), archive.levels);
    return archive;
}

bool ReadArchive(Session& session, const Path& file, const Path& levelFolder)
{
    const Operation operation{session};
    bool saved = false;
    return MayReplaceArchive(session, saved) &&
           ReadAfterAsking(session, file, saved, GetMsg(Msg::CannotOpenArchive, {TextOf(file)}), {},
                           levelFolder) == Load::Done;
}

Load ReadLastArchive(Session& session)
{
    const Operation operation{session};
    const Path file = session.RememberedArchive();
    return ReadAfterAsking(session, file, true, GetMsg(Msg::ErrorLastArchive) + TextOf(file),
                           GetMsg(Msg::LastArchiveDamaged));
}

bool AskLoadArchive(Session& session)
{
    const Operation operation{session};
    bool saved = false;
    if (!MayReplaceArchive(session, saved))
        return false;
    const auto file = session.host.ChooseOpenFile(
        GetMsg(Msg::LoadArchiveTitle), GetMsg(Msg::LoadArchiveFilter), session.programFolder);
    if (!file) {
        session.archive.dirty = session.archive.dirty || !saved;
        return false;
    }
    return ReadAfterAsking(session, *file, saved,
                           GetMsg(Msg::CannotOpenArchive, {TextOf(*file)})) == Load::Done;
}

} // namespace kestrova
