#include "cli/level_commands.h"

// Commands for what levels are, beside being played: their language, and which of them are equal.
#include "archive/level_folders.h"
#include "cli/work.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "levels/export_level.h"
#include "levels/level_language.h"
#include "publish/author_infos.h"
#include "session/file_to_write.h"
#include "storage/stored_audio.h"
#include "upkeep/change_compression.h"
#include "upkeep/copy_more_info.h"
#include "upkeep/create_tr4_infos.h"
#include "upkeep/equal_check.h"
#include "words/cli.h"
#include "words/swap.h"

namespace kestrova
{

namespace
{

std::string NameAt(const Session& session, std::size_t index)
{
    return Readable(Trim(session.archive.levels[index].levelName));
}

std::vector<std::string> WordsOf(const std::string& text)
{
    std::vector<std::string> words = Split(Readable(text), ' ');
    std::erase(words, "");
    return words;
}

std::vector<std::string> ReadableTexts(std::vector<std::string> texts)
{
    for (std::string& text : texts)
        text = Readable(text);
    return texts;
}

void ShowAuthor(Run& run, LevelCode code, const AuthorInfos& infos)
{
    const auto emails = ReadableTexts(infos.emails.items);
    const auto sites = ReadableTexts(infos.sites.items);
    if (run.json != nullptr) {
        *run.json = {{"code", code},
                     {"name", Readable(infos.name)},
                     {"note", Readable(infos.note)},
                     {"emails", emails},
                     {"sites", sites}};
        return;
    }
    AddLine(run, GetMsg(Msg::InfoAuthor, {infos.name}));
    if (!infos.note.empty())
        AddText(run, GetMsg(Msg::AuthorNoteLine, {""}), infos.note);
    for (const std::string& email : emails)
        AddLine(run, GetMsg(Msg::AuthorEmailLine, {email}));
    for (const std::string& site : sites)
        AddLine(run, GetMsg(Msg::AuthorSiteLine, {site}));
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
    if (all)
        return EndWork(run, ChangeLanguageOfAll(run.session, change));
    run.session.list.Select(*code);
    return EndWork(run, ChangeLanguageOfSelected(run.session, change));
}

Exit RunEqual(Run& run)
{
    if (!BeginLooking(run, Needs::Archive) || !HasArchiveFolder(run))
        return Exit::Failed;
    Json pairs = Json::array();
    const bool scanned = FindEqualLevels(run.session, [&](const EqualPair& pair) {
        const LevelCode code = run.session.archive.levels[pair.level].levelCode;
        const LevelCode other = run.session.archive.levels[pair.other].levelCode;
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

Exit RunDocuments(Run& run)
{
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    return EndWork(run, CopyMoreInfoFiles(run.session));
}

Exit RunAuthor(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code)
        return Exit::WrongUse;
    const auto& options = run.arguments;
    const bool changes = options.Has("--name") || options.Has("--email") || options.Has("--site") ||
                         options.Has("--note");
    if (!(changes ? BeginWork(run, Needs::Archive) : BeginLooking(run, Needs::Archive)))
        return Exit::Failed;
    const std::ptrdiff_t index = FindLevel(run.session, *code);
    if (index < 0) {
        run.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(*code)}));
        return changes ? EndWork(run, false) : Exit::Failed;
    }
    AuthorInfos infos{run.session, static_cast<std::size_t>(index)};
    if (!changes) {
        ShowAuthor(run, *code, infos);
        return Exit::Done;
    }
    if (options.Has("--name"))
        infos.name = Readable(Trim(options.ValueOf("--name")));
    if (options.Has("--note"))
        infos.note = Readable(Trim(options.ValueOf("--note")));
    if (options.Has("--email"))
        infos.emails.items = WordsOf(options.ValueOf("--email"));
    if (options.Has("--site"))
        infos.sites.items = WordsOf(options.ValueOf("--site"));
    const bool stored = infos.Store();
    if (stored)
        ShowAuthor(run, *code, infos);
    return EndWork(run, stored);
}

Exit RunExport(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code)
        return Exit::WrongUse;
    if (!EndsWithName(run.arguments.words[1], OnDisk::EndingZip))
        return WrongUse("export", GetMsg(Msg::WrongZipName, {run.arguments.words[1]}));
    const Path zip = PlaceFromWord(run.arguments.words[1]);
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    if (FindLevel(run.session, *code) < 0) {
        run.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(*code)}));
        return EndWork(run, false);
    }
    if (!FileToReplace(run.session, zip))
        return EndWork(run, false);
    ExportChoices choices{zip, run.arguments.Has("--screenshots"), std::nullopt};
    if (run.arguments.Has("--savegames"))
        choices.savegames = true;
    const bool exported = ExportLevel(run.session, *code, choices);
    if (exported && run.json != nullptr)
        *run.json = {{"code", *code},
                     {"name", Readable(LevelNameOf(run.session, *code))},
                     {"file", TextOf(zip)},
                     {"size", FileSize(zip)}};
    return EndWork(run, exported);
}

Exit RunRecompress(Run& run)
{
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    // Every level, whatever the settings were when it was stored.
    return EndWork(run,
                   ChangeCompression(run.session, [&](const std::string& name, const Path& files) {
                       return ChangeLevelAudio(run.session, name, files);
                   }));
}

} // namespace kestrova
