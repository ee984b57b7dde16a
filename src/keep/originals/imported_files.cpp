#include "originals/imported_files.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/text.h"
#include "history/swap_journal_file.h"
#include "history/undo_entries.h"
#include "history/watched_files.h"
#include "originals/vault.h"
#include "words/wads.h"

namespace kestrova
{

namespace
{

/// Of a file that is looked at when it is kept.
constexpr const char* unknownHash = "?";

} // namespace

ImportedFiles::ImportedFiles(Machine& machine, Folders folders, std::string subject)
    : machine_(machine), folders_(std::move(folders))
{
    note_.subject = std::move(subject);
}

ImportedFiles::~ImportedFiles()
{
    if (open_)
        (void)TakeBack(); // what fails waits for the next start
}

Status ImportedFiles::Open()
{
    if (ImportWaits(folders_))
        return Failure{ErrorCode::Refused, TextOf(folders_.trle), GetMsg(Msg::ImportStillWaits)};
    auto folder = MarkOf(folders_.trle);
    auto backup = MarkOf(folders_.Backup());
    if (!folder || !backup)
        return folder ? backup.Error() : folder.Error();
    note_.folder = std::move(*folder);
    note_.backup = std::move(*backup);
    note_.id = NextUndoId(folders_);
    note_.madeNs = machine_.NowNs();
    return {};
}

Status ImportedFiles::Watch(const std::vector<ImportPlace>& places,
                            const std::vector<ImportName>& swept, const Heartbeat& beat)
{
    auto watched = KeepAndNote(places, swept, beat);
    if (!watched && !open_ && note_.id > 0)
        (void)DropImportUnderway(folders_, note_); // nothing is under way
    return watched;
}

Status ImportedFiles::KeepAndNote(const std::vector<ImportPlace>& places,
                                  const std::vector<ImportName>& swept, const Heartbeat& beat)
{
    if (!open_)
        if (auto opened = Open(); !opened)
            return opened;
    FoundPlaces found;
    for (const ImportPlace& place : places)
        LookAtPlace(place, found);
    for (const ImportName& name : swept)
        if (auto looked = LookAtSwept(name, found); !looked)
            return looked;
    for (const ImportTree tree : {ImportTree::LevelEditor, ImportTree::Backup})
        if (auto kept = KeepFound(found.all, tree, beat); !kept)
            return kept;
    for (const Found& one : found.all) {
        numbers_.emplace(std::pair{one.place.tree, one.place.name}, note_.places.size());
        free_.emplace(one.place.tree, FoldCase(one.place.name));
        note_.places.push_back(one.place);
    }
    note_.swept.insert(note_.swept.end(), swept.begin(), swept.end());
    // What it names is on the disk before the note is.
    if (const auto failure = platform::SyncFileSystem(ResolvePath(folders_.program)))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(folders_.program), failure);
    return WriteNote();
}

Status ImportedFiles::WriteNote()
{
    auto written = WriteImportUnderway(folders_, note_);
    open_ = open_ || written;
    return written;
}

/// Under any spelling; without one under the name that is wished. A name that leads elsewhere, and
/// a place that cannot be looked at, are left out, and so may not change.
void ImportedFiles::LookAtPlace(const ImportPlace& wish, FoundPlaces& found)
{
    const auto relative = SafeRelative(wish.name);
    const auto place = relative ? FindPath(RootOf(folders_, wish.tree) / *relative)
                                : Result<Path>{relative.Error()};
    auto twins = place ? CaseTwins(*place) : Result<std::vector<Path>>{place.Error()};
    if (!twins)
        return;
    if (std::find(twins->begin(), twins->end(), *place) == twins->end())
        twins->push_back(*place);
    for (const Path& twin : *twins)
        (void)AddFound(wish.tree, twin, wish.came, found);
}

Status ImportedFiles::LookAtSwept(const ImportName& name, FoundPlaces& found)
{
    const auto relative = SafeRelative(name.name);
    if (!relative)
        return relative.Error();
    const Path pattern = RootOf(folders_, name.tree) / *relative;
    const auto files = ListFiles(ResolvePath(pattern.parent_path()), pattern.filename().native());
    if (!files)
        return files.Error();
    for (const Path& file : *files)
        if (auto added = AddFound(name.tree, file, {}, found); !added)
            return added;
    for (Found& one : found.all)
        one.mustBeKept = one.mustBeKept ||
                         (one.place.tree == name.tree && MatchesPattern(one.place.name, name.name));
    return {};
}

/// What cannot be a file's place is left out, and so may not change.
Status ImportedFiles::AddFound(ImportTree tree, const Path& file, const std::string& came,
                               FoundPlaces& found)
{
    const Path relative = file.lexically_relative(RootOf(folders_, tree));
    const std::string name = ToBackslashes(relative);
    const auto known = numbers_.find({tree, name});
    if (known != numbers_.end()) {
        note_.places[known->second].came = came;
        return {};
    }
    if (!found.names.emplace(tree, name).second)
        return {};
    const auto facts = LookAt(file);
    if (!facts)
        return facts.Error();
    const bool isMissing = facts->kind == platform::FileKind::Missing;
    if (isMissing || facts->kind == platform::FileKind::File)
        found.all.push_back(
            {{tree, name, std::string{isMissing ? "" : unknownHash}, came}, relative});
    return {};
}

