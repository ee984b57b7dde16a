#include "editor/installed_files.h"

#include "core/text.h"
#include "editor/file_names.h"
#include "formats/trle_folder.h"
#include "originals/trle_tree.h"
#include "platform/clock.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

bool IsInstallersOwn(const Path& name)
{
    const std::vector<std::string> endings = Split(OnDisk::InstallerEndings, '|');
    return std::any_of(endings.begin(), endings.end(), [&](const std::string& ending) {
        return EndsWithName(name.native(), ending);
    });
}

/// The folders that a compact backup has, the root first.
int RankOfFolder(const Path& name)
{
    const std::string folder = ToBackslashes(name.parent_path());
    if (name.parent_path().empty())
        return 3;
    if (EqualNames(folder, OnDisk::DirData))
        return 2;
    return EqualNames(folder, OnDisk::DirWads) ? 1 : 0;
}

bool Counts(const Path& name, bool fullBackup)
{
    return !IsInstallersOwn(name) && (fullBackup || RankOfFolder(name) > 0);
}

/// Disks keep dates with more or fewer places behind the second.
bool AgreeInDate(std::int64_t a, std::int64_t b)
{
    return a / platform::nsOfSecond == b / platform::nsOfSecond;
}

} // namespace

Result<std::vector<ComparedFile>> CompareWithBackup(const Folders& folders, bool fullBackup,
                                                    const StandingTree& now,
                                                    const Heartbeat& heartbeat)
{
    const Path backup = ResolvePath(folders.Backup());
    LinkedTree originals;
    if (FolderExists(backup)) {
        auto tree = ScanThroughLinks(backup, heartbeat);
        if (!tree)
            return tree.Error();
        originals = std::move(*tree);
    }
    std::map<std::string, ComparedFile> files; // by folded name
    std::map<std::string, std::int64_t> dates;
    for (const Path& name : originals.files) {
        if (!Counts(name, fullBackup))
            continue;
        platform::FileFacts facts;
        if (const auto failure = platform::Look(backup / name, facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(backup / name), failure);
        const std::string key = FoldCase(name.native());
        files[key] = {name, FileState::Missing, backup / name, {}, facts.size};
        dates[key] = facts.modifiedNs;
    }
    for (const StandingFile& file : now.files) {
        if (!Counts(file.name, fullBackup))
            continue;
        const std::string key = FoldCase(file.name.native());
        const auto [found, isNew] = files.try_emplace(key);
        ComparedFile& compared = found->second;
        const bool agrees =
            compared.sizeBefore == file.size && AgreeInDate(dates[key], file.modifiedNs);
        compared.name = file.name;
        compared.after = folders.trle / file.name;
        compared.sizeAfter = file.size;
        compared.state = isNew ? FileState::New : agrees ? FileState::Equal : FileState::Changed;
    }
    std::vector<ComparedFile> all;
    all.reserve(files.size());
    for (auto& entry : files)
        all.push_back(std::move(entry.second));
    return all;
}

std::vector<ComparedFile> WrittenSince(const std::vector<ComparedFile>& files,
                                       const StandingTree& before, const StandingTree& now)
{
    const StandingFiles old = FilesByName(before);
    const StandingFiles present = FilesByName(now);
    std::vector<ComparedFile> written;
    for (const ComparedFile& file : files) {
        if (file.state != FileState::New && file.state != FileState::Changed)
            continue;
        const auto stood = old.find(file.name.native());
        const auto stands = present.find(file.name.native());
        if (stood == old.end() || stands == present.end() ||
            !IsUntouched(*stood->second, *stands->second))
            written.push_back(file);
    }
    std::stable_sort(written.begin(), written.end(),
                     [](const ComparedFile& a, const ComparedFile& b) {
                         return RankOfFolder(a.name) < RankOfFolder(b.name);
                     });
    return written;
}

} // namespace kestrova
