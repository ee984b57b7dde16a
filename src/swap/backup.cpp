#include "swap/backup.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "core/look.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "session/preferences_file.h"
#include "swap/backup_folders.h"
#include "swap/history.h"
#include "swap/marker.h"
#include "swap/owned_files.h"
#include "swap/recovery.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"
#include "swap/swap_run.h"
#include "swap/trle_tree.h"
#include "swap/vault.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace kestrova
{

namespace
{

constexpr double fullNeed = 251658240;   // bytes, the Level Editor's own distribution
constexpr double compactNeed = 94371840; // bytes

/// True when a marker alone speaks of the level that stands: neither a record of it nor a backup of
/// this folder is there, as after the program's own folder was lost.
bool IsUnknownLevel(const Session& session)
{
    const auto owner = ReadOwner(session);
    const auto other = BackupSeemsOfAnother(session);
    return owner && !*owner && other && (BackupIsAway(session) || *other);
}

bool MayForgetLevel(Session& session, LevelCode code, const BackupWishes& wishes)
{
    const std::string level = ZeroPadded(code, 4);
    const std::string folder = TextOf(session.TrleFolder());
    if (wishes.folderIsOriginal ||
        session.host.AskYesNo(GetMsg(Msg::AskForgetLevel, {level, folder, lineBreak}),
                              Consent::Explicit))
        return true;
    session.host.Tell(Tone::Error,
                      GetMsg(Msg::BackupLevelUnknown, {level, folder, folder, folder}));
    return false;
}

/// The savegames of a level that nothing is known of go to the history, then its marker goes. Told;
/// may be repeated.
bool ForgetLevel(Session& session, LevelCode code)
{
    const auto failed = [&](const Failure& failure) {
        TellFailure(session, GetMsg(Msg::CannotKeepState), failure);
        return false;
    };
    const LevelPlace level{code};
    auto files = ListFiles(session.TrleFolder(), RowText(Msg::PatAll));
    if (!files)
        return failed(files.Error());
    std::erase_if(*files,
                  [](const Path& file) { return !IsPlayersFile(file.filename().native()); });
    const auto live = HashesOf(*files);
    if (!live)
        return failed(live.Error());
    if (const auto status = KeepInHistory(session, level, *files, GetMsg(Msg::ReasonForgotten));
        !status)
        return failed(status.Error());
    std::vector<OwnedFile> left; // what a game wrote since: it is the original configuration's now
    if (const auto status = DropLiveState(session, level, *live, left); !status)
        return failed(status.Error());
    if (const auto status = DeleteFile(session.MarkerPath()); !status)
        return failed(status.Error());
    session.host.Tell(Tone::Warning,
                      GetMsg(Msg::LevelForgotten, {ZeroPadded(code, 4), std::to_string(code)}));
    return true;
}

/// The Level Editor's folder when the person says that it is original; empty otherwise.
Path ConfirmTrleOriginal(Session& session, const BackupWishes& wishes)
{
    const Path trle = session.TrleFolder();
    if (!TellUnlessKnown(session))
        return {};
    if (const LevelCode code = CurrentLevelCode(session); code != originalCode) {
        if (!IsUnknownLevel(session)) {
            session.host.Tell(Tone::Error, GetMsg(Msg::BackupWithLevel, {ZeroPadded(code, 4)}));
            return {};
        }
        return MayForgetLevel(session, code, wishes) && ForgetLevel(session, code) ? trle : Path{};
    }
    const std::string line{lineBreak};
    const bool original =
        wishes.folderIsOriginal ||
        session.host.AskYesNo(line + GetMsg(Msg::ConfirmOriginalNeed) + line +
                                  GetMsg(Msg::ConfirmOriginalAsk, {TextOf(trle)}) +
                                  GetMsg(Msg::ConfirmOriginalNote),
                              Consent::Explicit);
    if (original)
        return trle;
    session.host.Tell(Tone::Error, GetMsg(Msg::OriginalTips, {lineBreak}) + line +
                                       GetMsg(Msg::OriginalSetupAgain, {lineBreak, lineBreak}));
    return {};
}

/// What a backup of this very folder takes, in words: the figures of the question are those of the
/// Level Editor's own distribution. Nothing where the folder cannot be read just now.
std::string SizesInWords(const Path& trle)
{
    const auto full = FolderSize(trle);
    const auto data = FolderSize(InFolder(trle, RowText(Msg::DirData)));
    const auto graphics = FolderSize(InFolder(trle, RowText(Msg::DirGraphics)));
    if (!full || !data || !graphics)
        return {};
    double compact = *data + *graphics;
    for (const std::string& pattern : Split(RowText(Msg::CompactPatterns), '|')) {
        const auto files = ListFiles(trle, pattern);
        if (!files)
            return {};
        for (const Path& file : *files)
            compact += static_cast<double>(FileSize(file));
    }
    return GetMsg(Msg::BackupSizesHere, {FormatSize(*full), FormatSize(compact)});
}

bool AsksForFull(Session& session, const Path& trle)
{
    const std::string line{lineBreak};
    return session.host.AskYesNo(GetMsg(Msg::AskFullBackup, {line, line}) + line + line +
                                     SizesInWords(trle),
                                 Consent::YesKeeps);
}

bool HasSpace(Session& session, const Path& trle, double need)
{
    const auto free = session.machine.FreeSpace(session.programFolder);
    if (!free || static_cast<double>(*free) >= need)
        return true;
    session.host.Tell(Tone::Error,
                      GetMsg(Msg::DriveWithoutSpace, {TextOf(session.programFolder)}) +
                          FormatSize(need) + ")",
                      SizesInWords(trle));
    return false;
}

/// Files in the Level Editor's folder that levels left there (the sounds under a compact backup).
/// They are no originals; what they replaced was kept in the vault.
class Leftovers
{
public:
    explicit Leftovers(Session& session)
        : session_(session), trle_(ResolvePath(session.TrleFolder()))
    {
    }

    /// Fails while it cannot be told what they are.
    Status Find()
    {
        auto owner = ReadOwner(session_);
        if (!owner)
            return owner.Error();
        owner_ = owner->value_or(OwnerRecord{});
        for (const OwnedFile& file : owner_.added) {
            const auto relative = SafeRelative(file.name);
            if (!relative)
                continue;
            const Path place = ResolvePath(trle_ / *relative);
            const auto facts = LookAt(place);
            if (!facts)
                return facts.Error();
            if (IsAsListed(file, *facts) &&
                !SameContent(place, session_.BackupFolder() / *relative))
                files_.push_back({file, *relative, place});
        }
        for (std::size_t i = 0; i < files_.size(); ++i)
            byPlace_.emplace(FoldCase(files_[i].place.native()), i);
        return {};
    }

    /// The original that belongs in the place of `file`; `file` itself when no level left it.
    [[nodiscard]] Path OriginalOf(const Path& file) const
    {
        const auto left =
            byPlace_.empty() ? byPlace_.end() : byPlace_.find(FoldCase(ResolvePath(file).native()));
        if (left == byPlace_.end())
            return file;
        const Path vault =
            ResolvePath(InFolder(session_.programFolder, RowText(Msg::DirHistoryOriginals)) /
                        files_[left->second].relative);
        return IsFile(vault).ValueOr(true) ? vault : Path{};
    }

    /// Now that the backup has every original, they go and what they replaced comes back. What
    /// cannot go yet stays noted, and the next start tries again.
    void Settle()
    {
        if (files_.empty())
            return;
        std::set<std::string> settled;
        std::vector<std::string> names;
        for (const Left& left : files_) {
            names.push_back(Readable(left.listed.name));
            const auto original = IsFile(session_.BackupFolder() / left.relative);
            const auto facts = LookAt(left.place);
            auto status = original ? Status{} : original.Error();
            const Path going =
                original && *original ? PlaceOfOriginal(session_, left.relative) : left.relative;
            const bool asPut =
                facts && IsAsPut(left.listed, *facts) && ResolvePath(trle_ / going) == left.place;
            if (status && !asPut) // touched since, or a twin of it
                status = KeepOriginal(session_, going);
            if (status)
                status = *original ? RestoreOriginal(session_, left.relative)
                                   : DeleteSpelled(left.place);
            if (status)
                settled.insert(left.listed.name);
        }
        std::erase_if(owner_.added,
                      [&](const OwnedFile& file) { return settled.contains(file.name); });
        (void)WriteOwner(session_, owner_); // otherwise they are looked at once more
        session_.host.Tell(Tone::Plain, GetMsg(Msg::BackupLeftSounds, {Join(names, ", ")}));
    }

private:
    struct Left {
        OwnedFile listed;
        Path relative;
        Path place;
    };
    Session& session_;
    Path trle_;
    OwnerRecord owner_;
    std::vector<Left> files_;
    std::unordered_map<std::string, std::size_t> byPlace_; ///< of `files_`, by folded path
};

bool CopyFull(Session& session, const Path& trle, const Path& target, const Leftovers& leftovers)
{
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::FileCopyInProgress));
    if (!CopyThroughLinks(session, trle, target, *progress,
                          [&](const Path& file) { return leftovers.OriginalOf(file); }))
        return false;
    const Path audio = InFolder(target, RowText(Msg::DirAudio));
    const Path script = InFolder(target, RowText(Msg::DirScript));
    const auto waves = ListFiles(audio, RowText(Msg::PatWav));
    const auto scripts = ListFiles(script, RowText(Msg::PatAllFiles));
    if (!waves || !scripts)
        return TellFolderNotRead(session, waves ? scripts.Error() : waves.Error());
    if (!waves->empty() || !scripts->empty())
        return true;
    session.preferences.fullBackup = false;
    return false;
}

