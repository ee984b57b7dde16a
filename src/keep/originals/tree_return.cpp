#include "originals/tree_return.h"

#include "core/copying.h"
#include "core/inside.h"
#include "core/look.h"
#include "core/removal.h"
#include "originals/vault.h"
#include "platform/folder_memory.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

class TreeReturn
{
public:
    TreeReturn(Machine& machine, const Folders& folders, const TreeWish& wish)
        : machine_(machine), folders_(folders), before_(wish.before), wish_(wish)
    {
    }

    Result<TreeChanges> Run()
    {
        if (auto made = MakeFolders(folders_.trle); !made)
            return made.Error();
        const auto now = TreeOf(folders_.trle, {false, before_.links, true});
        if (!now)
            return now.Error();
        Compare(*now);
        if (wish_.keepsStrangers)
            KeepStrangers();
        if (wish_.clearsOthers)
            RemoveOthers(*now);
        RemoveNew(*now);
        MakeFoldersAgain(Behind::Nothing);
        BringLinksBack(*now);
        MakeFoldersAgain(Behind::Link);
        for (const std::size_t file : lacking_)
            Note(BringBack(file));
        BringRightsBack();
        return failure_ ? Result<TreeChanges>{std::move(changes_)} : failure_.Error();
    }

private:
    void Note(const Status& status)
    {
        if (!status && failure_)
            failure_ = status;
    }

    void Compare(const StandingTree& now)
    {
        const StandingFiles files = FilesByName(now);
        std::set<std::string> known;
        for (std::size_t i = 0; i < before_.files.size(); ++i) {
            const StandingFile& file = before_.files[i];
            known.insert(file.name.native());
            const auto found = files.find(file.name.native());
            const bool isThere = found != files.end();
            if (isThere && (IsUntouched(file, *found->second) || MayChange(file.name)))
                continue;
            if (isThere && IsSecondName(i))
                continue; // what was written into it is in both
            touched_.push_back(i);
            if (isThere && IsBack(i, *found->second))
                continue;
            lacking_.push_back(i);
            changes_.back.push_back(file.name);
            if (isThere)
                strangers_.push_back(file.name);
        }
        for (const StandingFile& file : now.files)
            if (!known.contains(file.name.native()) && !MayCome(file.name)) {
                new_.push_back(file.name);
                strangers_.push_back(file.name);
            }
        changes_.gone = new_;
    }

    [[nodiscard]] bool IsSecondName(std::size_t number) const
    {
        const StandingFile& file = before_.files[number];
        platform::FileFacts place;
        platform::FileFacts copy;
        return file.kept && !platform::Look(folders_.trle / file.name, place) &&
               !platform::Look(wish_.copyOf(number), copy) && IsSameThing(place, copy);
    }

    [[nodiscard]] bool MayCome(const Path& name) const
    {
        return wish_.mayCome && wish_.mayCome(name);
    }
    [[nodiscard]] bool MayChange(const Path& name) const
    {
        return wish_.mayChange && wish_.mayChange(name);
    }

    /// An earlier attempt has brought it back, or nobody wrote anything else into it.
    [[nodiscard]] bool IsBack(std::size_t number, const StandingFile& now) const
    {
        const StandingFile& file = before_.files[number];
        if (file.size != now.size)
            return false;
        const Path place = folders_.trle / file.name;
        if (!file.kept)
            return SameContent(place, ResolvePath(folders_.Backup() / file.name));
        const Path copy = wish_.copyOf(number);
        const auto isGone = IsFree(copy);
        return isGone && (*isGone || SameContent(place, copy));
    }

    /// What cannot be kept stays where it is.
    void KeepStrangers()
    {
        const Keeping keeping = KeepOriginals(machine_, folders_, strangers_);
        if (keeping.failed.empty())
            return;
        Note(keeping.failure);
        unkept_ = keeping.failed;
        const auto stays = [&](const Path& name) {
            return std::find(keeping.failed.begin(), keeping.failed.end(), name) !=
                   keeping.failed.end();
        };
        std::erase_if(new_, stays);
        std::erase_if(lacking_, [&](std::size_t file) { return stays(before_.files[file].name); });
    }

    /// The folder's lock is a file that stays locked, unless something else took its place.
    void RemoveOthers(const StandingTree& now)
    {
        const std::set<Path> known(before_.others.begin(), before_.others.end());
        for (const Path& name : now.others) {
            const Path place = folders_.trle / name;
            const bool isLock = name == lockFileName && IsFileItself(place);
            if (!isLock && (!known.contains(name) || name == lockFileName))
                Note(RemoveTree(place));
        }
    }

    void RemoveNew(const StandingTree& now)
    {
        for (const Path& file : new_)
            Note(DeleteSpelled(folders_.trle / file));
        for (const StandingLink& link : now.links)
            if (!IsNoted(link) && !MayCome(link.name))
                Note(DeleteSpelled(folders_.trle / link.name));
        std::set<Path> known;
        for (const StandingFolder& folder : before_.folders)
            known.insert(folder.name);
        // Children first. One that is not empty has what stays; it is no failure.
        for (auto folder = now.folders.rbegin(); folder != now.folders.rend(); ++folder)
            if (!known.contains(folder->name) && !MayCome(folder->name))
                Note(RemoveEmpty(folders_.trle / folder->name));
    }

    static bool IsFileItself(const Path& place)
    {
        return platform::FactsOfLink(place).kind == platform::FileKind::File;
    }

