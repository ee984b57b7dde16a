#include "editor/setup_target.h"

#include "core/copying.h"
#include "core/inside.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "editor/file_names.h"
#include "editor/kept_places.h"
#include "editor/setup_names.h"
#include "editor/wine_prefixes.h"
#include "formats/trle_folder.h"
#include "platform/places.h"
#include "platform/real_path.h"
#include "words/level_setup.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::size_t targetFieldSize = 256;
constexpr std::uint64_t longestSetupNote = 64 * 1024;

Failure TargetRefusal(Message words, const Path& folder)
{
    return InWords(ErrorCode::Refused, GetMsg(words, {TextOf(folder)}));
}

bool HasControlLetters(const std::string& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char letter) { return static_cast<unsigned char>(letter) < ' '; });
}

/// Nothing at all, hidden files counted.
Result<bool> HoldsNothing(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    if (const auto failure = platform::ListFolder(folder, entries))
        return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
    return entries.empty();
}

/// Absolute, in the spelling that is there, links followed.
Result<Path> RealTarget(const Path& wished)
{
    if (wished.empty() || HasControlLetters(wished.native()))
        return InWords(ErrorCode::Refused, GetMsg(Msg::SetupNoTarget));
    const auto found =
        FindPath(FolderFromText(platform::AbsolutePath(wished).lexically_normal().native()));
    if (!found)
        return found;
    Path target;
    if (const auto failure = platform::RealPathSoFar(*found, target))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(*found), failure);
    return target;
}

/// In what this program keeps, or in the Level Editor's folder in use, of which it would be a part.
bool IsNoPlace(const Path& target, const Folders& folders)
{
    for (const Path& own : {folders.program, folders.levels, folders.trle}) {
        Path real;
        if (!own.empty() && !platform::RealPathSoFar(own, real) && LiesInside(target, real))
            return true;
    }
    return LiesAmongKept(folders, target);
}

Status CheckPlace(const Path& target)
{
    const auto facts = LookAtSpelled(target);
    const auto isFree = IsFree(target);
    if (!facts || !isFree)
        return facts ? isFree.Error() : facts.Error();
    if (*isFree)
        return {};
    if (facts->kind != platform::FileKind::Folder)
        return TargetRefusal(Msg::SetupTargetNoFolder, target);
    const auto empty = HoldsNothing(target);
    if (!empty)
        return empty.Error();
    return *empty ? Status{} : TargetRefusal(Msg::SetupTargetFull, target);
}

} // namespace

Path ProposedTarget(const Folders& folders)
{
    const auto prefixes = KnownPrefixes(folders);
    const Path drive = prefixes.empty() ? platform::UserDataFolder()
                                        : ResolvePath(prefixes.front() / OnDisk::WineDriveC);
    const Path place = drive / OnDisk::SetupMaker;
    const std::string name{OnDisk::LastPartTrle};
    // Where nobody can look, the setup itself says why.
    return FirstFree([&](int number) {
               return place / (number == 1 ? name : name + std::to_string(number));
           })
        .ValueOr(place / name);
}

Result<Path> TargetOf(const SetupWish& wish, const Folders& folders)
{
    const auto real = RealTarget(wish.target);
    if (!real)
        return real.Error();
    const Path& target = *real;
    if (ToWindows1252(target.native()).size() > targetFieldSize)
        return TargetRefusal(Msg::SetupTargetTooLong, target);
    Path source;
    if (!wish.fromZips && !platform::RealPath(ResolvePath(wish.folder), source) &&
        (LiesInside(source, target) || LiesInside(target, source)))
        return TargetRefusal(Msg::SetupTargetInSource, target);
    if (auto fits = CheckPlace(target); !fits)
        return fits.Error();
    if (IsNoPlace(target, folders))
        return TargetRefusal(Msg::SetupTargetKept, target);
    return target;
}

Status PutInPlace(const Path& tree, const Path& target)
{
    const auto failed = [&](const std::error_code& failure) {
        return InWords(ErrorCode::CannotWrite, GetMsg(Msg::SetupNotPlaced, {TextOf(target)}),
                       failure.message());
    };
    if (const auto failure = platform::SyncFileSystem(tree))
        return failed(failure);
    if (const auto failure = platform::Rename(tree, target))
        return failed(failure);
    return FlushFolder(target.parent_path());
}

Status NoteSetup(const Folders& folders, const Path& tree, const SetupNote& note)
{
    const Path file = InFolder(folders.program, OnDisk::FragSetupNote);
    if (auto made = MakeFolders(file.parent_path()); !made)
        return made;
    const auto facts = LookAtSpelled(tree);
    if (!facts)
        return facts.Error();
    SetupNote whole = note;
    whole.device = facts->device;
    whole.inode = facts->inode;
    return WriteWholeFile(file, FormatSetupNote(whole));
}

std::optional<SetupNote> UnfinishedSetupAt(const Folders& folders, const Path& wished)
{
    const Path target = RealTarget(wished).ValueOr({});
    const auto text =
        ReadFileIfThere(InFolder(folders.program, OnDisk::FragSetupNote), longestSetupNote);
    if (!text || !*text)
        return std::nullopt;
    const auto note = ParseSetupNote(**text);
    const auto facts = platform::FactsOf(target);
    const bool isIt = note && note->target == target.native() && note->device == facts.device &&
                      note->inode == facts.inode && facts.kind == platform::FileKind::Folder;
    return isIt ? note : std::nullopt;
}

Status ForgetSetup(const Folders& folders)
{
    return DeleteFile(InFolder(folders.program, OnDisk::FragSetupNote));
}

} // namespace kestrova
