#include "intake/intake.h"

#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/intake.h"

namespace kestrova
{

namespace
{

void DropExpandedCopy(Intake& intake)
{
    if (!intake.draft.expandedCopy)
        return;
    intake.progress.SetLabel(GetMsg(Msg::RemovingTempDirectory));
    intake.draft.expandedCopy.reset();
    ClearProgress(intake.progress);
}

} // namespace

Intake::Intake(Session& owner, LevelRecord& levelRecord, std::span<const IntakeStep> rows,
               ProgressScope& scope)
    : session(owner), progress(scope), steps(rows), draft(levelRecord)
{
}

StepAnswer AnswerTo(Host& host, const Status& done)
{
    if (IsStop(done))
        return StepAnswer::Stopped;
    return DoneOrTold(host, done) ? StepAnswer::GoesOn : StepAnswer::Refused;
}

StepAnswer Walk(Intake& intake, StepTime time)
{
    intake.endedAt = {};
    for (const IntakeStep& step : intake.steps) {
        if (step.time != time || !step.applies(intake))
            continue;
        const StepAnswer answer = step.run(intake);
        if (answer == StepAnswer::GoesOn)
            continue;
        intake.endedAt = step.name;
        if (answer == StepAnswer::GivenUp)
            GiveUp(intake);
        return answer;
    }
    return StepAnswer::GoesOn;
}

bool BeginChange(Intake& intake)
{
    if (!intake.draft.before)
        return true;
    const auto kept = intake.draft.before->Keep([&] { return (void)intake.progress.Step(), true; });
    if (!kept)
        TellFailure(intake.session.host, GetMsg(Msg::EditNotBegun), kept.Error());
    return static_cast<bool>(kept);
}

bool Accept(Intake& intake)
{
    if (intake.draft.givenUp || Walk(intake, StepTime::Accept) != StepAnswer::GoesOn)
        return false;
    DropExpandedCopy(intake);
    ClearProgress(intake.progress);
    return true;
}

void GiveUp(Intake& intake)
{
    intake.draft.record = intake.draft.saved;
    DropExpandedCopy(intake);
    intake.draft.givenUp = true;
}

} // namespace kestrova
