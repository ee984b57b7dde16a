#include "app/history_commands.h"

#include "app/result_text.h"
#include "core/dates.h"
#include "history/history.h"
#include "originals/vault.h"
#include "saves/bring_back.h"
#include "saves/delete_history.h"
#include "saves/savegame_moves.h"
#include "session/telling.h"
#include "swap/kept_originals.h"
#include "words/commands.h"
#include "words/history.h"
#include "words/originals.h"
#include "words/saves.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

bool AddHistory(Run& run, LevelCode code)
{
    const auto entries = ReadHistoryOf(run.session.Folders(), code);
    if (!entries)
        return TellFolderNotRead(run.session.host, entries.Error());
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
            AddLine(run, GetMsg(Msg::HistoryLine,
                                {entry.id, ZeroPadded(code, 4), DateText(entry.keptNs), entry.name,
                                 entry.title, ShownAsSpoken(entry.reason)}));
    }
    return true;
}

bool BringBackTold(Run& run, LevelCode code, const std::string& id)
{
    auto ready = EndEarlierMove(run.session);
    const auto place = ready ? BringBack(run.session, code, id) : Result<Path>{ready.Error()};
    if (!place)
        TellFailure(run.session.host, GetMsg(Msg::NotBroughtBack), place.Error());
    else
        AddLine(run, TextOf(*place));
    return static_cast<bool>(place);
}

namespace
{

bool ListHistory(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto codes = LevelsWithHistory(run.session.Folders());
    if (!codes)
        return TellFolderNotRead(run.session.host, codes.Error());
    bool whole = true;
    for (const LevelCode code : *codes)
        whole = AddHistory(run, code) && whole;
    return whole;
}

bool BringBackFile(Run& run)
{
    const std::string& id = run.arguments.words[1];
    const auto codes = LevelsWithHistory(run.session.Folders());
    if (!codes)
        return TellFolderNotRead(run.session.host, codes.Error());
    for (const LevelCode code : *codes) {
        const auto entries = ReadHistoryOf(run.session.Folders(), code);
        if (!entries)
            return TellFolderNotRead(run.session.host, entries.Error());
        if (std::any_of(entries->begin(), entries->end(),
                        [&](const HistoryEntry& entry) { return entry.id == id; }))
            return BringBackTold(run, code, id);
    }
    run.session.host.Tell(Tone::Error, GetMsg(Msg::HistoryHasNo, {id}));
    return false;
}

/// `history bring-back ID --to DIR`.
bool BringBackInto(Run& run)
{
    const std::string& id = run.arguments.words[1];
    const Path folder = PlaceFromWord(run.arguments.ValueOf("--to"));
    const LevelCode code = LeadingNumber(id);
    const auto place = BringBackTo(run.session.Folders(), code, id, folder);
    if (!place)
        TellFailure(run.session.host, GetMsg(Msg::NotBroughtBack), place.Error());
    else
        AddLine(run, TextOf(*place));
    return static_cast<bool>(place);
}

/// `history delete CODE|ID...`.
bool DeleteHistory(Run& run)
{
    const auto& words = run.arguments.words;
    const std::vector<std::string> named(words.begin() + 1, words.end());
    if (!DeleteHistoryTold(run.session, named))
        return false;
    AddLine(run, GetMsg(Msg::HistoryDeleted, {Join(named, " ")}));
    return true;
}

bool ListOriginals(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto files = KeptFiles(run.session.Folders());
    if (!files) {
        TellFailure(run.session.host, GetMsg(Msg::OriginalsUnreadable), files.Error());
        return false;
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
    return true;
}

bool BringOriginalBack(Run& run)
{
    return BringOriginalBackTold(run.session, run.arguments.words[2]);
}

bool DeleteOriginals(Run& run)
{
    const auto& words = run.arguments.words;
    const std::vector<std::string> ids(words.begin() + 2, words.end());
    if (!DeleteOriginalsTold(run.session, ids))
        return false;
    AddLine(run, GetMsg(Msg::OriginalDeleted, {Join(ids, " ")}));
    return true;
}

bool OneOfThem(const Run& run)
{
    return run.arguments.words.size() > 1;
}

bool ToBeDeleted(const Run& run)
{
    return OneOfThem(run) && run.arguments.words[1] == "delete";
}

bool IntoAFolder(const Run& run)
{
    return run.arguments.Has("--to");
}

std::string WrongOriginals(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.size() == 1)
        return {};
    const bool deletes = words[1] == "delete";
    if (!deletes && words[1] != "bring-back")
        return GetMsg(Msg::WrongWordTooMany, {words[1]});
    if (words.size() < 3)
        return GetMsg(Msg::WrongWordMissing, {"history"});
    if (!deletes && words.size() > 3)
        return GetMsg(Msg::WrongWordTooMany, {words[3]});
    return run.json == nullptr ? std::string{} : GetMsg(Msg::WrongOptionHere, {"--json", words[1]});
}

std::string WrongDeletion(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.size() < 2)
        return GetMsg(Msg::WrongWordMissing, {"history"});
    for (std::size_t i = 1; i < words.size(); ++i)
        if (!NamesHistory(words[i]))
            return GetMsg(Msg::WrongHistoryName, {words[i]});
    return run.json == nullptr ? std::string{} : GetMsg(Msg::WrongOptionHere, {"--json", words[0]});
}

