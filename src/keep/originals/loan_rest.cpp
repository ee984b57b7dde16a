#include "originals/loan_rest.h"

#include "core/inside.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/text.h"
#include "history/players_files.h"
#include "originals/file_names.h"
#include "originals/tree_keeping.h"
#include "originals/tree_return.h"
#include "platform/folder_memory.h"
#include "platform/real_path.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

/// Bytes that are copied before each run of a program; the smallest files first, among which a
/// designer's projects are.
constexpr std::uint64_t mostRestCopied = UINT64_C(1) << 30;

Path RestCopyOf(const Folders& folders, std::size_t file)
{
    return AsideOf(folders, 0).parent_path() / OnDisk::DirRest / std::to_string(file);
}

/// The places of a loan and what else a program may write, in any spelling, with what lies below.
class LentNames
{
public:
    explicit LentNames(const LoanNote& note) : swept_(note.swept)
    {
        for (const LentPlace& place : note.places)
            Add(place.name);
        if (note.rest)
            for (const Path& name : note.rest->others)
                Add(ToBackslashes(name));
    }

    [[nodiscard]] bool Has(const Path& relative) const
    {
        for (Path above = relative; !above.empty(); above = above.parent_path())
            if (names_.contains(FoldCase(ToBackslashes(above))))
                return true;
        const std::string name = ToBackslashes(relative);
        return std::any_of(swept_.begin(), swept_.end(), [&](const std::string& pattern) {
            return MatchesPattern(name, pattern);
        });
    }

private:
    void Add(const std::string& name) { names_.insert(FoldCase(name)); }

    std::set<std::string> names_;
    const std::vector<std::string>& swept_;
};

/// A link that leads into the folder itself, or to where an earlier one leads, shows what is seen
/// already, the lent places among it.
void PassOverTwins(const Path& folder, StandingTree& tree)
{
    Path root;
    if (platform::RealPath(folder, root))
        root = folder;
    std::vector<Path> seen{root};
    for (const StandingLink& link : tree.links) {
        Path real;
        if (platform::RealPath(folder / link.name, real))
            continue; // it leads nowhere
        const bool isTwin = std::any_of(seen.begin(), seen.end(), [&](const Path& known) {
            return LiesInside(real, known) || LiesInside(known, real);
        });
        if (!isTwin) {
            seen.push_back(real);
            continue;
        }
        const auto behind = [&](const auto& one) { return LiesInside(one.name, link.name); };
        std::erase_if(tree.files, behind);
        std::erase_if(tree.folders, behind);
        tree.others.push_back(link.name);
    }
}

Status NameSecondly(const Path& folder, StandingFile& file, const Path& copy,
                    ProgressScope& progress)
{
    if (auto made = MakeFolders(copy.parent_path()); !made)
        return made;
    if (platform::HardLink(folder / file.name, copy)) // it lies on another disk, behind a link
        return CopyKept(folder, file, copy, progress);
    file.changedNs = platform::FactsOf(copy).changedNs;
    return {};
}

Status KeepAside(const Folders& folders, StandingTree& tree, ProgressScope& progress)
{
    std::vector<std::size_t> kept;
    for (std::size_t i = 0; i < tree.files.size(); ++i)
        if (tree.files[i].kept)
            kept.push_back(i);
    std::sort(kept.begin(), kept.end(), [&](std::size_t a, std::size_t b) {
        return tree.files[a].size < tree.files[b].size;
    });
    std::uint64_t copied = 0;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        progress.SetBar(i, kept.size());
        StandingFile& file = tree.files[kept[i]];
        const Path copy = RestCopyOf(folders, kept[i]);
        copied += file.size;
        auto done = copied <= mostRestCopied ? CopyKept(folders.trle, file, copy, progress)
                                             : NameSecondly(folders.trle, file, copy, progress);
        if (!done)
            return done;
    }
    const auto failure = kept.empty() ? std::error_code{} : platform::SyncFileSystem(folders.trle);
    return failure ? Status{MakeFailure(ErrorCode::CannotWrite, TextOf(folders.trle), failure)}
                   : Status{};
}

} // namespace

Status KeepRest(Machine& machine, const Folders& folders, LoanNote& note,
                const std::vector<std::string>& results, ProgressScope& progress)
{
    const platform::FolderMemory memory;
    auto tree = TreeOf(folders.trle, {true}, [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    PassOverTwins(folders.trle, *tree);
    const LentNames lent{note};
    std::erase_if(tree->files, [&](const StandingFile& file) { return lent.Has(file.name); });
    for (const std::string& name : results)
        if (const auto relative = SafeRelative(name))
            tree->others.push_back(*relative);
    DropRest(folders); // without its note it is of no use
    if (!MarkWhatBackupLacks(folders, *tree, progress))
        return MakeFailure(ErrorCode::Stopped, TextOf(folders.trle));
    if (auto fits =
            RoomForKept(machine, std::min(BytesOfKept(*tree), mostRestCopied), folders.trle);
        !fits)
        return fits;
    auto kept = KeepAside(folders, *tree, progress);
    if (kept)
        note.rest = std::move(*tree);
    return kept;
}

Result<RestReturn> ReturnRest(Machine& machine, const Folders& folders, const LoanNote& note)
{
    const LentNames lent{note};
    const auto copyOf = [&](std::size_t file) { return RestCopyOf(folders, file); };
    const auto mayCome = [&](const Path& name) { return lent.Has(name) || IsPlayersPlace(name); };
    // Sources are nobody's results.
    const auto mayChange = [&](const Path& name) {
        return IsPlayersPlace(name) ||
               (lent.Has(name) && !EndsWithName(name.native(), OnDisk::EndingSource));
    };
    auto changes =
        BringTreeBack(machine, folders, {*note.rest, copyOf, mayCome, mayChange, true, false});
    if (!changes)
        return changes.Error();
    RestReturn done{std::move(changes->back), std::move(changes->gone), {}};
    for (std::size_t i = 0; i < note.rest->files.size(); ++i) {
        const StandingFile& file = note.rest->files[i];
        platform::FileFacts now;
        platform::FileFacts aside;
        const bool isSecondName = file.kept && !platform::Look(folders.trle / file.name, now) &&
                                  !platform::Look(copyOf(i), aside) && IsSameThing(now, aside);
        const bool isBack =
            std::find(done.back.begin(), done.back.end(), file.name) != done.back.end();
        if (isSecondName && !isBack && (now.size != file.size || now.changedNs != file.changedNs))
            done.changed.push_back(file.name);
    }
    return done;
}

void DropRest(const Folders& folders)
{
    (void)ClearPlace(RestCopyOf(folders, 0).parent_path()); // what stays holds up nothing
}

} // namespace kestrova
