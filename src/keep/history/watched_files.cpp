#include "history/watched_files.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/text.h"
#include "history/players_files.h"
#include "platform/files.h"

#include <algorithm>
#include <set>

namespace kestrova
{

WatchedFiles::WatchedFiles(Path folder, std::string patterns, Path kept)
    : folder_(std::move(folder)), patterns_(std::move(patterns)), kept_(std::move(kept))
{
}

Result<std::vector<StateFile>> WatchedFiles::Now() const
{
    std::vector<Path> files;
    for (const std::string& pattern : Split(patterns_, '|')) {
        const auto listed = ListFiles(folder_, pattern);
        if (!listed)
            return listed.Error();
        files.insert(files.end(), listed->begin(), listed->end());
    }
    return HashesOf(files);
}

Status WatchedFiles::Keep()
{
    auto now = Now();
    if (!now)
        return now.Error();
    before_ = std::move(now).Value();
    for (const StateFile& file : before_)
        if (auto status = KeepBeside(kept_, folder_ / file.name, file.hash); !status)
            return status;
    return {};
}

Result<ChangedFolder> WatchedFiles::Changed() const
{
    const auto after = Now();
    if (!after)
        return after.Error();
    using Known = std::set<std::pair<std::string, std::string>>;
    const auto known = [](const std::vector<StateFile>& files) {
        Known names;
        for (const StateFile& file : files)
            names.emplace(file.name, file.hash);
        return names;
    };
    const auto has = [](const Known& files, const StateFile& file) {
        return files.contains({file.name, file.hash});
    };
    const Known now = known(*after);
    const Known was = known(before_);
    ChangedFolder changed;
    changed.folder = folder_.native();
    std::set<std::string> unneeded;
    for (const StateFile& file : before_) {
        unneeded.insert(file.hash);
        if (!has(now, file))
            changed.before.push_back(file);
    }
    std::set<std::string> placed;
    for (const StateFile& file : *after)
        if (!has(was, file)) {
            placed.insert(file.hash);
            changed.after.push_back({file.name, file.hash, (folder_ / file.name).native()});
        }
    for (const StateFile& file : changed.before)
        if (!placed.contains(file.hash))
            unneeded.erase(file.hash);
    for (const std::string& hash : unneeded)
        (void)platform::Unlink(kept_ / hash); // contents that nobody names do no harm
    return changed;
}

Status KeepBeside(const Path& kept, const Path& file, const std::string& hash)
{
    const Path place = kept / hash;
    const auto there = HashIfThere(place);
    if (there && *there == hash)
        return {};
    if (auto status = MakeFolders(kept); !status)
        return status;
    return GiveSecondName(file, place, {Verify::Content, true, false, {}});
}

Status GiveSecondName(const Path& file, const Path& place, const CopyOptions& options)
{
    return platform::HardLink(file, place) ? CopyFileOver(file, place, options) : Status{};
}

} // namespace kestrova
