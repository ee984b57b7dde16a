#include "cli/history_command.h"

#include "cli/work.h"
#include "core/dates.h"
#include "history/history.h"
#include "originals/vault.h"
#include "saves/bring_back.h"
#include "saves/savegame_moves.h"
#include "swap/kept_originals.h"
#include "words/cli.h"
#include "words/saves.h"

#include <algorithm>

namespace kestrova
{

bool AddHistory(Run& run, LevelCode code)
{
    const auto entries = ReadHistoryOf(run.session, code);
    if (!entries)
        return TellFolderNotRead(run.session, entries.Error());
    for (const HistoryEntry& entry : *entries) {
        if (run.json != nullptr)
            run.json->push_back({{"code", code},
                                 {"id", entry.id},
                                 {"name", Readable(entry.name)},
                                 {"title", Readable(entry.title)},
                                 {"number", entry.number},
                                 {"size", entry.size},
                                 {"modified", DateText(entry.modifiedNs)},
                                 {"kept", DateText(entry.keptNs)},
                                 {"reason", Readable(entry.reason)}});
        else
            AddLine(run,
                    GetMsg(Msg::HistoryLine, {entry.id, ZeroPadded(code, 4), DateText(entry.keptNs),
                                              entry.name, entry.title, entry.reason}));
    }
    return true;
}

bool BringBackTold(Run& run, LevelCode code, const std::string& id)
{
    auto ready = EndEarlierMove(run.session);
    const auto place = ready ? BringBack(run.session, code, id) : Result<Path>{ready.Error()};
    if (!place)
        TellFailure(run.session, GetMsg(Msg::NotBroughtBack), place.Error());
    else
        AddLine(run, TextOf(*place));
    return static_cast<bool>(place);
}

namespace
{

Exit ListHistory(Run& run)
{
    if (!BeginLooking(run, Needs::Nothing))
        return Exit::Failed;
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto codes = LevelsWithHistory(run.session);
    if (!codes)
        return TellFolderNotRead(run.session, codes.Error()), Exit::Failed;
    bool whole = true;
    for (const LevelCode code : *codes)
        whole = AddHistory(run, code) && whole;
    return whole ? Exit::Done : Exit::Failed;
}

Exit BringBackFile(Run& run, const std::string& id)
{
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const auto codes = LevelsWithHistory(run.session);
    if (!codes)
        return EndWork(run, TellFolderNotRead(run.session, codes.Error()));
    for (const LevelCode code : *codes) {
        const auto entries = ReadHistoryOf(run.session, code);
        if (!entries)
            return EndWork(run, TellFolderNotRead(run.session, entries.Error()));
        if (std::any_of(entries->begin(), entries->end(),
                        [&](const HistoryEntry& entry) { return entry.id == id; }))
            return EndWork(run, BringBackTold(run, code, id));
    }
    run.host.Tell(Tone::Error, GetMsg(Msg::HistoryHasNo, {id}));
    return EndWork(run, false);
}

/// `history bring-back ID --to DIR`: needs neither the archive nor the level.
Exit BringBackInto(Run& run, const std::string& id, const Path& folder)
{
    if (!BeginWork(run, Needs::Nothing))
        return Exit::Failed;
    const LevelCode code = LeadingNumber(id);
    const auto place = BringBackTo(run.session, code, id, folder);
    if (!place)
        TellFailure(run.session, GetMsg(Msg::NotBroughtBack), place.Error());
    else
        AddLine(run, TextOf(*place));
    return EndWork(run, static_cast<bool>(place));
}

Exit ListOriginals(Run& run)
{
    if (!BeginLooking(run, Needs::Nothing))
        return Exit::Failed;
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto files = KeptFiles(run.session);
    if (!files) {
        TellFailure(run.session, GetMsg(Msg::OriginalsUnreadable), files.Error());
        return Exit::Failed;
    }
    for (const KeptFile& file : *files)
        if (run.json != nullptr)
            run.json->push_back({{"id", file.id},
                                 {"file", Readable(file.file)},
                                 {"size", file.size},
                                 {"modified", DateText(file.modifiedNs)},
                                 {"kept", DateText(file.keptNs)},
                                 {"folder", Readable(file.folder)},
                                 {"content", TextOf(file.content)}});
        else
            AddLine(run, GetMsg(Msg::OriginalLine, {file.id, DateText(file.keptNs),
                                                    Readable(file.file), Readable(file.folder)}));
    return Exit::Done;
}

/// `history originals`, `history originals bring-back ID`.
Exit RunOriginals(Run& run, const std::vector<std::string>& words)
{
    if (words.size() == 1)
        return ListOriginals(run);
    if (words[1] != "bring-back")
        return WrongUse("history", GetMsg(Msg::WrongWordTooMany, {words[1]}));
    if (words.size() < 3)
        return WrongUse("history", GetMsg(Msg::WrongWordMissing, {"history"}));
    if (run.json != nullptr)
        return WrongUse("history", GetMsg(Msg::WrongOptionHere, {"--json", words[1]}));
    if (!BeginWork(run, Needs::LevelEditor))
        return Exit::Failed;
    return EndWork(run, BringOriginalBackTold(run.session, words[2]));
}

} // namespace

Exit RunHistory(Run& run)
{
    const auto& words = run.arguments.words;
    if (run.arguments.Has("--to") && (words.empty() || words.front() != "bring-back"))
        return WrongUse("history", GetMsg(Msg::WrongOptionHere,
                                          {"--to", words.empty() ? "history" : words.front()}));
    if (words.empty())
        return ListHistory(run);
    if (words.front() == "originals")
        return RunOriginals(run, words);
    if (words.size() > 2)
        return WrongUse("history", GetMsg(Msg::WrongWordTooMany, {words[2]}));
    if (words.front() != "bring-back")
        return WrongUse("history", GetMsg(Msg::WrongWordTooMany, {words.front()}));
    if (words.size() < 2)
        return WrongUse("history", GetMsg(Msg::WrongWordMissing, {"history"}));
    if (run.json != nullptr)
        return WrongUse("history", GetMsg(Msg::WrongOptionHere, {"--json", words.front()}));
    if (!run.arguments.Has("--to"))
        return BringBackFile(run, words[1]);
    if (run.arguments.ValueOf("--to").empty())
        return WrongUse("history", GetMsg(Msg::WrongValueMissing, {"--to"}));
    return BringBackInto(run, words[1], PlaceFromWord(run.arguments.ValueOf("--to")));
}

} // namespace kestrova
