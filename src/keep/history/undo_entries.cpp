#include "history/undo_entries.h"

#include "archive/level_folders.h"
#include "archive/level_token.h"
#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "history/undo_tokens.h"
#include "platform/file_content.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

Path EntriesFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirUndo);
}

std::string NameOf(std::int32_t id)
{
    return ZeroPadded(id, 6);
}

/// The number of an entry's file; 0 for another name.
std::int32_t NumberOf(const Path& file)
{
    const std::string name = file.filename().native();
    const std::int32_t number = LeadingNumber(name);
    const bool fits = number > 0 && number < undoIdLimit &&
                      name == NameOf(number) + std::string{OnDisk::EndingUndo};
    return fits ? number : 0;
}

/// The first line of a file, with its end; empty when it cannot be read.
std::string FirstLine(const Path& file)
{
    platform::File opened;
    std::string text(longestChangeHead, '\0');
    std::size_t got = 0;
    if (platform::File::OpenForRead(file, opened) ||
        opened.ReadAt(0, std::as_writable_bytes(std::span{text}), got))
        return {};
    text.resize(got);
    const std::size_t end = text.find('\n');
    return end == std::string::npos ? std::string{} : text.substr(0, end);
}

/// An entry by its first line; nothing when it is none.
std::optional<ChangeHead> ReadHead(const Path& file)
{
    auto head = ParseChangeHead(FirstLine(file));
    if (!head || head->kind == ChangeKind::Unnamed || head->id != NumberOf(file))
        return {};
    return std::move(head).Value();
}

/// Newest first; what bears no number behind them.
Result<std::vector<Path>> EntryFiles(const Folders& folders)
{
    auto files = ListFiles(EntriesFolder(folders), "*" + std::string{OnDisk::EndingUndo});
    if (files)
        std::stable_sort(files->begin(), files->end(), [](const Path& one, const Path& other) {
            return NumberOf(one) > NumberOf(other);
        });
    return files;
}

/// Which entries others did or undid. Only what this program's folder noted counts.
class UsedOnes
{
public:
    explicit UsedOnes(const Folders& folders) : maker_(KnownTokenOfProgram(folders)) {}

    /// Newest first. True for one that is used.
    bool Take(const ChangeHead& entry)
    {
        if (entry.maker == maker_)
            undone_.insert(entry.undoes);
        return undone_.contains(entry.id);
    }

private:
    const std::string maker_;
    std::set<std::int32_t> undone_;
};

struct AllEntries {
    std::vector<ChangeHead> entries; ///< newest first
    std::vector<ChangeHead> used;    ///< another one came of them, and the program was killed then
    std::vector<Path> unread;        ///< newest first
};

Result<AllEntries> ReadAll(const Folders& folders)
{
    const auto files = EntryFiles(folders);
    if (!files)
        return files.Error();
    AllEntries all;
    UsedOnes used{folders};
    for (const Path& file : *files)
        if (auto entry = ReadHead(file))
            (used.Take(*entry) ? all.used : all.entries).push_back(std::move(*entry));
        else
            all.unread.push_back(file);
    return all;
}

void ClearContentsIn(const Path& folder)
{
    if (const auto files = ListFiles(folder, OnDisk::PatAll))
        for (const Path& file : *files)
            if (IsContentHash(file.filename().native()))
                (void)platform::Unlink(file); // contents that nobody names do no harm
    (void)platform::RemoveFolder(folder);
}

bool IsOurs(const Folders& folders, const ChangeHead& entry)
{
    return !entry.maker.empty() && entry.maker == KnownTokenOfProgram(folders);
}

/// True for the folder that the change set aside, with nothing in it but what it had then.
bool IsAsSetAside(const ChangeHead& entry)
{
    // The token of a level lies in its own folder, and goes with it.
    const auto token =
        KnownTokenOfLevel(entry.kind == ChangeKind::FilesLeft ? entry.home : entry.moved->to);
    const auto digest = DigestOfAside(entry.moved->to);
    return token && digest && !entry.level.empty() && *token == entry.level &&
           *digest == entry.moved->digest;
}

/// What was said of levels keeps no file, and takes no change's place that does.
bool KeepsNoFile(const ChangeHead& entry)
{
    return entry.kind == ChangeKind::LevelMarked || entry.kind == ChangeKind::LevelsMarked;
}

/// In one step, so that a killed removal leaves something that the next start clears.
void RemoveAside(const Path& folder)
{
    const Path leaving = StagedNameFor(folder);
    NotePlace(folder.parent_path());
    if (!platform::Rename(folder, leaving))
        (void)ClearPlace(leaving); // it is a leftover by its name
}

} // namespace

Path UndoEntryFile(const Folders& folders, std::int32_t id)
{
    return EntriesFolder(folders) / (NameOf(id) + std::string{OnDisk::EndingUndo});
}

Path UndoContents(const Folders& folders, const ChangeHead& entry)
{
    return entry.ofLevelsFiles ? InFolder(entry.home, OnDisk::DirUndoOfLevel) /
                                     (entry.maker + "-" + NameOf(entry.id))
                               : EntriesFolder(folders) / NameOf(entry.id);
}

Result<UndoList> ReadUndoList(const Folders& folders)
{
    auto all = ReadAll(folders);
    if (!all)
        return all.Error();
    std::reverse(all->entries.begin(), all->entries.end());
    return UndoList{std::move(all->entries), std::move(all->unread)};
}

