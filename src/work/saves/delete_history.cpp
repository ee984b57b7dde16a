#include "saves/delete_history.h"

#include "core/name_list.h"
#include "core/size_words.h"
#include "core/text.h"
#include "history/delete_from_history.h"
#include "history/history.h"
#include "saves/savegame_moves.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/history.h"

#include <algorithm>
#include <map>
#include <set>

namespace kestrova
{

namespace
{

/// What goes, each file once however often it was named.
struct ChosenKept {
    std::map<LevelCode, std::set<std::string>> ids;
    std::vector<std::string> names;
    double bytes = 0;

    void Take(LevelCode code, const HistoryEntry& entry)
    {
        if (!ids[code].insert(entry.id).second)
            return;
        const std::string name = Readable(entry.name);
        names.push_back(entry.title.empty() ? name
                                            : name + " (" + OnOneLine(Readable(entry.title)) + ")");
        bytes += static_cast<double>(entry.size);
    }
};

Result<ChosenKept> KeptNamed(const Folders& folders, const std::vector<std::string>& words)
{
    ChosenKept chosen;
    for (const std::string& word : words) {
        const LevelCode code = LeadingNumber(word);
        const auto entries = ReadHistoryOf(folders, code);
        if (!entries)
            return entries.Error();
        bool found = false;
        for (const HistoryEntry& entry : *entries)
            if (AreDigits(word) || entry.id == word) {
                chosen.Take(code, entry);
                found = true;
            }
        if (!found)
            return InWords(ErrorCode::Missing, GetMsg(Msg::HistoryHasNone, {word}));
    }
    return chosen;
}

} // namespace

bool NamesHistory(std::string_view word)
{
    const auto dash = word.find('-');
    return AreDigits(word.substr(0, dash)) &&
           (dash == std::string_view::npos || AreDigits(word.substr(dash + 1)));
}

bool DeleteHistoryTold(const ArchiveParts& parts, const std::vector<std::string>& words)
{
    const Operation operation{parts};
    // What was cut short may need what the history holds.
    const auto ready = EndEarlierMove(parts);
    const auto chosen = ready ? KeptNamed(parts.folders, words) : Result<ChosenKept>{ready.Error()};
    if (!chosen) {
        TellFailure(parts.host, GetMsg(Msg::HistoryNotDeleted), chosen.Error());
        return false;
    }
    if (!parts.host.AskYesNo(GetMsg(Msg::AskDeleteHistory, {ShownNames(chosen->names),
                                                            std::to_string(chosen->names.size()),
                                                            SizeInWords(chosen->bytes)})))
        return false;
    for (const auto& [code, ids] : chosen->ids)
        if (const auto deleted = DeleteFromHistory(parts.folders, code, ids); !deleted) {
            TellFailure(parts.host, GetMsg(Msg::HistoryNotAllDeleted), deleted.Error());
            return false;
        }
    return true;
}

} // namespace kestrova
