#include "saves/savegame_plan.h"

#include "core/file_kinds.h"
#include "formats/trle_folder.h"
#include "platform/file_content.h"
#include "platform/places.h"
#include "swap/live_state.h"
#include "words/message.h"

#include <algorithm>

namespace kestrova
{

std::int32_t SlotNumberOf(const Path& file)
{
    const std::string extension = ExtensionOf(file.filename().native());
    const std::size_t end = extension.find_first_not_of("0123456789", 1);
    return extension.empty() ? 0 : LeadingNumber(std::string_view{extension}.substr(1, end - 1));
}

std::vector<std::string> CompanionsOf(std::int32_t slot)
{
    const std::string number = std::to_string(slot);
    return {Filled(OnDisk::FragNote, {number}), Filled(OnDisk::FragShotBitmap, {number}),
            Filled(OnDisk::FragShotJpeg, {number})};
}

std::string SlotName(std::size_t slot)
{
    return std::string{OnDisk::SavegameStem} + std::to_string(slot);
}

std::string NewestOf(const std::vector<std::string>& names,
                     const std::vector<std::int32_t>& numbers)
{
    std::size_t keep = 0;
    std::int32_t best = 0;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (numbers[i] > best) {
            best = numbers[i];
            keep = i;
        }
    return names[keep];
}

std::vector<std::size_t> SortIndex(const std::vector<std::int32_t>& values, bool descending)
{
    std::vector<std::size_t> order(values.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    for (std::size_t i = 0; i < order.size(); ++i)
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            const std::int32_t first = values[order[i]];
            const std::int32_t second = values[order[j]];
            if (descending ? first < second : first > second)
                std::swap(order[i], order[j]);
        }
    return order;
}

SavegamePlan::Folder SavegamePlan::AddNew(const Path& folder)
{
    places_.push_back({ResolvePath(folder), true, {}, {}});
    return places_.size() - 1;
}

Result<SavegamePlan::Folder> SavegamePlan::AddFolder(const Path& folder)
{
    Place place{ResolvePath(folder), false, {}, {}};
    const auto files = ListFiles(place.folder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    for (const Path& file : *files)
        if (const std::string name = file.filename().native(); IsPlayersFile(name))
            place.before.emplace(FoldCase(name), Entry{name, file});
    place.after = place.before;
    places_.push_back(std::move(place));
    return places_.size() - 1;
}

SavegamePlan::Folder SavegamePlan::AddPassing()
{
    places_.emplace_back();
    return places_.size() - 1;
}

std::vector<std::string> SavegamePlan::Savegames(Folder folder) const
{
    std::vector<std::string> names;
    for (const auto& [key, entry] : places_[folder].after)
        if (MatchesPattern(entry.name, OnDisk::SavegamePattern))
            names.push_back(entry.name);
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return UpperCase(a) < UpperCase(b);
    });
    return names;
}

bool SavegamePlan::Has(Folder folder, const std::string& name) const
{
    return places_[folder].after.contains(FoldCase(name));
}

std::int32_t SavegamePlan::NumberOf(Folder folder, const std::string& name)
{
    const Path& source = places_[folder].after.at(FoldCase(name)).source;
    const SavegameInfo info = ReadSavegameInfo(source);
    if (info.unread)
        unread_ = MakeFailure(ErrorCode::CannotRead, TextOf(source), info.unread);
    return info.number;
}

std::vector<std::int32_t> SavegamePlan::NumbersOf(Folder folder,
                                                  const std::vector<std::string>& names)
{
    std::vector<std::int32_t> numbers;
    for (const std::string& name : names)
        numbers.push_back(NumberOf(folder, name));
    return numbers;
}

void SavegamePlan::Copy(Folder from, const std::string& name, Folder to, const std::string& target,
                        bool deleteSource)
{
    const auto found = places_[from].after.find(FoldCase(name));
    if (found == places_[from].after.end())
        return;
    Entry copy = found->second;
    if (deleteSource)
        places_[from].after.erase(found);
    copy.name = target;
    places_[to].after.insert_or_assign(FoldCase(target), std::move(copy));
}

void SavegamePlan::MoveSavegame(Folder from, const std::string& name, Folder to,
                                const std::string& target, bool deleteSource)
{
    const auto sources = CompanionsOf(SlotNumberOf(name));
    const auto targets = CompanionsOf(SlotNumberOf(target));
    Copy(from, name, to, target, deleteSource);
    for (std::size_t i = 0; i < sources.size(); ++i)
        Copy(from, sources[i], to, targets[i], deleteSource);
}

void SavegamePlan::DeleteSavegame(Folder folder, const std::string& name)
{
    Entries& entries = places_[folder].after;
    entries.erase(FoldCase(name));
    for (const std::string& companion : CompanionsOf(SlotNumberOf(name)))
        entries.erase(FoldCase(companion));
}

Result<std::vector<ChangedFolder>> SavegamePlan::Changes() const
{
    std::map<Path, std::string> hashes;
    std::optional<Failure> unreadable = unread_;
    const auto hashOf = [&](const Path& file) {
        const auto [known, first] = hashes.try_emplace(file);
        if (first)
            if (const auto failure = platform::HashOfFile(file, known->second); failure)
                unreadable = MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
        return known->second;
    };
    const auto coming = [&](const std::string& name, const Path& source) -> ComingFile {
        return {name, hashOf(source), platform::AbsolutePath(source).native()};
    };
    std::vector<ChangedFolder> changes;
    for (const Place& place : places_) {
        if (place.folder.empty())
            continue;
        ChangedFolder change{platform::AbsolutePath(place.folder).native(), place.made, {}, {}};
        for (const auto& [key, old] : place.before) {
            const auto now = place.after.find(key);
            if (now == place.after.end()) {
                change.before.push_back({old.name, hashOf(old.source)});
            } else if (now->second.source != old.source &&
                       hashOf(now->second.source) != hashOf(old.source)) {
                change.before.push_back({old.name, hashOf(old.source)});
                change.after.push_back(coming(old.name, now->second.source));
            }
        }
        for (const auto& [key, now] : place.after)
            if (!place.before.contains(key))
                change.after.push_back(coming(now.name, now.source));
        changes.push_back(std::move(change));
    }
    if (unreadable)
        return *unreadable;
    return changes;
}

std::set<std::string> SavegamePlan::Staying(Folder folder) const
{
    std::set<std::string> staying;
    for (const auto& [key, old] : places_[folder].before) {
        const auto now = places_[folder].after.find(key);
        std::string hash;
        if (now != places_[folder].after.end() &&
            (now->second.source == old.source || SameContent(now->second.source, old.source)) &&
            !platform::HashOfFile(old.source, hash))
            staying.insert(std::move(hash));
    }
    return staying;
}

} // namespace kestrova
