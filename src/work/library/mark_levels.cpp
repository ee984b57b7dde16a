#include "library/mark_levels.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "history/marked_levels.h"
#include "history/undo_entries.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/library.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Texts are refused where they are too long, never cut.
bool AreWithinBounds(Host& host, const LevelMarks& marks)
{
    const auto isLong = [](const std::string& tag) { return Readable(tag).size() > longestTag; };
    if (std::any_of(marks.addTags.begin(), marks.addTags.end(), isLong) ||
        (marks.tags && std::any_of(marks.tags->begin(), marks.tags->end(), isLong)))
        return Refuse(host, GetMsg(Msg::TagTooLong, {std::to_string(longestTag)}));
    if (marks.ownNote && Readable(*marks.ownNote).size() > longestOwnNote)
        return Refuse(host, GetMsg(Msg::OwnNoteTooLong, {std::to_string(longestOwnNote)}));
    return true;
}

bool HasShot(Host& host, const Folders& folders, LevelCode code, const std::string& name)
{
    const auto safe = SafeName(name);
    const auto isThere =
        safe ? IsFile(InFolder(LevelHomeOf(folders, code), OnDisk::DirScreenshots) / *safe)
             : Result<bool>{false};
    if (!isThere)
        return TellFolderNotRead(host, isThere.Error());
    return *isThere ||
           Refuse(host, GetMsg(Msg::CoverNotThere, {Readable(name), std::to_string(code)}));
}

bool MayMark(Host& host, const Folders& folders, const Archive& archive,
             const std::vector<LevelCode>& codes, const LevelMarks& marks)
{
    for (const LevelCode code : codes)
        if (archive.Find(code) == nullptr)
            return Refuse(host, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
    if (!AreWithinBounds(host, marks))
        return false;
    return !marks.cover || marks.cover->empty() ||
           std::all_of(codes.begin(), codes.end(),
                       [&](LevelCode code) { return HasShot(host, folders, code, *marks.cover); });
}

/// False when they are too many.
bool MarkTags(std::vector<std::string>& tags, const LevelMarks& marks)
{
    if (marks.tags)
        tags = *marks.tags;
    for (const std::string& tag : marks.addTags)
        if (std::none_of(tags.begin(), tags.end(),
                         [&](const std::string& known) { return IsSameTag(known, tag); }))
            tags.push_back(tag);
    for (const std::string& tag : marks.dropTags)
        std::erase_if(tags, [&](const std::string& known) { return IsSameTag(known, tag); });
    return tags.size() <= mostTags;
}

/// The entry of what was typed just before, for it to be undone with this. No value for any other.
std::optional<Change> TypedBefore(const Folders& folders, const Change& typed)
{
    const auto head = NewestUndo(folders, [](const ChangeHead&) { return true; });
    if (!head || head->kind != ChangeKind::LevelMarked || head->isUndone ||
        head->level != typed.level || head->subject != typed.subject)
        return std::nullopt;
    auto entry = ReadUndoEntry(folders, head->id);
    const bool isIt = entry && entry->marks.size() == 1 && typed.marks.size() == 1 &&
                      entry->marks.front().after == typed.marks.front().before;
    return isIt ? std::optional{std::move(entry).Value()} : std::nullopt;
}

void LeaveEntryOf(const ChangeParts& parts, const std::vector<ChangedNote>& changed, bool goesOn)
{
    if (parts.settings.undoCount == 0)
        return;
    auto marking = MarkingOf(parts, changed);
    if (!marking)
        return;
    const auto earlier = goesOn ? TypedBefore(parts.folders, *marking) : std::nullopt;
    if (earlier)
        marking->marks.front().before = earlier->marks.front().before;
    if (marking->marks.front().before != marking->marks.front().after)
        NoteDone(parts.folders, parts.settings, *marking);
    if (earlier)
        DropUsedEntry(parts.folders, *earlier);
}

} // namespace

std::optional<std::vector<ChangedNote>>
MarkLevels(const ArchiveParts& parts, const std::vector<LevelCode>& codes, const LevelMarks& marks)
{
    const Operation operation{parts};
    const Folders& folders = parts.folders;
    if (!MayMark(parts.host, folders, parts.archive, codes, marks))
        return std::nullopt;
    bool tooManyTags = false;
    auto changed = ChangeNotes(folders, parts.archive, codes, [&](LevelCode, LevelNote& note) {
        std::vector<std::string> tags = note.tags;
        if (MarkTags(tags, marks))
            note.tags = std::move(tags);
        else
            tooManyTags = true;
        note.status = marks.status.value_or(note.status);
        note.stars = marks.stars.value_or(note.stars);
        note.ownNote = marks.ownNote.value_or(note.ownNote);
        note.cover = marks.cover.value_or(note.cover);
    });
    if (!changed) {
        TellFailure(parts.host, GetMsg(Msg::NotesNotWritten, {TextOf(LibraryFileOf(folders))}),
                    changed.Error());
        return std::nullopt;
    }
    if (!changed->setAside.empty())
        parts.host.Tell(Tone::Warning, GetMsg(Msg::NotesSetAside, {TextOf(changed->setAside)}));
    if (tooManyTags)
        parts.host.Tell(Tone::Warning, GetMsg(Msg::TooManyTags, {std::to_string(mostTags)}));
    LeaveEntryOf(parts, changed->levels, marks.goesOn);
    parts.list.Refresh();
    return std::move(changed->levels);
}

} // namespace kestrova
