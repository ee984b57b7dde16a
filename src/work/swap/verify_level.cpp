#include "swap/verify_level.h"

#include "archive/level_folders.h"
#include "archive/stored_notes.h"
#include "archive/tr4_index.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_set.h"
#include "core/parallel.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "history/swap_journal_file.h"
#include "platform/file_content.h"
#include "storage/stored_hashes.h"
#include "storage/zl_file.h"
#include "swap/level_gaps.h"
#include "words/check.h"
#include "words/swap.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

/// The sizes that files had when they were stored, by folded name.
using NotedSizes = std::unordered_map<std::string, std::uint64_t>;

NotedSizes SizesNoted(const Folders& folders, LevelCode code)
{
    NotedSizes sizes;
    if (const auto index = ReadTr4InfOf(folders, code))
        for (const Tr4Entry& entry : *index)
            if (entry.size > 0) {
                std::uint64_t& largest = sizes[FoldCase(Trim(entry.name))];
                largest = std::max(largest, static_cast<std::uint64_t>(entry.size));
            }
    return sizes;
}

bool IsDeflated(const std::string& stored)
{
    return EndsWithName(stored, OnDisk::ZlExtension);
}

/// As a person knows the file.
std::string GameNameOf(const std::string& stored, const StoredEntry* noted)
{
    if (noted != nullptr && noted->from)
        return Readable(noted->from->name);
    return Readable(IsDeflated(stored) ? StripExtension(stored) : stored);
}

/// A stored file on its way through the check.
struct SeenFile {
    Path file;
    const StoredEntry* noted = nullptr;
    std::optional<LevelFault> fault;
    std::optional<StoredEntry> fresh; ///< what is to be noted of it
};

LevelFault FaultOf(const SeenFile& seen, FileFault kind, std::string reason = {})
{
    const std::string stored = seen.file.filename().native();
    LevelFault fault{kind, GameNameOf(stored, seen.noted), stored, {}, std::move(reason)};
    if (seen.noted != nullptr)
        fault.noted = *seen.noted;
    return fault;
}

/// Compares one file with its note, or proves it by itself.
class FileCheck
{
public:
    FileCheck(const std::optional<StoredNote>& note, const NotedSizes& sizes)
        : note_(note), sizes_(sizes)
    {
    }

    void Run(SeenFile& seen) const
    {
        auto now = EntryNow(seen);
        if (!now) {
            const bool damaged = now.Error().code == ErrorCode::Damaged;
            seen.fault = FaultOf(seen, damaged ? FileFault::Damaged : FileFault::Unreadable,
                                 now.Error().reason);
            return;
        }
        if (seen.noted != nullptr && now->hash == seen.noted->hash)
            return;
        if (seen.noted != nullptr && !MayBeOurs(*now, *seen.noted)) {
            const bool damaged = IsDeflated(now->name) && !now->from;
            seen.fault = FaultOf(seen, damaged ? FileFault::Damaged : FileFault::Differs);
            return;
        }
        JudgeUnnoted(seen, std::move(*now));
    }

private:
    /// Of a file whose note fits no more is read than the note needs.
    static Result<StoredEntry> EntryNow(const SeenFile& seen)
    {
        if (seen.noted == nullptr)
            return EntryOfStored(seen.file);
        auto now = EntryOfStored(seen.file, seen.noted->from);
        if (now && now->hash != seen.noted->hash)
            now = EntryOfStored(seen.file);
        return now;
    }

    /// An operation that was cut short left it so.
    [[nodiscard]] bool MayBeOurs(const StoredEntry& now, const StoredEntry& noted) const
    {
        return note_->changing && (now.size != noted.size || now.modifiedNs != noted.modifiedNs);
    }

    void JudgeUnnoted(SeenFile& seen, StoredEntry now) const
    {
        seen.noted = nullptr;
        if (IsDeflated(now.name) && !now.from) {
            seen.fault = FaultOf(seen, FileFault::Damaged);
            return;
        }
        const auto size = now.from ? sizes_.find(FoldCase(Trim(now.from->name))) : sizes_.end();
        if (size != sizes_.end() && now.from->size < size->second) {
            seen.fault = FaultOf(seen, FileFault::Differs);
            return;
        }
        if (note_ && note_->whole && !note_->changing)
            seen.fault = FaultOf(seen, FileFault::Unexpected);
        else
            seen.fresh = std::move(now);
    }