    static Status RemoveEmpty(const Path& folder)
    {
        const auto failure = platform::RemoveFolder(folder);
        if (!failure || failure == std::errc::directory_not_empty ||
            failure == std::errc::no_such_file_or_directory)
            return {};
        return MakeFailure(ErrorCode::CannotDelete, TextOf(folder), failure);
    }

    enum class Behind { Nothing, Link };

    /// Those behind a link have to wait for it, and it for those that it leads to.
    void MakeFoldersAgain(Behind behind)
    {
        for (const StandingFolder& folder : before_.folders) {
            const bool isBehind = std::any_of(
                before_.links.begin(), before_.links.end(),
                [&](const StandingLink& link) { return LiesInside(folder.name, link.name); });
            if (isBehind == (behind == Behind::Link))
                Note(MakeFolders(folders_.trle / folder.name));
        }
    }

    void BringLinksBack(const StandingTree& now)
    {
        for (const StandingLink& link : before_.links) {
            const bool isThere =
                std::any_of(now.links.begin(), now.links.end(), [&](const StandingLink& found) {
                    return found.name == link.name && found.target == link.target;
                });
            if (!isThere)
                Note(BringLinkBack(link));
        }
    }

    /// A file or a folder that took its place gives way, unless something in it could not be kept.
    [[nodiscard]] Status BringLinkBack(const StandingLink& link) const
    {
        const Path place = folders_.trle / link.name;
        platform::FileFacts facts;
        if (const auto failure = platform::LookAtLink(place, facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
        const bool holdsUnkept = std::any_of(unkept_.begin(), unkept_.end(), [&](const Path& name) {
            return LiesInside(name, link.name);
        });
        if (holdsUnkept)
            return {}; // it was noted why
        Status free = MakeFolders(place.parent_path());
        if (free && facts.kind == platform::FileKind::Folder)
            free = RemoveTree(place);
        else if (free && facts.kind != platform::FileKind::Missing)
            free = DeleteSpelled(place);
        if (!free)
            return free;
        const auto failure = platform::MakeLink(link.target, place);
        return failure ? MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure) : Status{};
    }

    [[nodiscard]] bool IsNoted(const StandingLink& link) const
    {
        return std::any_of(before_.links.begin(), before_.links.end(),
                           [&](const StandingLink& known) {
                               return known.name == link.name && known.target == link.target;
                           });
    }

    [[nodiscard]] Status BringBack(std::size_t number) const
    {
        const StandingFile& file = before_.files[number];
        const Path place = folders_.trle / file.name;
        if (StandsAsBefore(file, place)) // behind a link that is back
            return {};
        const Path source =
            file.kept ? wish_.copyOf(number) : ResolvePath(folders_.Backup() / file.name);
        platform::FileFacts facts;
        if (const auto failure = platform::LookAtLink(place, facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(place), failure);
        if (facts.kind == platform::FileKind::Folder)
            (void)platform::RemoveFolder(place); // the copy tells when it stays
        if (file.kept && facts.kind == platform::FileKind::Missing &&
            !platform::HardLink(source, place))
            return {};
        return CopyFileOver(source, place, {Verify::Content, false, false, {}, 0, true});
    }

    [[nodiscard]] static bool StandsAsBefore(const StandingFile& file, const Path& place)
    {
        platform::FileFacts facts;
        return !platform::Look(place, facts) && facts.kind == platform::FileKind::File &&
               IsUntouched(file,
                           {file.name, facts.size, facts.modifiedNs, facts.changedNs, facts.inode});
    }

    /// Times and rights, which a program changes without a byte of the content.
    void BringRightsBack()
    {
        for (const std::size_t number : touched_) {
            const StandingFile& file = before_.files[number];
            const Path place = folders_.trle / file.name;
            platform::FileFacts facts;
            if (platform::Look(place, facts) || facts.kind != platform::FileKind::File)
                continue; // what kept it from coming back is told
            if (facts.modifiedNs != file.modifiedNs)
                NoteChange(place, platform::SetModified(place, file.modifiedNs));
            BringRightsBack(place, facts.mode, file.rights);
        }
        // Children first: a folder that nobody may enter closes those below it.
        for (auto folder = before_.folders.rbegin(); folder != before_.folders.rend(); ++folder) {
            const Path place = folders_.trle / folder->name;
            BringRightsBack(place, platform::FactsOf(place).mode, folder->rights);
        }
        BringRightsBack(folders_.trle, platform::FactsOf(folders_.trle).mode, before_.rights);
    }

    void BringRightsBack(const Path& place, std::uint32_t now, std::uint32_t before)
    {
        if (before != noRights && now != before)
            NoteChange(place, platform::SetMode(place, before));
    }

    void NoteChange(const Path& place, const std::error_code& failure)
    {
        if (failure)
            Note(MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure));
    }

    Machine& machine_;
    const Folders& folders_;
    const StandingTree& before_;
    const TreeWish& wish_;
    TreeChanges changes_;
    std::vector<std::size_t> lacking_; ///< numbers of files that are not as they were
    std::vector<std::size_t> touched_; ///< those that somebody may have changed at all
    std::vector<Path> new_;
    std::vector<Path> strangers_; ///< what nobody else has
    std::vector<Path> unkept_;    ///< those of them that must stay where they are
    Status failure_;              ///< the first
};

} // namespace

Result<TreeChanges> BringTreeBack(Machine& machine, const Folders& folders, const TreeWish& wish)
{
    const platform::FolderMemory memory;
    return TreeReturn{machine, folders, wish}.Run();
}

} // namespace kestrova
