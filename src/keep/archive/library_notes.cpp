#include "archive/library_notes.h"

#include "archive/level_folders.h"
#include "archive/level_token.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "platform/files.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Entries of levels that are on no list go beyond it, the oldest first.
constexpr std::size_t mostKeptEntries = 100'000;
/// Tokens of more levels than that are flushed together.
constexpr std::size_t fewLevels = 8;
constexpr std::size_t noEntry = static_cast<std::size_t>(-1);

std::string NameOnList(const LevelRecord& level)
{
    return Readable(Trim(level.levelName));
}

/// Which entry of a file is a level's.
class EntryFinder
{
public:
    EntryFinder(const Folders& folders, const LibraryFile& library)
        : folders_(folders), library_(library)
    {
        for (std::size_t i = 0; i < library.levels.size(); ++i)
            byCode_.emplace_back(library.levels[i].code, i);
        std::sort(byCode_.begin(), byCode_.end());
    }

    /// `noEntry` for a level of which nothing is noted. The file of the level's token is read only
    /// where number and name together do not tell.
    [[nodiscard]] std::size_t Find(const LevelRecord& level) const
    {
        const auto first = std::lower_bound(byCode_.begin(), byCode_.end(),
                                            std::pair{level.levelCode, std::size_t{0}});
        const auto last =
            std::upper_bound(first, byCode_.end(), std::pair{level.levelCode, noEntry});
        if (first == last)
            return noEntry;
        if (level.levelCode == originalCode ||
            (last - first == 1 && library_.levels[first->second].name == NameOnList(level)))
            return std::prev(last)->second;
        const std::string token =
            KnownTokenOfLevel(LevelHomeOf(folders_, level.levelCode)).ValueOr({});
        for (auto at = last; at != first;) // of several the later counts
            if (IsOf(library_.levels[(--at)->second], level, token))
                return at->second;
        return noEntry;
    }

private:
    static bool IsOf(const LibraryEntry& entry, const LevelRecord& level, const std::string& token)
    {
        return entry.token.empty() ? entry.name == NameOnList(level) : entry.token == token;
    }

    const Folders& folders_;
    const LibraryFile& library_;
    std::vector<std::pair<LevelCode, std::size_t>> byCode_;
};

/// No value where there is no file.
Result<std::optional<LibraryFile>> ReadLibrary(const Path& file)
{
    const auto text = ReadKeptFile(file, longestLibrary);
    if (!text)
        return text.Error();
    if (!*text)
        return std::optional<LibraryFile>{};
    auto library = ParseLibrary(**text);
    if (!library)
        return MakeFailure(ErrorCode::Damaged, TextOf(file));
    return std::optional{std::move(*library)};
}

/// The folder's token; empty where there is no folder, or none can be made in it.
std::string TokenForEntry(const Folders& folders, LevelCode code, bool flush)
{
    return code == originalCode
               ? std::string{}
               : TokenOfLevel(LevelHomeOf(folders, code), flush).ValueOr(std::string{});
}

/// The file as it is read, changed and written again; a damaged one gives way.
class LibraryChange
{
public:
    LibraryChange(const Folders& folders, const Archive& archive)
        : folders_(folders), archive_(archive), file_(LibraryFileOf(folders))
    {
    }

    Status Read()
    {
        if (auto status = ArchiveFolderIsThere(archive_); !status)
            return status;
        auto library = ReadLibrary(file_);
        damaged_ = !library && library.Error().code == ErrorCode::Damaged;
        if (!library && !damaged_)
            return library.Error();
        if (library && *library)
            library_ = std::move(**library);
        return {};
    }

    [[nodiscard]] const LibraryFile& Library() const { return library_; }
    LibraryEntry& At(std::size_t place) { return library_.levels[place]; }

    LibraryEntry& Add(const LevelRecord& level)
    {
        library_.levels.push_back({level.levelCode, {}, {}, {}, {}});
        return library_.levels.back();
    }

