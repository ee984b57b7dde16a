#include "shots/shot_commands.h"

#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "archive/library_notes.h"
#include "core/copying.h"
#include "core/look.h"
#include "history/changes.h"
#include "history/history.h"
#include "platform/places.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "shots/file_names.h"
#include "shots/shot_changes.h"
#include "shots/shot_files.h"
#include "words/core.h"
#include "words/library.h"
#include "words/shots.h"

namespace kestrova
{

namespace
{

constexpr std::size_t extensionSize = 4;

std::string TwoBreaks()
{
    return std::string{lineBreak}.append(lineBreak);
}

/// The place of the picture that a command is meant for; none when the person calls it off, and,
/// with `refusal`, when a pane with the default picture is meant.
std::optional<std::ptrdiff_t> ChosenShot(Host& host, ShotList& shots, Message refusal,
                                         bool firstOfOriginalCounts = true)
{
    std::ptrdiff_t target = shots.Target();
    if (target == ShotList::noTarget) {
        target = shots.Index();
        const bool both = shots.Has(target) && shots.Has(target + 1);
        const YesNoCancel left =
            both ? host.AskYesNoCancel(GetMsg(Msg::ShotAskWhich, {TwoBreaks(), TwoBreaks()}))
                 : YesNoCancel::Yes;
        if (left == YesNoCancel::Cancel)
            return std::nullopt;
        if (left == YesNoCancel::No)
            ++target;
    }
    const bool isDefault = !shots.Has(target) ||
                           (!firstOfOriginalCounts && target == 0 && shots.Code() == originalCode);
    if (isDefault) {
        host.Tell(Tone::Error, GetMsg(refusal));
        return std::nullopt;
    }
    shots.SetTarget(ShotList::noTarget);
    return target;
}

void Reload(Host& host, const Folders& folders, ShotList& shots)
{
    if (const auto loaded = shots.Load(folders, shots.Code()); !loaded)
        TellFolderNotRead(host, loaded.Error());
}

/// The level's facts and pictures are shown anew.
void ShowAgain(Host& host, LevelList& list, const Folders& folders, ShotList& shots)
{
    list.Select(shots.Code());
    Reload(host, folders, shots);
}

/// What a picture shows may be nowhere else; false, with words, while it cannot be kept.
bool KeepShot(Host& host, Machine& machine, const Folders& folders, const ProgramSettings& settings,
              LevelCode code, const Path& shot, Message reason)
{
    const auto kept = KeepInHistory(machine, folders, settings, code, {shot}, Told(reason));
    if (!kept)
        TellFailure(host, GetMsg(Msg::ShotNotKept, {TextOf(shot.filename())}), kept.Error());
    return static_cast<bool>(kept);
}

/// The picture under a name of the level's folder; another one that bears it is replaced.
Status PutShot(const ChangeParts& parts, LevelCode code, const Path& source, const Path& target)
{
    const Path folder = target.parent_path();
    if (auto status = MakeFolder(folder); !status)
        return status;
    const std::string name = target.filename().native();
    const Path old = ResolvePath(target);
    const auto isFree = IsFree(old);
    if (!isFree)
        return isFree.Error();
    if (*isFree) {
        if (auto status = CopyFileOver(source, target, {Verify::Content, true, true, {}}); !status)
            return status;
        NoteNewShots(parts.folders, parts.settings,
                     ShotChange(parts, ChangeKind::ShotAdded, code, name), {target});
        return {};
    }
    if (SameContent(source, old))
        return {};
    Change change = ShotChange(parts, ChangeKind::ShotReplaced, code, name);
    auto replaced = FilesThatGo(folder, {old});
    const auto hash = HashIfThere(source);
    if (!replaced || !hash)
        return replaced ? hash.Error() : replaced.Error();
    replaced->after = {{old.filename().native(), *hash, platform::AbsolutePath(source).native()}};
    change.folders = {std::move(replaced).Value()};
    return MakeShotChange(parts, change);
}

/// The picture goes, and no other one.
Status TakeAway(const ChangeParts& parts, LevelCode code, const Path& shot, std::int32_t bytes)
{
    auto going = FilesThatGo(shot.parent_path(), {shot});
    if (!going)
        return going.Error();
    Change change = ShotChange(parts, ChangeKind::ShotDeleted, code, shot.filename().native());
    change.extraBytes = -bytes;
    change.folders = {std::move(going).Value()};
    return MakeShotChange(parts, change);
}

/// The picture has another name by now.
void NoteRenamed(const ChangeParts& parts, LevelCode code, const Path& shot, const Path& target)
{
    auto renamed = FilesThatCame(target.parent_path(), {target});
    if (!renamed || shot.parent_path() != target.parent_path() || shot == target)
        return; // there is no way back then
    renamed->before = {{shot.filename().native(), renamed->after.front().hash}};
    Change change = ShotChange(parts, ChangeKind::ShotRenamed, code, shot.filename().native());
    change.folders = {std::move(renamed).Value()};
    NoteDone(parts.folders, parts.settings, change);
}

void LetCoverFollow(Host& host, const Folders& folders, const Archive& archive, LevelCode code,
                    const Path& shot, const Path& target)
{
    if (const auto followed = CoverFollows(folders, archive, code, shot.filename().native(),
                                           target.filename().native());
        !followed)
        TellFailure(host, GetMsg(Msg::NotesNotWritten, {TextOf(LibraryFileOf(folders))}),
                    followed.Error());
}

} // namespace

bool AddShot(const ArchiveParts& parts, ShotList& shots)
{
    shots.SetTarget(ShotList::noTarget);
    const auto source = parts.host.ChooseOpenFile(
        GetMsg(Msg::ShotAddTitle), GetMsg(Msg::ShotAddFilter), platform::CurrentFolder());
    return source && AddShotFile(parts, shots, *source);
}

bool AddShotFile(const ArchiveParts& parts, ShotList& shots, const Path& source)
{
    const std::ptrdiff_t index = FindLevel(parts.archive, shots.Code());
    if (index < 0)
        return false;
    const std::string name = source.filename().native();
    if (!IsShotName(name)) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::ShotAddOtherKind, {TextOf(source)}));
        return false;
    }
    if (const auto held = HoldsPicture(source); !held) {
        TellFailure(parts.host, GetMsg(Msg::ShotAddNoPicture, {TextOf(source)}), held.Error());
        return false;
    }
    const Path folder = ResolvePath(ShotFolderOf(parts.folders, shots.Code()));
    Path target = folder / name;
    const auto isFree = IsFree(target);
    if (!isFree)
        return TellFolderNotRead(parts.host, isFree.Error());
    if (!*isFree &&
        !parts.host.AskYesNo(GetMsg(Msg::ShotAskOverwrite, {name, TwoBreaks(), TwoBreaks()}))) {
        if (parts.host.LeftUnanswered())
            return false;
        std::string extension = name.substr(name.size() - extensionSize);
        auto other =
            NewShotName(parts.folders, parts.archive, static_cast<std::size_t>(index), extension);
        if (!other)
            return TellFolderNotRead(parts.host, other.Error());
        target = std::move(*other);
        parts.host.Tell(Tone::Plain,
                        GetMsg(Msg::ShotSavedAs, {name}) + target.filename().native() + "'");
    }
    if (!*isFree && target == folder / name && !SameContent(source, target) &&
        !KeepShot(parts.host, parts.machine, parts.folders, parts.settings, shots.Code(),
                  ResolvePath(target), Msg::ReasonShotReplaced))
        return false;
    const auto done = PutShot(parts, shots.Code(), source, target);
    if (!done)
        TellFailure(parts.host, GetMsg(Msg::ShotAddFailed), done.Error());
    ShowAgain(parts.host, parts.list, parts.folders, shots);
    if (const std::ptrdiff_t place = shots.Find(target.filename().native()); done && place >= 0)
        shots.ShowPair(place - place % 2);
    return static_cast<bool>(done);
}

