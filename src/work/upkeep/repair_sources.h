#pragma once

#include "core/removal.h"
#include "formats/stored_note.h"
#include "session/machine.h"
#include "tools/tools.h"
#include "upkeep/disc_sources.h"

#include <map>
#include <memory>
#include <set>
#include <unordered_map>

namespace kestrova
{

/// Where a damaged file's content was found.
struct FoundContent {
    Path file;
    bool isStoredForm = false; ///< it holds the stored bytes; otherwise what they were made of
    std::string where;         ///< in a few words, for a person
};

/// Whatever may still hold the content of a level's stored file. Nothing is believed by its name or
/// place: what is answered was read, and has the hash that was noted.
class RepairSources
{
public:
    RepairSources(Machine& machine, const Folders& folders, const Archive& archive, Tools tools);

    /// A package, a folder or a single file that the person offers; packages in it are opened, one
    /// level deep. Nothing that they hold is taken by its name.
    Status Offer(const Path& source, ProgressScope& progress);
    /// The first place that holds it: the Level Editor's folder, its backup, the vault, what the
    /// level keeps for undoing, another level of the archive, what the person offered, a disc of
    /// the archive that is at hand.
    std::optional<FoundContent> Find(LevelCode code, const StoredEntry& noted,
                                     const Heartbeat& beat);
    /// What is known of the archive's discs.
    DiscSources& Discs() { return discs_; }

private:
    /// A file that may be it, by its size at most.
    struct Candidate {
        Path file;
        std::string where;
    };
    using Candidates = std::vector<Candidate>;

    void AddByName(const StoredEntry& noted, Candidates& found);
    void AddVault(const StoredEntry& noted, Candidates& found);
    void AddKeptForUndo(LevelCode code, const StoredEntry& noted, Candidates& found) const;
    void AddOtherLevels(const StoredEntry& noted, Candidates& found, const Heartbeat& beat);
    void AddOffered(const StoredEntry& noted, Candidates& found) const;
    void AddDiscs(LevelCode code, const StoredEntry& noted, Candidates& found);
    void IndexLevels(const Heartbeat& beat);
    void IndexFolder(const Path& home, const std::string& where);
    Status OfferFolder(const Path& folder, ProgressScope& progress);
    Status Unpack(const Path& package, ProgressScope& progress);
    /// The file's hash, each read once.
    const std::string& HashOf(const Path& file);

    Machine& machine_;
    const Folders folders_;
    const Archive& archive_;
    const Tools tools_;
    DiscSources discs_;
    WorkFolder unpacked_;                                    ///< of offered packages
    std::unordered_multimap<std::string, Candidate> byHash_; ///< files of levels, as they are noted
    bool isIndexed_ = false;
    std::unordered_multimap<std::uint64_t, Path> offered_; ///< by size
    std::map<Path, std::string> hashes_;
    int packages_ = 0;
};

} // namespace kestrova