    /// Answers where a damaged file lies now.
    Result<Path> Write()
    {
        Forget();
        const std::string text = FormatLibrary(library_);
        if (text.size() > longestLibrary)
            return MakeFailure(ErrorCode::Refused, TextOf(file_),
                               std::make_error_code(std::errc::file_too_large));
        Path aside;
        if (damaged_) {
            const auto name = FreeNumbered(ResolvePath(file_));
            if (!name)
                return name.Error();
            if (const auto failure = platform::Rename(ResolvePath(file_), *name))
                return MakeFailure(ErrorCode::CannotWrite, TextOf(file_), failure);
            aside = *name;
        }
        // What a link leads to is written only where it was read as such a file.
        if (auto status = WriteKeptFile(file_, text); !status)
            return status.Error();
        return aside;
    }

private:
    /// Entries of no level of this list, while there are far too many.
    void Forget()
    {
        if (library_.levels.size() <= mostKeptEntries)
            return;
        std::vector<bool> isOfLevel(library_.levels.size(), false);
        const EntryFinder finder{folders_, library_};
        for (const LevelRecord& level : archive_.levels)
            if (const std::size_t place = finder.Find(level); place != noEntry)
                isOfLevel[place] = true;
        std::size_t tooMany = library_.levels.size() - mostKeptEntries;
        std::vector<LibraryEntry> kept;
        for (std::size_t i = 0; i < library_.levels.size(); ++i)
            if (isOfLevel[i] || tooMany == 0)
                kept.push_back(std::move(library_.levels[i]));
            else
                --tooMany;
        library_.levels = std::move(kept);
    }

    const Folders& folders_;
    const Archive& archive_;
    Path file_;
    LibraryFile library_;
    bool damaged_ = false;
};

/// A sum that is another one when a level came, went or got another name.
std::uint64_t SumOf(const Archive& archive)
{
    std::uint64_t sum = archive.levels.size();
    for (const LevelRecord& level : archive.levels)
        sum = (sum ^ std::hash<std::string_view>{}(Trim(level.levelName)) ^
               static_cast<std::uint64_t>(level.levelCode)) *
              UINT64_C(0x9E3779B97F4A7C15);
    return sum;
}

bool IsSameState(const platform::FileFacts& a, const platform::FileFacts& b)
{
    return a.kind == b.kind && a.size == b.size && a.inode == b.inode && a.device == b.device &&
           a.modifiedNs == b.modifiedNs && a.changedNs == b.changedNs;
}

} // namespace

Path LibraryFileOf(const Folders& folders)
{
    return folders.levels.empty() ? Path{} : InFolder(folders.levels, OnDisk::FragLibrary);
}

bool LibraryNotes::Follow(const Folders& folders, const Archive& archive)
{
    const Path file = LibraryFileOf(folders);
    // Looked at first, then read: what is written in between is seen at the next look.
    const auto facts =
        file.empty() ? Result<platform::FileFacts>{platform::FileFacts{}} : LookAt(file);
    const std::uint64_t list = SumOf(archive);
    const bool readable = !trouble_ || trouble_->code == ErrorCode::Damaged;
    if (followed_ && facts && readable && file == file_ && list == list_ &&
        IsSameState(*facts, facts_))
        return false;
    const bool knewNothing = followed_ && notes_.empty();
    followed_ = true;
    file_ = file;
    list_ = list;
    facts_ = facts ? *facts : platform::FileFacts{};
    notes_.clear();
    trouble_.reset();
    damaged_ = 0;
    if (file.empty())
        return true;
    const auto library = facts ? ReadLibrary(file) : facts.Error();
    if (!library) {
        trouble_ = library.Error();
        return readable || !knewNothing;
    }
    if (!*library)
        return true;
    damaged_ = (*library)->damaged.size();
    const EntryFinder finder{folders, **library};
    for (const LevelRecord& level : archive.levels)
        if (const std::size_t place = finder.Find(level); place != noEntry)
            notes_[level.levelCode] = (*library)->levels[place].note;
    return true;
}

const LevelNote& LibraryNotes::Of(LevelCode code) const
{
    static const LevelNote nothing{};
    const auto found = notes_.find(code);
    return found == notes_.end() ? nothing : found->second;
}

std::vector<std::string> LibraryNotes::Tags() const
{
    std::vector<std::pair<std::string, std::string>> tags;
    for (const auto& [code, note] : notes_)
        for (const std::string& tag : note.tags)
            tags.emplace_back(FoldCase(tag), tag);
    std::sort(tags.begin(), tags.end());
    const auto sameTag = [](const auto& a, const auto& b) { return a.first == b.first; };
    tags.erase(std::unique(tags.begin(), tags.end(), sameTag), tags.end());
    std::vector<std::string> names;
    for (auto& [folded, tag] : tags)
        names.push_back(std::move(tag));
    return names;
}