bool DeleteShot(const ArchiveParts& parts, ShotList& shots)
{
    const auto chosen = ChosenShot(parts.host, shots, Msg::ShotNotDelete, false);
    if (!chosen)
        return false;
    const Path shot = shots.At(*chosen);
    if (!parts.host.AskYesNo(GetMsg(Msg::ShotAskDelete) + '"' + TextOf(shot) + '"'))
        return false;
    if (!KeepShot(parts.host, parts.machine, parts.folders, parts.settings, shots.Code(), shot,
                  Msg::ReasonShotDeleted))
        return false;
    const auto size = SizeField(static_cast<double>(FileSize(shot)));
    const auto gone = TakeAway(parts, shots.Code(), shot, size);
    if (!gone)
        TellFailure(parts.host, GetMsg(Msg::ShotDeleteFailed), gone.Error());
    else if (const std::ptrdiff_t index = FindLevel(parts.archive, shots.Code()); index >= 0)
        AddShotSize(parts, -size, static_cast<std::size_t>(index));
    ShowAgain(parts.host, parts.list, parts.folders, shots);
    return static_cast<bool>(gone);
}

bool RenameShot(const ArchiveParts& parts, ShotList& shots)
{
    const auto chosen = ChosenShot(parts.host, shots, Msg::ShotNotRename);
    if (!chosen)
        return false;
    const Path shot = shots.At(*chosen);
    const auto name = parts.host.AskText(GetMsg(Msg::ShotRenamePrompt), shot.filename().native(),
                                         GetMsg(Msg::ShotRenameTitle));
    return name && !Trim(*name).empty() && RenameShotTo(parts, shots, shot, *name);
}

