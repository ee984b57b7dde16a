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
#include "originals/vault.h"
#include "words/wads.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestImportNote = UINT64_C(64) << 20;
constexpr std::size_t mostImports = 20;

Path ImportNotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragImport);
}

std::string NameOfImport(std::int32_t id)
{
    return ZeroPadded(id, 6);
}

Path EntryOfImport(const Folders& folders, std::int32_t id)
{
    return InFolder(folders.program, OnDisk::DirImports) /
           (NameOfImport(id) + std::string{OnDisk::EndingImport});
}

Path PathOf(const Folders& folders, const ImportPlace& place)
{
    return RootOf(folders, place.tree) / SafeRelative(place.name).Value();
}

/// Its entry goes first, so that none is left without its contents.
void DropImport(const Folders& folders, std::int32_t id)
{
    (void)platform::Unlink(EntryOfImport(folders, id));
    const Path contents = ImportContents(folders, id);
    if (const auto files = ListFiles(contents, OnDisk::PatAll))
        for (const Path& file : *files)
            if (IsContentHash(file.filename().native()))
                (void)platform::Unlink(file); // contents that nobody names do no harm
    (void)platform::RemoveFolder(contents);
}

/// Hash of exactly that name's content; empty when no file has it.
Result<std::string> HashOfPlace(const Path& file)
{
    const auto facts = LookAtSpelled(file);
    if (!facts)
        return facts.Error();
    return facts->kind == platform::FileKind::File ? HashIfThere(file) : std::string{};
}

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
        const Path file = PathOf(folders_, place);
        known_.insert(file);
        const auto now = HashOfPlace(file);
        if (!now)
            return now.Error();
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
        return DropImportUnderway(folders_, note_);
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

Path RootOf(const Folders& folders, ImportTree tree)
{
    return tree == ImportTree::LevelEditor ? folders.trle : folders.Backup();
}

Status FlushTrees(const Folders& folders)
{
    for (const Path& place : {folders.program, folders.Backup(), folders.trle}) {
        const auto isThere = IsFolder(place);
        if (!isThere)
            return isThere.Error();
        if (!*isThere)
            continue;
        if (const auto failure = platform::SyncFileSystem(ResolvePath(place)))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    }
    return {};
}

Result<std::optional<ImportNote>> ReadImportUnderway(const Folders& folders)
{
    using Found = std::optional<ImportNote>;
    const auto text = ReadFileIfThere(ImportNotePath(folders), longestImportNote);
    if (!text)
        return text.Error();
    if (!*text)
        return Found{};
    auto note = ParseImportNote(**text);
    return note ? Result<Found>{std::move(*note)} : note.Error();
}

Status WriteImportUnderway(const Folders& folders, const ImportNote& note)
{
    return WriteWorkNote(ImportNotePath(folders), FormatImportNote(note));
}

bool ImportWaits(const Folders& folders)
{
    return !IsFree(ImportNotePath(folders)).ValueOr(false);
}

Result<Path> SetImportNoteAside(const Folders& folders)
{
    return RenameAside(ImportNotePath(folders));
}

Status DropImportUnderway(const Folders& folders, const ImportNote& note)
{
    // An entry that is left without its note would be undone once more, and finds nothing to do.
    if (auto dropped = StatusOf(DropWorkNote(ImportNotePath(folders))); !dropped)
        return dropped;
    (void)FlushFolder(ImportNotePath(folders).parent_path());
    DropImport(folders, note.id);
    return {};
}

Path ImportContents(const Folders& folders, std::int32_t id)
{
    return InFolder(folders.program, OnDisk::DirImports) / NameOfImport(id);
}

std::int32_t NextImportId(const Folders& folders)
{
    const Path place = InFolder(folders.program, OnDisk::DirImports);
    std::int32_t last = 0;
    for (const auto& names : {ListFiles(place, OnDisk::PatAll), ListSubfolders(place)})
        if (names)
            for (const Path& name : *names)
                last = std::max(last, LeadingNumber(name.filename().native()));
    return last + 1;
}

Status NoteToImportEntry(const Folders& folders, const ImportNote& note)
{
    const Path entry = EntryOfImport(folders, note.id);
    if (auto status = MakeFolders(entry.parent_path()); !status)
        return status;
    if (const auto failure = platform::Rename(ImportNotePath(folders), entry))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(entry), failure);
    (void)FlushFolder(entry.parent_path());
    if (const auto imports = ReadImports(folders); imports && imports->size() > mostImports)
        for (std::size_t i = 0; i < imports->size() - mostImports; ++i)
            DropImport(folders, (*imports)[i].id);
    return {};
}

Result<std::vector<ImportNote>> ReadImports(const Folders& folders)
{
    const auto files = ListFiles(InFolder(folders.program, OnDisk::DirImports), OnDisk::PatImports);
    if (!files)
        return files.Error();
    std::vector<ImportNote> imports;
    for (const Path& file : *files) {
        const auto text = ReadFileIfThere(file, longestImportNote);
        auto note = text && *text ? ParseImportNote(**text)
                                  : Result<ImportNote>{MakeFailure(ErrorCode::Damaged, {})};
        if (note && note->phase == ImportPhase::Done && file == EntryOfImport(folders, note->id))
            imports.push_back(std::move(*note));
    }
    std::sort(imports.begin(), imports.end(),
              [](const ImportNote& a, const ImportNote& b) { return a.id < b.id; });
    return imports;
}

Status ReturnImport(Machine& machine, const Folders& folders, const ImportNote& note, ImportEnd end,
                    const Heartbeat& alive)
{
    return ImportReturn{machine, folders, note, end, alive}.Run();
}

Status MayUndoImport(const Folders& folders, const ImportNote& entry, const Heartbeat& beat)
{
    const auto isSame = HasMark(folders.trle, entry.folder);
    if (!isSame)
        return isSame.Error();
    if (!*isSame && folders.trle != Path{entry.folder.path})
        return InWords(ErrorCode::Refused, GetMsg(Msg::ImportOtherFolder, {entry.folder.path}));
    for (const ImportPlace& place : entry.places) {
        if (beat && !beat())
            return MakeFailure(ErrorCode::Stopped, {});
        const Path file = PathOf(folders, place);
        const auto now = HashOfPlace(file);
        if (!now)
            return now.Error();
        if (!now->empty() && *now != place.came && *now != place.was)
            return InWords(ErrorCode::Differs, GetMsg(Msg::ImportChangedSince, {TextOf(file)}));
        if (place.was.empty())
            continue;
        const Path kept = ImportContents(folders, entry.id) / place.was;
        const auto content = HashIfThere(kept);
        if (!content)
            return content.Error();
        if (*content != place.was && *now != place.was)
            return InWords(ErrorCode::Missing, GetMsg(Msg::ImportContentGone, {TextOf(file)}));
    }
    return {};
}

Status UndoImport(Machine& machine, const Folders& folders, ImportNote entry,
                  const Heartbeat& alive)
{
    entry.phase = ImportPhase::Undoing;
    if (auto noted = WriteImportUnderway(folders, entry); !noted)
        return noted;
    return ReturnImport(machine, folders, entry, ImportEnd::Recovered, alive);
}

} // namespace kestrova