Result<LevelNote> NoteOf(const Folders& folders, const Archive& archive, LevelCode code)
{
    const LevelRecord* const level = archive.Find(code);
    const Path file = LibraryFileOf(folders);
    if (level == nullptr || file.empty())
        return LevelNote{};
    auto library = ReadLibrary(file);
    if (!library && library.Error().code != ErrorCode::Damaged)
        return library.Error();
    if (!library || !*library)
        return LevelNote{};
    const std::size_t place = EntryFinder{folders, **library}.Find(*level);
    return place == noEntry ? LevelNote{} : std::move((*library)->levels[place].note);
}

Result<NotesChange> ChangeNotes(const Folders& folders, const Archive& archive,
                                const std::vector<LevelCode>& codes,
                                const std::function<void(LevelCode, LevelNote&)>& change)
{
    LibraryChange library{folders, archive};
    if (auto status = library.Read(); !status)
        return status.Error();
    NotesChange done;
    std::vector<std::size_t> places;
    bool isNew = false;
    {
        const EntryFinder finder{folders, library.Library()};
        for (const LevelCode code : codes)
            if (const LevelRecord* const level = archive.Find(code)) {
                const std::size_t place = finder.Find(*level);
                places.push_back(place);
                done.levels.push_back(
                    {code, place == noEntry ? LevelNote{} : library.At(place).note, {}});
            }
    }
    const bool few = places.size() <= fewLevels;
    for (std::size_t i = 0; i < places.size(); ++i) {
        ChangedNote& changed = done.levels[i];
        changed.after = changed.before;
        change(changed.code, changed.after);
        MakeTidy(changed.after);
        if (changed.after == changed.before)
            continue;
        isNew = true;
        const LevelRecord& level = *archive.Find(changed.code);
        LibraryEntry& entry = places[i] == noEntry ? library.Add(level) : library.At(places[i]);
        entry.note = changed.after;
        entry.name = NameOnList(level);
        if (std::string token = TokenForEntry(folders, level.levelCode, few); !token.empty())
            entry.token = std::move(token);
    }
    if (!isNew)
        return done;
    if (!few)
        (void)platform::SyncFileSystem(folders.levels); // a lost token is made again
    auto aside = library.Write();
    if (!aside)
        return aside.Error();
    done.setAside = std::move(*aside);
    return done;
}

Status CoverFollows(const Folders& folders, const Archive& archive, LevelCode code,
                    const std::string& from, const std::string& to)
{
    const auto note = NoteOf(folders, archive, code);
    if (!note || !EqualNames(note->cover, from))
        return note ? Status{} : Status{note.Error()};
    const auto changed =
        ChangeNotes(folders, archive, {code}, [&](LevelCode, LevelNote& now) { now.cover = to; });
    return changed ? Status{} : Status{changed.Error()};
}

Result<TimeOfNumber> NoteNewNumber(const Folders& folders, const Archive& archive,
                                   const std::string& token, LevelCode before, LevelCode now)
{
    LibraryChange library{folders, archive};
    if (auto status = library.Read(); !status)
        return status.Error();
    TimeOfNumber time;
    bool follows = false;
    const std::vector<LibraryEntry>& entries = library.Library().levels;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].token != token)
            continue;
        time.from = entries[i].note.added.value_or(0);
        follows = follows || entries[i].code == before;
        if (entries[i].code == before)
            library.At(i).code = now;
    }
    for (const LibraryEntry& other : entries)
        if (const auto added = other.note.added;
            other.code == before && other.token != token && added && *added >= time.from)
            time.to = std::min(*added, time.to.value_or(*added));
    if (const auto written = follows ? library.Write() : Path{}; !written)
        return written.Error();
    return time;
}

Status NoteAdded(const Folders& folders, const Archive& archive, LevelCode code,
                 std::int64_t seconds)
{
    const LevelRecord* const level = archive.Find(code);
    LibraryChange library{folders, archive};
    auto status = library.Read();
    if (level == nullptr || !status)
        return status;
    LibraryEntry& entry = library.Add(*level);
    entry.token = TokenForEntry(folders, code, true);
    entry.name = NameOnList(*level);
    entry.note.added = seconds;
    MakeTidy(entry.note);
    const auto written = library.Write();
    return written ? Status{} : Status{written.Error()};
}

} // namespace kestrova
