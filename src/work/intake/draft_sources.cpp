#include "intake/draft_sources.h"

#include "archive/level_folders.h"
#include "core/name_list.h"
#include "intake/draft_files.h"
#include "intake/folder_sources.h"
#include "intake/source_choice.h"
#include "packages/package_tools.h"
#include "session/telling.h"
#include "words/sources.h"

#include <utility>

namespace kestrova
{

namespace
{

/// A refusal ends the steps of its time alone.
void TakeSteps(Intake& intake, std::initializer_list<StepTime> times)
{
    for (const StepTime time : times) {
        const StepAnswer answer = Walk(intake, time);
        if (answer == StepAnswer::Stopped)
            intake.draft.report.stopped = true;
        if (answer == StepAnswer::Stopped || answer == StepAnswer::GivenUp)
            break;
    }
    intake.draft.config.reset();
}

/// What came out of packages, as it stands now.
void NoteUnpacked(LevelDraft& draft)
{
    const SourceReport& report = draft.report;
    draft.packages.insert(draft.packages.end(), report.packages.begin(), report.packages.end());
    if (!report.namesAs.empty())
        draft.namesReadAs = report.namesAs;
    for (const Path& file : draft.files)
        if (report.unpacked.contains(FoldCase(file.filename().native())))
            draft.unpacked.Note(file);
}

/// What came out of packages goes, as far as nobody changed it since.
void DropUnpacked(LevelDraft& draft)
{
    for (const Path& file : draft.files)
        if (draft.unpacked.IsUnchanged(file))
            (void)DeleteFile(file); // one that stays is asked for when its twin comes in
    draft.unpacked = {};
}

/// The folder anew, with what the report has to say of it, and the steps that follow.
void ShowChange(Intake& intake, std::initializer_list<StepTime> times)
{
    const bool listed = RefreshFiles(intake);
    NoteUnpacked(intake.draft);
    TellReport(intake.session.host, intake.draft.report);
    if (listed)
        TakeSteps(intake, times);
}

/// To be called when all sources of an operation were read; whether everything came in.
bool EndSources(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    (void)draft.inner.Restart(draft.workFolder); // the earlier limit holds then
    NoteChangedSources(draft.report);
    ShowChange(intake, {StepTime::Config, StepTime::Change, StepTime::Source});
    return draft.report.failed == 0 && !draft.report.stopped;
}

} // namespace

bool AddChosenFile(Intake& intake)
{
    if (!DoneOrTold(intake.session.host, GuardLevelOnCd(intake.draft.saved)))
        return false;
    const auto chosen = ChooseSourceFile(intake.session);
    return chosen && AddSources(intake, {*chosen});
}

bool AddChosenFolder(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    if (!DoneOrTold(intake.session.host, GuardLevelOnCd(draft.saved)))
        return false;
    const auto chosen = ChooseSourceFolder(intake.session);
    if (!chosen || !BeginChange(intake))
        return false;
    draft.report = {};
    AddFilesFromFolder(intake.session.host, intake.session.machine, intake.session.Folders(),
                       ToolsOf(intake.session), *chosen, draft.workFolder, draft.Options(),
                       intake.progress, Subfolders::Ask, draft.report);
    return EndSources(intake);
}

bool AddSources(Intake& intake, const std::vector<Path>& sources, Subfolders subfolders)
{
    Session& session = intake.session;
    LevelDraft& draft = intake.draft;
    if (!DoneOrTold(session.host, GuardLevelOnCd(draft.saved)) || !BeginChange(intake))
        return false;
    draft.report = {};
    for (const Path& source : sources) {
        if (draft.report.stopped)
            break;
        if (AddSource(session.host, session.machine, session.Folders(), ToolsOf(session), source,
                      draft.workFolder, draft.Options(), intake.progress, subfolders, draft.report))
            draft.lastSource = source;
    }
    return EndSources(intake);
}

bool ReadNamesAs(Intake& intake, const std::string& page)
{
    LevelDraft& draft = intake.draft;
    for (const Path& package : draft.packages)
        if (!FileExists(package)) {
            intake.session.host.Tell(Tone::Error, GetMsg(Msg::PackagesGone, {TextOf(package)}));
            return false;
        }
    draft.namesPage = page;
    draft.report = {};
    DropUnpacked(draft);
    for (const Path& package : std::exchange(draft.packages, {}))
        if (!draft.report.stopped)
            AddFile(intake.session.host, intake.session.machine, intake.session.Folders(),
                    ToolsOf(intake.session), package, draft.workFolder, draft.Options(),
                    intake.progress, draft.report);
    return EndSources(intake);
}

void Refresh(Intake& intake)
{
    intake.draft.report = {};
    ShowChange(intake, {StepTime::Config, StepTime::Change});
}

bool UnpackAll(Intake& intake)
{
    constexpr int deepest = 8;
    const SourceReport& report = intake.draft.report;
    const auto packages = [&] {
        std::vector<std::string> names;
        for (const Path& file : intake.draft.files)
            if (IsPackage(file))
                names.push_back(TextOf(file.filename()));
        return names;
    };
    bool all = !report.stopped;
    for (int i = 0; i < deepest && !report.stopped && !packages().empty(); ++i) {
        Refresh(intake);
        all = all && report.failed == 0 && !report.stopped;
    }
    if (const auto names = packages(); all && !names.empty())
        intake.session.host.Tell(
            Tone::Warning,
            GetMsg(Msg::InnerPackagesStay, {std::to_string(deepest), ShownNames(names)}));
    return all;
}

} // namespace kestrova
