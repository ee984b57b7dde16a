#include "intake/storing.h"

#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "conversion/sound_converter.h"
#include "core/file_kinds.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "intake/file_names.h"
#include "intake/unpacked_ahead.h"
#include "packages/level_config_file.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "storage/storage.h"
#include "words/intake.h"
#include "words/storage.h"

#include <algorithm>

namespace kestrova
{

namespace
{

StepAnswer AnswerFor(bool done)
{
    return done ? StepAnswer::GoesOn : StepAnswer::Refused;
}

StepAnswer StorePlainCopy(Intake& intake)
{
    if (intake.draft.expandedCopy)
        intake.progress.SetLabel(GetMsg(Msg::FileCopyLabel));
    return AnswerFor(DoneOrTold(
        intake.session.host,
        StoreLevelFiles(intake.session.host, intake.session.Folders(), intake.session.archive,
                        SoundConverterOf(intake.session), intake.draft.workFolder,
                        intake.draft.record.levelCode, &intake.progress, StoreAs::Plain)));
}

/// False, with a message, when the level's index could not be kept.
bool KeepIndex(Intake& intake)
{
    const LevelDraft& draft = intake.draft;
    if (!draft.before)
        return true;
    const auto kept = draft.before->KeepTarget(InFolder(
        LevelHomeOf(intake.session.Folders(), draft.record.levelCode), OnDisk::FragTr4Inf));
    if (!kept)
        TellFailure(intake.session.host, GetMsg(Msg::EditNotBegun), kept.Error());
    return static_cast<bool>(kept);
}

StepAnswer StoreFiles(Intake& intake)
{
    const LevelDraft& draft = intake.draft;
    if (draft.record.levelCode == originalCode && !draft.expandedCopy)
        return StepAnswer::GoesOn; // it stands as it is
    // What the level holds is known by its index as well.
    if (!KeepIndex(intake))
        return StepAnswer::Refused;
    const ArchiveHeader& header = intake.session.archive.header;
    if (!header.compressLevels && !header.wavInMp3)
        return StorePlainCopy(intake);
    intake.progress.SetLabel(GetMsg(Msg::AddingLevel));
    Host& host = intake.session.host;
    const ReadyStreams* const ready = draft.ahead == nullptr ? nullptr : &draft.ahead->Streams();
    const auto stored = StoreLevelFiles(
        intake.session.host, intake.session.Folders(), intake.session.archive,
        SoundConverterOf(intake.session), draft.workFolder, draft.record.levelCode,
        &intake.progress, StoreAs::ArchiveSays,
        [&](const Failure& failure) {
            TellFailure(host, failure);
            return host.AskYesNo(GetMsg(Msg::ContinueFileCopy), Consent::Explicit);
        },
        ready);
    if (stored)
        return StepAnswer::GoesOn;
    if (stored.Error().code == ErrorCode::Stopped) {
        // Nothing was given up, and the dialog is as before.
        ClearProgress(intake.progress);
        return StepAnswer::Stopped;
    }
    if (stored.Error().code != ErrorCode::NotDone) // the sounds were told with their question
        TellFailure(host, stored.Error());
    // Without a temporary folder the files stand in their place already, some of them compressed.
    return draft.expandedCopy ? StorePlainCopy(intake) : StepAnswer::GoesOn;
}

void CountSizes(Intake& intake)
{
    LevelRecord& record = intake.draft.record;
    // A size that cannot be told stays what it was until the sizes are computed anew.
    record.filesSize = SizeField(FolderSize(intake.draft.filesFolder).ValueOr(record.filesSize));
    record.extrasSize =
        SizeField(ExtrasSizeOf(LevelHomeOf(intake.session.Folders(), record.levelCode))
                      .ValueOr(record.extrasSize));
}

} // namespace

StepAnswer KeepBefore(Intake& intake)
{
    const auto now = ListFiles(intake.draft.workFolder, OnDisk::PatAll);
    if (!now)
        return AnswerFor(TellFolderNotRead(intake.session.host, now.Error()));
    const bool savegames = std::any_of(now->begin(), now->end(), [](const Path& file) {
        return MatchesPattern(file.filename().native(), OnDisk::SavegamePattern);
    });
    const bool changes = savegames || !intake.draft.opened.AreTheSame(*now);
    return AnswerFor(!changes || BeginChange(intake));
}

StepAnswer DropTools(Intake& intake)
{
    for (const std::string& tool : Split(OnDisk::IntakeTools, '|'))
        (void)DeleteFile(intake.draft.workFolder / tool); // a program too many harms no level
    return StepAnswer::GoesOn;
}

StepAnswer DropConfig(Intake& intake)
{
    (void)DeleteFile(LevelConfigPath(intake.draft.workFolder)); // one too many harms no level
    return StepAnswer::GoesOn;
}

StepAnswer StoreDraft(Intake& intake)
{
    const auto now = ListFiles(intake.draft.workFolder, OnDisk::PatAll);
    if (!now)
        return AnswerFor(TellFolderNotRead(intake.session.host, now.Error()));
    if (intake.draft.opened.AreTheSame(*now))
        return StepAnswer::GoesOn;
    const StepAnswer stored = StoreFiles(intake);
    if (stored == StepAnswer::GoesOn)
        CountSizes(intake);
    return stored;
}

} // namespace kestrova
