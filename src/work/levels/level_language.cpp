#include "levels/level_language.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/changes.h"
#include "history/standing.h"
#include "history/watched_files.h"
#include "levels/file_names.h"
#include "session/operation.h"
#include "session/telling.h"
#include "storage/stored_hashes.h"
#include "swap/folder_guard.h"
#include "swap/installed_language.h"
#include "swap/level_placements.h"
#include "swap/mend_after_restart.h"
#include "words/history.h"
#include "words/levels.h"
#include "words/session.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsLanguageFile(const Path& file)
{
    return !EqualNames(file.filename().native(), OnDisk::ScriptDat);
}

Result<bool> HasEnglish(const Folders& folders)
{
    return IsFile(folders.Backup() / OnDisk::EnglishDat);
}

bool Fail(LanguageFailure& failure, std::string words, std::string reason = {})
{
    failure = {std::move(words), std::move(reason)};
    return false;
}

bool NotRead(LanguageFailure& failure, const Failure& cause)
{
    return Fail(failure, GetMsg(Msg::FolderNotRead, {cause.subject}), cause.reason);
}

/// Renames in one step, never over a name that is taken.
std::error_code RenameToFreeName(const Path& from, const Path& to)
{
    if (!IsFree(to).ValueOr(false)) // what cannot be looked at is taken
        return std::make_error_code(std::errc::file_exists);
    return platform::Rename(from, to);
}

Path BakOf(const Path& file)
{
    Path bak = file;
    bak += OnDisk::EndingBak;
    return bak;
}

/// A change that was killed before the player's language went in: file and `.bak` are the same.
bool IsUnfinished(const Path& file)
{
    return SameContent(file, BakOf(file));
}

/// The level's own file gives its name to the player's language and stays as `.bak`. There is a
/// language file under that name at any moment: first a copy is put beside it, then it is replaced.
bool ReplaceLanguage(const Path& file, const Path& mine, LanguageFailure& failure)
{
    const CopyOptions safe{Verify::Content, true, true, {}};
    if (const auto status = CopyFileOver(file, BakOf(file), safe); !status)
        return Fail(failure, GetMsg(Msg::LanguageErrorRenamingAs, {TextOf(file), TextOf(file)}),
                    status.Error().reason);
    if (const auto status = CopyFileOver(mine, file, safe); !status) {
        if (IsUnfinished(file))
            (void)DeleteFile(BakOf(file)); // one that stays is known by its content
        return Fail(failure, GetMsg(Msg::LanguageErrorCopying, {TextOf(mine)}) + TextOf(file) + "'",
                    status.Error().reason);
    }
    return true;
}

bool SetMine(const Folders& folders, const Path& folder, LanguageFailure& failure,
             std::vector<Path>& changed)
{
    std::string languageFile;
    if (!CanSetMyLanguage(folders, folder, failure, languageFile))
        return false;
    const auto listed = LanguageFilesIn(folder);
    if (!listed)
        return NotRead(failure, listed.Error());
    const std::vector<Path>& files = *listed;
    if (files.empty()) // somebody took them away meanwhile
        return Fail(failure, GetMsg(Msg::LanguageAlreadyYours));
    for (const Path& file : files)
        if (!IsFree(BakOf(file)).ValueOr(false) && !IsUnfinished(file))
            return Fail(failure, GetMsg(Msg::LanguageAlreadyYours));
    const Path& last = files.back();
    if (!ReplaceLanguage(last, folders.Backup() / languageFile, failure))
        return false;
    changed.push_back(last);
    for (const Path& file : files)
        if (file != last)
            if (const auto failed = platform::Rename(file, BakOf(file)))
                return Fail(failure,
                            GetMsg(Msg::LanguageErrorRenamingAs, {TextOf(file), TextOf(file)}),
                            failed.message());
    return true;
}

