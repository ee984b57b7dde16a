#include "history/swap_journal_file.h"

#include "archive/level_token.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_set.h"
#include "formats/program_folder.h"
#include "history/work_note.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t noteLimit = UINT64_C(16) << 20;

Path OwnerPath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragOwner);
}

} // namespace

Result<FolderMark> MarkOf(const Path& folder)
{
    const auto facts = LookAt(folder);
    if (!facts)
        return facts.Error();
    return FolderMark{folder.native(), facts->device, facts->inode};
}

Result<bool> HasMark(const Path& folder, const FolderMark& mark)
{
    const auto facts = LookAt(folder);
    if (!facts)
        return facts.Error();
    return facts->kind == platform::FileKind::Folder && facts->device == mark.device &&
           facts->inode == mark.inode;
}

Path RootOfStore(const Path& store)
{
    return store.parent_path().parent_path();
}

Result<std::string> MarkerHash(const Folders& folders)
{
    auto hash = HashIfThere(folders.Marker());
    if (hash && hash->empty())
        return std::string{absentMarker};
    return hash;
}

Result<std::optional<OwnerRecord>> ReadOwnerAsNoted(const Folders& folders)
{
    using Found = std::optional<OwnerRecord>;
    const auto text = ReadFileIfThere(OwnerPath(folders), noteLimit);
    if (!text)
        return text.Error();
    if (!*text)
        return Found{};
    auto record = ParseOwner(**text);
    return record ? Found{std::move(record).Value()} : Found{};
}

Result<std::optional<OwnerRecord>> ReadOwner(const Folders& folders)
{
    using Found = std::optional<OwnerRecord>;
    auto record = ReadOwnerAsNoted(folders);
    if (!record || !*record)
        return record;
    const auto isThis = HasMark(folders.trle, (*record)->folder);
    if (!isThis)
        return isThis.Error();
    const auto marker = MarkerHash(folders);
    if (!marker)
        return marker.Error();
    return *isThis && (*record)->marker == *marker ? std::move(*record) : Found{};
}

void SetOwner(const Folders& folders, const Archive& archive, OwnerRecord& record,
              const std::optional<LevelPlace>& owner)
{
    record.owner.reset();
    record.home = {};
    record.levelName.clear();
    record.token.clear();
    if (!owner)
        return;
    record.owner = owner->code;
    const Path home = HomeOf(folders, *owner);
    // Without its identity it is known by its path, as long as it is not moved.
    record.home = MarkOf(home).ValueOr({home.native()});
    if (home == LevelHomeOf(folders, owner->code))
        record.levelName = LevelNameOf(archive, owner->code);
    record.token = KnownTokenOfLevel(home).ValueOr({});
}

namespace
{

/// Originals are found without regard to case, so each is noted once, however its folder is
/// spelled.
void NameOnce(std::vector<std::string>& names)
{
    NameSet known;
    std::erase_if(names, [&](const std::string& name) {
        const bool again = known.Has(name);
        known.Add(name);
        return again;
    });
}

} // namespace

Status WriteOwner(Machine& machine, const Folders& folders, OwnerRecord record)
{
    NameOnce(record.overwritten);
    NameOnce(record.owed);
    auto folder = MarkOf(folders.trle);
    if (!folder)
        return folder.Error();
    auto marker = MarkerHash(folders);
    if (!marker)
        return marker.Error();
    record.folder = std::move(*folder);
    record.marker = std::move(*marker);
    record.bootId = machine.BootId();
    const std::string text = FormatOwner(record);
    if (const auto old = ReadWholeFile(OwnerPath(folders), noteLimit); old && *old == text)
        return {};
    return WriteWorkNote(OwnerPath(folders), text);
}

Path JournalPath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragJournal);
}

Result<std::optional<SwapJournal>> ReadJournal(const Folders& folders)
{
    const Path file = JournalPath(folders);
    const auto text = ReadFileIfThere(file, noteLimit);
    if (!text)
        return text.Error();
    if (!*text)
        return std::optional<SwapJournal>{};
    auto journal = ParseJournal(**text);
    if (!journal)
        return Failure{ErrorCode::Damaged, TextOf(file), {}};
    return std::optional<SwapJournal>{std::move(journal).Value()};
}

Status WriteJournal(const Folders& folders, const SwapJournal& journal)
{
    return WriteWorkNote(JournalPath(folders), FormatJournal(journal));
}

Status DropJournal(const Folders& folders)
{
    const Path file = JournalPath(folders);
    const auto dropped = DropWorkNote(file);
    if (!dropped)
        return dropped.Error();
    return *dropped ? FlushFolder(file.parent_path()) : Status{};
}

} // namespace kestrova
