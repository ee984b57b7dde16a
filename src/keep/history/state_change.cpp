#include "history/state_change.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "formats/savegame_records.h"
#include "history/change_run.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t noteLimit = UINT64_C(16) << 20;

Path NotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragStateChange);
}

Status WriteNote(const Folders& folders, const StateChange& change)
{
    if (auto status = MakeFolders(InFolder(folders.program, OnDisk::DirSwap)); !status)
        return status;
    return WriteWholeFile(NotePath(folders), FormatStateChange(change),
                          false); // flushed by the run
}

Status DropNote(const Folders& folders)
{
    const Path file = NotePath(folders);
    const auto isFree = IsFree(file);
    if (!isFree)
        return isFree.Error();
    if (*isFree)
        return {};
    if (auto status = DeleteFile(file); !status)
        return status;
    // A note that a power cut brings back is gone through once more and finds nothing to do.
    (void)FlushFolder(file.parent_path());
    return {};
}

/// A note that nobody can read must not stop the program for ever, nor be lost.
Status SetAsideDamaged(const Path& file)
{
    const auto aside = FreeNumbered(file);
    if (!aside)
        return aside.Error();
    if (const auto failure = platform::Rename(file, *aside))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    return {};
}

NoteJson JsonOfComing(const std::vector<ComingFile>& files)
{
    NoteJson list = NoteJson::array();
    for (const ComingFile& file : files)
        list.push_back({{"name", Encoded(file.name)},
                        {"hash", Encoded(file.hash)},
                        {"from", Encoded(file.source)}});
    return list;
}

bool ReadComing(NoteReader& reader, std::vector<ComingFile>& files)
{
    bool sound = true;
    reader.List("after", [&](NoteReader& entry, const NoteJson&) {
        ComingFile file{entry.Text("name"), entry.Text("hash"), entry.Text("from")};
        // The first two become names of files: what could name another place spoils the whole note.
        sound = sound && SafeName(file.name) && IsContentHash(file.hash) &&
                Path{file.source}.is_absolute();
        files.push_back(std::move(file));
    });
    return sound;
}

/// The record's count; a record that is missing or damaged is made anew when its level is looked
/// at, and then has none.
void WriteCount(const StateChange& change, std::int32_t archivedCount)
{
    const Path file = change.header;
    const auto bytes = ReadWholeFile(file);
    if (!bytes)
        return;
    auto record = ParseSavegameArchiveHeader(*bytes);
    if (!record || record->archivedCount == archivedCount)
        return;
    record->archivedCount = archivedCount;
    // Only a number that is shown.
    (void)WriteRecordFile(file, FormatSavegameArchiveHeader(*record), false);
}

} // namespace

std::string FormatStateChange(const StateChange& change)
{
    NoteJson folders = NoteJson::array();
    for (const ChangedFolder& folder : change.folders)
        folders.push_back({{"folder", Encoded(folder.folder)},
                           {"made", folder.made},
                           {"before", JsonOf(folder.before)},
                           {"after", JsonOfComing(folder.after)}});
    return Written({{"code", change.code},
                    {"reason", Encoded(change.reason)},
                    {"header", Encoded(change.header)},
                    {"archived", change.archivedCount},
                    {"folders", std::move(folders)}});
}

Result<StateChange> ParseStateChange(std::string_view text)
{
    const NoteJson json = NoteJson::parse(text, nullptr, false);
    NoteReader reader{json};
    StateChange change;
    bool sound = true;
    change.code = reader.Number<LevelCode>("code");
    change.reason = reader.Text("reason");
    change.header = reader.Text("header");
    change.archivedCount = reader.Number<std::int32_t>("archived");
    reader.List("folders", [&](NoteReader& entry, const NoteJson&) {
        ChangedFolder folder;
        folder.folder = entry.Text("folder");
        folder.made = entry.Flag("made");
        sound = Read(entry, "before", folder.before) && sound;
        sound = ReadComing(entry, folder.after) && sound;
        sound = sound && Path{folder.folder}.is_absolute();
        change.folders.push_back(std::move(folder));
    });
    if (!reader.Good() || !sound || !Path{change.header}.is_absolute())
        return Failure{ErrorCode::Damaged, {}, {}};
    return change;
}

Status MakeStateChange(Session& session, const StateChange& change,
                       const std::set<std::string>& elsewhere)
{
    if (auto status = WriteNote(session.Folders(), change); !status) {
        (void)DropNote(
            session.Folders()); // it may stand though a part of it failed; nothing is done yet
        return status;
    }
    ChangeRun run{session, change, elsewhere, ChangeRun::Round::First};
    auto status = run.Go();
    if (!status && run.TakeBack())
        (void)DropNote(session.Folders()); // a note that stays is finished at the next start
    return status;
}

Status EndStateChange(const Folders& folders, const StateChange& change)
{
    if (auto status = FlushChange(folders, change); !status)
        return status;
    return DropNote(folders);
}

bool StateChangeWaits(const Folders& folders)
{
    return !IsFree(NotePath(folders)).ValueOr(false); // one that cannot be looked at may wait
}

Status FinishStateChange(Session& session)
{
    const Path file = NotePath(session.Folders());
    const auto text = ReadFileIfThere(file, noteLimit);
    if (!text)
        return text.Error();
    if (!*text)
        return {};
    const auto change = ParseStateChange(**text);
    if (!change)
        return SetAsideDamaged(file);
    ChangeRun run{session, *change, {}, ChangeRun::Round::Later};
    if (auto status = run.Go(); !status)
        return status;
    WriteCount(*change, change->archivedCount - run.NotArchived());
    return EndStateChange(session.Folders(), *change);
}

} // namespace kestrova
