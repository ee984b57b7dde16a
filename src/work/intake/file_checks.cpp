#include "intake/file_checks.h"

#include "archive/equal_levels.h"
#include "conversion/level_audio.h"
#include "conversion/sound_converter.h"
#include "intake/draft_files.h"
#include "intake/file_names.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/intake.h"

#include <algorithm>

namespace kestrova
{

StepAnswer DecodeSounds(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    // What the archive stored itself stays as it is: every further coding would cost quality.
    std::vector<Path> fresh = draft.files;
    std::erase_if(fresh, [&](const Path& file) { return draft.opened.IsUnchanged(file); });
    if (!DoneOrTold(intake.session.host,
                    DecodeLevelMp3(intake.session.host, SoundConverterOf(intake.session),
                                   intake.session.archive, draft.workFolder, fresh, false, false)))
        return StepAnswer::Refused;
    return AnswerTo(intake.session.host, RefreshFiles(intake));
}

bool NeedsLevelFiles(const Intake& intake)
{
    return !intake.draft.OnCd() && intake.draft.record.levelCode != originalCode;
}

StepAnswer CheckFiles(Intake& intake)
{
    const std::vector<std::string> patterns = Split(OnDisk::Tr4Patterns, '|');
    const std::vector<Path>& files = intake.draft.files;
    const bool hasLevel = std::any_of(files.begin(), files.end(), [&](const Path& file) {
        return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
            return MatchesPattern(file.filename().native(), pattern);
        });
    });
    if (hasLevel)
        return StepAnswer::GoesOn;
    intake.session.host.Tell(Tone::Error, GetMsg(Msg::MissingTr4));
    return StepAnswer::Refused;
}

bool AsksForEqual(const Intake& intake)
{
    return intake.queue != nullptr || intake.session.preferences.checkEqualLevels;
}

namespace
{

/// Nobody is asked: a level of which the archive has every one of its files is given up, and one
/// that shares some of them with another comes in.
StepAnswer LeaveOutTwin(Intake& intake)
{
    auto files = ScanTr4Files(intake.draft.workFolder);
    if (!files) {
        TellFolderNotRead(intake.session.host, files.Error());
        return StepAnswer::Refused;
    }
    intake.queue->files = std::move(*files);
    intake.queue->twin = intake.queue->equal.FindWhole(intake.queue->files);
    return intake.queue->twin ? StepAnswer::GivenUp : StepAnswer::GoesOn;
}

} // namespace

StepAnswer AskEqual(Intake& intake)
{
    if (intake.queue != nullptr)
        return LeaveOutTwin(intake);
    Session& session = intake.session;
    intake.progress.SetLabel(GetMsg(Msg::VerifyingEqual));
    const auto equal = FindEqualTr4(session.Folders(), session.archive, intake.draft.workFolder,
                                    session.archive.levels.size(), &intake.progress);
    ClearProgress(intake.progress);
    if (!equal) {
        TellFolderNotRead(session.host, equal.Error());
        return StepAnswer::Refused;
    }
    if (!*equal)
        return StepAnswer::GoesOn;
    const std::string other{Trim(session.archive.levels[(*equal)->level].levelName)};
    const bool goesOn = session.host.AskYesNo(
        GetMsg(Msg::AskAddEqual,
               {'"' + (*equal)->name + '"' + std::string{lineBreak},
                '"' + other + '"' + std::string{lineBreak} + std::string{lineBreak}}),
        Consent::YesKeeps);
    return goesOn ? StepAnswer::GoesOn : StepAnswer::GivenUp;
}

} // namespace kestrova
