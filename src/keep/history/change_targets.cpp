#include "history/change_targets.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "platform/file_content.h"

namespace kestrova
{

Result<std::string> HashSpelled(const Path& file)
{
    std::string hash;
    platform::FileFacts facts;
    auto failure = platform::LookAtLink(file, facts);
    if (!failure && facts.kind != platform::FileKind::Missing)
        failure = platform::HashOfFile(file, hash);
    return failure ? MakeFailure(ErrorCode::CannotRead, TextOf(file), failure)
                   : Result<std::string>{std::move(hash)};
}

bool Holds(const Path& file, const std::string& hash)
{
    const auto now = HashSpelled(file);
    return now && *now == hash && !hash.empty();
}

ChangeTargets::ChangeTargets(const std::vector<ChangedFolder>& folders)
{
    for (const ChangedFolder& folder : folders)
        Add(folder);
    IndexContents();
}

void ChangeTargets::Add(const ChangedFolder& folder)
{
    const Path place = ResolvePath(folder.folder);
    ClearStagedLeftovers(place);
    std::map<Path, std::size_t> places;
    std::map<std::string, std::size_t> byName; ///< folded
    for (const StateFile& file : folder.before) {
        Path path = ResolvePath(place / file.name);
        places.emplace(path, targets_.size());
        byName.emplace(FoldCase(file.name), targets_.size());
        targets_.push_back({std::move(path), file.hash, {}, {}});
    }
    std::set<std::size_t> spelled; ///< what keeps its very name
    for (const ComingFile& file : folder.after)
        if (const auto same = places.find(place / file.name); same != places.end())
            spelled.insert(same->second);
    for (const ComingFile& file : folder.after) {
        const Path path = place / file.name;
        const auto same = places.find(path);
        const auto twin = byName.find(FoldCase(file.name));
        const bool respelled =
            same == places.end() && twin != byName.end() && spelled.insert(twin->second).second;
        if (respelled && targets_[twin->second].was == file.hash) {
            targets_[twin->second].respelled = path;
            continue;
        }
        if (same == places.end() && !respelled)
            targets_.push_back({path, {}, {}, {}});
        ChangeTarget& target = same != places.end() ? targets_[same->second]
                               : respelled          ? targets_[twin->second]
                                                    : targets_.back();
        target.becomes = file.hash;
        target.source = file.source;
    }
}

void ChangeTargets::IndexContents()
{
    for (const ChangeTarget& target : targets_) {
        if (!target.was.empty())
            byContent_[target.was].push_back(&target);
        if (!target.becomes.empty() && target.becomes != target.was)
            byContent_[target.becomes].push_back(&target);
    }
}

const std::vector<const ChangeTarget*>& ChangeTargets::With(const std::string& hash) const
{
    static const std::vector<const ChangeTarget*> none;
    const auto found = byContent_.find(hash);
    return found == byContent_.end() ? none : found->second;
}

} // namespace kestrova