std::string WrongHistory(Run& run)
{
    const auto& words = run.arguments.words;
    if (run.arguments.Has("--to") && (words.empty() || words.front() != "bring-back"))
        return GetMsg(Msg::WrongOptionHere, {"--to", words.empty() ? "history" : words.front()});
    if (words.empty())
        return {};
    if (words.front() == "originals")
        return WrongOriginals(run);
    if (words.front() == "delete")
        return WrongDeletion(run);
    if (words.size() > 2)
        return GetMsg(Msg::WrongWordTooMany, {words[2]});
    if (words.front() != "bring-back")
        return GetMsg(Msg::WrongWordTooMany, {words.front()});
    if (words.size() < 2)
        return GetMsg(Msg::WrongWordMissing, {"history"});
    if (run.json != nullptr)
        return GetMsg(Msg::WrongOptionHere, {"--json", words.front()});
    if (run.arguments.Has("--to") && run.arguments.ValueOf("--to").empty())
        return GetMsg(Msg::WrongValueMissing, {"--to"});
    return {};
}

} // namespace

std::span<const CommandRow> HistoryCommands()
{
    constexpr std::size_t mostFiles = 1000;
    static const CommandRow rows[] = {
        {.terminal = {.word = "history",
                      .usage = Msg::UseHistory,
                      .summary = Msg::SumHistory,
                      .json = Msg::KeysHistory,
                      .mostWords = mostFiles,
                      .options = {ValueOption("--to")},
                      .wrong = WrongHistory},
         .run = ListHistory},
        {.terminal = {.word = "history", .verb = "bring-back"},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = BringBackFile},
        // Needs neither the archive nor the level.
        {.terminal = {.word = "history", .verb = "bring-back", .when = IntoAFolder},
         .touches = Touches::Stores,
         .run = BringBackInto},
        // Needs neither the archive nor the level.
        {.terminal = {.word = "history", .verb = "delete"},
         .touches = Touches::Stores,
         .run = DeleteHistory,
         .help = HelpTag::History},
        {.terminal = {.word = "history", .verb = "originals"},
         .run = ListOriginals,
         .help = HelpTag::OriginalsHistory},
        {.terminal = {.word = "history", .verb = "originals", .when = OneOfThem},
         .needs = Needs::LevelEditor,
         .touches = Touches::LevelEditor,
         .run = BringOriginalBack,
         .help = HelpTag::OriginalsHistory},
        {.terminal = {.word = "history", .verb = "originals", .when = ToBeDeleted},
         .touches = Touches::Stores,
         .run = DeleteOriginals,
         .help = HelpTag::OriginalsHistory},
    };
    return rows;
}

} // namespace kestrova
