#include "swap/install.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "session/log_file.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/level_placements.h"
#include "swap/live_state.h"
#include "swap/mend_after_restart.h"
#include "swap/placements.h"
#include "swap/recovery.h"
#include "swap/swap_preview.h"
#include "swap/swap_run.h"
#include "swap/verify.h"
#include "swap/waiting_in_trle.h"
#include "words/restore.h"
#include "words/swap.h"

namespace kestrova
{

namespace
{

/// Copies the level's files and the marker in. The folder is original when this begins.
bool InstallFiles(Host& host, const Folders& folders, const Archive& archive,
                  const PreferencesRecord& preferences, SwapRun& run, LevelCode code,
                  const std::vector<Placement>& placements, ActivityLog& log)
{
    const std::string name = LevelNameOf(archive, code);
    const Path marker = folders.Marker();
    const auto markerFailed = [&](const Failure& failure) {
        TellFailure(host, GetMsg(Msg::CannotOverwriteMarker) + TextOf(marker), failure);
        return false;
    };
    const auto present = ListFiles(folders.trle, OnDisk::PatDat);
    if (!present)
        return TellFolderNotRead(host, present.Error());
    if (const auto status = WriteWholeFile(marker, MarkerHead(code, name)); !status)
        return markerFailed(status.Error());

    std::vector<std::string> failed;
    std::vector<std::string> copied;
    run.KeepTargets(placements);
    if (!placements.empty()) {
        const auto progress =
            host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CopyingFilesToPlay));
        for (std::size_t i = 0; i < placements.size(); ++i) {
            progress->SetBar(i + 1, placements.size());
            progress->Step();
            bool overwritten = false;
            if (!run.Put(placements[i], overwritten))
                failed.push_back(Readable(placements[i].target));
            copied.push_back(Readable(placements[i].target));
        }
    }
    if (const std::string language = LanguageFileToRemove(*present, placements); !language.empty())
        if (!run.RemoveLanguageFile(language))
            failed.push_back(Readable(language));

    std::vector<std::string> overwritten;
    for (const std::string& entry : run.Overwritten())
        overwritten.push_back(Readable(entry));
    if (const auto status = WriteWholeFile(marker, MarkerText(code, name, overwritten, copied));
        !status)
        return markerFailed(status.Error());
    DoneOrTold(host, WriteActivityLog(folders, preferences, log));
    if (!failed.empty())
        host.Tell(Tone::Error, GetMsg(Msg::SomeFilesNotCopied, {ShownNames(failed)}));
    return true;
}

/// False, told, when the Level Editor's folder is not there, or nobody can tell.
bool HasTrleFolder(Host& host, const Folders& folders)
{
    const auto isThere = IsFolder(folders.trle);
    if (!isThere)
        return TellFolderNotRead(host, isThere.Error());
    if (!*isThere)
        host.Tell(Tone::Error, GetMsg(Msg::TrleFolderGone, {TextOf(folders.trle)}));
    return *isThere;
}

/// Compares every file with the backup, where no note says what a level brought.
bool IsOriginalNow(const SwapParts& parts)
{
    const auto differences = VerifyFolder(parts);
    return differences && differences->empty();
}

bool SwapTo(const SwapParts& parts, LevelCode code, ActivityLog& log)
{
    WorkFolder staging{InFolder(parts.folders.trle, OnDisk::DirReady)};
    std::vector<Placement> placements;
    if (code != originalCode && !ReadyPlacements(parts, code, staging.Folder(), placements))
        return false;

    SwapRun run{parts, log, code};
    run.Announce(placements);
    if (!run.LookIntoStore())
        return false;
    LevelCode previous = originalCode;
    if (!run.TakeOut(previous))
        return false;
    if (!run.HasBegun()) // it stands there already
        return true;
    const bool backToOriginal = code == originalCode && previous == originalCode;
    if (!run.BringIn(!backToOriginal))
        return false;
    bool installed = code != originalCode || !run.LeavesAnything();
    if (code != originalCode)
        installed = InstallFiles(parts.host, parts.folders, parts.archive, parts.preferences, run,
                                 code, placements, log);
    else if (!backToOriginal)
        (void)DeleteFile(parts.folders.Marker()); // gone already unless the marker had no text
    installed = run.Settle() && installed;
    if (!run.MarkerSaidNothing() || (code == originalCode && IsOriginalNow(parts)))
        return installed;
    parts.host.Tell(Tone::Error, GetMsg(Msg::MarkerSaidNothing, {TextOf(parts.folders.Marker())}));
    return installed && code != originalCode;
}

} // namespace

bool InstallLevel(Session& session, LevelCode code)
{
    const Operation running{session};
    if (FindLevel(session.archive, code) < 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return false;
    }
    if (!HasTrleFolder(session.host, session.Folders()))
        return false;
    if (!StandsInTrle(session.machine, session.Folders(), session.archive, code) &&
        !MayChangeTrle(session, session.Folders()))
        return false;
    if (!RecoverInterruptedWork(session))
        return false;
    if (!TellUnlessKnown(session.host, session.Folders(), session.archive))
        return false;
    ActivityLog log = Told(Msg::LogSetLevel, {LevelNameOf(session.archive, code)}) +
                      std::to_string(code) + Told(Msg::LogSetLevelEnd) + std::string{lineBreak};
    if (code != originalCode && LevelStands(session.Folders(), session.archive, code)) {
        LevelCode previous = RemovePreviousLevel(session, code, log);
        if (previous == code) {
            MendAfterRestart(session, code);
            BringWaiting(session.machine, session.Folders(), session.archive);
            if (const auto owed = OwedOriginals(session.Folders()); !owed.empty())
                session.host.Tell(Tone::Error, GetMsg(Msg::OriginalsNotBack, {ShownNames(owed)}));
        }
        return previous == code;
    }
    return SwapTo(session, code, log);
}

LevelCode RemovePreviousLevel(Session& session, LevelCode newCode, ActivityLog& log)
{
    const Operation running{session};
    if (!HasTrleFolder(session.host, session.Folders()))
        return originalCode;
    if (CurrentLevelCode(session.Folders(), session.archive) != newCode &&
        !MayChangeTrle(session, session.Folders()))
        return originalCode;
    if (!RecoverInterruptedWork(session))
        return originalCode;
    SwapRun run{session, log, newCode};
    LevelCode previous = originalCode;
    if (!run.TakeOut(previous))
        return originalCode;
    if (run.HasBegun())
        (void)run.Settle(); // it has told; the next swap mends first
    return previous;
}

bool RestoreFast(Session& session)
{
    const bool whole = InstallLevel(session, originalCode);
    session.list.Refresh();
    return whole;
}

} // namespace kestrova