bool RestoreOriginalLanguage(const Folders& folders, const Path& folder, LanguageFailure& failure,
                             std::vector<Path>& changed)
{
    const auto hasEnglish = HasEnglish(folders);
    if (!hasEnglish)
        return NotRead(failure, hasEnglish.Error());
    if (*hasEnglish)
        return Fail(failure, GetMsg(Msg::LanguageNothingToRestore));
    const auto listed = ListFiles(folder, OnDisk::PatDatBak);
    if (!listed)
        return NotRead(failure, listed.Error());
    const std::vector<Path>& kept = *listed;
    if (kept.empty())
        return Fail(failure, GetMsg(Msg::LanguageNoBackupOfDat));
    const auto original = [](const Path& bak) {
        return bak.parent_path() / StripExtension(bak.filename().native());
    };
    const auto replaced = std::find_if(kept.begin(), kept.end(),
                                       [&](const Path& bak) { return FileExists(original(bak)); });
    for (const Path& bak : kept) {
        const Path target = original(bak);
        // Of several only the first gives way: it takes the player's language in one step.
        const bool givesWay = replaced != kept.end() && bak == *replaced;
        const Path place = givesWay ? ResolvePath(target) : target;
        if (const auto renamed =
                givesWay ? platform::Rename(bak, place) : RenameToFreeName(bak, target))
            return Fail(failure,
                        GetMsg(Msg::LanguageErrorRenamingTo, {TextOf(bak)}) + TextOf(target) + "'",
                        renamed.message());
        changed.push_back(place);
    }
    (void)FlushFolder(folder); // until it is on the disk the other name is, and holds the same
    return true;
}

} // namespace

Result<std::vector<Path>> LanguageFilesIn(const Path& folder)
{
    auto files = ListFiles(folder, OnDisk::PatDat);
    if (files)
        std::erase_if(*files, [](const Path& file) { return !IsLanguageFile(file); });
    return files;
}

bool CanSetMyLanguage(const Folders& folders, const Path& folder, LanguageFailure& failure,
                      std::string& languageFile)
{
    failure = {};
    languageFile.clear();
    const auto hasEnglish = HasEnglish(folders);
    if (!hasEnglish)
        return NotRead(failure, hasEnglish.Error());
    if (*hasEnglish)
        return Fail(failure, GetMsg(Msg::LanguageEditorIsEnglish));
    const auto mine = LanguageFilesIn(folders.Backup());
    const auto kept = ListFiles(folder, OnDisk::PatDatBak);
    const auto files = LanguageFilesIn(folder);
    if (!mine || !kept || !files)
        return NotRead(failure, !mine ? mine.Error() : !kept ? kept.Error() : files.Error());
    if (mine->empty())
        return Fail(failure, GetMsg(Msg::LanguageNotInBackup));
    languageFile = mine->front().filename().native();
    const auto hasMine = IsFile(folder / languageFile);
    if (!hasMine)
        return NotRead(failure, hasMine.Error());
    if (*hasMine)
        return Fail(failure, GetMsg(Msg::LanguageAlreadyYours));
    for (const Path& bak : *kept)
        if (!IsUnfinished(folder / StripExtension(bak.filename().native())))
            return Fail(failure, GetMsg(Msg::LanguageAlreadySet));
    if (files->empty())
        return Fail(failure, GetMsg(Msg::LanguageAlreadyYours));
    return true;
}

bool ChangeLanguage(const SwapParts& parts, const Path& folder, LanguageChange change,
                    bool installed, LanguageFailure& failure)
{
    failure = {};
    if (installed && !MayChangeTrle(parts, parts.folders)) {
        failure.declined = true;
        return false;
    }
    std::vector<Path> changed;
    const bool done = change == LanguageChange::Mine
                          ? SetMine(parts.folders, folder, failure, changed)
                          : RestoreOriginalLanguage(parts.folders, folder, failure, changed);
    if (done && installed)
        for (const Path& file : changed)
            if (const auto status =
                    PutInstalledLanguage(parts.machine, parts.folders, parts.archive, file);
                !status)
                parts.host.Tell(Tone::Warning,
                                GetMsg(Msg::LanguageNotInstalled, {TextOf(file.filename())}),
                                status.Error().reason);
    return done;
}

bool WarnIfEnglish(Host& host, const Folders& folders)
{
    if (!HasEnglish(folders).ValueOr(false)) // each level tells what cannot be read
        return false;
    host.Tell(Tone::Warning, GetMsg(Msg::LanguageWarnEnglish, {lineBreak}));
    return true;
}

