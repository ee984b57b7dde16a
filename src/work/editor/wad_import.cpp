#include "editor/wad_import.h"

#include "core/activity_log.h"
#include "core/file_kinds.h"
#include "core/name_set.h"
#include "editor/compile_tom_file.h"
#include "editor/file_names.h"
#include "editor/wad_levels.h"
#include "editor/wad_routing.h"
#include "originals/imported_files.h"
#include "session/cleared_progress.h"
#include "session/log_file.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/install.h"
#include "words/wads.h"

namespace kestrova
{

namespace
{

/// The levels that stand in the folder now and that the backup did not have.
Result<std::vector<std::string>> NewLevels(const Folders& folders,
                                           const std::vector<std::string>& old,
                                           const std::vector<std::string>& failed)
{
    auto levels = LevelsIn(folders, ImportTree::LevelEditor);
    if (!levels)
        return levels;
    NameSet known;
    for (const auto& names : {old, failed})
        for (const std::string& name : names)
            known.Add(name);
    std::erase_if(*levels, [&](const std::string& name) { return known.Has(name); });
    return levels;
}

/// All that changes files, in its order.
Status ImportAll(const WadWork& work, const std::vector<Path>& files, const AskLevelName& askName)
{
    const Folders& folders = work.parts.folders;
    const auto old = LevelsIn(folders, ImportTree::Backup);
    if (!old)
        return old.Error();
    const WadRoutes routes = RouteWads(files);
    const auto toms = TomsToCompile(folders, routes);
    if (!toms)
        return toms.Error();
    if (auto watched = WatchFiles(work, routes, *toms); !watched)
        return watched;
    if (auto installed = InstallFiles(work, routes); !installed)
        return installed;
    std::vector<std::string> failed;
    if (auto compiled = CompileToms(work, *toms, failed); !compiled)
        return compiled;
    const auto fresh = NewLevels(folders, *old, failed);
    if (!fresh)
        return fresh.Error();
    return TakeNewLevels(work, *fresh, askName);
}

} // namespace

WadImport::WadImport(Session& session, ProgressScope& progress)
    : session_(session), progress_(progress),
      folder_(ResolvePath(InFolder(session.programFolder, OnDisk::DirImportTemp)))
{
}

bool WadImport::Prepare()
{
    const Operation operation{session_};
    work_ = std::make_unique<WorkFolder>(folder_, WorkFolder::Make::Now,
                                         [this] { return (void)progress_.Step(), true; });
    if (!work_->IsClear()) {
        TellFailure(session_.host, GetMsg(Msg::ImportNotBegun), work_->IsClear().Error());
        return false;
    }
    if (!RestoreFast(session_))
        session_.host.Tell(Tone::Error, GetMsg(Msg::ImportOriginalFailed, {lineBreak}));
    return true;
}

bool WadImport::Refresh()
{
    auto files = ListFiles(folder_, OnDisk::PatAllFiles);
    if (!files)
        return TellFolderNotRead(session_.host, files.Error());
    files_ = std::move(*files);
    return true;
}

void WadImport::AddSubject(const std::string& subject)
{
    if (!subject_.empty())
        subject_ += ", ";
    subject_ += subject;
}

void WadImport::Ended() const
{
    if (ended_)
        ended_();
}

void WadImport::TakeBack(ImportedFiles& files, const Failure& why, const Heartbeat& alive)
{
    Host& host = session_.host;
    const bool changed = files.IsOpen();
    const Status back = changed ? files.TakeBack(alive) : Status{};
    report_ += LogLine({Told(Msg::ImportLineStopped)});
    Ended();
    if (!back)
        TellFailure(host, GetMsg(Msg::ImportNotTakenBack), back.Error());
    else if (why.code == ErrorCode::Stopped)
        host.Tell(Tone::Warning, GetMsg(Msg::ImportStopped));
    else
        TellFailure(host, GetMsg(changed ? Msg::ImportNotKept : Msg::ImportNotBegun), why);
    (void)Refresh(); // what was left out is gone
}

void WadImport::Run(const AskLevelName& askName, const std::function<void()>& ended)
{
    const Operation operation{session_};
    report_.clear();
    ended_ = ended;
    if (!MayLend(session_))
        return;
    progress_.AllowStop();
    const WorkFolder newScripts{
        ResolvePath(InFolder(session_.programFolder, OnDisk::DirScriptTemp)), WorkFolder::Make::Now,
        [this] { return (void)progress_.Step(), true; }};
    const CompileParts parts = CompilePartsOf(session_, progress_);
    ImportedFiles files{session_.machine, session_.Folders(), subject_};
    const WadWork work{parts, files, report_, folder_, newScripts.Folder()};
    Status imported = newScripts.IsClear();
    if (imported)
        imported = ImportAll(work, files_, askName);
    if (imported)
        imported = files.End(BeatOf(work));
    ClearProgress(progress_);
    BoundImports(session_.Folders(), session_.settings);
    if (!imported && (files.IsOpen() || !ImportWaits(session_.Folders())))
        return TakeBack(files, imported.Error(), BeatOf(work));
    Finish(imported);
}

void WadImport::Finish(const Status& imported)
{
    report_ += LogLine({}) + Told(Msg::ImportLineFinished);
    Ended();
    if (!imported)
        TellFailure(session_.host, GetMsg(Msg::ImportNotEnded), imported.Error());
    DoneOrTold(session_.host, WriteActivityLog(session_.Folders(), session_.preferences, report_));
    session_.host.Tell(Tone::Plain, GetMsg(Msg::ImportFinished));
    done_ = true;
    progress_.SetLabel(GetMsg(Msg::ImportCleaning));
    work_.reset();
    files_.clear();
    ClearProgress(progress_);
    session_.list.Refresh();
}

} // namespace kestrova
