#pragma once

#include "archive/equal_levels.h"
#include "intake/intake_windows.h"
#include "intake/level_draft.h"
#include "session/session.h"

#include <span>

/// A level on its way into the archive, or through a change of it: the draft, and the rows of what
/// is done to it. Other headers have what a person does with it: `draft_sources.h` brings files
/// in, `draft_files.h` is about those that are there.
namespace kestrova
{

struct Intake;

/// What a step answers.
enum class StepAnswer {
    GoesOn,
    Refused, ///< the person was told why; all stays open
    Stopped, ///< by the person, so that nothing is told; all stays open
    GivenUp, ///< the person's answer to a question gives the level up
};

/// When a step has its turn.
enum class StepTime {
    Config, ///< the folder's files have changed: what the author's configuration file drives
    Change, ///< they have changed, whatever the level brought
    Source, ///< the change was that something came in
    Accept, ///< the person accepts the level
};

/// A row of what is done to a level.
struct IntakeStep {
    StepTime time;
    std::string_view name;
    bool (*applies)(const Intake& intake); ///< the row is passed over where it does not
    StepAnswer (*run)(Intake& intake);
};

/// What the levels of a queue have in common.
struct QueueShare {
    EqualTr4Index& equal; ///< of the archive's levels, those that the queue added with them
    std::vector<Tr4Entry> files{};     ///< of the level that is coming in
    std::optional<std::size_t> twin{}; ///< the level of the archive that has all of these
};

struct Intake {
    /// `levelRecord` is changed while this goes on, and is as it was after `GiveUp`.
    Intake(Session& owner, LevelRecord& levelRecord, std::span<const IntakeStep> rows,
           ProgressScope& scope);

    Session& session;
    ProgressScope& progress; ///< follows every long step; its Stop ends the step that runs
    std::span<const IntakeStep> steps; ///< in their binding order
    LevelDraft draft;
    IntakeWindows windows{};     ///< what the face that shows the level has for its steps
    QueueShare* queue = nullptr; ///< the queue that it comes in by, if any
    std::string_view endedAt; ///< the step that ended the last walk; empty: all of them were done
};

/// What a step answers by what became of its work; a failure is told.
StepAnswer AnswerTo(Host& host, const Status& done);

/// Takes the steps of that time in their order, until one does not go on; what that one answered.
StepAnswer Walk(Intake& intake, StepTime time);

/// To be called before the level's stored files change. False, with a message, when they could not
/// be kept for the case that the person gives the change up; nothing may change then.
bool BeginChange(Intake& intake);

/// Checks, distributes and stores everything. False leaves all open, with the reason told, unless
/// the draft says that the level was given up. The caller takes the record into the archive.
bool Accept(Intake& intake);
void GiveUp(Intake& intake);

} // namespace kestrova
