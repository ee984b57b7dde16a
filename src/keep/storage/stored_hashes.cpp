#include "storage/stored_hashes.h"

#include "archive/stored_notes.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "platform/content_hash.h"
#include "platform/file_content.h"
#include "storage/zl_file.h"

namespace kestrova
{

namespace
{

/// What a `.zl` expands to; no value for what is none.
std::optional<StoredOrigin> ExpandedOrigin(const Path& file)
{
    platform::ContentHash hash;
    StoredOrigin origin{StripExtension(file.filename().native()), 0, {}};
    const auto streamed = StreamZl(file, maxZlContent, [&](std::string_view piece) {
        hash.Add(std::as_bytes(std::span{piece}));
        origin.size += piece.size();
        return Status{};
    });
    origin.hash = hash.Digits();
    return streamed && !origin.name.empty() ? std::optional{std::move(origin)} : std::nullopt;
}

/// The entries of files on all cores; of one that cannot be read there is none.
std::vector<StoredEntry> EntriesOf(const std::vector<Path>& files, const StoredOrigins& origins,
                                   const Heartbeat& beat)
{
    std::vector<std::optional<StoredEntry>> found(files.size());
    const auto note = [&](std::size_t i) {
        const auto from = origins.find(files[i].filename().native());
        auto entry = EntryOfStored(files[i], from == origins.end() ? std::optional<StoredOrigin>{}
                                                                   : from->second);
        if (entry)
            found[i] = std::move(entry).Value();
    };
    RunOnAllCores(files.size(), note, beat);
    std::vector<StoredEntry> entries;
    for (auto& entry : found)
        if (entry)
            entries.push_back(std::move(*entry));
    return entries;
}

} // namespace

std::optional<StoredOrigin> OriginOf(const std::string& name, const Path& file)
{
    StoredOrigin origin{name, FileSize(file), {}};
    return platform::HashOfFile(file, origin.hash) ? std::nullopt : std::optional{origin};
}

void WaveOrigins::Add(const std::string& name, const Path& file)
{
    if (EndsWithName(name, OnDisk::WavExtension))
        if (auto origin = OriginOf(name, file))
            waves_.push_back(std::move(*origin));
}

StoredOrigins WaveOrigins::Of(const std::vector<std::string>& names) const
{
    std::map<std::string, std::string> byFolded;
    for (const std::string& name : names)
        byFolded.emplace(FoldCase(name), name);
    StoredOrigins origins;
    for (const StoredOrigin& wave : waves_) {
        const auto mp3 =
            byFolded.find(FoldCase(StripExtension(wave.name) + std::string{OnDisk::Mp3Extension}));
        if (mp3 != byFolded.end() && !byFolded.contains(FoldCase(wave.name)))
            origins.emplace(mp3->second, wave);
    }
    return origins;
}

Result<StoredEntry> EntryOfStored(const Path& file, const std::optional<StoredOrigin>& from)
{
    const auto facts = LookAtSpelled(file);
    if (!facts)
        return facts.Error();
    StoredEntry entry{file.filename().native(), facts->size, facts->modifiedNs, {}, from};
    if (const auto failure = platform::HashOfFile(file, entry.hash))
        return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
    if (!from && EndsWithName(entry.name, OnDisk::ZlExtension))
        entry.from = ExpandedOrigin(file);
    return entry;
}

void NoteStoredFiles(const Path& home, const StoredOrigins& origins, const Heartbeat& beat)
{
    const auto files = ListFiles(ResolvePath(InFolder(home, OnDisk::DirFiles)), OnDisk::PatAll);
    if (!files)
        return;
    const auto known = ReadStoredNote(home).ValueOr({});
    StoredNote note{true, known && known->changing, EntriesOf(*files, origins, beat)};
    note.whole = note.files.size() == files->size();
    (void)WriteStoredNote(home, note);
}

std::unordered_map<std::string, const StoredEntry*>
EntriesByName(const std::optional<StoredNote>& note)
{
    std::unordered_map<std::string, const StoredEntry*> entries;
    if (note)
        for (const StoredEntry& entry : note->files)
            entries.emplace(entry.name, &entry);
    return entries;
}

StoredWatch::StoredWatch(Path home, Heartbeat alive)
    : home_(std::move(home)), files_(ResolvePath(InFolder(home_, OnDisk::DirFiles))),
      note_(ReadStoredNote(home_).ValueOr({})), before_(Now()), alive_(std::move(alive))
{
    DoubtStoredNote(home_);
}

StoredWatch::~StoredWatch()
{
    Follow();
}

Heartbeat StoredWatch::Alive() const
{
    return [this] {
        if (alive_)
            (void)alive_();
        return true;
    };
}

std::optional<StoredWatch::FactsByName> StoredWatch::Now() const
{
    const auto files = ListFiles(files_, OnDisk::PatAll);
    if (!files)
        return {};
    FactsByName facts;
    for (const Path& file : *files) {
        const auto seen = LookAtSpelled(file);
        if (!seen)
            return {};
        facts[file.filename().native()] = {seen->size, seen->modifiedNs, seen->inode};
    }
    return facts;
}

std::vector<StoredEntry> StoredWatch::Entries(const FactsByName& now,
                                              const std::optional<StoredNote>& present) const
{
    const auto before = EntriesByName(note_);
    const auto written = EntriesByName(present);
    const auto in = [](const auto& entries, const std::string& name) {
        const auto found = entries.find(name);
        return found == entries.end() ? nullptr : found->second;
    };
    std::vector<StoredEntry> entries;
    std::vector<Path> changed;
    for (const auto& [name, facts] : now) {
        const auto was = before_->find(name);
        const StoredEntry* const old = in(before, name);
        const StoredEntry* fresh = in(written, name);
        if (fresh != nullptr &&
            (fresh->size != facts.size || fresh->modifiedNs != facts.modifiedNs))
            fresh = nullptr;
        if (was != before_->end() && was->second == facts) {
            if (const StoredEntry* const noted = note_ ? old : fresh; noted != nullptr)
                entries.push_back(*noted);
        } else if (fresh != nullptr && (old == nullptr || !(*fresh == *old))) {
            entries.push_back(*fresh); // it was stored meanwhile, which noted it
        } else {
            changed.push_back(files_ / name);
        }
    }
    for (StoredEntry& entry : EntriesOf(changed, origins_, Alive()))
        entries.push_back(std::move(entry));
    for (const auto& [name, entry] : before) // what was gone already is gone still
        if (!before_->contains(name) && !now.contains(name))
            entries.push_back(*entry);
    return entries;
}

void StoredWatch::PutBack() const
{
    if (note_ && note_ != ReadStoredNote(home_).ValueOr({}))
        (void)WriteStoredNote(home_, *note_);
    else if (!note_)
        (void)DeleteSpelled(StoredNoteOf(home_));
}

void StoredWatch::Follow() const
{
    if (!note_ && allIfNew_)
        return NoteStoredFiles(home_, origins_, Alive());
    const auto now = Now();
    if (!before_ || !now)
        return; // the doubt stays
    if (*now == *before_)
        return PutBack(); // what was changed came back, were it by second names
    const auto present = ReadStoredNote(home_).ValueOr({});
    const bool doubtful = note_ && note_->changing; // whoever began that ends it
    StoredNote note{present && present->whole, doubtful, Entries(*now, present)};
    note.whole = note.whole && note.files.size() >= now->size();
    if (present ? *present == note : note.files.empty())
        return;
    (void)WriteStoredNote(home_, note);
}

} // namespace kestrova
