#include "archive/equal_levels.h"

#include "archive/level_folders.h"
#include "core/parallel.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "platform/file_content.h"

#include <algorithm>
#include <atomic>

namespace kestrova
{

namespace
{

/// Real ones have 92 bytes for each of a few files.
constexpr std::uint64_t mostCompared = UINT64_C(1) << 20;

std::string KeyOf(const Tr4Entry& file)
{
    return FoldCase(Trim(file.name)) + '\0' + std::to_string(file.size);
}

/// The names in a folder by their folded form, so that thousands of level folders are found in
/// whatever spelling by one look at the folder above them.
class Spellings
{
public:
    explicit Spellings(const Path& folder) : folder_(ResolvePath(folder))
    {
        const auto folders = ListSubfolders(folder_); // a folder that is gone has no levels
        if (!folders) {
            state_ = folders.Error();
            return;
        }
        for (const Path& each : *folders)
            names_.emplace(FoldCase(each.filename().native()), each.filename().native());
    }
    [[nodiscard]] const Status& State() const { return state_; }
    [[nodiscard]] Path Find(const Path& name) const
    {
        const auto found = names_.find(FoldCase(name.native()));
        return found == names_.end() ? Path{} : folder_ / found->second;
    }

private:
    Path folder_;
    Status state_;
    std::unordered_map<std::string, std::string> names_;
};

std::vector<Tr4Entry> EntriesIn(const Path& levelFolder)
{
    const Path file = InFolder(levelFolder, OnDisk::FragTr4Inf);
    std::string bytes;
    std::error_code failure = platform::ReadAll(file, bytes, mostCompared);
    if (failure == std::errc::no_such_file_or_directory) // or it is spelled in another way
        failure = platform::ReadAll(ResolvePath(file), bytes, mostCompared);
    auto entries = ParseTr4Inf(failure ? std::string_view{} : bytes);
    return entries ? std::move(entries).Value() : std::vector<Tr4Entry>{};
}

} // namespace

EqualTr4Index::EqualTr4Index(const Folders& folders, const Archive& archive,
                             ProgressScope* progress)
    : levels_(archive.levels.size())
{
    const Spellings spellings{FolderFromText(Trim(archive.header.secondaryFolder))};
    if (!spellings.State()) {
        state_ = spellings.State();
        return;
    }
    std::atomic<std::size_t> done{0};
    const auto read = [&](std::size_t i) {
        const LevelCode code = archive.levels[i].levelCode;
        const Path home = LevelHomeOf(folders, code);
        const Path folder = code == originalCode ? home : spellings.Find(home.filename());
        if (!folder.empty())
            levels_[i] = EntriesIn(folder);
        ++done;
    };
    RunOnAllCores(levels_.size(), read, [&] {
        if (progress != nullptr) {
            progress->SetBar(done, levels_.size());
            progress->Step();
        }
        return true;
    });
    for (std::size_t i = 0; i < levels_.size(); ++i)
        NoteOwner(i);
}

void EqualTr4Index::NoteOwner(std::size_t level)
{
    for (const Tr4Entry& file : levels_[level]) {
        const auto [owners, isNew] = owners_.try_emplace(KeyOf(file), Owners{level, {}});
        if (!isNew && owners->second.first != level && !owners->second.second)
            owners->second.second = level;
    }
}

void EqualTr4Index::Add(std::vector<Tr4Entry> files)
{
    levels_.push_back(std::move(files));
    NoteOwner(levels_.size() - 1);
}

bool EqualTr4Index::HasWhole(std::size_t level, const std::vector<Tr4Entry>& files) const
{
    const std::vector<Tr4Entry>& own = levels_[level];
    return std::all_of(files.begin(), files.end(), [&](const Tr4Entry& file) {
        return std::any_of(own.begin(), own.end(),
                           [&](const Tr4Entry& other) { return KeyOf(other) == KeyOf(file); });
    });
}

std::optional<std::size_t> EqualTr4Index::FindWhole(const std::vector<Tr4Entry>& files) const
{
    // A file that many levels have, as a title, tells little: each of the files is asked.
    for (const Tr4Entry& file : files) {
        const auto owners = owners_.find(KeyOf(file));
        if (owners == owners_.end())
            return {};
        for (const std::size_t level :
             {owners->second.first, owners->second.second.value_or(owners->second.first)})
            if (HasWhole(level, files))
                return level;
    }
    return {};
}

std::optional<EqualTr4> EqualTr4Index::Find(const std::vector<Tr4Entry>& files,
                                            std::size_t except) const
{
    std::optional<EqualTr4> found;
    for (const Tr4Entry& file : files) {
        const auto owners = owners_.find(KeyOf(file));
        if (owners == owners_.end())
            continue;
        const std::optional<std::size_t> level =
            owners->second.first != except ? owners->second.first : owners->second.second;
        if (level && (!found || *level < found->level))
            found = EqualTr4{*level, std::string{Trim(file.name)}};
    }
    return found;
}

Result<std::optional<EqualTr4>> FindEqualTr4(const Folders& folders, const Archive& archive,
                                             const Path& folder, std::size_t levelIndex,
                                             ProgressScope* progress)
{
    std::vector<Tr4Entry> files;
    if (!folder.empty()) {
        auto found = ScanTr4Files(folder);
        if (!found)
            return found.Error();
        files = std::move(*found);
    } else if (auto own = ReadTr4Inf(folders, archive, levelIndex)) {
        files = std::move(own).Value();
    }
    if (files.empty())
        return std::optional<EqualTr4>{};
    if (progress != nullptr)
        progress->SetBar(0, archive.levels.size());
    const EqualTr4Index index{folders, archive, progress};
    if (!index.State())
        return index.State().Error();
    if (progress != nullptr)
        progress->SetBar(0, archive.levels.size());
    return index.Find(files, levelIndex);
}

} // namespace kestrova
