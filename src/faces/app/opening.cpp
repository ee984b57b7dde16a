#include "app/opening.h"

#include "app/start_up.h"
#include "archive/level_folders.h"
#include "core/look.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "platform/places.h"
#include "platform/terminal.h"
#include "play/play_times.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "upkeep/load_archive.h"
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

bool HasWholeLevelEditor(Run& run)
{
    const Path trle = run.session.TrleFolder();
    const auto lacks = WhatTrleLacks(trle);
    if (!lacks)
        return TellFolderNotRead(run.session.host, lacks.Error());
    if (lacks->empty())
        return true;
    const auto backup = LookAtBackup(run.session.Folders());
    if (!backup)
        return TellFolderNotRead(run.session.host, backup.Error());
    const auto waves = WavesToCopy(run.session.Folders(), run.session.preferences);
    if (waves && !waves->empty()) {
        run.session.host.Tell(Tone::Error, *waves);
        return false;
    }
    const bool mendable = FolderExists(trle) && *backup == BackupState::Present;
    return Refuse(run, mendable ? Msg::NeedsRestore : Msg::NeedsSetup);
}

bool HasRememberedArchive(Run& run)
{
    const Path remembered = run.session.RememberedArchive();
    if (remembered.empty())
        return Refuse(run, Msg::NeedsArchive);
    return FileExists(remembered) || TellArchive(run, Msg::ArchiveGone);
}

/// A start that refuses, and says which command helps.
class SaidStart : public StartFace
{
public:
    explicit SaidStart(Run& run) : run_(run) {}

    void Opened(Session& session) override
    {
        // A run ends with its command: nobody could save the archive later.
        run_.keptAutoSave = session.preferences.autoSave;
        session.preferences.autoSave = true;
    }
    bool HasLevelEditor(Session&) override { return HasWholeLevelEditor(run_); }
    Archive OpenArchive(Session& session) override
    {
        return HasRememberedArchive(run_) && ReadArchive(session, session.RememberedArchive())
                   ? Archive::Loaded
                   : Archive::None;
    }

private:
    Run& run_;
};

bool ChooseHome(Run& run, bool make)
{
    const auto folder = ChooseProgramFolder(run.arguments.ValueOf("--home"), make);
    if (!folder) {
        TellFailure(run.session.host, GetMsg(Msg::NoProgramFolder), folder.Error());
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
    TellFailure(run.session.host, GetMsg(Msg::ArchiveNotRead), loaded.Error());
    return false;
}

void HearInterrupts()
{
    platform::NoteInterrupts(Shown(Msg::InterruptNoted));
}

bool OpenToWork(Run& run, Needs needs, const Whereabouts& said)
{
    HearInterrupts();
    SaidStart face{run};
    if (!ChooseHome(run, true) || StartUp(run.session, face, needs, said) != Start::Done)
        return false;
    if (needs >= Needs::Archive)
        CountGamesLeft(run.session);
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
    return done && written &&
           DoneOrTold(run.session.host,
                      SavePreferencesNow(run.session.Folders(), run.session.preferences,
                                         run.session.settings));
}

bool HasArchiveFolder(Host& host, const Archive& archive, std::optional<LevelCode> code)
{
    if (code == originalCode)
        return true;
    const Path folder = FolderFromText(Trim(archive.header.secondaryFolder));
    const auto isThere = IsArchiveFolder(archive, folder);
    if (!isThere)
        return TellFolderNotRead(host, isThere.Error());
    if (!*isThere)
        host.Tell(Tone::Error, GetMsg(Msg::ArchiveFolderAway, {TextOf(folder)}));
    return *isThere;
}

} // namespace kestrova
