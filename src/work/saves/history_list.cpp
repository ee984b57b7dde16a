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

HistoryList::HistoryList(Session& session, LevelCode code) : session_(session), code_(code)
{
    Load();
}

void HistoryList::Load()
{
    auto entries = ReadHistoryOf(session_.Folders(), code_);
    if (!entries)
        TellFolderNotRead(session_.host, entries.Error());
    entries_ = std::move(entries).ValueOr({});
    std::reverse(entries_.begin(), entries_.end());
}

std::string HistoryList::LevelName() const
{
    return Readable(LevelNameOf(session_.archive, code_));
}

Result<Path> HistoryList::Place(const std::string& id)
{
    if (auto status = EndEarlierMove(session_); !status)
        return status.Error();
    return kestrova::BringBack(session_, code_, id);
}

bool HistoryList::SlotsAreTaken() const
{
    const auto folder = LiveStateFolder(session_.Folders(), session_.archive, code_);
    const auto live = folder ? SavegamesIn(*folder) : folder.Error();
    return live && live->size() >= gameSlotCount;
}

bool HistoryList::BringBack(const std::string& id)
{
    const Operation operation{session_};
    auto place = Place(id);
    if (!place && place.Error().code == ErrorCode::Refused && SlotsAreTaken()) {
        if (!session_.host.AskYesNo(GetMsg(Msg::AskFreeAndBringBack, {lineBreak})))
            return false;
        const auto moved = ArchiveSavegamesOf(session_, code_);
        place = moved ? Place(id) : moved.Error();
    }
    if (!place) {
        TellFailure(session_.host, GetMsg(Msg::NotBroughtBack), place.Error());
        return false;
    }
    session_.host.Tell(Tone::Plain, GetMsg(Msg::BroughtBack, {TextOf(place->filename())}));
    session_.list.Select(code_);
    return true;
}

bool HistoryList::Delete(const std::vector<std::string>& ids)
{
    const std::size_t before = entries_.size();
    DeleteHistoryTold(session_, ids);
    Load();
    if (entries_.size() == before)
        return false;
    session_.list.Select(code_); // its savegames are listed beside the window
    return true;
}

} // namespace kestrova
