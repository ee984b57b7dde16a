#include "history/archive_move.h"

#include "archive/archive_entries.h"
#include "archive/archive_saving.h"
#include "core/copying.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "formats/program_folder.h"
#include "history/work_note.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestMoveNote = 64 << 10;

Result<WholeTree> ScanArchive(const Path& folder, const Heartbeat& heartbeat)
{
    const auto names = NamesOfArchive(folder);
    return names ? ScanWhole(folder, *names, heartbeat) : names.Error();
}

/// True for a copy of an old entry, and for a file that a killed copy had under way.
Result<bool> IsOurCopy(const WholeEntry& entry, const MoveNote& note, const Heartbeat& heartbeat)
{
    platform::FileFacts old;
    if (const auto failure = platform::LookAtLink(Path{note.from} / entry.name, old))
        return MakeFailure(ErrorCode::CannotRead, TextOf(Path{note.from} / entry.name), failure);
    if (old.kind == platform::FileKind::Missing)
        return entry.name.filename().native().starts_with(stagedPrefix);
    if (old.kind == entry.facts.kind && old.size == entry.facts.size &&
        old.modifiedNs == entry.facts.modifiedNs)
        return true;
    return HasCopy(entry, note.to, note.from, heartbeat);
}

} // namespace

Path MoveNotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragMove);
}

Result<std::optional<MoveNote>> ReadMoveNote(const Folders& folders)
{
    const Path file = MoveNotePath(folders);
    const auto text = ReadFileIfThere(file, longestMoveNote);
    if (!text)
        return text.Error();
    if (!*text)
        return std::optional<MoveNote>{};
    auto note = ParseMoveNote(**text);
    if (!note)
        return Failure{ErrorCode::Damaged, TextOf(file), {}};
    return std::optional{std::move(note).Value()};
}

Status WriteMoveNote(const Folders& folders, const MoveNote& note)
{
    return WriteWorkNote(MoveNotePath(folders), FormatMoveNote(note));
}

Status DropMoveNote(const Folders& folders)
{
    const Path file = MoveNotePath(folders);
    const auto dropped = DropWorkNote(file);
    if (!dropped)
        return dropped.Error();
    return *dropped ? FlushFolder(file.parent_path()) : Status{};
}

bool MoveWaits(const Folders& folders)
{
    return !IsFree(MoveNotePath(folders)).ValueOr(false);
}

Result<Path> FolderOfList(const ProgramSettings& settings, const Path& file)
{
    const auto content = ReadArchiveFile(ResolvePath(file));
    if (!content)
        return content.Error();
    return FolderFromText(
        Trim(ExactFolder(settings, ExactFolderField(ArchiveFolder::Secondary, ResolvePath(file)),
                         content->header.secondaryFolder)));
}

Status RemoveMoved(const MoveNote& note, const WholeTree* copied, const Heartbeat& heartbeat)
{
    const Path from{note.from};
    const auto isCopied = [&](const WholeEntry& entry) -> Result<bool> {
        platform::FileFacts now;
        if (copied != nullptr && !platform::LookAtLink(from / entry.name, now) &&
            IsUnchanged(entry.facts, now))
            return true;
        return HasCopy(entry, from, note.to, heartbeat);
    };
    if (copied != nullptr)
        return RemoveWhole(*copied, from, isCopied, heartbeat);
    const auto tree = ScanArchive(from, heartbeat);
    return tree ? RemoveWhole(*tree, from, isCopied, heartbeat) : tree.Error();
}

Status RemoveCopies(const MoveNote& note, const Heartbeat& heartbeat)
{
    (void)ClearLeftoversIn(note.to); // what stays of it is cleared with other leftovers
    const auto tree = ScanArchive(note.to, heartbeat);
    if (!tree)
        return tree.Error();
    return RemoveWhole(
        *tree, note.to, [&](const WholeEntry& entry) { return IsOurCopy(entry, note, heartbeat); },
        heartbeat);
}

std::vector<Path> WhatStayed(const Path& folder)
{
    std::vector<Path> stayed;
    for (const std::string& name : NamesOfArchive(folder).ValueOr({}))
        stayed.push_back(folder / name);
    return stayed;
}

} // namespace kestrova
