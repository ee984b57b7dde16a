#include "upkeep/level_from_disc.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/text.h"
#include "platform/file_content.h"
#include "upkeep/file_names.h"
#include "upkeep/out_of_files.h"

#include <map>
#include <set>

namespace kestrova
{

namespace
{

/// One level's files on their way.
class LevelCopy
{
public:
    LevelCopy(const NotedLevel* noted, const std::function<bool(std::uint64_t)>& copied,
              std::vector<Path>& replaced)
        : copied_(copied), replaced_(replaced)
    {
        if (noted != nullptr)
            for (const NotedFile& file : noted->files)
                hashes_.emplace(FoldCase(file.name), file.hash);
    }

    Status Run(const Path& disc, const Path& files)
    {
        const auto tree = ScanTree(disc, [&] { return Beats(); });
        if (!tree)
            return tree.Error();
        for (const Path& folder : tree->folders)
            if (auto made = MakeFolders(files / folder.lexically_relative(disc)); !made)
                return made;
        for (const Path& file : tree->files)
            if (auto status = Take(file, files, file.lexically_relative(disc)); !status)
                return status;
        for (const auto& [name, hash] : hashes_)
            if (!taken_.contains(name))
                return MakeFailure(ErrorCode::Damaged, TextOf(disc / name));
        return {};
    }

private:
    bool Beats(std::uint64_t bytes = 0) { return copied_(done_ + bytes); }

    Status Take(const Path& file, const Path& files, const Path& name)
    {
        const std::string key = FoldCase(name.native());
        const auto found = FindPath(files / name);
        const auto isFree = found ? IsFree(*found) : Result<bool>{found.Error()};
        if (!isFree)
            return isFree.Error();
        if (!*isFree) {
            const auto same = HoldSameBytes(file, *found, [&] { return Beats(); });
            if (!same)
                return same.Error();
            // Two files of the disc whose names differ in the letters' case alone.
            if (!*same && taken_.contains(key))
                return MakeFailure(ErrorCode::Differs, TextOf(file));
            if (!*same) {
                auto aside = TakeOutOfFiles(files.parent_path(), OnDisk::DirReplaced, *found);
                if (!aside)
                    return aside.Error();
                replaced_.push_back(std::move(*aside));
            }
        }
        const Path place = *isFree ? *found : ResolvePath(files / name);
        if (!FileExists(place)) {
            CopyOptions options;
            options.verify = Verify::Content;
            options.rights = plainRights;
            options.spelled = true;
            options.progress = [&](std::uint64_t bytes) { return Beats(bytes); };
            if (auto copied = CopyFileOver(file, place, options); !copied)
                return copied;
        }
        done_ += FileSize(place);
        taken_.insert(key);
        return IsAsNoted(file, key, place);
    }

    /// A disc that reads without an error may still hold other bytes than were put on it.
    Status IsAsNoted(const Path& file, const std::string& name, const Path& copy)
    {
        const auto noted = hashes_.find(name);
        if (noted == hashes_.end())
            return Beats() ? Status{} : MakeFailure(ErrorCode::Stopped, {});
        std::string hash;
        if (const auto failure = platform::HashOfFile(copy, hash))
            return MakeFailure(ErrorCode::CannotRead, TextOf(copy), failure);
        if (hash == noted->second)
            return Beats() ? Status{} : MakeFailure(ErrorCode::Stopped, {});
        (void)platform::Unlink(copy); // the disc has the same bytes
        return MakeFailure(ErrorCode::Damaged, TextOf(file));
    }

    const std::function<bool(std::uint64_t)>& copied_;
    std::vector<Path>& replaced_;
    std::map<std::string, std::string> hashes_; ///< by folded name
    std::set<std::string> taken_;               ///< folded
    std::uint64_t done_ = 0;
};

} // namespace

Status CopyLevelFromDisc(const Path& disc, const Path& files, const NotedLevel* noted,
                         const std::function<bool(std::uint64_t)>& copied,
                         std::vector<Path>& replaced)
{
    return LevelCopy{noted, copied, replaced}.Run(ResolvePath(disc), ResolvePath(files));
}

} // namespace kestrova
