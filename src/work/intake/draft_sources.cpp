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
Status TakeSteps(Intake& intake, std::initializer_list<StepTime> times)
{
    StepAnswer answer = StepAnswer::GoesOn;
    for (const StepTime time : times) {
        answer = Walk(intake, time);
        if (answer == StepAnswer::Stopped || answer == StepAnswer::GivenUp)
            break;
    }
    intake.draft.config.reset();
    if (answer == StepAnswer::Stopped)
        return MakeFailure(ErrorCode::Stopped, std::string{intake.endedAt});
    return {};
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

/// The folder anew, with what the report has to say of it, and the steps that follow. Only a Stop
/// is answered.
Status ShowChange(Intake& intake, std::initializer_list<StepTime> times)
{
    const Status listed = RefreshFiles(intake);
    const bool isListed = DoneOrTold(intake.session.host, listed) || IsStop(listed);
    NoteUnpacked(intake.draft);
    TellReport(intake.session.host, intake.draft.report);
    if (!isListed)
        return {};
    const Status steps = TakeSteps(intake, times);
    return listed ? steps : listed;
}

/// What failed was told.
Status AllCame(const LevelDraft& draft)
{
    return draft.report.failed == 0 ? Status{}
                                    : MakeFailure(ErrorCode::NotDone, TextOf(draft.lastSource));
}

/// To be called when all sources of an operation were read, or one was stopped.
Status EndSources(Intake& intake, const Status& read)
{
    LevelDraft& draft = intake.draft;
    (void)draft.inner.Restart(draft.workFolder); // the earlier limit holds then
    NoteChangedSources(draft.report);
    const Status shown = ShowChange(intake, {StepTime::Config, StepTime::Change, StepTime::Source});
    if (!read || !shown)
        return read ? shown : read;
    return AllCame(draft);
}

} // namespace

bool AddChosenFile(Intake& intake)
{
    if (!DoneOrTold(intake.session.host, GuardLevelOnCd(intake.draft.saved)))
        return false;
    const auto chosen = ChooseSourceFile(intake.session.host, intake.session.preferences);
    return chosen && AddSources(intake, {*chosen});
}

bool AddChosenFolder(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    if (!DoneOrTold(intake.session.host, GuardLevelOnCd(draft.saved)))
        return false;
    const auto chosen = ChooseSourceFolder(intake.session.host, intake.session.preferences);
    if (!chosen || !BeginChange(intake))
        return false;
    draft.report = {};
    const Status read =
        AddFilesFromFolder(intake.session.host, intake.session.machine, intake.session.Folders(),
                           ToolsOf(intake.session), *chosen, draft.workFolder, draft.Options(),
                           intake.progress, Subfolders::Ask, draft.report);
    return bool{EndSources(intake, read)};
}

Status AddSources(Intake& intake, const std::vector<Path>& sources, Subfolders subfolders)
{
    Session& session = intake.session;
    LevelDraft& draft = intake.draft;
    if (!DoneOrTold(session.host, GuardLevelOnCd(draft.saved)) || !BeginChange(intake))
        return MakeFailure(ErrorCode::NotDone, {});
    draft.report = {};
    Status read;
    for (const Path& source : sources) {
        if (!read)
            break;
        read =
            AddSource(session.host, session.machine, session.Folders(), ToolsOf(session), source,
                      draft.workFolder, draft.Options(), intake.progress, subfolders, draft.report);
        if (FolderExists(source) || FileExists(source))
            draft.lastSource = source;
    }
    return EndSources(intake, read);
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
    Status read;
    for (const Path& package : std::exchange(draft.packages, {}))
        if (read)
            read = AddFile(intake.session.host, intake.session.machine, intake.session.Folders(),
                           ToolsOf(intake.session), package, draft.workFolder, draft.Options(),
                           intake.progress, draft.report);
    return bool{EndSources(intake, read)};
}

Status Refresh(Intake& intake)
{
    intake.draft.report = {};
    return ShowChange(intake, {StepTime::Config, StepTime::Change});
}

Status UnpackAll(Intake& intake)
{
    constexpr int deepest = 8;
    const auto packages = [&] {
        std::vector<std::string> names;
        for (const Path& file : intake.draft.files)
            if (IsPackage(file))
                names.push_back(TextOf(file.filename()));
        return names;
    };
    Status all;
    for (int i = 0; i < deepest && !packages().empty(); ++i) {
        if (const Status refreshed = Refresh(intake); !refreshed)
            return refreshed;
        if (all)
            all = AllCame(intake.draft);
    }
    if (const auto names = packages(); all && !names.empty())
        intake.session.host.Tell(
            Tone::Warning,
            GetMsg(Msg::InnerPackagesStay, {std::to_string(deepest), ShownNames(names)}));
    return all;
}

Status AddWhole(Intake& intake, const std::vector<Path>& sources)
{
    const Status came = AddSources(intake, sources, Subfolders::Take);
    if (IsStop(came) || intake.draft.givenUp)
        return came;
    const Status inner = UnpackAll(intake);
    return inner ? came : inner;
}

} // namespace kestrova
