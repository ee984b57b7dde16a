#include "app/swap_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "archive/level_folders.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "history/standing.h"
#include "play/play_level.h"
#include "play/play_times.h"
#include "session/held_folders.h"
#include "session/telling.h"
#include "swap/backup_state.h"
#include "swap/folder_guard.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_preview.h"
#include "swap/waiting_in_trle.h"
#include "upkeep/leftovers.h"
#include "words/captions.h"
#include "words/commands.h"
#include "words/menus.h"
#include "words/swap.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

bool TellAndFail(Run& run, const Failure& failure, Message text)
{
    TellFailure(run.session.host, GetMsg(text), failure);
    return false;
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

void ShowPlayed(Run& run, bool started)
{
    const std::string name = Readable(Trim(LevelNameOf(run.session.archive, run.level)));
    if (run.json != nullptr)
        *run.json = {{"code", run.level}, {"name", name}, {"started", started}};
    else
        AddLine(run, std::to_string(run.level) + "\t" + OneField(name));
}

std::string ReadableName(std::string_view text)
{
    return Readable(Trim(text));
}

/// A window counts by itself, and so does one that holds the folders.
void CountPlaying(Run& run)
{
    if (!HoldFolders(run.session.locks, run.session.Folders()))
        return;
    PlayTimes times{run.session};
    times.GameStarted();
    if (run.arguments.Has("--wait"))
        CountUntilGameEnds(run.session, times);
}

bool Play(Run& run)
{
    const bool start = !run.arguments.Has("--no-start");
    if (!PlayLevel(run.session, run.level, start))
        return false;
    if (start && run.FromWords())
        CountPlaying(run);
    ShowPlayed(run, start);
    run.face.Note(GetMsg(Msg::GameStarted, {LevelNameOf(run.session.archive, run.level)}));
    run.face.GameStarted();
    return true;
}

bool TellCurrent(Run& run)
{
    if (!TellUnlessKnown(run.session.host, run.session.Folders(), run.session.archive))
        return false;
    const LevelPlace level = StandingLevel(run.session.Folders(), run.session.archive);
    const LevelCode code = level.code;
    if (CurrentLevelCode(run.session.Folders(), run.session.archive) == foreignLevel) {
        const std::string folder = TextOf(level.home);
        if (run.json != nullptr)
            *run.json = {{"code", code}, {"name", ""}, {"other-archive", folder}};
        else
            AddLine(run, std::to_string(code) + "\t" + GetMsg(Msg::OtherArchivesLevel, {folder}));
        return true;
    }
    const std::string name = ReadableName(LevelNameOf(run.session.archive, code));
    if (run.json != nullptr)
        *run.json = {{"code", code}, {"name", name}};
    else
        AddLine(run, std::to_string(code) + "\t" + OneField(name));
    return true;
}

bool BringOriginalsFast(Run& run)
{
    return RestoreFastWithWords(run.session);
}

bool InFull(const Run& run)
{
    return run.arguments.Has("--full");
}

bool Plan(Run& run)
{
    const auto plan =
        PlanSwap(run.session.Folders(), run.session.archive, run.session.preferences, run.level);
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
        *run.json = {{"code", run.level}, {"files", std::move(files)}};
    return true;
}

bool Mend(Run& run)
{
    if (!OpenToLook(run, Needs::Nothing))
        return false;
    const auto waiting = [&] {
        const std::string work = InterruptedWork(run.session.Folders(), run.session.archive);
        return work.empty() ? WhatWaitsInTrle(run.session.Folders(), run.session.archive,
                                              run.session.preferences)
                            : work;
    };
    const bool waits = !waiting().empty();
    Whereabouts said;
    if (const std::string trle = run.arguments.ValueOf("--trle"); !trle.empty())
        said.trle = PlaceFromWord(trle);
    if (const std::string folder = run.arguments.ValueOf("--archive-folder"); !folder.empty())
        said.archiveFolder = PlaceFromWord(folder);
    said.letGo = run.arguments.Has("--let-go");
    // The beginning of any work mends what waits.
    if (!OpenToWork(run, Needs::Nothing, said))
        return false;
    ClearAllLeftovers(run.session.host, run.session.Folders(), run.session.archive,
                      run.session.preferences);
    const std::string still = waiting();
    if (still.empty())
        AddLine(run, GetMsg(waits ? Msg::MendDone : Msg::MendNothing));
    else
        run.session.host.Tell(
            Tone::Warning, GetMsg(Msg::MendWaits, {still, RemedyForWaiting(run.session.Folders(),
                                                                           run.session.archive)}));
    return EndWork(run, still.empty());
}

bool ChangesNothing(const Session& session, LevelCode code)
{
    return StandsInTrle(session.machine, session.Folders(), session.archive, code);
}

} // namespace