    const std::optional<StoredNote>& note_;
    const NotedSizes& sizes_;
};

/// What became of a noted file that no listing shows; no value when it is gone by this program's
/// own work.
Result<std::optional<LevelFault>> Unlisted(const Path& files, const StoredEntry& noted,
                                           bool changing)
{
    const Path place = files / noted.name;
    const auto facts = LookAtSpelled(place);
    const auto free = facts ? IsFree(place) : Result<bool>{facts.Error()};
    if (!free)
        return free.Error();
    if (*free && changing)
        return std::optional<LevelFault>{};
    return std::optional{LevelFault{*free ? FileFault::Missing : FileFault::InTheWay,
                                    GameNameOf(noted.name, &noted),
                                    noted.name,
                                    noted,
                                    {}}};
}

/// The files that stand there, with what is noted of each.
Result<std::vector<SeenFile>> ListSeen(const Path& files, const std::optional<StoredNote>& note)
{
    const auto listed = ListFiles(files, OnDisk::PatAll);
    if (!listed)
        return listed.Error();
    auto byName = EntriesByName(note);
    std::vector<SeenFile> seen;
    for (const Path& file : *listed) {
        const auto noted = byName.extract(file.filename().native());
        seen.push_back({file, noted ? noted.mapped() : nullptr, {}, {}});
    }
    // A copy by another system may spell names in other capitals; the game makes no difference.
    std::unordered_map<std::string, const StoredEntry*> folded;
    for (const auto& [name, entry] : byName)
        folded.emplace(FoldCase(name), entry);
    for (SeenFile& each : seen)
        if (each.noted == nullptr)
            if (const auto noted = folded.extract(FoldCase(each.file.filename().native())))
                each.noted = noted.mapped();
    return seen;
}

/// Noted files that do not stand there.
Status AddUnlisted(const Path& files, const std::optional<StoredNote>& note,
                   const std::vector<SeenFile>& seen, std::vector<LevelFault>& faults)
{
    if (!note)
        return {};
    std::set<const StoredEntry*> stand;
    for (const SeenFile& each : seen)
        stand.insert(each.noted);
    for (const StoredEntry& entry : note->files) {
        if (stand.contains(&entry))
            continue;
        auto fault = Unlisted(files, entry, note->changing);
        if (!fault)
            return fault.Error();
        if (*fault)
            faults.push_back(std::move(**fault));
    }
    return {};
}

/// Files that the level brought into the Level Editor's folder, where it still stands, and that its
/// stored files no longer give.
Result<std::vector<std::string>> StandingNamesWithout(const Folders& folders, LevelCode code,
                                                      const std::vector<SeenFile>& stand)
{
    const auto owner = ReadOwner(folders);
    if (!owner)
        return owner.Error();
    std::vector<std::string> names;
    if (!*owner || (*owner)->owner != code ||
        (*owner)->home.path != LevelHomeOf(folders, code).native())
        return names;
    NameSet stored;
    for (const SeenFile& seen : stand)
        stored.Add(GameNameOf(seen.file.filename().native(), seen.noted));
    for (const OwnedFile& file : (*owner)->added)
        if (const std::string name = FileNameOf(Readable(file.name)); !stored.Has(name))
            names.push_back(name);
    return names;
}