std::optional<ChangeHead> NewestUndo(const Folders& folders,
                                     const std::function<bool(const ChangeHead&)>& isWanted)
{
    const auto files = EntryFiles(folders);
    if (!files)
        return {};
    UsedOnes used{folders};
    for (const Path& file : *files)
        if (auto entry = ReadHead(file))
            if (!used.Take(*entry) && isWanted(*entry))
                return entry;
    return {};
}

Result<Change> ReadUndoEntry(const Folders& folders, std::int32_t id)
{
    const Path file = UndoEntryFile(folders, id);
    const auto text = ReadFileIfThere(file, longestChange);
    if (!text)
        return text.Error();
    auto entry = *text ? ParseChange(**text) : Result<Change>{Failure{ErrorCode::Missing, {}, {}}};
    if (!entry || entry->kind == ChangeKind::Unnamed || entry->id != id)
        return MakeFailure(ErrorCode::Damaged, TextOf(file));
    entry->kept = UndoContents(folders, *entry).native();
    return entry;
}

std::int32_t NextUndoId(const Folders& folders)
{
    std::int32_t last = 0;
    const Path imports = InFolder(folders.program, OnDisk::DirImports);
    for (const auto& found : {ListFiles(EntriesFolder(folders), OnDisk::PatAll),
                              ListFiles(imports, OnDisk::PatAll), ListSubfolders(imports)})
        if (found)
            for (const Path& path : *found)
                if (const auto number = LeadingNumber(path.filename().native());
                    number < undoIdLimit - 1) // one more could not be told from a strange file
                    last = std::max(last, number);
    return last + 1;
}

std::uint64_t BytesOf(const Folders& folders, const ChangeHead& entry)
{
    const double kept = FolderSize(UndoContents(folders, entry)).ValueOr(0);
    const bool aside = entry.moved && !entry.isUndone;
    return static_cast<std::uint64_t>(kept) + (aside ? entry.moved->bytes : 0);
}

void ClearUndoContents(const Folders& folders, const ChangeHead& entry)
{
    if (entry.id > 0 && (!entry.ofLevelsFiles || IsOurs(folders, entry)))
        ClearContentsIn(UndoContents(folders, entry));
}

Result<std::string> DigestOfAside(const Path& folder)
{
    const auto tree = ScanTree(folder);
    if (!tree)
        return tree.Error();
    const Path own = InFolder(folder, OnDisk::DirUndoOfLevel);
    std::vector<std::string> lines;
    for (const Path& file : tree->files) {
        const Path relative = file.lexically_relative(folder);
        if (*relative.begin() == own.filename())
            continue; // what is kept for undoing comes and goes
        const auto facts = LookAtSpelled(file);
        if (!facts)
            return facts.Error();
        lines.push_back(relative.native() + '\0' + std::to_string(facts->size) + '\0' +
                        std::to_string(facts->modifiedNs) + '\n');
    }
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines)
        text += line;
    return platform::HashOf(std::as_bytes(std::span{text}));
}

void DropUndoEntry(const Folders& folders, const ChangeHead& entry)
{
    // What a removal that was undone has under that name is the level again.
    if (entry.moved && !entry.isUndone && IsOurs(folders, entry) && IsAsSetAside(entry))
        RemoveAside(entry.moved->to);
    DropUsedEntry(folders, entry);
}

void DropUsedEntry(const Folders& folders, const ChangeHead& entry)
{
    ClearUndoContents(folders, entry);
    (void)platform::Unlink(UndoEntryFile(folders, entry.id)); // the next entry tries again
}

bool HasUndoRoom(const ProgramSettings& settings, std::uint64_t bytes)
{
    return settings.undoCount > 0 && bytes <= static_cast<std::uint64_t>(settings.undoMegabytes)
                                                  << 20;
}

UndoRoom RoomForUndo(const Folders& folders, const ProgramSettings& settings)
{
    const auto all = ReadAll(folders);
    if (!all)
        return {};
    UndoRoom room{settings.undoCount, static_cast<std::uint64_t>(settings.undoMegabytes) << 20};
    for (const ChangeHead& entry : all->entries) {
        if (KeepsNoFile(entry))
            continue;
        const std::uint64_t own = BytesOf(folders, entry);
        room.count = std::max(0, room.count - 1);
        room.bytes -= std::min(room.bytes, own);
    }
    return room;
}

void BoundUndo(const Folders& folders, const ProgramSettings& settings)
{
    const auto all = ReadAll(folders);
    if (!all)
        return;
    for (const ChangeHead& entry : all->used)
        DropUsedEntry(folders, entry);
    std::int32_t countOfMarks = 0;
    std::int32_t countOfFiles = 0;
    std::uint64_t bytes = 0;
    for (const ChangeHead& entry : all->entries) {
        std::int32_t& count = KeepsNoFile(entry) ? countOfMarks : countOfFiles;
        const std::uint64_t own = BytesOf(folders, entry);
        if (count >= settings.undoCount || !HasUndoRoom(settings, bytes + own)) {
            DropUndoEntry(folders, entry);
            continue;
        }
        ++count;
        bytes += own;
    }
    // What nobody can read leads nowhere back; as many as there may be entries are left to look at.
    std::int32_t unread = 0;
    for (const Path& file : all->unread)
        if (const std::int32_t id = NumberOf(file); id > 0 && ++unread > settings.undoCount) {
            ClearContentsIn(EntriesFolder(folders) / NameOf(id));
            (void)platform::Unlink(file); // the next entry tries again
        }
}

} // namespace kestrova
