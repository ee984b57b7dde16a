#include "intake/config_copies.h"

#include "core/name_list.h"
#include "formats/trle_folder.h"
#include "intake/draft_files.h"
#include "intake/stem_copies.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/level_needs.h"

namespace kestrova
{

namespace
{

std::string LabelOf(Message words, const std::string& text)
{
    return GetMsg(words) + OnOneLine(text);
}

/// What a step's copies are: the label says which wish is under way.
using LabelOfWish = std::function<std::string(const StemCopy& wish)>;

Status CopyWishes(Intake& intake, const std::vector<StemCopy>& wishes, const NamedFiles* first,
                  const LabelOfWish& label)
{
    ProgressScope& progress = intake.progress;
    auto level = NamedFiles::Of(intake.draft.workFolder);
    if (!level)
        return level.Error();
    if (!wishes.empty())
        progress.SetLabel(label(wishes.front()));
    progress.AllowStop();
    const auto plan = PlanCopies(wishes, std::move(*level), first, [&] { return progress.Step(); });
    if (!plan)
        return plan.Error();
    if (!plan->refused.empty())
        intake.session.host.Tell(Tone::Warning,
                                 GetMsg(Msg::CopyNamesRefused, {ShownNames(plan->refused)}));
    std::size_t shown = wishes.size();
    return MakeCopies(intake.session.machine, *plan, intake.draft.workFolder, progress,
                      [&](std::size_t wish) {
                          if (std::exchange(shown, wish) != wish)
                              progress.SetLabel(label(wishes[wish]));
                      });
}

StepAnswer EndCopies(Intake& intake, const Status& made)
{
    ClearProgress(intake.progress);
    Host& host = intake.session.host;
    const StepAnswer answer = AnswerTo(host, Saying(GetMsg(Msg::CopiesNotMade), made));
    // What the copies are called counts for the rows that follow.
    const StepAnswer listed = AnswerTo(host, RefreshFiles(intake));
    return listed == StepAnswer::GoesOn ? answer : listed;
}

} // namespace

bool WantsDuplicates(const Intake& intake)
{
    return intake.draft.config && !Trim(intake.draft.config->duplicates).empty();
}

StepAnswer ApplyDuplicates(Intake& intake)
{
    return EndCopies(intake, CopyWishes(intake, DuplicatesOf(*intake.draft.config), nullptr,
                                        [](const StemCopy& wish) {
                                            return LabelOf(Msg::DuplicationSource, wish.pattern);
                                        }));
}

bool WantsTomWads(const Intake& intake)
{
    return intake.draft.config && !Trim(intake.draft.config->tomWads).empty();
}

StepAnswer ApplyTomWads(Intake& intake)
{
    const auto wads = NamedFiles::Of(InFolder(intake.session.Folders().trle, OnDisk::DirWads));
    if (!wads)
        return EndCopies(intake, wads.Error());
    return EndCopies(intake, CopyWishes(intake, TomWadsOf(*intake.draft.config), &*wads,
                                        [](const StemCopy& wish) {
                                            return LabelOf(Msg::LinkingWads, wish.stem);
                                        }));
}

} // namespace kestrova
