#include "app/init_program.h"

#include "app/file_types.h"
#include "app/first_start.h"
#include "app/start_up.h"
#include "core/look.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "intake/left_intake.h"
#include "platform/places.h"
#include "session/disc_reader.h"
#include "session/operation.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "swap/backup.h"
#include "swap/backup_state.h"
#include "swap/restore.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"
#include "words/app.h"
#include "words/level_setup.h"

namespace kestrova
{

namespace
{

/// False when the start ends here.
bool LoadLastArchive(Session& session)
{
    const Path last = session.RememberedArchive();
    if (last.empty())
        return true;
    if (!FileExists(last)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::LastArchiveNotFound) + TextOf(last),
                          GetMsg(Msg::LastArchiveAway));
        session.preferences.archivePath.clear();
        return true;
    }
    switch (ReadLastArchive(session)) {
    case Load::Done:
        return true;
    case Load::NotRead:
        session.preferences.archivePath.clear();
        return true;
    case Load::Held:
        return false; // it is remembered for the next start
    case Load::FoldersRefused:
        break;
    }
    if (!session.host.AskYesNo(GetMsg(Msg::LoadDifferentArchive)) || !AskLoadArchive(session))
        return false;
    return true;
}

/// The folder of the preferences is not whole any more, and the backup has its originals: they come
/// back when the person wants it. True when the folder passes the test afterwards.
bool OfferRestore(Session& session, TrleFinder& finder)
{
    const Path trle = session.TrleFolder();
    if (trle.empty() || !FolderExists(trle))
        return false;
    const auto lacks = WhatTrleLacks(trle);
    const auto backup = LookAtBackup(session.Folders());
    if (!lacks || !backup)
        return TellFolderNotRead(session.host, lacks ? backup.Error() : lacks.Error());
    // What cannot be told now is no reason to restore.
    if (*backup == BackupState::Missing || BackupSeemsOfAnother(session.Folders()).ValueOr(trle) ||
        !session.host.AskYesNo(GetMsg(Msg::AskRestoreAtStart, {*lacks, lineBreak, lineBreak})))
        return false;
    (void)LoadArchiveToLook(session); // the level that stands there finds its store through it
    const auto progress = session.host.BeginProgress(ProgressWindow::Progress, {});
    const bool whole = RestoreOriginalConfiguration(session, *progress);
    session.archive = {};
    return whole && finder.Prepare();
}

/// A start that shows and asks.
class ShownStart : public StartFace
{
public:
    ShownStart(StartWindows& windows, CommandLine said) : windows_(windows), said_(std::move(said))
    {
    }
    [[nodiscard]] bool FailedSetup() const { return failedSetup_; }
    /// What the questions ask for was on the page.
    [[nodiscard]] bool ShowedPage() const { return showsPage_; }
    void Opened(Session& session) override
    {
        before_ = session.preferences.archivePath;
        showsPage_ = FirstStart::IsDue(session);
        if (!said_.archive.empty() && !showsPage_)
            session.preferences.archivePath = said_.archive.native();
        session.archive = {};
    }
    bool HasLevelEditor(Session& session) override
    {
        if (!said_.trle.empty() && !windows_.SetUpLevelEditor(session, said_.trle)) {
            session.host.Tell(Tone::Error, GetMsg(Msg::SetupAtStartFailed));
            failedSetup_ = true;
            return false;
        }
        if (showsPage_) {
            FirstStart page{session, said_.archive};
            return windows_.ShowFirstStart(session, page);
        }
        TrleFinder finder{session};
        if (!finder.Prepare() && !OfferRestore(session, finder) &&
            !windows_.FindLevelEditor(session))
            return false;
        if (!MakeTrleBackup(session, false))
            session.archive.dirty = false;
        // The form of the backup must not be lost with a run that ends badly. The archive that was
        // said is not the remembered one before it is open.
        PreferencesRecord known = session.preferences;
        known.archivePath = before_;
        DoneOrTold(session.host, SavePreferencesNow(session.Folders(), known, session.settings));
        return true;
    }
    Archive OpenArchive(Session& session) override
    {
        if (showsPage_)
            return Archive::Loaded;
        if (!LoadSaidOrLast(session)) {
            // A disc is not what a later start waits for.
            if (session.discs != nullptr && session.discs->DiscOf(said_.archive))
                session.preferences.archivePath = before_;
            return Archive::None;
        }
        if (!session.archive.Loaded() &&
            windows_.AskNewOrLoad(session) == StartWindows::ArchiveChoice::Load)
            AskLoadArchive(session);
        if (session.archive.Loaded())
            return Archive::Loaded;
        CreateArchive(session);
        return Archive::Made;
    }

private:
    /// What cannot be opened takes no other archive's place.
    bool LoadSaidOrLast(Session& session)
    {
        const bool goesOn = LoadLastArchive(session);
        if (!goesOn || session.archive.Loaded() || said_.archive.empty() ||
            FolderFromText(Trim(before_)) == said_.archive)
            return goesOn;
        session.preferences.archivePath = before_;
        return LoadLastArchive(session);
    }

    StartWindows& windows_;
    CommandLine said_;
    std::string before_; ///< the archive that was remembered
    bool failedSetup_ = false;
    bool showsPage_ = false;
};

} // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments)
{
    CommandLine found;
    for (const std::string& item : arguments) {
        if (item.empty())
            break;
        const Path place = FolderFromText(platform::AbsolutePath(item).lexically_normal().native());
        if (EndsWithName(item, OnDisk::ExtensionArchive))
            found.archive = place;
        else if (EqualNames(place.filename().native(), OnDisk::LastPartTrle))
            found.trle = place;
        else
            found.others.push_back(place);
    }
    return found;
}

bool InitProgram(Session& session, StartWindows& windows, const std::vector<std::string>& arguments)
{
    Operation operation{session};
    session.running.hotKeys = false;
    const auto knowsPreferences = IsFile(InFolder(session.programFolder, OnDisk::FragPreferences));
    ShownStart face{windows, ParseCommandLine(arguments)};
    const Start start = StartUp(session, face, Needs::Archive);
    if (start == Start::Done) {
        // A run that ends badly must not forget which archive was made or loaded.
        DoneOrTold(session.host,
                   SavePreferencesNow(session.Folders(), session.preferences, session.settings));
        OfferLeftIntake(session.host, session.Folders(), session.archive);
        if (knowsPreferences && !*knowsPreferences && !face.ShowedPage())
            OfferFileTypes(session);
    }
    return start != Start::Refused && !face.FailedSetup();
}

} // namespace kestrova
