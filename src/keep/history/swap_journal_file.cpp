#include "history/swap_journal_file.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/name_set.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t noteLimit = UINT64_C(16) << 20;

Path OwnerPath(const Session& session)
{
    return InFolder(session.programFolder, OnDisk::FragOwner);
}

Status WriteNote(Session& session, const Path& file, const std::string& text)
{
    if (auto status = MakeFolders(InFolder(session.programFolder, OnDisk::DirSwap)); !status)
        return status;
    return WriteWholeFile(file, text);
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

Result<std::string> MarkerHash(const Session& session)
{
    auto hash = HashIfThere(session.MarkerPath());
    if (hash && hash->empty())
        return std::string{absentMarker};
    return hash;
}

Result<std::optional<OwnerRecord>> ReadOwnerAsNoted(const Session& session)
{
    using Found = std::optional<OwnerRecord>;
    const auto text = ReadFileIfThere(OwnerPath(session), noteLimit);
    if (!text)
        return text.Error();
    if (!*text)
        return Found{};
    auto record = ParseOwner(**text);
    return record ? Found{std::move(record).Value()} : Found{};
}

Result<std::optional<OwnerRecord>> ReadOwner(const Session& session)
{
    using Found = std::optional<OwnerRecord>;
    auto record = ReadOwnerAsNoted(session);
    if (!record || !*record)
        return record;
    const auto isThis = HasMark(session.TrleFolder(), (*record)->folder);
    if (!isThis)
        return isThis.Error();
    const auto marker = MarkerHash(session);
    if (!marker)
        return marker.Error();
    return *isThis && (*record)->marker == *marker ? std::move(*record) : Found{};
}

void SetOwner(const Session& session, OwnerRecord& record, const std::optional<LevelPlace>& owner)
{
    record.owner.reset();
    record.home = {};
    record.levelName.clear();
    if (!owner)
        return;
    record.owner = owner->code;
    const Path home = HomeOf(session, *owner);
    // Without its identity it is known by its path, as long as it is not moved.
    record.home = MarkOf(home).ValueOr({home.native()});
    if (home == LevelHomeOf(session, owner->code))
        record.levelName = LevelNameOf(session, owner->code);
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

Status WriteOwner(Session& session, OwnerRecord record)
{
    NameOnce(record.overwritten);
    NameOnce(record.owed);
    auto folder = MarkOf(session.TrleFolder());
    if (!folder)
        return folder.Error();
    auto marker = MarkerHash(session);
    if (!marker)
        return marker.Error();
    record.folder = std::move(*folder);
    record.marker = std::move(*marker);
    record.bootId = session.machine.BootId();
    const std::string text = FormatOwner(record);
    if (const auto old = ReadWholeFile(OwnerPath(session), noteLimit); old && *old == text)
        return {};
    return WriteNote(session, OwnerPath(session), text);
}

Path JournalPath(const Session& session)
{
    return InFolder(session.programFolder, OnDisk::FragJournal);
}

Result<std::optional<SwapJournal>> ReadJournal(const Session& session)
{
    const Path file = JournalPath(session);
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

Status WriteJournal(Session& session, const SwapJournal& journal)
{
    return WriteNote(session, JournalPath(session), FormatJournal(journal));
}

Status DropJournal(Session& session)
{
    const Path file = JournalPath(session);
    const auto isFree = IsFree(file);
    if (!isFree)
        return isFree.Error();
    if (*isFree)
        return {};
    if (auto status = DeleteFile(file); !status)
        return status;
    return FlushFolder(file.parent_path());
}

} // namespace kestrova