bool BringOriginals(Run& run)
{
    Session& session = run.session;
    if (session.TrleFolder().empty()) {
        session.host.Tell(Tone::Error, GetMsg(Msg::NeedsSetup));
        return false;
    }
    const auto progress = session.host.BeginProgress(ProgressWindow::Progress, {});
    const bool whole = RestoreOriginalConfiguration(session, *progress);
    // A compact backup has neither the game nor its music: what only a new setup brings is named.
    return whole && IsTrleFolder(session.host, session.Folders(), session.preferences,
                                 session.TrleFolder(), true);
}

std::span<const CommandRow> SwapCommands()
{
    static const CommandRow rows[] = {
        {.window = {.button = "Pul_Play",
                    .caption = Msg::PlayButton,
                    .keys = "F5; Ctrl+P",
                    .onLevel = 1,
                    .noLevel = Msg::NoLevelToPlay},
         .terminal = {.word = "play",
                      .usage = Msg::UsePlay,
                      .summary = Msg::SumPlay,
                      .json = Msg::KeysPlay,
                      .leastWords = 1,
                      .mostWords = 1,
                      .options = {FlagOption("--no-start"), FlagOption("--wait")},
                      .failsWhenTold = true,
                      // A level that stands in its place needs no lock and no write.
                      .looksWhen = ChangesNothing},
         .needs = Needs::Level,
         .touches = Touches::LevelEditor,
         .run = Play},
        {.terminal = {.word = "current",
                      .usage = Msg::UseCurrent,
                      .summary = Msg::SumCurrent,
                      .json = Msg::KeysCurrent},
         .needs = Needs::LevelEditor,
         .run = TellCurrent},
        {.window = {.control = "mnu_SetOriginale",
                    .caption = Msg::MenuSetOriginal,
                    .menu = "mnu_Tools"},
         .terminal = {.word = "original",
                      .usage = Msg::UseOriginal,
                      .summary = Msg::SumOriginal,
                      .options = {FlagOption("--full")}},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = BringOriginalsFast,
         .help = HelpTag::Originals},
        // The way out when folder or archive are broken: it asks for neither.
        {.terminal = {.word = "original", .when = InFull},
         .touches = Touches::LevelEditor,
         .run = BringOriginals,
         .help = HelpTag::Originals},
        {.terminal = {.word = "plan",
                      .usage = Msg::UsePlan,
                      .summary = Msg::SumPlan,
                      .json = Msg::KeysPlan,
                      .leastWords = 1,
                      .mostWords = 1},
         .needs = Needs::Level,
         .run = Plan},
        {.terminal = {.word = "mend",
                      .usage = Msg::UseMend,
                      .summary = Msg::SumMend,
                      .options = {PlaceOption("--trle"), PlaceOption("--archive-folder"),
                                  FlagOption("--let-go")}},
         .touches = Touches::ItsOwn,
         .run = Mend,
         .help = HelpTag::Crash},
    };
    return rows;
}

} // namespace kestrova
