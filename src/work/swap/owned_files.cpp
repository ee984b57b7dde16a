#include "swap/owned_files.h"

#include "conversion/sound_converter.h"
#include "core/look.h"
#include "core/removal.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/players_files.h"
#include "platform/clock.h"
#include "storage/game_files.h"
#include "swap/placements.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Disks keep times in steps of less than a microsecond, or of up to two seconds: these give whole
/// seconds alone.
constexpr std::int64_t fineStepNs = 1'000;
constexpr std::int64_t coarseStepNs = 2'000'000'000;

} // namespace

OwnedFile AsItStands(std::string name, const Path& file)
{
    const platform::FileFacts facts = platform::FactsOf(file);
    return {std::move(name), facts.size, facts.modifiedNs, facts.changedNs, facts.inode};
}

bool IsAsListed(const OwnedFile& listed, const platform::FileFacts& facts)
{
    const std::int64_t apart = facts.modifiedNs - listed.modifiedNs;
    const std::int64_t step =
        facts.modifiedNs % platform::nsOfSecond == 0 ? coarseStepNs : fineStepNs;
    return facts.kind == platform::FileKind::File && facts.size == listed.size && apart < step &&
           apart > -step;
}

bool IsAsPut(const OwnedFile& listed, const platform::FileFacts& facts)
{
    return IsAsListed(listed, facts) &&
           (listed.changedNs == 0 ||
            (listed.changedNs == facts.changedNs && listed.inode == facts.inode));
}

Path SpelledAsPut(const Folders& folders, const OwnedFile& listed, const Path& relative)
{
    const auto twins = CaseTwins(folders.trle / relative);
    if (!twins || twins->size() < 2)
        return relative;
    for (const Path& twin : *twins)
        if (IsAsPut(listed, platform::FactsOf(twin))) // a look that fails proves nothing
            return relative.parent_path() / twin.filename();
    return relative.parent_path() / ResolvePath(folders.trle / relative).filename();
}

Result<std::optional<ListedFile>> FindListed(const Folders& folders, const OwnedFile& listed)
{
    const auto name = SafeRelative(listed.name);
    if (!name || IsPlayersPlace(*name))
        return std::optional<ListedFile>{};
    ListedFile file;
    file.relative = SpelledAsPut(folders, listed, *name);
    file.place = ResolvePath(folders.trle / file.relative);
    const auto facts = LookAt(file.place);
    if (!facts)
        return facts.Error();
    if (facts->kind != platform::FileKind::File)
        return std::optional<ListedFile>{};
    file.facts = *facts;
    return std::optional{std::move(file)};
}

bool StaysWithCompactBackup(const PreferencesRecord& preferences, std::string_view name)
{
    const std::string_view audio = OnDisk::FragAudio;
    return !preferences.fullBackup && EqualNames(name.substr(0, audio.size()), audio);
}

OwnedNames::OwnedNames(const std::vector<OwnedFile>& files)
{
    for (const OwnedFile& file : files)
        files_.emplace(FoldCase(file.name), file);
}

bool OwnedNames::Has(const std::string& name) const
{
    return files_.contains(FoldCase(name));
}

bool OwnedNames::IsAsPut(const std::string& name, const platform::FileFacts& facts) const
{
    const auto [first, last] = files_.equal_range(FoldCase(name));
    return std::any_of(first, last,
                       [&](const auto& entry) { return kestrova::IsAsPut(entry.second, facts); });
}

/// The level's files as the game has them, expanded where they are stored compressed.
struct SafeContents::Stored {
    explicit Stored(const Path& folder) : staging(folder) {}
    WorkFolder staging;
    std::unordered_multimap<std::string, Path> files; ///< by the folded name of their place
};

SafeContents::SafeContents(const SwapParts& parts, Folders folders, LevelPlace level)
    : parts_(parts), folders_(std::move(folders)), level_(std::move(level))
{
}

SafeContents::~SafeContents() = default;

bool SafeContents::Holds(const OwnedFile& listed, const Path& relative)
{
    const Path place = ResolvePath(folders_.trle / relative);
    const auto facts = LookAt(place);
    if (!facts)
        return false;
    if (facts->kind != platform::FileKind::File)
        return true; // nothing that a deletion could lose
    return IsAsPut(listed, *facts) ||
           SameContent(place, ResolvePath(folders_.Backup() / relative)) || LevelHolds(relative);
}

bool SafeContents::LevelHolds(const Path& relative)
{
    if (level_.code <= originalCode)
        return false;
    if (!stored_) {
        stored_ = std::make_unique<Stored>(FreshPlaceIn(folders_.program));
        const Path home = HomeOf(folders_, level_);
        Path source = InFolder(home, OnDisk::DirFiles);
        if (home == LevelHomeOf(folders_, level_.code)) // it may lie on a disc by now
            source =
                FilesFolderOf(folders_, parts_.archive, level_.code, DiscWish::Look).ValueOr({});
        std::vector<std::string> refused;
        // A level that cannot be read proves nothing: then the file is kept.
        if (FolderExists(source))
            if (const auto ready =
                    ReadyLevelFiles(parts_.host, parts_.machine, parts_.sounds, source,
                                    stored_->staging.Folder(), true, nullptr))
                for (const Placement& placement : PlaceFiles(*ready, refused))
                    stored_->files.emplace(FoldCase(placement.relative.native()),
                                           placement.file.path);
    }
    const auto [first, last] = stored_->files.equal_range(FoldCase(relative.native()));
    return std::any_of(first, last, [&](const auto& entry) {
        return SameContent(entry.second, folders_.trle / relative);
    });
}

} // namespace kestrova
