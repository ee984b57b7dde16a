#include "editor/setup_source.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "editor/setup_names.h"
#include "formats/trle_folder.h"
#include "packages/package_list.h"
#include "packages/unzip.h"
#include "words/level_setup.h"

namespace kestrova
{

namespace
{

/// Whatever a setup says of itself, the Level Editor is no smaller.
constexpr std::uint64_t setupSizeOfEditor = 1325439;
/// A wave of the game takes up to so many times the room of its mp3.
constexpr std::uint64_t waveOfMp3 = 4;

bool IsSetupTree(const Path& folder)
{
    return FileExists(InFolder(folder, OnDisk::FragTrleTomb4)) ||
           FileExists(InFolder(folder, OnDisk::SetupList));
}

std::uint64_t RoomOfFile(std::string_view name, std::uint64_t size)
{
    return EndsWithName(name, OnDisk::Mp3Extension) ? size + waveOfMp3 * size : size;
}

Failure StoppedCopy(const Path& place)
{
    return MakeFailure(ErrorCode::Stopped, TextOf(place));
}

} // namespace

Path SetupTreeIn(const Path& folder)
{
    const Path below = ResolvePath(folder / OnDisk::LastPartTrle);
    if (IsSetupTree(below))
        return below;
    return IsSetupTree(folder) ? ResolvePath(folder) : Path{};
}

Result<std::uint64_t> RoomForSetup(const SetupParts& parts, const SetupWish& wish)
{
    std::uint64_t room = 0;
    for (const Path& zip : wish.zips) {
        const auto entries =
            ListZip(parts.converter.tools, zip, ToolProgressState{&parts.progress});
        if (!entries) // its unpacking says more about it
            continue;
        for (const PackageEntry& entry : *entries)
            room += RoomOfFile(entry.name, entry.size);
    }
    if (!wish.fromZips) {
        const auto tree =
            ScanTreeIfThere(SetupTreeIn(wish.folder), [&] { return parts.progress.Step(); });
        if (!tree)
            return tree.Error();
        for (const Path& file : tree->files)
            room += RoomOfFile(file.native(), platform::FactsOf(file).size);
    }
    return std::max(room, setupSizeOfEditor);
}

Status UnpackSetup(const SetupParts& parts, const std::vector<Path>& zips, const Path& folder)
{
    for (const Path& zip : zips) {
        const std::string name = TextOf(zip.filename());
        parts.progress.SetLabel(GetMsg(Msg::SetupUnzipping, {name}));
        const auto isThere = IsFile(zip);
        if (isThere && !*isThere)
            return InWords(ErrorCode::Missing, GetMsg(Msg::SetupUnzipFailed) + name + '\'',
                           GetMsg(Msg::SetupZipMissing, {TextOf(zip)}));
        UnpackGuard guard{parts.machine, zip, folder};
        UnzipOptions options;
        options.guard = &guard;
        ToolProgressState state{&parts.progress};
        state.quiet = true;
        const auto done = UnzipWithProgress(parts.converter.tools, zip, folder, options, state);
        if (!done && done.Error().code == ErrorCode::Stopped)
            return done;
        if (!done)
            return InWords(done.Error().code, GetMsg(Msg::SetupUnzipFailed) + name + '\'',
                           Join({done.Error().sentence, done.Error().reason}, " "),
                           done.Error().details);
    }
    return {};
}

Status CopySetup(const SetupParts& parts, const Path& tree, const Path& target)
{
    const auto failed = [&](const Failure& failure) -> Status {
        if (failure.code == ErrorCode::Stopped)
            return failure;
        return InWords(failure.code,
                       GetMsg(Msg::SetupCopyFailed, {TextOf(tree)}) + TextOf(target) + ']',
                       failure.subject + ' ' + failure.reason);
    };
    const auto alive = [&] { return parts.progress.Step(); };
    const auto all = ScanTree(tree, alive);
    if (!all)
        return failed(all.Error());
    for (const Path& folder : all->folders)
        if (const auto made = MakeFolders(target / folder.lexically_relative(tree)); !made)
            return failed(made.Error());
    for (std::size_t i = 0; i < all->files.size(); ++i) {
        const Path& file = all->files[i];
        CopyOptions options;
        options.spelled = true;
        options.progress = [&](std::uint64_t) { return alive(); };
        parts.progress.SetBar(i, all->files.size());
        if (!alive())
            return StoppedCopy(file);
        const auto copied = CopyFileOver(file, target / file.lexically_relative(tree), options);
        if (!copied)
            return failed(copied.Error());
    }
    return {};
}

} // namespace kestrova
