#include "intake/edit_level.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "conversion/sound_converter.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "history/changed_record.h"
#include "history/changes.h"
#include "intake/draft_files.h"
#include "intake/intake_steps.h"
#include "levels/new_level.h"
#include "levels/remove_level.h"
#include "session/telling.h"
#include "storage/stored_hashes.h"
#include "storage/unstore.h"
#include "words/intake.h"
#include "words/swap.h"

namespace kestrova
{

namespace
{

/// The record of a level whose folder can be worked on; null, with a message, when it cannot.
const LevelRecord* FindEditable(Host& host, const Folders& folders, const Archive& archive,
                                LevelCode code)
{
    if (!HasArchive(host, archive))
        return nullptr;
    const std::ptrdiff_t index = FindLevel(archive, code);
    if (index < 0) {
        host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return nullptr;
    }
    if (code != originalCode && !DoneOrTold(host, ArchiveFolderIsThere(archive)))
        return nullptr;
    const LevelRecord& current = archive.levels[static_cast<std::size_t>(index)];
    const Path home = LevelHomeOf(folders, code);
    const auto isThere = IsFolder(home);
    if (!isThere) {
        TellFolderNotRead(host, isThere.Error());
        return nullptr;
    }
    if (!*isThere && current.cdNumber == 0) {
        host.Tell(Tone::Error, GetMsg(Msg::LevelFolderGone, {TextOf(home)}));
        return nullptr;
    }
    return &current;
}

Path FilesToEdit(Host& host, const Folders& folders, const Archive& archive, LevelCode code)
{
    const auto folder = LevelFolderOf(folders, archive, code);
    if (!folder)
        host.Tell(Tone::Warning, GetMsg(Msg::CdMissingForFiles), folder.Error().reason);
    return ResolvePath(InFolder(folder ? *folder : LevelHomeOf(folders, code), OnDisk::DirFiles));
}

/// The change is made; it can be undone from now on.
void NoteEdit(Intake& intake)
{
    Session& session = intake.session;
    const LevelDraft& draft = intake.draft;
    const LevelCode code = draft.record.levelCode;
    const Folders folders = session.Folders();
    if (session.settings.undoCount == 0)
        return;
    Change change = NewChange(session, ChangeKind::LevelEdited, code);
    change.levelName = Trim(draft.saved.levelName);
    AreLevelsFiles(folders, change);
    if (draft.before) {
        auto changed = draft.before->TakeChanges(change.kept);
        if (!changed)
            return DropChange(folders, change); // there is no way back then
        change.folders = std::move(changed).Value();
    }
    if (!IsSameRecord(draft.saved, draft.record))
        change.record = ChangedRecord{static_cast<std::size_t>(FindLevel(session.archive, code)),
                                      draft.saved, draft.record};
    if (change.record || !change.folders.empty())
        NoteDone(folders, session.settings, change);
}

} // namespace

bool EditLevel(Session& session, ProgressScope& progress, LevelCode code, const ShowLevel& show)
{
    const LevelRecord* current =
        FindEditable(session.host, session.Folders(), session.archive, code);
    if (current == nullptr)
        return false;
    const StoredWatch watch{LevelHomeOf(session.Folders(), code), [&] { return progress.Step(); }};
    LevelRecord record = *current;
    const std::int32_t extrasBefore = record.extrasSize;
    Intake level{session, record, EditSteps(), progress};
    if (!OpenEdit(level) || !show(level)) {
        PutBack(level);
        return false;
    }
    // A picture may have been taken meanwhile.
    if (record.extrasSize == extrasBefore)
        record.extrasSize = current->extrasSize;
    if (ReplaceLevel(session, record)) {
        NoteEdit(level);
        return true;
    }
    PutBack(level);
    return false;
}

bool OpenEdit(Intake& intake)
{
    Session& session = intake.session;
    LevelDraft& draft = intake.draft;
    draft.inArchive = true;
    draft.replaceByFile = Replace::Ask; // the old file may be the player's own work
    draft.filesFolder =
        FilesToEdit(session.host, session.Folders(), session.archive, draft.record.levelCode);
    draft.workFolder = draft.filesFolder;
    if (!draft.OnCd())
        draft.before = std::make_unique<FilesBefore>(draft.filesFolder, draft.saved);
    if (!session.preferences.noDecompressInProperties) {
        const auto expanded = UnstoreLevelFiles(
            session.host, session.machine, SoundConverterOf(session), draft.filesFolder, false);
        if (!DoneOrTold(session.host, StatusOf(expanded))) {
            session.host.Tell(Tone::Error, GetMsg(Msg::ErrorDecompressingFiles));
            return false;
        }
        if (!expanded->empty()) {
            draft.workFolder = *expanded;
            draft.expandedCopy.emplace(*expanded, WorkFolder::Make::IsMade);
        }
    }
    return ReadDraft(intake);
}

void PutBack(Intake& intake)
{
    std::unique_ptr<FilesBefore>& before = intake.draft.before;
    if (!before)
        return;
    if (const auto status = before->PutBack(); !status)
        TellFailure(intake.session.host, GetMsg(Msg::EditNotPutBack), status.Error());
    before.reset();
}

} // namespace kestrova
