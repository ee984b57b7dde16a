#include "intake/config_steps.h"

#include "core/look.h"
#include "intake/compile_sources.h"
#include "intake/draft_files.h"
#include "intake/exe_install.h"
#include "intake/listed_files.h"
#include "online/config_database.h"
#include "packages/level_config_file.h"
#include "session/cleared_progress.h"
#include "session/documents.h"
#include "session/telling.h"
#include "words/common.h"
#include "words/intake.h"

namespace kestrova
{

namespace
{

/// Chooses the documentation that the file names. Only what is there to be read is taken: the
/// desktop opens it.
void ChooseMoreInfo(LevelDraft& draft)
{
    const std::string wanted{Trim(draft.config->moreInfo)};
    for (const Path& file : draft.files)
        if (!wanted.empty() && IsDocument(file) && EqualNames(file.filename().native(), wanted))
            draft.moreInfo = file.filename().native();
}

bool HasConfigFile(const LevelDraft& draft)
{
    // The reading tells what is wrong with one that cannot be looked at.
    return IsFile(LevelConfigPath(draft.workFolder)).ValueOr(true);
}

void TakeConfigTexts(LevelDraft& draft, const LevelConfig& config)
{
    draft.name = Trim(config.name);
    draft.note = Trim(config.note);
    draft.record.authorName = Trim(config.author);
    draft.record.authorEmails = Trim(config.authorEmails);
    draft.record.authorSites = Trim(config.authorSites);
    draft.record.authorNote = Trim(config.authorNote);
    draft.record.moreInfoFile = Trim(config.moreInfo);
}

} // namespace

bool LaterConfigCame(const Intake& intake)
{
    return intake.draft.configApplied && HasConfigFile(intake.draft);
}

StepAnswer DropLaterConfig(Intake& intake)
{
    // One that stays is met again by the next refresh.
    (void)DeleteFile(LevelConfigPath(intake.draft.workFolder));
    return AnswerTo(intake.session.host, RefreshFiles(intake));
}

bool LacksConfig(const Intake& intake)
{
    const LevelDraft& draft = intake.draft;
    return draft.looksOnline && !draft.configApplied && !draft.configRead && !HasConfigFile(draft);
}

StepAnswer SearchOnlineConfig(Intake& intake)
{
    Session& session = intake.session;
    if (FindOnlineConfig(session.host, session.machine, session.Folders(), ToolsOf(session),
                         intake.draft.workFolder,
                         intake.draft.fetches ? MayFetchConfig::Granted : MayFetchConfig::Asked)) {
        intake.draft.onlineConfig = true;
        return AnswerTo(session.host, RefreshFiles(intake));
    }
    return StepAnswer::GoesOn;
}

bool ConfigCame(const Intake& intake)
{
    return !intake.draft.configApplied && HasConfigFile(intake.draft);
}

StepAnswer ReadConfig(Intake& intake)
{
    const Path file = LevelConfigPath(intake.draft.workFolder);
    auto config = ReadLevelConfig(file);
    if (!DoneOrTold(intake.session.host, StatusOf(config)))
        return StepAnswer::Refused;
    TakeConfigTexts(intake.draft, *config);
    intake.draft.config = std::move(*config);
    intake.draft.configRead = true;
    if (const auto status = DeleteFile(file); !status)
        TellFailure(intake.session.host, GetMsg(Msg::ErrorRemovingFile) + TextOf(file),
                    status.Error());
    const StepAnswer listed = AnswerTo(intake.session.host, RefreshFiles(intake));
    ChooseMoreInfo(intake.draft);
    return listed;
}

bool IsConfigRead(const Intake& intake)
{
    return intake.draft.config.has_value();
}

bool NamesProgram(const Intake& intake)
{
    return intake.draft.config && !Trim(intake.draft.config->exeFormat).empty();
}

StepAnswer RunExeFormatFromConfig(Intake& intake)
{
    return RunExeInstall(intake, std::string{Trim(intake.draft.config->exeFormat)});
}

StepAnswer EndConfig(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    if (const StepAnswer listed = AnswerTo(intake.session.host, RefreshFiles(intake));
        listed != StepAnswer::GoesOn)
        return listed;
    ChooseMoreInfo(draft);
    draft.listedFiles = draft.config->files;
    draft.configApplied = true;
    ClearProgress(intake.progress);
    return StepAnswer::GoesOn;
}

bool CompilesQuietly(const Intake& intake)
{
    return IsConfigRead(intake) && intake.draft.compile != Compile::Never;
}

StepAnswer CompileQuietly(Intake& intake)
{
    if (CheckLevelFileList(intake, Checking::Silent))
        (void)CompileLevel(intake); // it has told; the level waits for what the person does next
    return StepAnswer::GoesOn;
}

} // namespace kestrova
