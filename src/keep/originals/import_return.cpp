#include "originals/import_return.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "history/swap_journal_file.h"
#include "history/work_note.h"
#include "originals/file_names.h"
#include "originals/folder_in_the_way.h"
#include "originals/vault.h"
#include "words/wads.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

class ImportReturn
{
public:
    ImportReturn(Machine& machine, const Folders& folders, const ImportNote& note, ImportEnd end,
                 const Heartbeat& alive)
        : machine_(machine), folders_(folders), note_(note), end_(end), alive_(alive)
    {
    }

    Status Run()
    {
        const auto sameBackup = HasMark(folders_.Backup(), note_.backup);
        Note(StatusOf(sameBackup));
        sameBackup_ = sameBackup && *sameBackup;
        for (const ImportPlace& place : note_.places) {
            Beat();
            Note(LookAtPlace(place));
        }
        FindSwept();
        KeepStrangers();
        for (const Target& target : targets_)
            Note(Return(target));
        return failure_ ? End() : failure_;
    }

private:
    struct Target {
        ImportTree tree;
        Path file;
        std::string was; ///< empty: it goes
        bool stranger;
    };

    void Note(const Status& status)
    {
        if (!status && failure_)
            failure_ = status;
    }

    void Beat() const
    {
        if (alive_)
            (void)alive_();
    }

    [[nodiscard]] bool IsStranger(const ImportPlace& place, const std::string& now) const
    {
        if (now.empty() || now == place.came)
            return false;
        return end_ == ImportEnd::Recovered || note_.phase != ImportPhase::Underway;
    }

    Status LookAtPlace(const ImportPlace& place)
    {
        const Path file = PlaceOfImport(folders_, place);
        known_.insert(file);
        const auto now = HashOfPlace(folders_, place);
        if (!now)
            return now.Error();
        if (now->empty() && !place.was.empty())
            if (auto gone =
                    RemoveFolderInTheWay(machine_, folders_, RootOf(folders_, place.tree),
                                         file.lexically_relative(RootOf(folders_, place.tree)));
                !gone)
                return gone;
        if (*now != place.was)
            Add({place.tree, file, place.was, IsStranger(place, *now)});
        // A program writes names in its own spelling.
        const auto twins = CaseTwins(file);
        if (!twins)
            return twins.Error();
        for (const Path& twin : *twins)
            if (twin != file)
                twins_.push_back({place.tree, twin, {}, end_ == ImportEnd::Recovered});
        return {};
    }

    void Add(Target target)
    {
        const bool stays = target.stranger && target.tree == ImportTree::Backup && !sameBackup_;
        if (!stays)
            targets_.push_back(std::move(target));
    }

    /// What came beside the places that are noted.
    void FindSwept()
    {
        for (const ImportName& name : note_.swept) {
            const Path pattern = RootOf(folders_, name.tree) / SafeRelative(name.name).Value();
            const auto files =
                ListFiles(ResolvePath(pattern.parent_path()), pattern.filename().native());
            Note(StatusOf(files));
            if (files)
                for (const Path& file : *files)
                    twins_.push_back({name.tree, file, {}, end_ == ImportEnd::Recovered});
        }
        for (Target& target : twins_)
            if (known_.insert(target.file).second)
                Add(std::move(target));
    }

    /// What cannot be kept stays where it is.
    void KeepStrangers()
    {
        for (const ImportTree tree : {ImportTree::LevelEditor, ImportTree::Backup}) {
            const Path root = RootOf(folders_, tree);
            std::vector<Path> strangers;
            for (const Target& target : targets_)
                if (target.stranger && target.tree == tree)
                    strangers.push_back(target.file.lexically_relative(root));
            if (strangers.empty())
                continue;
            const Keeping keeping = KeepReplaced(machine_, folders_, root, strangers);
            if (keeping.failed.empty())
                continue;
            Note(keeping.failure);
            const std::set<Path> failed(keeping.failed.begin(), keeping.failed.end());
            std::erase_if(targets_, [&](const Target& target) {
                return target.tree == tree && failed.contains(target.file.lexically_relative(root));
            });
        }
    }

    [[nodiscard]] Status Return(const Target& target) const
    {
        if (target.was.empty())
            return DeleteSpelled(target.file);
        if (auto made = MakeFolders(target.file.parent_path()); !made)
            return made;
        const auto progress = [this](std::uint64_t) { return Beat(), true; };
        return CopyFileOver(ImportContents(folders_, note_.id) / target.was, target.file,
                            {Verify::Content, false, false, progress, 0, true});
    }

    /// All of it is in its place; only then the note goes.
    [[nodiscard]] Status End() const
    {
        for (auto name = note_.made.rbegin(); name != note_.made.rend(); ++name) {
            const Path folder = RootOf(folders_, name->tree) / SafeRelative(name->name).Value();
            ClearStagedLeftovers(folder);         // of a copy that was killed
            (void)platform::RemoveFolder(folder); // unless others use it
        }
        if (auto flushed = FlushTrees(folders_); !flushed)
            return flushed;
        return note_.next > 0 ? EndUndoing(folders_, note_) : DropImportUnderway(folders_, note_);
    }

    Machine& machine_;
    const Folders& folders_;
    const ImportNote& note_;
    ImportEnd end_;
    const Heartbeat& alive_;
    bool sameBackup_ = false;
    std::vector<Target> targets_;
    std::vector<Target> twins_;
    std::set<Path> known_;
    Status failure_; ///< the first
};

} // namespace

Status ReturnImport(Machine& machine, const Folders& folders, const ImportNote& note, ImportEnd end,
                    const Heartbeat& alive)
{
    return ImportReturn{machine, folders, note, end, alive}.Run();
}

} // namespace kestrova
