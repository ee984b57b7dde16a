#include "app/opening.h"

#include "app/start_up.h"
#include "archive/level_sizes.h"
#include "core/look.h"
#include "editor/find_trle.h"
#include "levels/level_life.h"
#include "levels/original_level.h"
#include "platform/places.h"
#include "platform/terminal.h"
#include "session/preferences_file.h"
#include "swap/backup.h"
#include "upkeep/archive_life.h"
#include "words/app.h"
#include "words/commands.h"

namespace kestrova
{

namespace
{

bool Refuse(Run& run, Message text)
{
    run.session.host.Tell(Tone::Error, GetMsg(text));
    return false;
}

bool TellArchive(Run& run, Message text)
{
    run.session.host.Tell(Tone::Error, GetMsg(text, {TextOf(run.session.RememberedArchive())}));
    return false;
}

bool HasLevelEditor(Run& run)
{
    const Path trle = run.session.TrleFolder();
    const auto lacks = WhatTrleLacks(trle);
    if (!lacks)
        return TellFolderNotRead(run.session, lacks.Error());
    if (lacks->empty())
        return true;
    const auto backup = LookAtBackup(run.session);
    if (!backup)
        return TellFolderNotRead(run.session, backup.Error());
    const auto waves = WavesToCopy(run.session);
    if (waves && !waves->empty()) {
        run.session.host.Tell(Tone::Error, *waves);
        return false;
    }
    const bool mendable = FolderExists(trle) && *backup == BackupState::Present;
    return Refuse(run, mendable ? Msg::NeedsRestore : Msg::NeedsSetup);
}

bool ChooseHome(Run& run, bool make)
{
    const auto folder = ChooseProgramFolder(run.arguments.ValueOf("--home"), make);
    if (!folder) {
        TellFailure(run.session, GetMsg(Msg::NoProgramFolder), folder.Error());
        return false;
    }
    run.session.programFolder = *folder;
    return true;
}

} // namespace

bool OpenToLook(Run& run, Needs needs)
{
    bool firstRun = false;
    if (!ChooseHome(run, false) || !OpenSession(run.session, false, firstRun))
        return false;
    const auto loaded = LoadArchiveToLook(run.session);
    if (needs == Needs::LevelEditor && run.session.TrleFolder().empty())
        return Refuse(run, Msg::NeedsSetup);
    if (needs < Needs::Archive || loaded)
        return true;
    if (run.session.RememberedArchive().empty())
        return Refuse(run, Msg::NeedsArchive);
    TellFailure(run.session, GetMsg(Msg::ArchiveNotRead), loaded.Error());
    return false;
}

bool OpenToWork(Run& run, Needs needs, const Whereabouts& said)
{
    Session& session = run.session;
    platform::NoteInterrupts(Msg::InterruptNoted.text);
    bool firstRun = false;
    if (!ChooseHome(run, true) || !OpenSession(session, true, firstRun, said))
        return false;
    // A run ends with its command: nobody could save the archive later.
    run.keptAutoSave = session.preferences.autoSave;
    session.preferences.autoSave = true;
    if (needs == Needs::Nothing)
        return true;
    if (!HasLevelEditor(run))
        return false;
    if (!EnsureLevel0Folder(session))
        return Refuse(run, Msg::ErrorLevel0);
    if (needs == Needs::LevelEditor)
        return true;
    const Path remembered = session.RememberedArchive();
    if (remembered.empty())
        return Refuse(run, Msg::NeedsArchive);
    if (!FileExists(remembered))
        return TellArchive(run, Msg::ArchiveGone);
    if (!ReadArchive(session, remembered))
        return false;
    if (session.level0Rebuilt)
        RefreshLevelSizes(session, originalCode);
    return true;
}

void RestoreAutoSave(Run& run)
{
    if (run.keptAutoSave)
        run.session.preferences.autoSave = *run.keptAutoSave;
    run.keptAutoSave.reset();
}

bool EndWork(Run& run, bool done)
{
    RestoreAutoSave(run);
    // Without a word of the person's everything was written at once; what was not has been told.
    const bool written = !run.session.archive.dirty;
    return done && written && SavePreferencesNow(run.session);
}

bool HasArchiveFolder(Session& session, std::optional<LevelCode> code)
{
    if (code == originalCode)
        return true;
    const Path folder = FolderFromText(Trim(session.archive.header.secondaryFolder));
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(session, isThere.Error());
    if (!*isThere)
        session.host.Tell(Tone::Error, GetMsg(Msg::ArchiveFolderAway, {TextOf(folder)}));
    return *isThere;
}

} // namespace kestrova