/// What the level is known to have by its index, its record and its sizes; each name once.
Status AddGaps(const Folders& folders, const LevelRecord& level, const std::vector<SeenFile>& stand,
               std::vector<LevelFault>& faults)
{
    auto gaps = GapsOf(folders, level);
    if (!gaps)
        return gaps.Error();
    NameSet told;
    for (const LevelFault& fault : faults)
        told.Add(fault.file);
    const auto add = [&](FileFault kind, std::string file) {
        if (!told.Has(file))
            faults.push_back({kind, std::move(file), {}, {}, {}});
    };
    for (const std::string& file : gaps->cut) {
        const std::string name = Readable(file);
        for (LevelFault& fault : faults)
            if (fault.kind == FileFault::Differs && EqualNames(fault.file, name))
                fault.kind = FileFault::Cut;
        add(FileFault::Cut, name);
    }
    gaps->cut.clear();
    // Where only the size tells of a loss, what stands in the folder may have the names, and a
    // fault that is known by name explains it.
    if (gaps->bytes > 0) {
        auto names = StandingNamesWithout(folders, level.levelCode, stand);
        if (!names)
            return names.Error();
        gaps->bytes = names->empty() && faults.empty() ? gaps->bytes : 0;
        for (std::string& name : *names)
            add(FileFault::Missing, std::move(name));
    }
    for (std::string& file : AllGaps(*gaps))
        add(FileFault::Missing, std::move(file));
    return {};
}

/// The note follows what the check found to be noted, and what this program's own work left.
bool NoteFound(const Path& home, const std::optional<StoredNote>& note,
               const std::vector<SeenFile>& seen, const std::vector<LevelFault>& faults)
{
    StoredNote now;
    std::set<std::string> harmed;
    bool whole = true;
    for (const LevelFault& fault : faults) {
        whole = whole && (fault.noted || fault.kind == FileFault::Unexpected);
        if (!fault.noted || !harmed.insert(fault.noted->name).second)
            continue;
        now.files.push_back(*fault.noted);
    }
    bool isNew = false;
    for (const SeenFile& each : seen)
        if (each.fresh || (each.noted != nullptr && !harmed.contains(each.noted->name))) {
            isNew = isNew || each.fresh;
            now.files.push_back(each.fresh ? *each.fresh : *each.noted);
        }
    now.whole = (note && note->whole) || whole;
    if ((!isNew && note && !note->changing && note->whole == now.whole) || now.files.empty())
        return false;
    return WriteStoredNote(home, now) && isNew;
}

} // namespace

Result<CheckedLevel> VerifyLevel(const Folders& folders, const Archive& archive, LevelCode code,
                                 Noting noting, const Heartbeat& beat)
{
    const LevelRecord* const level = archive.Find(code);
    if (level == nullptr)
        return Failure{
            ErrorCode::Missing, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}), {}};
    const auto source = FilesFolderOf(folders, archive, code, DiscWish::Prove);
    if (!source)
        return source.Error();
    CheckedLevel checked;
    const Path files = ResolvePath(*source);
    const auto isThere = IsFolder(files);
    if (!isThere)
        return isThere.Error();
    const Path home = LevelHomeOf(folders, code);
    auto read = ReadStoredNote(home);
    if (!read && read.Error().code != ErrorCode::Damaged)
        return InWords(read.Error().code,
                       GetMsg(Msg::NoteNotRead, {read.Error().reason, TextOf(StoredNoteOf(home))}));
    const auto note = std::move(read).ValueOr({}); // a damaged one says nothing
    if (!*isThere && !note) {
        checked.faults.push_back({FileFault::Missing, TextOf(*source), {}, {}, {}});
        return checked;
    }
    auto listed = ListSeen(files, note);
    if (!listed)
        return listed.Error();
    std::vector<SeenFile>& seen = *listed;
    checked.files = seen.size();
    const NotedSizes sizes = SizesNoted(folders, code);
    const FileCheck check{note, sizes};
    if (!RunOnAllCores(
            seen.size(), [&](std::size_t i) { check.Run(seen[i]); }, beat))
        return MakeFailure(ErrorCode::Stopped, {});
    for (const SeenFile& each : seen)
        if (each.fault)
            checked.faults.push_back(*each.fault);
    if (auto status = AddUnlisted(files, note, seen, checked.faults); !status)
        return status.Error();
    if (auto status = AddGaps(folders, *level, seen, checked.faults); !status)
        return status.Error();
    if (noting == Noting::Yes && code != originalCode && level->cdNumber == 0)
        checked.isNotedNow = NoteFound(home, note, seen, checked.faults);
    return checked;
}

} // namespace kestrova
