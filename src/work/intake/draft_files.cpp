#include "intake/draft_files.h"

#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "history/standing.h"
#include "intake/inner_packages.h"
#include "levels/level_language.h"
#include "session/documents.h"
#include "session/operation.h"
#include "session/telling.h"
#include "storage/unstore.h"
#include "words/common.h"
#include "words/file_list.h"
#include "words/intake.h"
#include "words/levels.h"

#include <algorithm>

namespace kestrova
{

bool ReadDraft(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    if (const auto sized = draft.inner.Restart(draft.workFolder); !sized)
        return TellFolderNotRead(intake.session.host, sized.Error());
    const auto files = ListFiles(draft.workFolder, OnDisk::PatAll);
    if (!files)
        return TellFolderNotRead(intake.session.host, files.Error());
    for (const Path& file : *files)
        draft.opened.Note(file);
    if (!ShowFiles(intake))
        return false;
    draft.name = Trim(draft.record.levelName);
    draft.note = Trim(draft.record.levelNote);
    const auto document =
        FindDocument(draft.workFolder, FileNameOf(Trim(draft.record.moreInfoFile)));
    if (!document)
        return TellFolderNotRead(intake.session.host, document.Error());
    if (*document)
        draft.moreInfo = (*document)->filename().native();
    intake.progress.SetLabel(draft.SizeText());
    return true;
}

Status RefreshFiles(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    Status unpacked = draft.OnCd() ? Status{} : UnpackInside(intake);
    draft.report.unpacking.reset();
    auto listed = ListFiles(draft.workFolder, OnDisk::PatAll);
    if (!listed)
        return FolderNotRead(listed.Error());
    draft.files = std::move(*listed);
    draft.filesBytes = 0;
    for (const Path& file : draft.files)
        draft.filesBytes += static_cast<double>(FileSize(file));
    if (std::none_of(draft.files.begin(), draft.files.end(), [&](const Path& file) {
            return EqualNames(file.filename().native(), draft.moreInfo);
        }))
        draft.moreInfo.clear();
    LanguageFailure failure;
    std::string languageFile;
    draft.canSetLanguage =
        !draft.OnCd() && !draft.files.empty() && draft.record.levelCode != originalCode &&
        CanSetMyLanguage(intake.session.Folders(), draft.workFolder, failure, languageFile);
    return unpacked;
}

bool ShowFiles(Intake& intake)
{
    const Status refreshed = RefreshFiles(intake);
    return IsStop(refreshed) || DoneOrTold(intake.session.host, refreshed);
}

bool RemoveFile(Intake& intake, const Path& file)
{
    Session& session = intake.session;
    if (!DoneOrTold(session.host, GuardLevelOnCd(intake.draft.saved)))
        return false;
    if (file.empty()) {
        session.host.Tell(Tone::Error, GetMsg(Msg::NoFileSelected));
        return false;
    }
    if (!session.host.AskYesNo(GetMsg(Msg::AskRemoveFile) + TextOf(file.filename())) ||
        !BeginChange(intake))
        return false;
    const auto status = DeleteFile(file);
    if (!status)
        TellFailure(session.host, GetMsg(Msg::ErrorRemovingFile) + TextOf(file), status.Error());
    ShowFiles(intake);
    return static_cast<bool>(status);
}

void OpenFile(Intake& intake, const Path& file)
{
    Path shown = file;
    if (EndsWithName(file.filename().native(), OnDisk::ZlExtension)) {
        const auto expanded = DecompressSingleFile(intake.session.host, intake.session.machine,
                                                   intake.session.Folders(), file, true);
        if (!DoneOrTold(intake.session.host, StatusOf(expanded)))
            return;
        shown = *expanded;
    }
    if (const auto status = OpenOfLevel(intake.session.host, intake.session.machine, shown);
        !status && status.Error().code != ErrorCode::Stopped)
        TellFailure(intake.session.host, GetMsg(Msg::FileNotOpened, {TextOf(file.filename())}),
                    status.Error());
}

bool SetMyLanguage(Intake& intake)
{
    Session& session = intake.session;
    LevelDraft& draft = intake.draft;
    const Operation running{session};
    if (!DoneOrTold(session.host, GuardLevelOnCd(draft.saved)) || !BeginChange(intake))
        return false;
    LanguageFailure failure;
    // Files that become the level's only when the person accepts leave the game's folder alone.
    const bool installed =
        draft.before && !draft.expandedCopy &&
        CurrentLevelCode(session.Folders(), session.archive) == draft.record.levelCode;
    const bool changed =
        ChangeLanguage(session, draft.workFolder, LanguageChange::Mine, installed, failure);
    // The game's folder has the language already: from here on it belongs to the level.
    if (changed && installed)
        draft.before = std::make_unique<FilesBefore>(draft.filesFolder, draft.saved);
    if (changed)
        session.host.Tell(Tone::Plain, GetMsg(Msg::LanguageSet));
    else if (!failure.declined)
        session.host.Tell(Tone::Error, GetMsg(Msg::LanguageError) + failure.words, failure.reason);
    ShowFiles(intake);
    return changed;
}

} // namespace kestrova