bool RenameShotTo(const ArchiveParts& parts, ShotList& shots, const Path& shot,
                  const std::string& wish)
{
    const std::string name =
        WithShotEnding(std::string{Trim(wish)}, ExtensionOf(shot.filename().native()));
    const auto safe = SafeName(name);
    if (!safe || !SafeName(Trim(wish)) || name.starts_with(stagedPrefix) ||
        Trim(StripExtension(name)).empty()) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::ShotRenameBadName, {wish}));
        return false;
    }
    const Path target = shot.parent_path() / *safe;
    // The picture itself under another spelling is no other file.
    const auto found = FindPath(target);
    const auto isFree = IsFree(target);
    if (!found || !isFree)
        return TellFolderNotRead(parts.host, found ? isFree.Error() : found.Error());
    if (*found != shot && !*isFree) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::ShotRenameTaken, {name}));
        return false;
    }
    const auto failure = platform::Rename(shot, target);
    if (failure)
        TellFailure(parts.host, GetMsg(Msg::ShotRenameFailed),
                    MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure));
    else {
        NoteRenamed(parts, shots.Code(), shot, target);
        LetCoverFollow(parts.host, parts.folders, parts.archive, shots.Code(), shot, target);
    }
    Reload(parts.host, parts.folders, shots);
    return !failure;
}

bool SaveShotAs(Host& host, const Folders& folders, ShotList& shots)
{
    const auto chosen = ChosenShot(host, shots, Msg::ShotNotSave);
    if (!chosen)
        return false;
    const Path shot = shots.At(*chosen);
    const std::string name = shot.filename().native();
    const Message filter = EndsWithName(name, OnDisk::ShotBmpExtension) ? Msg::ShotSaveFilterBmp
                                                                        : Msg::ShotSaveFilterJpg;
    const auto target =
        host.ChooseSaveFile(GetMsg(Msg::ShotSaveTitle), GetMsg(filter), folders.program, name);
    if (!target)
        return false;
    const Path whole =
        target->parent_path() / WithShotEnding(target->filename().native(), ExtensionOf(name));
    // The chooser asked about the name that was typed.
    const auto isFree = IsFree(whole);
    if (!isFree)
        return TellFolderNotRead(host, isFree.Error());
    return (whole == *target || *isFree || ConfirmReplace(host, shot, whole)) &&
           SaveShotTo(host, shot, whole);
}

bool SaveShotTo(Host& host, const Path& shot, const Path& target)
{
    const auto file = FileToWrite(target);
    if (!file)
        return DoneOrTold(host, file.Error());
    const auto copied = CopyFileOver(shot, *file, {Verify::Content, true, true, {}});
    if (!copied)
        TellFailure(host, GetMsg(Msg::ErrorCopyingFromTo, {TextOf(shot)}) + TextOf(target),
                    copied.Error());
    return static_cast<bool>(copied);
}

std::optional<Path> ShotToResize(Host& host, ShotList& shots)
{
    const auto chosen = ChosenShot(host, shots, Msg::ShotNotResize);
    return chosen ? std::optional<Path>{shots.At(*chosen)} : std::nullopt;
}

std::optional<Path> ShotForCover(Host& host, ShotList& shots)
{
    const auto chosen = ChosenShot(host, shots, Msg::ShotNotCover);
    return chosen ? std::optional<Path>{shots.At(*chosen)} : std::nullopt;
}

} // namespace kestrova
