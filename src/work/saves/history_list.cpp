#include "saves/history_list.h"

#include "archive/level_folders.h"
#include "saves/bring_back.h"
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

bool HistoryList::BringBack(const std::string& id)
{
    const Operation operation{session_};
    auto place = [&]() -> Result<Path> {
        if (auto status = EndEarlierMove(session_); !status)
            return status.Error();
        return kestrova::BringBack(session_.machine, session_.Folders(), session_.archive,
                                   session_.settings, code_, id);
    }();
    if (!place) {
        TellFailure(session_.host, GetMsg(Msg::NotBroughtBack), place.Error());
        return false;
    }
    session_.host.Tell(Tone::Plain, GetMsg(Msg::BroughtBack, {TextOf(place->filename())}));
    session_.list.Select(code_);
    return true;
}

} // namespace kestrova
