#include "saves/history_list.h"

#include "archive/level_folders.h"
#include "formats/savegame_records.h"
#include "history/standing.h"
#include "saves/archive_slots.h"
#include "saves/bring_back.h"
#include "saves/delete_history.h"
#include "saves/savegame_moves.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/saves.h"

#include <algorithm>

namespace kestrova
{

HistoryList::HistoryList(const ArchiveParts& parts, LevelCode code) : parts_(parts), code_(code)
{
    Load();
}

void HistoryList::Load()
{
    auto entries = ReadHistoryOf(parts_.folders, code_);
    if (!entries)
        TellFolderNotRead(parts_.host, entries.Error());
    entries_ = std::move(entries).ValueOr({});
    std::reverse(entries_.begin(), entries_.end());
}

std::string HistoryList::LevelName() const
{
    return Readable(LevelNameOf(parts_.archive, code_));
}

Result<Path> HistoryList::Place(const std::string& id)
{
    if (auto status = EndEarlierMove(parts_); !status)
        return status.Error();
    return kestrova::BringBack(parts_, code_, id);
}

bool HistoryList::SlotsAreTaken() const
{
    const auto folder = LiveStateFolder(parts_.folders, parts_.archive, code_);
    const auto live = folder ? SavegamesIn(*folder) : folder.Error();
    return live && live->size() >= gameSlotCount;
}

bool HistoryList::BringBack(const std::string& id)
{
    const Operation operation{parts_};
    auto place = Place(id);
    if (!place && place.Error().code == ErrorCode::Refused && SlotsAreTaken()) {
        if (!parts_.host.AskYesNo(GetMsg(Msg::AskFreeAndBringBack, {lineBreak})))
            return false;
        const auto moved = ArchiveSavegamesOf(parts_, code_);
        place = moved ? Place(id) : moved.Error();
    }
    if (!place) {
        TellFailure(parts_.host, GetMsg(Msg::NotBroughtBack), place.Error());
        return false;
    }
    parts_.host.Tell(Tone::Plain, GetMsg(Msg::BroughtBack, {TextOf(place->filename())}));
    parts_.list.Select(code_);
    return true;
}

bool HistoryList::Delete(const std::vector<std::string>& ids)
{
    const std::size_t before = entries_.size();
    DeleteHistoryTold(parts_, ids);
    Load();
    if (entries_.size() == before)
        return false;
    parts_.list.Select(code_); // its savegames are listed beside the window
    return true;
}

} // namespace kestrova
