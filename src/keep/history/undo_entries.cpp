#include "history/undo_entries.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "words/message.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace kestrova
{

namespace
{

/// A file with a larger number is no entry.
constexpr std::int32_t lastId = 1'000'000'000;
constexpr std::uint64_t longestEntry = UINT64_C(16) << 20;

Path EntriesFolder(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::DirUndo);
}

std::string NameOf(std::int32_t id)
{
    return ZeroPadded(id, 6);
}

/// An entry as it stands; nothing when it is none.
std::optional<Change> ReadEntry(const Path& file)
{
    const auto text = ReadFileIfThere(file, longestEntry);
    if (!text || !*text)
        return {};
    auto change = ParseChange(**text);
    if (!change || change->kind == ChangeKind::Unnamed ||
        file.filename().native() != NameOf(change->id) + std::string{OnDisk::EndingUndo})
        return {};
    return std::move(change).Value();
}

struct AllEntries {
    std::vector<Change> entries;
    std::vector<Change> used; ///< another one came of them, and the program was killed then
};

Result<AllEntries> ReadAll(const Folders& folders)
{
    const auto files = ListFiles(EntriesFolder(folders), "*" + std::string{OnDisk::EndingUndo});
    if (!files)
        return files.Error();
    AllEntries all;
    std::set<std::int32_t> done;
    for (const Path& file : *files)
        if (auto entry = ReadEntry(file)) {
            done.insert(entry->undoes);
            all.entries.push_back(std::move(*entry));
        }
    const auto isUsed = [&](const Change& entry) { return done.contains(entry.id); };
    std::copy_if(all.entries.begin(), all.entries.end(), std::back_inserter(all.used), isUsed);
    std::erase_if(all.entries, isUsed);
    std::sort(all.entries.begin(), all.entries.end(),
              [](const Change& one, const Change& other) { return one.id < other.id; });
    return all;
}

/// In one step, so that a killed removal leaves something that the next start clears.
void RemoveAside(const Path& folder)
{
    if (folder.filename().native().find(Filled(OnDisk::FragSetAside, {"", ""})) ==
        std::string::npos)
        return; // no change gave it that name
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

Path UndoContents(const Folders& folders, std::int32_t id)
{
    return EntriesFolder(folders) / NameOf(id);
}

Path UndoContentsOfLevel(const Path& home, std::int32_t id)
{
    return InFolder(home, OnDisk::DirUndoOfLevel) / NameOf(id);
}

Result<std::vector<Change>> ReadUndoEntries(const Folders& folders)
{
    auto all = ReadAll(folders);
    if (!all)
        return all.Error();
    return std::move(all->entries);
}

std::int32_t NextUndoId(const Folders& folders)
{
    std::int32_t last = 0;
    if (const auto files = ListFiles(EntriesFolder(folders), OnDisk::PatAll))
        for (const Path& file : *files)
            if (const auto number = LeadingNumber(file.filename().native()); number < lastId)
                last = std::max(last, number);
    return last + 1;
}

std::uint64_t BytesOf(const Change& entry)
{
    const double kept =
        entry.kept.empty() ? 0 : FolderSize(entry.kept).ValueOr(0); // shown, and bounded by
    const bool aside = entry.moved && !entry.isUndone;
    return static_cast<std::uint64_t>(kept) + (aside ? entry.moved->bytes : 0);
}

void ClearUndoContents(const Path& kept)
{
    if (kept.empty())
        return;
    if (const auto files = ListFiles(kept, OnDisk::PatAll))
        for (const Path& file : *files)
            if (IsContentHash(file.filename().native()))
                (void)platform::Unlink(file); // contents that nobody names do no harm
    (void)platform::RemoveFolder(kept);
}

void DropUndoEntry(const Folders& folders, const Change& entry)
{
    // What a removal that was undone has under that name is the level again.
    if (entry.moved && !entry.isUndone && FolderExists(entry.moved->to))
        RemoveAside(entry.moved->to);
    DropUsedEntry(folders, entry);
}

void DropUsedEntry(const Folders& folders, const Change& entry)
{
    ClearUndoContents(entry.kept);
    (void)platform::Unlink(UndoEntryFile(folders, entry.id)); // the next entry tries again
}

bool HasUndoRoom(const ProgramSettings& settings, std::uint64_t bytes)
{
    return settings.undoCount > 0 && bytes <= static_cast<std::uint64_t>(settings.undoMegabytes)
                                                  << 20;
}

void BoundUndo(const Folders& folders, const ProgramSettings& settings)
{
    const auto all = ReadAll(folders);
    if (!all)
        return;
    for (const Change& entry : all->used)
        DropUsedEntry(folders, entry);
    std::int32_t count = 0;
    std::uint64_t bytes = 0;
    for (auto entry = all->entries.rbegin(); entry != all->entries.rend(); ++entry) {
        const std::uint64_t own = BytesOf(*entry);
        if (count >= settings.undoCount || !HasUndoRoom(settings, bytes + own)) {
            DropUndoEntry(folders, *entry);
            continue;
        }
        ++count;
        bytes += own;
    }
}

} // namespace kestrova
