#include "intake/text_steps.h"

#include "intake/file_names.h"
#include "session/documents.h"
#include "words/intake.h"

namespace kestrova
{

namespace
{

/// The file that looks like the level's documentation; empty when none does.
std::string UsualMoreInfo(const std::vector<Path>& files)
{
    // A word earlier in the list beats a file higher in the folder.
    for (const std::string& word : Split(OnDisk::MoreInfoWords, '|'))
        for (const Path& file : files)
            if (FindFolded(file.filename().native(), word) != std::string::npos && IsDocument(file))
                return file.filename().native();
    return {};
}

} // namespace

bool LacksTexts(const Intake& intake)
{
    return !intake.draft.configApplied;
}

StepAnswer SuggestTexts(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    if (Trim(draft.name).empty() && !draft.lastSource.empty())
        draft.name = LevelNameFrom(draft.lastSource);
    if (draft.moreInfo.empty())
        draft.moreInfo = UsualMoreInfo(draft.files);
    return StepAnswer::GoesOn;
}

StepAnswer TakeName(Intake& intake)
{
    const std::string trimmed{Trim(OnOneLine(intake.draft.name))};
    if (trimmed.empty()) {
        intake.session.host.Tell(Tone::Error, GetMsg(Msg::LevelNeedsName));
        return StepAnswer::Refused;
    }
    intake.draft.record.levelName = trimmed;
    return StepAnswer::GoesOn;
}

StepAnswer TakeNote(Intake& intake)
{
    intake.draft.record.levelNote = intake.draft.note;
    return StepAnswer::GoesOn;
}

StepAnswer TakeMoreInfo(Intake& intake)
{
    intake.draft.record.moreInfoFile = intake.draft.moreInfo;
    return StepAnswer::GoesOn;
}

} // namespace kestrova