Status ImportedFiles::KeepFound(std::vector<Found>& found, ImportTree tree, const Heartbeat& beat)
{
    std::vector<Path> relatives;
    for (const Found& one : found)
        if (one.place.tree == tree && !one.place.was.empty())
            relatives.push_back(one.relative);
    if (relatives.empty())
        return {};
    const Keeping keeping =
        KeepReplaced(machine_, folders_, RootOf(folders_, tree), relatives, beat);
    if (beat && !beat())
        return MakeFailure(ErrorCode::Stopped, {});
    const Path contents = ImportContents(folders_, note_.id);
    if (auto made = MakeFolders(contents); !made)
        return made;
    for (Found& one : found) {
        if (one.place.tree != tree || one.place.was.empty())
            continue;
        const auto kept = keeping.contents.find(one.relative);
        if (kept == keeping.contents.end()) {
            if (one.mustBeKept)
                return keeping.failure;
            one.place.name.clear();
            continue;
        }
        const auto hash = HashIfThere(kept->second);
        if (!hash)
            return hash.Error();
        one.place.was = *hash;
        if (!IsFile(contents / *hash).ValueOr(false))
            if (auto named = GiveSecondName(kept->second, contents / *hash,
                                            {Verify::Content, false, false, {}});
                !named)
                return named;
    }
    std::erase_if(found, [](const Found& one) { return one.place.name.empty(); });
    return {};
}

Status ImportedFiles::MakeFolderOf(ImportTree tree, std::string_view name)
{
    if (!open_)
        if (auto opened = Open(); !opened)
            return opened;
    const auto relative = SafeRelative(name);
    if (!relative)
        return relative.Error();
    const Path root = RootOf(folders_, tree);
    const auto hasRoot = IsFolder(root);
    if (!hasRoot || !*hasRoot)
        return hasRoot ? MakeFailure(ErrorCode::Missing, TextOf(root)) : hasRoot.Error();
    const auto place = FindPath(root / *relative);
    if (!place)
        return place.Error();
    std::vector<ImportName> missing;
    for (Path above = *place; above != root && above.has_relative_path();
         above = above.parent_path()) {
        const auto isFree = IsFree(above);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            break;
        missing.insert(missing.begin(), {tree, ToBackslashes(above.lexically_relative(root))});
    }
    if (missing.empty())
        return IsFolder(*place).ValueOr(false) ? Status{}
                                               : MakeFailure(ErrorCode::Refused, TextOf(*place));
    note_.made.insert(note_.made.end(), missing.begin(), missing.end());
    auto noted = WriteNote();
    return noted ? MakeFolders(*place) : noted;
}

bool ImportedFiles::MayChange(ImportTree tree, std::string_view name) const
{
    const auto relative = SafeRelative(name);
    return relative && free_.contains({tree, FoldCase(ToBackslashes(*relative))});
}

Status ImportedFiles::PutBack(ImportTree tree, std::string_view name) const
{
    for (const ImportPlace& place : note_.places)
        if (place.tree == tree && !place.was.empty() && EqualNames(place.name, name))
            if (auto copied =
                    CopyFileOver(ImportContents(folders_, note_.id) / place.was,
                                 RootOf(folders_, tree) / SafeRelative(place.name).Value(),
                                 {Verify::Content, false, false, {}, 0, true});
                !copied)
                return copied;
    return {};
}

/// What stands at each place now; a place where nothing has changed is none.
Status ImportedFiles::LookAtWhatCame(const Heartbeat& alive)
{
    FoundPlaces swept;
    for (const ImportName& name : note_.swept)
        if (auto looked = LookAtSwept(name, swept); !looked)
            return looked;
    for (Found& one : swept.all) {
        one.place.was.clear();
        note_.places.push_back(one.place);
    }
    note_.swept.clear(); // what matches them from now on did not come with the import
    for (ImportPlace& place : note_.places) {
        if (alive)
            (void)alive();
        const Path file = RootOf(folders_, place.tree) / SafeRelative(place.name).Value();
        const auto facts = LookAtSpelled(file);
        const auto now =
            facts && facts->kind == platform::FileKind::File ? HashIfThere(file) : std::string{};
        if (!facts || !now)
            return facts ? now.Error() : facts.Error();
        place.came = *now;
    }
    std::erase_if(note_.places, [](const ImportPlace& place) { return place.came == place.was; });
    return {};
}

Status ImportedFiles::End(const Heartbeat& alive)
{
    if (!open_)
        return {};
    if (auto looked = LookAtWhatCame(alive); !looked)
        return looked;
    if (note_.places.empty()) {
        open_ = false;
        return DropImportUnderway(folders_, note_);
    }
    if (auto flushed = FlushTrees(folders_); !flushed)
        return flushed;
    note_.phase = ImportPhase::Done;
    if (auto written = WriteImportUnderway(folders_, note_); !written) {
        note_.phase = ImportPhase::Underway;
        return written;
    }
    open_ = false;
    return NoteToImportEntry(folders_, note_);
}

Status ImportedFiles::TakeBack(const Heartbeat& alive)
{
    open_ = false;
    return ReturnImport(machine_, folders_, note_, ImportEnd::Own, alive);
}

} // namespace kestrova
