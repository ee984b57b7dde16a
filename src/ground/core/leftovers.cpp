#include "core/leftovers.h"

#include "core/removal.h"
#include "core/staged_file.h"
#include "platform/file_content.h"
#include "platform/places.h"
#include "platform/process.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <mutex>
#include <set>

namespace kestrova
{

namespace
{

/// The places of this process that are noted, and the file that holds them.
struct Notes {
    std::mutex guard;
    Path folder; ///< empty: nothing is noted
    platform::File file;
    Path filePath;
    std::set<std::string> places;
};

Notes& OwnNotes()
{
    static Notes notes;
    return notes;
}

/// Ends each place of a file: no path holds it.
constexpr char placeEnd = '\0';
constexpr std::uint64_t longestNotes = UINT64_C(64) << 20;

/// The number in front of a `-`.
std::optional<std::int64_t> NumberBefore(std::string_view text)
{
    constexpr int hexadecimal = 16;
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, number, hexadecimal);
    return failure == std::errc{} && rest != end && *rest == '-' ? std::optional{number}
                                                                 : std::nullopt;
}

/// True for the number of a process that has ended. This one's own number counts: whoever asks has
/// just started, and what bears the number is of a process before it.
bool HasEnded(std::int64_t process)
{
    return process == platform::OwnProcess() || !platform::IsRunning(process);
}

/// A file of this process's number that no other has; the caller holds the guard.
bool OpenOwn(Notes& notes)
{
    if (platform::MakeFolders(notes.folder))
        return false;
    constexpr int mostAlike = 100;
    for (int number = 1; number < mostAlike; ++number) {
        notes.filePath = notes.folder / fmt::format("{:x}-{}", platform::OwnProcess(), number);
        const auto failure = platform::File::CreateNew(notes.filePath, notes.file);
        if (failure != std::errc::file_exists)
            return !failure;
    }
    return false;
}

} // namespace

std::optional<std::int64_t> OwnerOfStaged(std::string_view name)
{
    return name.starts_with(stagedPrefix) ? NumberBefore(name.substr(stagedPrefix.size()))
                                          : std::nullopt;
}

void NotePlacesIn(const Path& folder)
{
    Notes& notes = OwnNotes();
    const std::lock_guard lock{notes.guard};
    notes.folder = folder;
    notes.file = {};
    notes.filePath.clear();
    notes.places.clear();
}

void NotePlace(const Path& place)
{
    Notes& notes = OwnNotes();
    const std::lock_guard lock{notes.guard};
    if (notes.folder.empty() || notes.places.contains(place.native()))
        return;
    if (!notes.file.IsOpen() && !OpenOwn(notes))
        return;
    const std::string text =
        (place.is_absolute() ? place : platform::AbsolutePath(place)).native() + placeEnd;
    if (!notes.file.Write(std::as_bytes(std::span(text))))
        notes.places.insert(place.native());
}

std::vector<KilledNote> NotesOfKilled(const Path& folder)
{
    Path own;
    {
        Notes& notes = OwnNotes();
        const std::lock_guard lock{notes.guard};
        own = notes.filePath;
    }
    std::vector<platform::FolderEntry> entries;
    (void)platform::ListFolder(folder, entries); // not there before the first note
    std::vector<KilledNote> killed;
    for (const platform::FolderEntry& entry : entries) {
        const auto process = NumberBefore(entry.name);
        KilledNote note{folder / entry.name, {}};
        std::string text;
        if (!process || !HasEnded(*process) || note.file == own ||
            platform::ReadAll(note.file, text, longestNotes)) // the next start reads it
            continue;
        std::size_t at = 0;
        for (std::size_t end = 0; (end = text.find(placeEnd, at)) != std::string::npos;
             at = end + 1)
            note.places.emplace_back(text.substr(at, end - at));
        killed.push_back(std::move(note));
    }
    return killed;
}

void RewriteNote(const KilledNote& note)
{
    std::string text;
    for (const Path& place : note.places)
        text += place.native() + placeEnd;
    // A note that stays costs another look at its places.
    if (text.empty())
        (void)platform::Unlink(note.file);
    else
        (void)WriteWholeFile(note.file, text, false);
}

std::vector<Path> LeftoversIn(const Path& place)
{
    std::vector<platform::FolderEntry> entries;
    (void)platform::ListFolder(place, entries); // what cannot be seen is looked for another time
    std::vector<Path> left;
    for (const platform::FolderEntry& entry : entries)
        if (const auto owner = OwnerOfStaged(entry.name); owner && HasEnded(*owner))
            left.push_back(place / entry.name);
    return left;
}

std::vector<Path> ClearLeftoversIn(const Path& place)
{
    std::vector<Path> left = LeftoversIn(place);
    std::erase_if(left, [](const Path& path) { return static_cast<bool>(RemoveTree(path)); });
    return left;
}

} // namespace kestrova
