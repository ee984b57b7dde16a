#pragma once

#include "core/files.h"
#include "formats/stored_note.h"

#include <map>
#include <unordered_map>

/// Hashes of a level's stored files, noted when they are stored and followed when an operation
/// changes them. None of it fails an operation: what could not be noted is not noted.
namespace kestrova
{

/// What stored files were made of, by their names in `files`.
using StoredOrigins = std::map<std::string, StoredOrigin>;

/// What a file is before it takes its stored form; no value when it cannot be read.
std::optional<StoredOrigin> OriginOf(const std::string& name, const Path& file);
/// Waves that become mp3: what they were.
class WaveOrigins
{
public:
    /// To be called while the wave is there; a file of another kind is passed over.
    void Add(const std::string& name, const Path& file);
    /// Of the mp3 files among those that there are afterwards the waves that gave way to them.
    [[nodiscard]] StoredOrigins Of(const std::vector<std::string>& names) const;

private:
    std::vector<StoredOrigin> waves_;
};

/// What is to be noted of a stored file. A `.zl` is expanded for its origin, unless `from` has it.
Result<StoredEntry> EntryOfStored(const Path& file, const std::optional<StoredOrigin>& from = {});
/// Notes all files of the level with that folder as they stand now, on all cores. What the
/// heartbeat stops before its turn is not noted.
void NoteStoredFiles(const Path& home, const StoredOrigins& origins, const Heartbeat& beat = {});

/// As long as it lives, an operation changes a level's stored files in its own way. At its end the
/// note has what changed meanwhile, and nothing else: what another hand did before stays found.
class StoredWatch
{
public:
    /// `home`: the level's own folder. `alive`: called while files are read at the end; its answer
    /// counts for nothing.
    explicit StoredWatch(Path home, Heartbeat alive = {});
    ~StoredWatch();
    StoredWatch(const StoredWatch&) = delete;
    StoredWatch& operator=(const StoredWatch&) = delete;

    /// What the files that come are made from.
    void AreMadeFrom(StoredOrigins origins) { origins_ = std::move(origins); }
    /// Where nothing was noted before, all files are.
    void NoteAllIfNew() { allIfNew_ = true; }

private:
    struct Facts {
        std::uint64_t size = 0;
        std::int64_t modifiedNs = 0;
        std::uint64_t inode = 0;
        friend bool operator==(const Facts&, const Facts&) = default;
    };
    using FactsByName = std::map<std::string, Facts>;

    [[nodiscard]] Heartbeat Alive() const;
    [[nodiscard]] std::optional<FactsByName> Now() const;
    void Follow() const;
    /// Nothing was changed: the note is the one before.
    void PutBack() const;
    /// The entries of the files that stand now: of those that nobody touched as they were noted.
    [[nodiscard]] std::vector<StoredEntry> Entries(const FactsByName& now,
                                                   const std::optional<StoredNote>& present) const;

    Path home_;
    Path files_;
    std::optional<StoredNote> note_;
    std::optional<FactsByName> before_;
    StoredOrigins origins_;
    Heartbeat alive_;
    bool allIfNew_ = false;
};

/// The entries of a note by their names.
std::unordered_map<std::string, const StoredEntry*>
EntriesByName(const std::optional<StoredNote>& note);

} // namespace kestrova
