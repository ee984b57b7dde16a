#include "cli/swap_commands.h"

#include "app/start_up.h"
#include "archive/level_folders.h"
#include "cli/work.h"
#include "editor/find_trle.h"
#include "history/standing.h"
#include "play/play_level.h"
#include "swap/backup.h"
#include "swap/folder_guard.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_plan.h"
#include "swap/waiting_in_trle.h"
#include "upkeep/leftovers.h"
#include "words/cli.h"
#include "words/swap.h"

namespace kestrova
{

namespace
{

Exit TellAndFail(Run& run, const Failure& failure, Message text)
{
    TellFailure(run.session, GetMsg(text), failure);
    return Exit::Failed;
}

std::string_view WordOf(PlannedAction action)
{
    switch (action) {
    case PlannedAction::Add:
        return "add";
    case PlannedAction::Overwrite:
        return "overwrite";
    case PlannedAction::Restore:
        return "restore";
    case PlannedAction::Remove:
        break;
    }
    return "remove";
}

std::string_view WordOf(Mismatch kind)
{
    switch (kind) {
    case Mismatch::Missing:
        return "missing";
    case Mismatch::Differs:
        return "differs";
    case Mismatch::Cut:
        return "cut";
    case Mismatch::Unexpected:
        break;
    }
    return "unexpected";
}

void ShowPlayed(Run& run, LevelCode code, bool started)
{
    const std::string name = Readable(Trim(LevelNameOf(run.session, code)));
    if (run.json != nullptr)
        *run.json = {{"code", code}, {"name", name}, {"started", started}};
    else
        AddLine(run, std::to_string(code) + "\t" + OneField(name));
}

bool IsKnown(Run& run, LevelCode code)
{
    if (FindLevel(run.session, code) >= 0)
        return true;
    run.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
    return false;
}

} // namespace

Exit RunPlay(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code)
        return Exit::WrongUse;
    const bool start = !run.arguments.Has("--no-start");
    if (!BeginLooking(run, Needs::Archive) || !IsKnown(run, *code))
        return Exit::Failed;
    // A level that stands in its place needs no lock and no write.
    if (StandsInTrle(run.session, *code)) {
        const bool played = PlayLevel(run.session, *code, start);
        if (played)
            ShowPlayed(run, *code, start);
        return played ? Exit::Done : Exit::Failed;
    }
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const bool played = PlayLevel(run.session, *code, start);
    if (played)
        ShowPlayed(run, *code, start);
    // The level stands; what did not come in or back with it has been told.
    return EndWork(run, played && !run.host.ToldError());
}

Exit RunOriginal(Run& run)
{
    const bool full = run.arguments.Has("--full");
    // The full restore is the way out when folder or archive are broken: it asks for neither.
    if (!BeginWork(run, full ? Needs::Nothing : Needs::Archive))
        return Exit::Failed;
    if (full && run.session.TrleFolder().empty()) {
        run.host.Tell(Tone::Error, GetMsg(Msg::NeedsSetup));
        return EndWork(run, false);
    }
    if (!full)
        return EndWork(run, RestoreFastWithWords(run.session));
    const auto progress = run.host.BeginProgress(ProgressWindow::Progress, {});
    const bool whole = RestoreOriginalConfiguration(run.session, *progress);
    // A compact backup has neither the game nor its music: what only a new setup brings is named.
    return EndWork(run, whole && IsTrleFolder(run.session, run.session.TrleFolder(), true));
}

Exit RunPlan(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code)
        return Exit::WrongUse;
    if (!BeginLooking(run, Needs::Archive) || !IsKnown(run, *code))
        return Exit::Failed;
    const auto plan = PlanSwap(run.session, *code);
    if (!plan)
        return TellAndFail(run, plan.Error(), Msg::PlanFailed);
    Json files = Json::array();
    for (const PlannedFile& file : *plan) {
        if (run.json != nullptr)
            files.push_back({{"action", WordOf(file.action)},
                             {"file", Readable(file.file)},
                             {"size", file.size}});
        else
            AddLine(run, std::string{WordOf(file.action)} + "\t" + std::to_string(file.size) +
                             "\t" + OneField(file.file));
    }
    if (run.json != nullptr)
        *run.json = {{"code", *code}, {"files", std::move(files)}};
    return Exit::Done;
}

Exit RunVerify(Run& run)
{
    std::optional<LevelCode> code;
    if (!run.arguments.words.empty()) {
        code = CodeFromWord(run, run.arguments.words.front());
        if (!code)
            return Exit::WrongUse;
    }
    if (!BeginLooking(run, Needs::Archive) || (code && !IsKnown(run, *code)))
        return Exit::Failed;
    const auto found = code ? VerifyLevel(run.session, *code) : VerifyFolder(run.session);
    if (!found)
        return TellAndFail(run, found.Error(), Msg::VerifyFailed);
    Json differences = Json::array();
    for (const Difference& difference : *found) {
        if (run.json != nullptr)
            differences.push_back(
                {{"kind", WordOf(difference.kind)}, {"file", Readable(difference.file)}});
        else
            AddLine(run, std::string{WordOf(difference.kind)} + "\t" + OneField(difference.file));
    }
    if (run.json != nullptr)
        *run.json = {{"code", code ? *code : StandingLevel(run.session).code},
                     {"differences", std::move(differences)}};
    const bool compared = code || !BackupIsAway(run.session);
    if (!compared)
        run.host.Tell(Tone::Warning,
                      GetMsg(Msg::VerifyNoBackup, {TextOf(run.session.BackupFolder())}));
    else if (found->empty() && run.json == nullptr)
        AddLine(run, GetMsg(Msg::VerifyFine));
    return found->empty() && compared ? Exit::Done : Exit::Failed;
}

Exit RunMend(Run& run)
{
    if (!BeginLooking(run, Needs::Nothing))
        return Exit::Failed;
    const auto waiting = [&] {
        const std::string work = InterruptedWork(run.session);
        return work.empty() ? WhatWaitsInTrle(run.session) : work;
    };
    const bool waits = !waiting().empty();
    Whereabouts said;
    if (const std::string trle = run.arguments.ValueOf("--trle"); !trle.empty())
        said.trle = PlaceFromWord(trle);
    if (const std::string folder = run.arguments.ValueOf("--archive-folder"); !folder.empty())
        said.archiveFolder = PlaceFromWord(folder);
    said.letGo = run.arguments.Has("--let-go");
    // The beginning of any work mends what waits.
    if (!BeginWork(run, Needs::Nothing, said))
        return Exit::Failed;
    ClearAllLeftovers(run.session);
    const std::string still = waiting();
    if (still.empty())
        AddLine(run, GetMsg(waits ? Msg::MendDone : Msg::MendNothing));
    else
        run.host.Tell(Tone::Warning,
                      GetMsg(Msg::MendWaits, {still, RemedyForWaiting(run.session)}));
    return EndWork(run, still.empty());
}

} // namespace kestrova
