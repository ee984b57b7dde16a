#include "app/practice_library.h"

#include "app/disc_drives.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "formats/program_folder.h"
#include "intake/add_level.h"
#include "intake/draft_sources.h"
#include "levels/original_level.h"
#include "platform/places.h"
#include "practice/content.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/backup.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"
#include "words/first_start.h"
#include "words/practice.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The folder of a whole Level Editor, made when there is none; `fresh` when it was made now.
std::optional<Path> PracticeEditor(Session& session, bool& fresh)
{
    const Path folder = InFolder(session.programFolder, OnDisk::DirPracticeLibrary);
    const PracticePlaces places = PlacesIn(folder);
    const auto lacks = WhatTrleLacks(places.trle);
    fresh = !lacks || !lacks->empty();
    if (fresh) {
        const auto made = MakePracticeShown(session.host, folder);
        if (!made) {
            TellPracticeFailed(session.host, made.Error());
            return {};
        }
    }
    KnowPracticePlaces(session, places.trle, places.levels);
    return places.trle;
}

bool OpenPracticeArchive(Session& session)
{
    const Path file = InFolder(session.programFolder, OnDisk::FragPracticeArchive);
    const auto isFree = IsFree(file);
    if (!isFree)
        return TellFolderNotRead(session.host, isFree.Error());
    return *isFree ? CreateArchive(session,
                                   InFolder(session.programFolder, OnDisk::DirPracticeLevels), file)
                   : ReadArchive(session, file);
}

const LevelRecord* FindNamed(const Archive& archive, const std::string& name)
{
    const auto found =
        std::find_if(archive.levels.begin(), archive.levels.end(),
                     [&](const LevelRecord& level) { return Trim(level.levelName) == name; });
    return found == archive.levels.end() ? nullptr : &*found;
}

bool AddPracticeLevel(Session& session, const Path& folder, const std::string& name)
{
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::AddingPractice, {name}));
    progress->AllowStop();
    LevelCode code = 0;
    return AddLevel(
        session, *progress,
        [&](Intake& level) {
            level.draft.name = name;
            return AddSources(level, {folder}, Subfolders::Take) && progress->Step() &&
                   Accept(level);
        },
        code);
}

bool AddPracticeLevels(Session& session)
{
    const Path levels =
        PlacesIn(InFolder(session.programFolder, OnDisk::DirPracticeLibrary)).levels;
    for (const PracticeLevel& level : PracticeLevels()) {
        const std::string name = Told(level.name);
        if (FindNamed(session.archive, name) == nullptr &&
            !AddPracticeLevel(session, levels / name, name))
            return false;
    }
    if (const LevelRecord* attic = FindNamed(session.archive, Told(Msg::PracticeLevelPictures)))
        session.list.Select(attic->levelCode);
    return true;
}

} // namespace

Result<PracticeMade> MakePracticeShown(Host& host, const Path& folder)
{
    const auto progress = host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::MakingPractice));
    progress->AllowStop();
    return MakePracticeFolder(folder, StandInsIn(platform::ExecutableFolder()),
                              [&](int done, int total, const std::string& what) {
                                  progress->SetLabel(what);
                                  progress->SetBar(static_cast<std::uint64_t>(done),
                                                   static_cast<std::uint64_t>(total));
                                  return progress->Step();
                              });
}

void TellPracticeFailed(Host& host, const Failure& failure)
{
    if (failure.code != ErrorCode::Stopped)
        TellFailure(host, GetMsg(Msg::WindowPracticeFailed), failure);
}

void KnowPracticePlaces(Session& session, const Path& trle, const Path& levels)
{
    if (Trim(session.preferences.downloadFolder) == OnDisk::DefaultDownloadFolder)
        session.preferences.downloadFolder = levels.native();
    AddPracticeDrive(session.settings, trle);
}

bool MakePracticeLibrary(Session& session)
{
    const Operation operation{session};
    bool fresh = false;
    const auto trle = PracticeEditor(session, fresh);
    TrleFinder finder{session};
    if (!trle || !finder.Take(*trle) || !finder.Accept())
        return false;
    // Of a folder that was there before, nobody but the person knows whether it is original.
    if (!MakeTrleBackup(session, false, {BackupForm::Full, fresh}))
        return false;
    if (const auto built = EnsureLevel0Folder(session.Folders()); !built) {
        TellNoLevel0(session.host, session.Folders(), built.Error());
        return false;
    }
    // Nobody could be asked to save a list of which half is made.
    const bool autoSave = std::exchange(session.preferences.autoSave, true);
    const bool done = OpenPracticeArchive(session) && AddPracticeLevels(session);
    session.preferences.autoSave = autoSave;
    return done;
}

} // namespace kestrova
