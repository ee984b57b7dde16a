#include "upkeep/repair_level.h"

#include "archive/level_folders.h"
#include "archive/stored_notes.h"
#include "conversion/sound_converter.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "history/changes.h"
#include "history/undo_entries.h"
#include "platform/file_content.h"
#include "storage/stored_form.h"
#include "storage/stored_hashes.h"
#include "upkeep/file_names.h"
#include "upkeep/out_of_files.h"
#include "words/check.h"

namespace kestrova
{

namespace
{

/// A file that is ready to take its place.
struct ReadyRepair {
    LevelFault fault;
    Path made;
    StoredEntry entry; ///< what it is
    std::string where;
};

/// One level's repair from the first look to the note.
class LevelRepair
{
public:
    LevelRepair(const ArchiveParts& parts, const SoundConverter& sounds, LevelCode code,
                RepairSources& sources, ProgressScope& progress)
        : parts_(parts), folders_(parts.folders), sounds_(sounds), code_(code), sources_(sources),
          progress_(progress), home_(LevelHomeOf(folders_, code)),
          files_(ResolvePath(InFolder(home_, OnDisk::DirFiles))),
          work_(FreshPlaceIn(parts.folders.program), WorkFolder::Make::Now)
    {
    }

    Result<RepairedLevel> Run(const CheckedLevel& checked)
    {
        for (const LevelFault& fault : checked.faults) {
            if (fault.kind == FileFault::Unexpected)
                continue;
            if (!Beat())
                return MakeFailure(ErrorCode::Stopped, {});
            if (auto status = MakeReady(fault); !status)
                return status.Error();
        }
        if (ready_.empty())
            return std::move(done_);
        if (auto status = PutInPlace(); !status)
            return status.Error();
        NoteRepaired();
        for (const ReadyRepair& each : ready_)
            done_.repaired.push_back({each.fault.file, each.where});
        return std::move(done_);
    }

private:
    bool Beat() { return progress_.Step(); }

    void Leave(const LevelFault& fault, std::string remedy)
    {
        done_.left.push_back({fault, std::move(remedy)});
    }

    /// Fails only where the person stopped it.
    Status MakeReady(const LevelFault& fault)
    {
        progress_.SetLabel(GetMsg(Msg::RepairLooking, {fault.file}));
        if (const LevelRecord* level = parts_.archive.Find(code_);
            level == nullptr || level->cdNumber != 0) {
            Leave(fault, GetMsg(Msg::RepairOnDisc));
            return {};
        }
        if (!fault.noted) {
            Leave(fault, GetMsg(Msg::RepairNotNoted));
            return {};
        }
        if (fault.kind == FileFault::InTheWay) {
            Leave(fault, GetMsg(Msg::RepairInTheWay, {TextOf(files_ / fault.stored)}));
            return {};
        }
        const auto found = sources_.Find(code_, *fault.noted, [&] { return Beat(); });
        if (!found) {
            Leave(fault, GetMsg(Msg::RepairNowhere));
            return Beat() ? Status{} : MakeFailure(ErrorCode::Stopped, {});
        }
        auto made = Make(*fault.noted, *found);
        if (made)
            ready_.push_back({fault, made->first, std::move(made->second), found->where});
        else if (made.Error().code == ErrorCode::Stopped)
            return made.Error();
        else
            Leave(fault, GetMsg(Msg::RepairNotMade, {made.Error().reason}));
        return {};
    }

    /// The file in its stored form, proved once more: a source may change under our hands.
    Result<std::pair<Path, StoredEntry>> Make(const StoredEntry& noted, const FoundContent& found)
    {
        StoredEntry form = noted;
        if (found.isStoredForm)
            form.from.reset(); // it is copied as it is
        const Path place = work_.Folder() / std::to_string(ready_.size());
        if (auto status = MakeFolders(place); !status)
            return status.Error();
        const auto made = MakeStoredForm(parts_.host, sounds_, form, found.file, place);
        if (!made)
            return made.Error();
        auto entry = EntryOfStored(*made, noted.from);
        if (!entry)
            return entry.Error();
        if (!IsAsNoted(*made, *entry, noted, found))
            return MakeFailure(ErrorCode::Differs, TextOf(found.file));
        return std::pair{*made, std::move(*entry)};
    }

