#include "upkeep/repair_sources.h"

#include "archive/level_folders.h"
#include "archive/stored_notes.h"
#include "core/look.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/level_folder_name.h"
#include "formats/trle_folder.h"
#include "originals/vault.h"
#include "packages/package_tools.h"
#include "packages/unzip.h"
#include "platform/file_content.h"
#include "words/check.h"

namespace kestrova
{

namespace
{

/// True for a file that may hold the content: it has the size of the stored form, or of what that
/// was made of.
bool HasSizeOf(const StoredEntry& noted, std::uint64_t size)
{
    return size == noted.size || (noted.from && size == noted.from->size);
}

} // namespace

RepairSources::RepairSources(Machine& machine, const Folders& folders, const Archive& archive,
                             Tools tools)
    : machine_(machine), folders_(folders), archive_(archive), tools_(std::move(tools)),
      discs_(folders, archive), unpacked_(FreshPlaceIn(folders.program))
{
}

const std::string& RepairSources::HashOf(const Path& file)
{
    const auto [known, isNew] = hashes_.try_emplace(file);
    if (isNew && platform::HashOfFile(file, known->second))
        known->second.clear(); // what cannot be read holds nothing
    return known->second;
}

void RepairSources::AddByName(const StoredEntry& noted, Candidates& found)
{
    const std::string& name = noted.from ? noted.from->name : noted.name;
    for (const auto& [root, where] : {std::pair{folders_.trle, Msg::RepairFromTrle},
                                      std::pair{folders_.Backup(), Msg::RepairFromBackup}})
        for (const Path& folder :
             {root, InFolder(root, OnDisk::DirData), InFolder(root, OnDisk::DirAudio)})
            if (!root.empty())
                found.push_back({ResolvePath(folder / name), GetMsg(where)});
}

void RepairSources::AddVault(const StoredEntry& noted, Candidates& found)
{
    const auto kept = KeptFiles(folders_);
    if (!kept)
        return;
    for (const KeptFile& file : *kept)
        if (HasSizeOf(noted, file.size))
            found.push_back({file.content, GetMsg(Msg::RepairFromVault)});
}

void RepairSources::AddKeptForUndo(LevelCode code, const StoredEntry& noted,
                                   Candidates& found) const
{
    const Path undo = InFolder(LevelHomeOf(folders_, code), OnDisk::DirUndoOfLevel);
    const auto folders = ListSubfolders(ResolvePath(undo));
    if (!folders)
        return;
    for (const Path& folder : *folders)
        for (const std::string& hash : {noted.hash, noted.from ? noted.from->hash : noted.hash})
            found.push_back({folder / hash, GetMsg(Msg::RepairFromUndo)});
}

void RepairSources::IndexFolder(const Path& home, const std::string& where)
{
    const auto note = ReadStoredNote(home).ValueOr({});
    if (!note)
        return;
    const Path files = ResolvePath(InFolder(home, OnDisk::DirFiles));
    for (const StoredEntry& entry : note->files)
        byHash_.emplace(entry.hash, Candidate{files / entry.name, where});
}

void RepairSources::IndexLevels(const Heartbeat& beat)
{
    if (isIndexed_)
        return;
    isIndexed_ = true;
    for (const LevelRecord& level : archive_.levels) {
        if (beat && !beat())
            return;
        if (level.levelCode != originalCode)
            IndexFolder(LevelHomeOf(folders_, level.levelCode),
                        GetMsg(Msg::RepairFromLevel, {Readable(Trim(level.levelName))}));
    }
    const auto all = ListSubfolders(ResolvePath(Path{Trim(archive_.header.secondaryFolder)}));
    if (!all)
        return;
    for (const Path& folder : *all)
        if (IsAsideName(folder.filename().native()))
            IndexFolder(folder, GetMsg(Msg::RepairFromAside, {TextOf(folder.filename())}));
}

void RepairSources::AddOtherLevels(const StoredEntry& noted, Candidates& found,
                                   const Heartbeat& beat)
{
    IndexLevels(beat);
    for (const std::string& hash : {noted.hash, noted.from ? noted.from->hash : std::string{}}) {
        const auto [first, last] = byHash_.equal_range(hash);
        for (auto each = first; each != last; ++each)
            found.push_back(each->second);
    }
}

void RepairSources::AddOffered(const StoredEntry& noted, Candidates& found) const
{
    std::set<std::uint64_t> sizes{noted.size};
    if (noted.from)
        sizes.insert(noted.from->size);
    for (const std::uint64_t size : sizes) {
        const auto [first, last] = offered_.equal_range(size);
        for (auto each = first; each != last; ++each)
            found.push_back({each->second, GetMsg(Msg::RepairFromOffered)});
    }
}

void RepairSources::AddDiscs(LevelCode code, const StoredEntry& noted, Candidates& found)
{
    for (const std::string& hash : {noted.hash, noted.from ? noted.from->hash : std::string{}})
        for (DiscSources::OnDisc& each : discs_.Holding(code, hash))
            found.push_back({std::move(each.file), GetMsg(Msg::RepairFromDisc, {each.label})});
}

std::optional<FoundContent> RepairSources::Find(LevelCode code, const StoredEntry& noted,
                                                const Heartbeat& beat)
{
    const Path own =
        ResolvePath(InFolder(LevelHomeOf(folders_, code), OnDisk::DirFiles)) / noted.name;
    const auto firstOf = [&](const Candidates& candidates) -> std::optional<FoundContent> {
        for (const Candidate& each : candidates) {
            const auto facts = LookAtSpelled(each.file);
            if (each.file == own || !facts || facts->kind != platform::FileKind::File ||
                !HasSizeOf(noted, facts->size))
                continue;
            const std::string& hash = HashOf(each.file);
            if (hash == noted.hash)
                return FoundContent{each.file, true, each.where};
            if (noted.from && hash == noted.from->hash)
                return FoundContent{each.file, false, each.where};
        }
        return {};
    };
    Candidates near;
    AddByName(noted, near);
    AddVault(noted, near);
    AddKeptForUndo(code, noted, near);
    if (auto found = firstOf(near))
        return found;
    Candidates far;
    AddOtherLevels(noted, far, beat);
    AddOffered(noted, far);
    if (auto found = firstOf(far))
        return found;
    Candidates discs; // which are slow
    AddDiscs(code, noted, discs);
    return firstOf(discs);
}

Status RepairSources::Unpack(const Path& package, ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::RepairOpening, {TextOf(package.filename())}));
    if (auto status = MakeFolders(unpacked_.Folder()); !status)
        return status;
    const Path folder = unpacked_.Folder() / std::to_string(++packages_);
    ToolProgressState state{&progress};
    state.quiet = true;
    UnpackGuard guard{machine_, package, unpacked_.Folder()};
    UnpackReport report;
    UnzipOptions options;
    options.guard = &guard;
    options.report = &report;
    options.keepWhole = true; // each file is proved by its own hash
    if (auto status = UnzipWithProgress(tools_, package, folder, options, state); !status)
        return status;
    const auto tree = ScanTree(folder, [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    for (const Path& file : tree->files)
        offered_.emplace(FileSize(file), file);
    return {};
}

Status RepairSources::OfferFolder(const Path& folder, ProgressScope& progress)
{
    const auto tree = ScanTree(folder, [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    for (const Path& file : tree->files)
        offered_.emplace(FileSize(file), file);
    return {};
}

Status RepairSources::Offer(const Path& source, ProgressScope& progress)
{
    const auto facts = LookAt(source);
    if (!facts)
        return facts.Error();
    if (facts->kind == platform::FileKind::Missing)
        return MakeFailure(ErrorCode::Missing, TextOf(source));
    const Path place = ResolvePath(source);
    if (facts->kind == platform::FileKind::Folder) {
        if (auto status = OfferFolder(place, progress); !status)
            return status;
    } else if (!IsPackage(place)) {
        offered_.emplace(facts->size, place);
    } else if (auto status = Unpack(place, progress); !status) {
        return status;
    }
    std::vector<Path> inner;
    for (const auto& [size, file] : offered_)
        if (IsPackage(file) && file != place)
            inner.push_back(file);
    for (const Path& package : inner)
        if (auto status = Unpack(package, progress);
            !status && status.Error().code == ErrorCode::Stopped)
            return status; // of one that is not whole the other files still count
    return {};
}

} // namespace kestrova
