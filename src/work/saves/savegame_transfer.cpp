#include "saves/savegame_transfer.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "formats/savegame_records.h"
#include "formats/trle_folder.h"
#include "history/changes.h"
#include "history/history.h"
#include "history/standing.h"
#include "saves/savegame_moves.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/history.h"
#include "words/saves.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

FailedFiles AllFailed(const std::vector<Path>& files, const Failure& failure)
{
    FailedFiles failed;
    for (const Path& file : files)
        failed.push_back({file, failure});
    return failed;
}

Status ExportOne(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                 LevelCode code, const Path& file, const Path& target,
                 std::vector<std::string>* replaced)
{
    const auto facts = LookAt(file);
    const auto there = LookAt(target);
    if (!facts || !there)
        return facts ? there.Error() : facts.Error();
    if (IsSameThing(*facts, *there))
        return Failure{ErrorCode::Refused, TextOf(file), GetMsg(Msg::ExportOntoItself)};
    if (there->kind != platform::FileKind::File && there->kind != platform::FileKind::Missing)
        return Failure{ErrorCode::Refused, {}, GetMsg(Msg::WriteNoFile, {TextOf(target)})};
    const bool replaces = there->kind == platform::FileKind::File && !SameContent(file, target);
    if (replaces)
        if (auto status = KeepInHistory(machine, folders, settings, code, {target},
                                        Told(Msg::ReasonExportedOver));
            !status)
            return status;
    auto status = CopyFileOver(file, target, {Verify::Content, true, false, {}});
    if (status && replaces && replaced != nullptr)
        replaced->push_back(TextOf(target.filename()));
    return status;
}

/// The lowest place of the game that has no savegame.
Result<Path> FreeSlot(const Path& folder)
{
    auto place = FirstFree(
        [&](int slot) {
            return folder / (std::string{OnDisk::SavegameStem} + std::to_string(slot));
        },
        0, int{gameSlotCount} - 1);
    if (!place || !place->empty())
        return place;
    return Failure{ErrorCode::Refused, {}, GetMsg(Msg::HistoryNoFreeSlot)};
}

/// Deletes what was exported, once it is in the history too.
void DeleteExported(const ChangeParts& parts, LevelCode code, const std::vector<Path>& files,
                    const Path& folder, FailedFiles& failed)
{
    std::vector<Path> going;
    for (const Path& file : files)
        // The game may have saved again since it was copied.
        if (SameContent(file, ResolvePath(folder / file.filename())))
            going.push_back(file);
        else
            failed.push_back({file, MakeFailure(ErrorCode::Differs, TextOf(file))});
    if (going.empty())
        return;
    Change change = NewChange(parts, ChangeKind::SavegamesExported, code);
    change.reason = Told(Msg::ReasonExported);
    change.subject = std::to_string(going.size());
    change.live = going.front().parent_path().native();
    auto status = FlushFolder(folder);
    auto live = FilesThatGo(change.live, going);
    if (status && !live)
        status = live.Error();
    if (status) {
        change.folders = {std::move(live).Value()};
        status = MakeChange(parts, change);
    }
    if (status)
        status = EndChange(parts.folders, parts.settings, change);
    if (!status)
        for (FailedFile& file : AllFailed(going, status.Error()))
            failed.push_back(std::move(file));
}

/// Savegames that came into a folder of the level, in its free places, can go again.
void NoteComing(const ChangeParts& parts, LevelCode code, const Path& folder,
                const std::vector<Path>& files)
{
    auto came = FilesThatCame(folder, files);
    if (files.empty() || !came)
        return;
    Change change = NewChange(parts, ChangeKind::SavegamesImported, code);
    change.subject = std::to_string(files.size());
    change.live = folder.native();
    change.folders = {std::move(came).Value()};
    NoteDone(parts.folders, parts.settings, change);
}

} // namespace

FailedFiles CopyIntoSlots(const ArchiveParts& parts, LevelCode code, const std::vector<Path>& files)
{
    const Operation operation{parts};
    const auto live = LiveStateFolder(parts.folders, parts.archive, code);
    if (!live)
        return AllFailed(files, live.Error());
    const Path folder = ResolvePath(*live);
    auto ready = EndEarlierMove(parts);
    if (ready)
        ready = MakeFolder(folder);
    if (!ready)
        return AllFailed(files, ready.Error());
    FailedFiles failed;
    std::vector<Path> came;
    for (const Path& file : files) {
        const auto place = FreeSlot(folder);
        const auto status =
            place ? CopyFileOver(file, *place, {Verify::Content, true, false, {}}) : place.Error();
        if (!status)
            failed.push_back({file, status.Error()});
        else
            came.push_back(*place);
    }
    NoteComing(parts, code, folder, came);
    (void)FlushFolder(folder); // what was imported is still where it came from
    return failed;
}

FailedFiles ExportSavegames(const ArchiveParts& parts, LevelCode code,
                            const std::vector<Path>& files, const Path& folder, bool deleteSources,
                            std::vector<std::string>* replaced)
{
    const Operation operation{parts};
    if (const auto ready = EndEarlierMove(parts); !ready)
        return AllFailed(files, ready.Error());
    const Path place = ResolvePath(folder);
    FailedFiles failed;
    std::vector<Path> exported;
    for (const Path& file : files) {
        const Path target = ResolvePath(place / file.filename());
        if (const auto status = ExportOne(parts.machine, parts.folders, parts.settings, code, file,
                                          target, replaced);
            !status)
            failed.push_back({file, status.Error()});
        else
            exported.push_back(file);
    }
    if (deleteSources && !exported.empty())
        DeleteExported(parts, code, exported, place, failed);
    return failed;
}

void TellFailedFiles(Host& host, Message text, const FailedFiles& failed)
{
    if (failed.empty())
        return;
    std::vector<std::string> names;
    for (const FailedFile& file : failed)
        names.push_back(TextOf(file.file.filename()));
    TellFailure(host, GetMsg(text, {ShownNames(names)}), failed.front().failure);
}

} // namespace kestrova
