#include "swap/swap_notes.h"

#include "catalogue/message.h"
#include "core/staged_file.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t noteLimit = UINT64_C(16) << 20;

Path OwnerPath(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::FragOwner));
}

Status WriteNote(Session& session, const Path& file, const std::string& text)
{
    if (auto status = MakeFolders(InFolder(session.programFolder, RowText(Msg::DirSwap))); !status)
        return status;
    return WriteWholeFile(file, text);
}

} // namespace

FolderMark MarkOf(const Path& folder)
{
    const platform::FileFacts facts = platform::FactsOf(ResolvePath(folder));
    return {folder.native(), facts.device, facts.inode};
}

bool IsMarked(const FolderMark& mark, const Path& folder)
{
    const platform::FileFacts facts = platform::FactsOf(ResolvePath(folder));
    return facts.kind == platform::FileKind::Folder && facts.device == mark.device &&
           facts.inode == mark.inode;
}

Path RootOfStore(const Path& store)
{
    return store.parent_path().parent_path();
}

std::string MarkerHash(const Session& session)
{
    const Path marker = session.MarkerPath();
    if (!FileExists(marker))
        return std::string{absentMarker};
    std::string hash;
    return platform::HashOfFile(ResolvePath(marker), hash) ? std::string{} : hash;
}

std::optional<OwnerRecord> OwnerThatCounts(const Session& session)
{
    const auto text = ReadWholeFile(OwnerPath(session), noteLimit);
    if (!text)
        return {};
    auto record = ParseOwner(*text);
    const FolderMark folder = MarkOf(session.TrleFolder());
    if (!record || record->folder.device != folder.device || record->folder.inode != folder.inode ||
        record->marker != MarkerHash(session))
        return {};
    return std::move(record).Value();
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
    record.home = MarkOf(home);
    if (home == LevelHomeOf(session, owner->code))
        record.levelName = LevelNameOf(session, owner->code);
}

Status WriteOwner(Session& session, OwnerRecord record)
{
    record.folder = MarkOf(session.TrleFolder());
    record.marker = MarkerHash(session);
    record.bootId = session.machine.BootId();
    const std::string text = FormatOwner(record);
    if (const auto old = ReadWholeFile(OwnerPath(session), noteLimit); old && *old == text)
        return {};
    return WriteNote(session, OwnerPath(session), text);
}

Path JournalPath(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::FragJournal));
}

Result<std::optional<SwapJournal>> ReadJournal(const Session& session)
{
    const Path file = JournalPath(session);
    if (!FileExists(file))
        return std::optional<SwapJournal>{};
    const auto text = ReadWholeFile(file, noteLimit);
    if (!text)
        return text.Error();
    auto journal = ParseJournal(*text);
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
    if (!FileExists(file))
        return {};
    if (auto status = DeleteFile(file); !status)
        return status;
    return FlushFolder(file.parent_path());
}

} // namespace kestrova