bool CopyCompact(Session& session, const Path& trle, const Path& target)
{
    const auto failed = [&](const Failure& failure) {
        TellFailure(session, GetMsg(Msg::CannotWriteInFolder) + TextOf(session.BackupFolder()),
                    failure);
        return false;
    };
    if (const auto status = MakeFolder(target); !status)
        return failed(status.Error());
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::CreationCompactBackup));
    progress->SetLabel(GetMsg(Msg::CreatingFolders));
    for (const std::string& folder : Split(RowText(Msg::CompactFolders), '|'))
        if (const auto status = MakeFolder(InFolder(target, folder)); !status)
            return failed(status.Error());
    progress->SetLabel(GetMsg(Msg::CopyFromTrle));
    for (const std::string& pattern : Split(RowText(Msg::CompactPatterns), '|')) {
        progress->Step();
        if (const auto status =
                CopyMatching(trle, target, pattern, {Verify::Content, false, false, {}});
            !status)
            return failed(status.Error());
    }
    const auto copyFolder = [&](Msg label, Msg folder) {
        progress->SetLabel(GetMsg(label));
        return CopyThroughLinks(session, InFolder(trle, RowText(folder)),
                                InFolder(target, RowText(folder)), *progress,
                                [](const Path& file) { return file; });
    };
    const auto graphics = IsFolder(InFolder(trle, RowText(Msg::DirGraphics)));
    if (!graphics)
        return TellFolderNotRead(session, graphics.Error());
    return copyFolder(Msg::CopyFromData, Msg::DirData) &&
           (!*graphics || copyFolder(Msg::CopyFromGraphics, Msg::DirGraphics));
}