namespace
{

/// Changes the language; what has changed, were it only a part of it, can be undone.
bool ChangeWithWayBack(const SwapParts& parts, LevelCode code, const Path& folder,
                       LanguageChange language, bool installed, LanguageFailure& failure)
{
    const Folders& folders = parts.folders;
    if (parts.settings.undoCount == 0 || ChangeWaits(folders))
        return ChangeLanguage(parts, folder, language, installed, failure);
    Change change = NewChange(parts,
                              language == LanguageChange::Mine ? ChangeKind::LanguageChanged
                                                               : ChangeKind::LanguageRestored,
                              code);
    AreLevelsFiles(folders, change);
    const std::string patterns = std::string{OnDisk::PatDat}.append("|").append(OnDisk::PatDatBak);
    WatchedFiles files{ResolvePath(folder), patterns, change.kept};
    const bool noted = NoteChange(folders, change) && files.Keep();
    const bool done = ChangeLanguage(parts, folder, language, installed, failure);
    auto changed = files.Changed();
    if (!noted || !changed || (changed->before.empty() && changed->after.empty())) {
        DropChange(folders, change);
        return done;
    }
    change.folders = {std::move(changed).Value()};
    if (!NoteChange(folders, change) || !EndChange(folders, parts.settings, change))
        DropChange(folders, change); // there is no way back then
    return done;
}

bool ChangeWithout(const SwapParts& parts, LevelCode /*code*/, const Path& folder,
                   LanguageChange language, bool installed, LanguageFailure& failure)
{
    return ChangeLanguage(parts, folder, language, installed, failure);
}

} // namespace

bool ChangeLanguageOfLevel(const SwapParts& parts, LevelCode code, LanguageChange change,
                           bool verbose)
{
    const Operation running{parts};
    const auto refuse = [&](const std::string& words) {
        if (verbose)
            parts.host.Tell(Tone::Error, words);
        return false;
    };
    if (code == originalCode)
        return refuse(GetMsg(Msg::LanguageNotForOriginal));
    if (FindLevel(parts.archive, code) < 0)
        return refuse(GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
    const auto home = LevelFolderOf(parts.folders, parts.archive, code);
    if (!home)
        return DoneOrTold(parts.host, home.Error());
    if (!KnowsStandingLevel(parts.folders, parts.archive))
        return refuse(GetMsg(Msg::MarkerUnreadable, {TextOf(parts.folders.Marker())}));
    const bool installed = code == CurrentLevelCode(parts.folders, parts.archive);
    if (installed) {
        if (!MayChangeTrle(parts, parts.folders))
            return false;
        // The record of what stands in the folder is about to be renewed.
        MendAfterRestart(parts, code);
    }
    const StoredWatch watch{*home};
    LanguageFailure failure;
    // Of all levels at once the other command leads back.
    const auto work = verbose ? ChangeWithWayBack : ChangeWithout;
    if (!work(parts, code, InFolder(*home, OnDisk::DirFiles), change, installed, failure)) {
        if (verbose)
            parts.host.Tell(Tone::Error, GetMsg(Msg::LanguageError) + failure.words,
                            failure.reason);
        return false;
    }
    if (verbose)
        parts.host.Tell(
            Tone::Plain,
            GetMsg(change == LanguageChange::Mine ? Msg::LanguageSet : Msg::LanguageRestored));
    return true;
}

bool ChangeLanguageOfSelected(Session& session, LanguageChange change)
{
    const auto code = session.list.Selected();
    if (!code) {
        session.host.Tell(Tone::Error, GetMsg(change == LanguageChange::Mine
                                                  ? Msg::NoLevelSelected
                                                  : Msg::LanguageNoneSelectedRestore));
        return false;
    }
    const std::ptrdiff_t index = FindLevel(session.archive, *code);
    if (index >= 0 &&
        !DoneOrTold(session.host,
                    GuardLevelOnCd(session.archive.levels[static_cast<std::size_t>(index)])))
        return false;
    return ChangeLanguageOfLevel(session, *code, change, true);
}

bool ChangeLanguageOfAll(Session& session, LanguageChange change)
{
    const Operation running{session};
    if (WarnIfEnglish(session.host, session.Folders()) ||
        (CurrentLevelCode(session.Folders(), session.archive) != originalCode &&
         !MayChangeTrle(session, session.Folders())))
        return false;
    const std::size_t count = session.archive.levels.size();
    std::size_t done = 0;
    {
        session.list.ShowActivity(GetMsg(Msg::LanguageConverting));
        const auto progress =
            session.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::LanguageConverting));
        for (std::size_t i = 0; i < count; ++i) {
            if (ChangeLanguageOfLevel(session, session.archive.levels[i].levelCode, change, false))
                ++done;
            progress->SetBar(i + 1, count);
            progress->Step();
        }
    }
    session.list.Refresh();
    session.host.Tell(Tone::Plain,
                      change == LanguageChange::Mine
                          ? GetMsg(Msg::LanguageAllSet,
                                   {std::to_string(done), lineBreak, std::to_string(count - done)})
                          : GetMsg(Msg::LanguageAllRestored, {std::to_string(done)}));
    return true;
}

} // namespace kestrova
