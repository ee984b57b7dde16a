// Commands for what levels are, beside being played: their language, and which of them are equal.
#include "app/level_commands.h"
#include "archive/level_folders.h"
#include "cli/work.h"
#include "swap/level_language.h"
#include "swap/marker.h"
#include "upkeep/create_tr4_infos.h"
#include "upkeep/equal_check.h"

namespace kestrova
{

namespace
{

std::string NameAt(const Session& session, std::size_t index)
{
    return Readable(Trim(session.levels[index].levelName));
}

} // namespace

Exit RunLanguage(Run& run)
{
    const auto& words = run.arguments.words;
    const bool all = run.arguments.Has("--all");
    if (words.front() != "set" && words.front() != "restore")
        return WrongUse("language", GetMsg(Msg::LanguageSetOrRestore, {words.front()}));
    if (all == (words.size() > 1))
        return WrongUse("language", GetMsg(Msg::LanguageNeedsCode));
    const auto change = words.front() == "set" ? LanguageChange::Mine : LanguageChange::Original;
    const auto code = all ? std::optional{originalCode} : CodeFromWord(run, words[1]);
    if (!code)
        return Exit::WrongUse;
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const LevelCode current = CurrentLevelCode(run.session);
    if (current != originalCode && (all || current == *code) && !TrleIsQuiet(run.session))
        return EndWork(run, false);
    if (all)
        return EndWork(run, ChangeLanguageOfAll(run.session, change));
    run.session.list.Select(*code);
    return EndWork(run, ChangeLanguageOfSelected(run.session, change));
}

Exit RunEqual(Run& run)
{
    if (!BeginLooking(run, Needs::Archive))
        return Exit::Failed;
    Json pairs = Json::array();
    const bool scanned = FindEqualLevels(run.session, [&](const EqualPair& pair) {
        const LevelCode code = run.session.levels[pair.level].levelCode;
        const LevelCode other = run.session.levels[pair.other].levelCode;
        const std::string name = NameAt(run.session, pair.level);
        const std::string otherName = NameAt(run.session, pair.other);
        if (run.json != nullptr)
            pairs.push_back({{"code", code},
                             {"name", name},
                             {"file", Readable(pair.file)},
                             {"otherCode", other},
                             {"otherName", otherName}});
        else
            AddLine(run, GetMsg(Msg::EqualLine, {ZeroPadded(code, 4), name, pair.file,
                                                 ZeroPadded(other, 4), otherName}));
        return true;
    });
    if (run.json != nullptr)
        *run.json = std::move(pairs);
    return scanned ? Exit::Done : Exit::Failed;
}

Exit RunIndex(Run& run)
{
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    return EndWork(run, CreateTr4Infos(run.session));
}

} // namespace kestrova