/// `keepOld`: files of the old backup that the folder lacks stay in the new one.
Path WavesNote(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::FragWavesNote));
}

Result<std::vector<Path>> WavesOf(const Session& session)
{
    return ListFiles(InFolder(session.TrleFolder(), RowText(Msg::DirAudio)), RowText(Msg::PatWav));
}

/// A compact backup holds no music: what there was is known by name at least, behind the folder's.
void NoteWaves(Session& session)
{
    std::string names = session.TrleFolder().native() + "\n";
    if (const auto files = WavesOf(session))
        for (const Path& file : *files)
            names += file.filename().native() + "\n";
    if (MakeFolders(InFolder(session.programFolder, RowText(Msg::DirSwap))))
        (void)WriteWholeFile(WavesNote(session), names); // without it they are not named
}

bool MakeBackup(Session& session, bool refresh, bool keepOld, const BackupWishes& wishes)
{
    const Operation running{session};
    if (!RecoverInterruptedWork(session))
        return false;
    const auto other = BackupOfAnotherFolder(session);
    if (!other)
        return TellFolderNotRead(session, other.Error());
    const bool ofAnother = other->has_value();
    keepOld = keepOld && !ofAnother;
    const Path trle = ConfirmTrleOriginal(session, wishes);
    if (trle.empty())
        return false;
    const bool full = refresh || wishes.form == BackupForm::Full ||
                      (wishes.form == BackupForm::Ask && AsksForFull(session, trle));
    if (!refresh && !HasSpace(session, trle, full ? fullNeed : compactNeed))
        return false;

    const Path target = NewBackupFolder(session);
    if (!SettleBackupFolders(session))
        return false;
    const auto hasOld = IsFolder(session.BackupFolder());
    Leftovers leftovers{session};
    const auto known = leftovers.Find();
    if (!hasOld || !known)
        return TellFolderNotRead(session, hasOld ? known.Error() : hasOld.Error());
    bool made = !keepOld || !*hasOld ||
                CopyTreeWithProgress(session, session.BackupFolder(), target, nullptr);
    made = made &&
           (full ? CopyFull(session, trle, target, leftovers) : CopyCompact(session, trle, target));
    if (made)
        if (const auto status = ExchangeBackup(session, full, ofAnother); !status) {
            TellFailure(session, GetMsg(Msg::BackupNotEqual), status.Error());
            made = false;
        }
    if (!made) {
        (void)ClearPlace(target); // cleared again at the next start
        return false;
    }
    session.preferences.fullBackup = full;
    if (!full)
        NoteWaves(session);
    if (const auto status = WritePreferencesFile(session); !status)
        TellFailure(session, GetMsg(Msg::CannotSavePreferences), status.Error());
    if (full)
        leftovers.Settle();
    return true;
}

