#include "intake/stem_copies.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/size_words.h"
#include "intake/file_names.h"
#include "packages/unpack_guard.h"
#include "words/level_needs.h"

#include <algorithm>
#include <numeric>

namespace kestrova
{

namespace
{

constexpr std::size_t mostCopies = 20'000;

/// What all names begin with that match; a pattern's last ".*" matches no ending as well.
std::string LiteralHead(std::string_view pattern)
{
    if (pattern == OnDisk::PatAllFiles)
        return {};
    if (pattern.ends_with(OnDisk::EveryEnding))
        pattern.remove_suffix(OnDisk::EveryEnding.size());
    return UpperCase(pattern.substr(0, pattern.find_first_of("*?")));
}

Status HasRoom(Machine& machine, const CopyPlan& plan, const Path& folder)
{
    const auto bytes = std::accumulate(plan.copies.begin(), plan.copies.end(), 0.0,
                                       [](double sum, const PlannedCopy& copy) {
                                           return sum + static_cast<double>(copy.source.size);
                                       });
    const auto free = machine.FreeSpace(folder);
    if (!free)
        return free.Error();
    if (bytes + static_cast<double>(UnpackLimits{}.keepFree) <= static_cast<double>(*free))
        return {};
    return InWords(
        ErrorCode::NoSpace,
        GetMsg(Msg::CopiesNoRoom, {SizeInWords(bytes), SizeInWords(static_cast<double>(*free))}));
}

Status MakeCopy(const PlannedCopy& copy, const Path& folder, ProgressScope& progress)
{
    CopyOptions options;
    options.rights = plainRights;
    options.spelled = true;
    options.progress = [&](std::uint64_t) { return progress.Step(); };
    if (!progress.Step())
        return MakeFailure(ErrorCode::Stopped, copy.name);
    return CopyFileOver(copy.source.place, folder / copy.name, options);
}

} // namespace

Result<NamedFiles> NamedFiles::Of(const Path& folder)
{
    const auto listed = ListFiles(folder, OnDisk::PatAll);
    if (!listed)
        return listed.Error();
    NamedFiles files;
    for (const Path& file : *listed)
        files.Add(file.filename().native(), {file, FileSize(file)});
    return files;
}

void NamedFiles::Add(const std::string& name, SizedFile file)
{
    files_.emplace(std::pair{UpperCase(name), name}, std::move(file));
}

bool NamedFiles::Has(const std::string& name) const
{
    const auto found = files_.lower_bound({UpperCase(name), {}});
    return found != files_.end() && found->first.first == UpperCase(name);
}

Result<std::vector<std::pair<std::string, SizedFile>>>
NamedFiles::Matching(const std::string& pattern, const Heartbeat& heartbeat) const
{
    constexpr int looksBetweenBeats = 500;
    const std::string head = LiteralHead(pattern);
    std::vector<std::pair<std::string, SizedFile>> matching;
    int looks = 0;
    for (auto file = files_.lower_bound({head, {}});
         file != files_.end() && file->first.first.starts_with(head); ++file) {
        if (++looks % looksBetweenBeats == 0 && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, pattern);
        if (MatchesPattern(file->first.second, pattern))
            matching.emplace_back(file->first.second, file->second);
    }
    return matching;
}

Result<CopyPlan> PlanCopies(const std::vector<StemCopy>& wishes, NamedFiles level,
                            const NamedFiles* first, const Heartbeat& heartbeat)
{
    CopyPlan plan;
    for (std::size_t wish = 0; wish < wishes.size(); ++wish) {
        if (!heartbeat())
            return MakeFailure(ErrorCode::Stopped, {});
        const std::string& pattern = wishes[wish].pattern;
        auto sources = (first != nullptr ? *first : level).Matching(pattern, heartbeat);
        if (sources && sources->empty() && first != nullptr)
            sources = level.Matching(pattern, heartbeat);
        if (!sources)
            return sources.Error();
        for (auto& [source, file] : *sources) {
            std::string name = wishes[wish].stem + ExtensionOf(source);
            if (!IsLevelFileName(name)) {
                if (plan.refused.size() < mostCopies)
                    plan.refused.push_back(Readable(name));
                continue;
            }
            if (level.Has(name))
                continue;
            if (plan.copies.size() == mostCopies)
                return InWords(ErrorCode::Refused,
                               GetMsg(Msg::CopiesTooMany, {std::to_string(mostCopies)}));
            level.Add(name, file);
            plan.copies.push_back({std::move(file), std::move(name), wish});
        }
    }
    return plan;
}

Status MakeCopies(Machine& machine, const CopyPlan& plan, const Path& folder,
                  ProgressScope& progress, const std::function<void(std::size_t wish)>& begin)
{
    if (plan.copies.empty())
        return {};
    Status made = HasRoom(machine, plan, folder);
    if (!made)
        return made;
    const Path place = ResolvePath(folder);
    progress.AllowStop();
    std::size_t done = 0;
    for (; done < plan.copies.size() && made; ++done) {
        const PlannedCopy& copy = plan.copies[done];
        begin(copy.wish);
        progress.SetBar(done, plan.copies.size());
        made = MakeCopy(copy, place, progress);
    }
    if (made)
        return made;
    // Their names were free, so all of them are ours.
    for (std::size_t i = 0; i < done; ++i)
        (void)DeleteSpelled(place / plan.copies[i].name);
    return made;
}

} // namespace kestrova
