#include "app/start_up.h"

#include "archive/archive_saving.h"
#include "archive/level_sizes.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "drives/attached_discs.h"
#include "formats/program_folder.h"
#include "levels/original_level.h"
#include "platform/places.h"
#include "session/held_folders.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "swap/recovery.h"
#include "upkeep/leftovers.h"
#include "upkeep/load_archive.h"
#include "words/app.h"

namespace kestrova
{

namespace
{

Path PreferencesFile(const Path& programFolder)
{
    return InFolder(programFolder, OnDisk::FragPreferences);
}

void MendAtStart(Session& session, const Whereabouts& said)
{
    Whereabouts where = said;
    const bool nothingSaid = said.trle.empty() && said.archiveFolder.empty() && !said.letGo;
    if (nothingSaid && session.host.CanAsk())
        if (const auto lacking = WhatMendingLacks(session.Folders(), session.archive);
            lacking && *lacking)
            where = AskWhere(session.host, **lacking).value_or(said);
    (void)RecoverInterruptedWork(session, where); // what still waits has been told
}

} // namespace

Result<Path> ChooseProgramFolder(const Path& home, bool make)
{
    Path folder;
    const Path own = platform::ExecutableFolder();
    if (!home.empty())
        folder = FolderFromText(platform::AbsolutePath(home).lexically_normal().native());
    else {
        const auto hasPreferences = IsFile(PreferencesFile(own));
        const auto isPortable = IsFile(InFolder(own, OnDisk::FragPortable));
        if (!hasPreferences || !isPortable)
            return hasPreferences ? isPortable.Error() : hasPreferences.Error();
        folder = *hasPreferences || *isPortable
                     ? own
                     : InFolder(platform::UserDataFolder(), OnDisk::DirProgramData);
    }
    if (make)
        if (const auto status = MakeFolders(folder); !status)
            return status.Error();
    return folder;
}

Status LoadArchiveToLook(Session& session)
{
    session.archive = {};
    const Path file = session.RememberedArchive();
    if (file.empty())
        return MakeFailure(ErrorCode::Missing, {});
    auto archive = ReadArchiveRecords(session.settings, file);
    if (!archive)
        return archive.Error();
    session.archive = std::move(*archive);
    return {};
}

namespace
{

/// A damaged file is told of once: a whole one takes its place, and it is kept beside it.
void TellDamagedPreferences(Session& session, bool writing)
{
    auto copies = Result<std::vector<Path>>{std::vector<Path>{}};
    if (writing)
        copies = MendPreferences(session.Folders(), session.preferences, session.settings);
    if (!copies) {
        TellFailure(session.host, GetMsg(Msg::PreferencesDamaged), copies.Error());
        return;
    }
    std::string names;
    for (const Path& copy : *copies)
        names += (names.empty() ? "" : ", ") + TextOf(copy);
    session.host.Tell(Tone::Warning, GetMsg(Msg::PreferencesDamaged),
                      names.empty() ? names : GetMsg(Msg::PreferencesKept, {names}));
}

} // namespace

bool OpenSession(Session& session, bool writing, bool& firstRun, const Whereabouts& said)
{
    // Locked before it is read: otherwise another program's last words would be overwritten.
    if (writing && !DoneOrTold(session.host, HoldFolder(session.locks, session.programFolder)))
        return false;
    if (writing)
        NotePlacesIn(WorkNotes(session.Folders()));
    auto settings = ReadSettings(session.programFolder);
    if (settings)
        session.settings = std::move(*settings);
    const PreferencesFound found =
        ReadPreferencesFile(session.Folders(), session.preferences, session.settings);
    firstRun = found == PreferencesFound::None;
    const Path file = PreferencesFile(session.programFolder);
    // What is there and cannot be read would be written over by first-run values.
    if (!settings || (firstRun && !IsFree(file).ValueOr(false))) {
        session.host.Tell(Tone::Error, GetMsg(Msg::PreferencesNotRead),
                          settings ? TextOf(file) : settings.Error().subject);
        return false;
    }
    if (found == PreferencesFound::Damaged || SettingsAreDamaged(session.programFolder))
        TellDamagedPreferences(session, writing);
    if (!writing)
        return true;
    // The stores of the levels are found through the archive; one that cannot be read has none.
    (void)LoadArchiveToLook(session);
    if (!DoneOrTold(session.host, HoldFolders(session.locks, session.Folders())))
        return false;
    MendAtStart(session, said);
    ClearLeftovers(session.host, session.Folders(), session.archive);
    GiveDiscsBack(session); // those of a run that was killed
    return true;
}

void GiveDiscsBack(Session& session)
{
    for (const std::string& words : DetachAll(ToolsOf(session)))
        session.host.Tell(Tone::Warning, words);
}

Start StartUp(Session& session, StartFace& face, Needs needs, const Whereabouts& said)
{
    bool firstRun = false;
    if (!OpenSession(session, true, firstRun, said))
        return Start::Refused;
    face.Opened(session);
    if (needs == Needs::Nothing)
        return Start::Done;
    if (!face.HasLevelEditor(session))
        return Start::Stopped;
    const auto built = EnsureLevel0Folder(session.Folders());
    if (!built) {
        TellNoLevel0(session.host, session.Folders(), built.Error());
        return Start::Stopped;
    }
    if (needs == Needs::LevelEditor)
        return Start::Done;
    const StartFace::Archive archive = face.OpenArchive(session);
    if (archive == StartFace::Archive::Loaded && *built)
        RefreshLevelSizes(session, originalCode);
    return archive == StartFace::Archive::None ? Start::Stopped : Start::Done;
}

bool WritePreferences(Session& session)
{
    bool saved = false;
    if (!MayReplaceArchive(session, saved))
        return false;
    (void)WritePreferencesFile(session.Folders(), session.preferences, session.settings);
    return true;
}

Status WriteAllNow(Session& session)
{
    const bool owed = session.archive.Loaded() && session.archive.dirty;
    const Status list = owed ? WriteArchive(session, session.ArchivePath()) : Status{};
    const Status preferences =
        WritePreferencesFile(session.Folders(), session.preferences, session.settings);
    return list ? preferences : list;
}

} // namespace kestrova