enum class Fit { Same, Differs };

/// The same when every file of the backup stands in the Level Editor's folder with the same bytes,
/// but for those that a level there replaced.
Result<Fit> CompareWithFolder(Session& session)
{
    const Path backup = ResolvePath(session.BackupFolder());
    const Path trle = ResolvePath(session.TrleFolder());
    const auto tree = ScanTreeIfThere(backup);
    if (!tree)
        return tree.Error();
    if (tree->folders.empty())
        return Fit::Differs;
    const auto bytes = ReadFileIfThere(session.MarkerPath());
    if (!bytes)
        return bytes.Error();
    const MarkerContent marker = ParseMarker(bytes->value_or(std::string{}));
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::ScanningFiles));
    NameSet exchanged;
    for (const std::string& name : marker.overwritten)
        exchanged.Add(name);
    const bool same = std::all_of(tree->files.begin(), tree->files.end(), [&](const Path& file) {
        progress->Step();
        const Path relative = file.lexically_relative(backup);
        return IsPlayersPlace(relative) || exchanged.Has(ToBackslashes(relative)) ||
               SameContent(file, trle / relative, [&] { return progress->Step(), true; });
    });
    return same ? Fit::Same : Fit::Differs;
}

/// The folder was newly chosen and the backup is of another one.
bool MakeBackupOfThisFolder(Session& session, const Path& other, const BackupWishes& wishes)
{
    const auto back = BringBackupBack(session);
    if (!back) {
        TellFailure(session, GetMsg(Msg::BackupNotSetAside), back.Error());
        return false;
    }
    if (*back) {
        session.host.Tell(Tone::Plain, GetMsg(Msg::BackupComesBack));
        return true;
    }
    if (session.host.AskYesNo(GetMsg(Msg::AskBackupOfThis,
                                     {TextOf(other), TextOf(session.TrleFolder()), lineBreak})) &&
        MakeBackup(session, false, false, wishes))
        return true;
    session.host.Tell(Tone::Warning, GetMsg(Msg::BackupOfAnother, {TextOf(other)}));
    return false;
}

} // namespace

Result<std::optional<Path>> BackupSeemsOfAnother(const Session& session)
{
    const auto origin = BackupOrigin(session);
    if (!origin)
        return origin.Error();
    if (!*origin || Path{(*origin)->path} == session.TrleFolder())
        return std::optional<Path>{};
    const auto isThis = HasMark(session.TrleFolder(), **origin);
    if (!isThis)
        return isThis.Error();
    return *isThis ? std::optional<Path>{} : std::optional{Path{(*origin)->path}};
}