    static bool IsAsNoted(const Path& made, const StoredEntry& entry, const StoredEntry& noted,
                          const FoundContent& found)
    {
        if (entry.hash == noted.hash)
            return true;
        if (found.isStoredForm || !noted.from)
            return false;
        // Another library packs the same content into other bytes.
        if (noted.name == noted.from->name + std::string{OnDisk::ZlExtension}) {
            const auto expanded = EntryOfStored(made);
            return expanded && expanded->from && expanded->from->hash == noted.from->hash;
        }
        std::string source;
        return !platform::HashOfFile(found.file, source) && source == noted.from->hash;
    }

    /// What stands there now, by content; what cannot be read is set aside first.
    Status LookAtReplaced(const ReadyRepair& repair, ChangedFolder& changed)
    {
        const Path place = files_ / repair.fault.stored;
        const auto free = IsFree(place);
        if (!free)
            return free.Error();
        if (*free)
            return {};
        std::string hash;
        if (!platform::HashOfFile(place, hash)) {
            changed.before.push_back({repair.fault.stored, hash});
            return {};
        }
        const auto aside = TakeOutOfFiles(home_, OnDisk::DirUnreadable, place);
        if (!aside)
            return aside.Error();
        aside_.emplace_back(place, *aside);
        return {};
    }

    Status PutInPlace()
    {
        ChangedFolder changed;
        changed.folder = files_.native();
        changed.made = !FolderExists(files_);
        Status status;
        for (const ReadyRepair& repair : ready_) {
            if (status)
                status = LookAtReplaced(repair, changed);
            changed.after.push_back({repair.fault.stored, repair.entry.hash, repair.made.native()});
        }
        if (status)
            status = MakeIt(std::move(changed));
        if (!status && !ChangeWaits(folders_))
            for (const auto& [place, aside] : aside_)
                (void)platform::Rename(aside, place); // it stays where it is otherwise
        for (const auto& [place, aside] : aside_)
            if (status)
                parts_.host.Tell(Tone::Warning, GetMsg(Msg::RepairSetAside, {TextOf(aside)}));
        return status;
    }

    Status MakeIt(ChangedFolder changed)
    {
        Change change = NewChange(parts_, ChangeKind::LevelRepaired, code_);
        // Nobody can tell damage from a person's own work, so the history takes what goes: it
        // stays there when the change can be undone no more.
        change.reason = Told(Msg::ReasonRepaired);
        change.folders = {std::move(changed)};
        if (auto status = MakeChange(parts_, change, {}, [&] { return Beat(); }); !status)
            return status;
        return EndChange(folders_, parts_.settings, change);
    }

    /// Times are new, and bytes may be.
    void NoteRepaired()
    {
        auto note = ReadStoredNote(home_).ValueOr({});
        if (!note)
            return;
        std::unordered_map<std::string, const StoredEntry*> repaired;
        for (ReadyRepair& each : ready_) {
            if (const auto facts = LookAtSpelled(files_ / each.entry.name))
                each.entry.modifiedNs = facts->modifiedNs;
            repaired.emplace(each.entry.name, &each.entry);
        }
        for (StoredEntry& entry : note->files)
            if (const auto found = repaired.find(entry.name); found != repaired.end())
                entry = *found->second;
        (void)WriteStoredNote(home_, *note); // the old one fits as well, but for times
    }

    const ArchiveParts& parts_;
    const Folders& folders_;
    const SoundConverter& sounds_;
    LevelCode code_;
    RepairSources& sources_;
    ProgressScope& progress_;
    Path home_;
    Path files_;
    WorkFolder work_;
    std::vector<ReadyRepair> ready_;
    std::vector<std::pair<Path, Path>> aside_;
    RepairedLevel done_;
};

} // namespace

Result<RepairedLevel> RepairLevel(const ArchiveParts& parts, const SoundConverter& sounds,
                                  LevelCode code, const CheckedLevel& checked,
                                  RepairSources& sources, ProgressScope& progress)
{
    return LevelRepair{parts, sounds, code, sources, progress}.Run(checked);
}

} // namespace kestrova