Result<std::optional<Path>> BackupOfAnotherFolder(Session& session)
{
    auto other = BackupSeemsOfAnother(session);
    if (!other)
        return other;
    if (*other) {
        const auto fit = CompareWithFolder(session);
        if (!fit)
            return fit.Error();
        if (*fit == Fit::Differs)
            return other;
    }
    // Moved, or of the same content: from now on it counts as this folder's.
    if (LookAtBackup(session).ValueOr(BackupState::Missing) == BackupState::Present)
        (void)NoteBackupOrigin(session, session.preferences.fullBackup); // asked again otherwise
    return std::optional<Path>{};
}

Result<BackupState> LookAtBackup(const Session& session)
{
    struct Sign {
        Msg folder;
        Msg pattern;
    };
    constexpr Sign signs[] = {
        {Msg::FragRoot, Msg::PatDat}, {Msg::FragRoot, Msg::PatBmp}, {Msg::DirData, Msg::PatTr4}};
    for (const Sign& sign : signs) {
        const auto files = ListFiles(InFolder(session.BackupFolder(), RowText(sign.folder)),
                                     RowText(sign.pattern));
        if (!files)
            return files.Error();
        if (files->empty())
            return BackupState::Missing;
    }
    return BackupState::Present;
}

Result<std::vector<std::string>> MissingWaves(const Session& session)
{
    std::vector<std::string> missing;
    if (session.preferences.fullBackup)
        return missing;
    const auto noted = ReadFileIfThere(WavesNote(session), UINT64_C(1) << 20);
    if (!noted || !*noted)
        return noted ? Result<std::vector<std::string>>{missing} : noted.Error();
    const auto names = Split(**noted, '\n');
    if (names.empty() || names.front() != session.TrleFolder().native())
        return missing; // of another folder
    const auto files = WavesOf(session);
    if (!files)
        return files.Error();
    NameSet there;
    for (const Path& file : *files)
        there.Add(file.filename().native());
    for (std::size_t i = 1; i < names.size(); ++i)
        if (!names[i].empty() && !there.Has(names[i]))
            missing.push_back(names[i]);
    return missing;
}

bool BackupIsAway(const Session& session)
{
    return LookAtBackup(session).ValueOr(BackupState::Missing) == BackupState::Missing;
}

bool MakeTrleBackup(Session& session, bool refresh, const BackupWishes& wishes)
{
    const auto backup = LookAtBackup(session);
    if (!backup)
        return TellFolderNotRead(session, backup.Error());
    if (!refresh && *backup == BackupState::Present) {
        const auto other = BackupOfAnotherFolder(session);
        if (!other)
            return TellFolderNotRead(session, other.Error());
        return !*other || MakeBackupOfThisFolder(session, **other, wishes);
    }
    if (!refresh) {
        const auto back = BringBackupBack(session);
        if (!back)
            return TellFolderNotRead(session, back.Error());
        if (*back)
            return true; // set aside when another folder was chosen
    }
    return MakeBackup(session, refresh, refresh, wishes);
}

bool RefreshFullBackup(Session& session, const BackupWishes& wishes)
{
    bool keepOld = false;
    if (!session.preferences.fullBackup) {
        keepOld = !session.host.AskYesNo(GetMsg(Msg::AskRemoveOldBackup));
    } else if (!session.host.AskYesNo(
                   GetMsg(Msg::AskRefreshBackup, {lineBreak, TextOf(session.TrleFolder())}))) {
        session.list.Refresh();
        return false;
    }
    if (!keepOld)
        session.list.ShowActivity(GetMsg(Msg::RemovingOldBackup));
    session.list.ShowActivity(GetMsg(Msg::CopyingFilesInProgress));
    const bool made = MakeBackup(session, true, keepOld, wishes);
    if (!made)
        session.host.Tell(Tone::Error,
                          GetMsg(Msg::ErrorCreatingBackup) + TextOf(session.BackupFolder()));
    session.list.Refresh();
    return made;
}

} // namespace kestrova
