#include "app/level_commands.h"

#include "app/result_text.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/file_kinds.h"
#include "core/size_words.h"
#include "levels/export_level.h"
#include "levels/more_info.h"
#include "levels/remove_level.h"
#include "publish/author_infos.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "upkeep/archive_sizes.h"
#include "words/captions.h"
#include "words/commands.h"
#include "words/levels.h"
#include "words/menus.h"
#include "words/several.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

bool Remove(Run& run)
{
    const bool keep = run.arguments.Has("--keep-files");
    return RemoveLevel(run.session, run.level, keep ? LevelFolders::Keep : LevelFolders::Ask);
}

bool MeasureAll(Run& run)
{
    if (!run.FromWords())
        return ShowArchiveSizes(run.session);
    const Status recomputed = RecomputeArchiveSize(run.session, true);
    DoneOrTold(run.session.host, recomputed);
    const bool measured = recomputed || recomputed.Error().code != ErrorCode::Stopped;
    const ArchiveHeader& archive = run.session.archive.header;
    if (run.json != nullptr) {
        Json levels = Json::array();
        for (const LevelRecord& level : run.session.archive.levels)
            levels.push_back({{"code", level.levelCode},
                              {"filesSize", level.filesSize},
                              {"extrasSize", level.extrasSize}});
        *run.json = {{"mainFolderSize", archive.mainFolderSize},
                     {"secondaryFolderSize", archive.secondaryFolderSize},
                     {"levels", std::move(levels)}};
        return measured;
    }
    for (const LevelRecord& level : run.session.archive.levels)
        AddLine(run, GetMsg(Msg::SizesLine,
                            {ZeroPadded(level.levelCode, 4), SizeInWords(level.filesSize),
                             SizeInWords(level.extrasSize), Trim(level.levelName)}));
    AddLine(run, GetMsg(Msg::SizesTotal,
                        {SizeInWords(archive.mainFolderSize + archive.secondaryFolderSize)}));
    return measured;
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

void ShowAuthor(Run& run, const AuthorInfos& infos)
{
    const auto emails = ReadableTexts(infos.emails.items);
    const auto sites = ReadableTexts(infos.sites.items);
    if (run.json != nullptr) {
        *run.json = {{"code", run.level},
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

bool ChangesAuthor(const Run& run)
{
    const auto& options = run.arguments;
    return options.Has("--name") || options.Has("--email") || options.Has("--site") ||
           options.Has("--note");
}

AuthorInfos AuthorOf(Run& run)
{
    return AuthorInfos{run.session,
                       static_cast<std::size_t>(FindLevel(run.session.archive, run.level))};
}

bool TellAuthor(Run& run)
{
    ShowAuthor(run, AuthorOf(run));
    return true;
}

bool ChangeAuthor(Run& run)
{
    AuthorInfos infos = AuthorOf(run);
    const auto& options = run.arguments;
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
        ShowAuthor(run, infos);
    return stored;
}

std::string WrongExport(Run& run)
{
    const std::string& zip = run.arguments.words[1];
    return EndsWithName(zip, OnDisk::EndingZip) ? std::string{} : GetMsg(Msg::WrongZipName, {zip});
}

bool ExportLevel(Run& run)
{
    if (!run.FromWords())
        return ExportLevel(run.session, run.level);
    const Path zip = PlaceFromWord(run.arguments.words[1]);
    if (const auto file = FileToReplace(run.session.host, zip); !file)
        return DoneOrTold(run.session.host, file.Error());
    ExportChoices choices{zip, run.arguments.Has("--screenshots"), std::nullopt};
    if (run.arguments.Has("--savegames"))
        choices.savegames = true;
    const bool exported = ExportLevel(run.session, run.level, choices);
    if (exported && run.json != nullptr)
        *run.json = {{"code", run.level},
                     {"name", Readable(LevelNameOf(run.session.archive, run.level))},
                     {"file", TextOf(zip)},
                     {"size", FileSize(zip)}};
    return exported;
}

bool ChooseZips(Run& run)
{
    const auto folder =
        run.session.host.ChooseFolder(GetMsg(Msg::ChooseSeveralExport),
                                      FolderFromText(Trim(run.session.preferences.downloadFolder)));
    run.place = folder.value_or(Path{});
    return folder.has_value();
}

bool ExportToFolder(Run& run)
{
    const auto zip = ZipIn(run.place, LevelNameOf(run.session.archive, run.level));
    if (!zip)
        return DoneOrTold(run.session.host, zip.Error());
    return ExportLevel(run.session, run.level, {*zip, true, std::nullopt});
}

bool OpenMoreInfo(Run& run)
{
    return ShowMoreInfo(run.session.host, run.session.machine, run.session.Folders(),
                        run.session.archive, run.level);
}

} // namespace

std::span<const CommandRow> LevelCommands()
{
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_RemoveLevel",
                    .caption = Msg::MenuRemoveLevel,
                    .menu = "mnu_Level",
                    .onLevel = 8},
         .terminal = {.word = "remove",
                      .usage = Msg::UseRemove,
                      .summary = Msg::SumRemove,
                      .leastWords = 1,
                      .mostWords = 1,
                      .options = {FlagOption("--keep-files")}},
         .needs = Needs::Level,
         .touches = Touches::LevelEditor,
         .run = Remove,
         .several = {.question = Msg::AskSeveralRemove,
                     .caption = Msg::SeveralRemove,
                     .step = Msg::SeveralRemoving,
                     .done = Msg::SeveralRemoved,
                     .agreed = {Msg::AskRemoveLevel, Msg::AskRemoveFolders}}},
        {.window = {.control = "mnu_CalcolaSize",
                    .caption = Msg::MenuComputeSize,
                    .menu = "mnu_Manutenzione"},
         .terminal = {.word = "sizes",
                      .usage = Msg::UseSizes,
                      .summary = Msg::SumSizes,
                      .json = Msg::KeysSizes},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = MeasureAll,
         .help = HelpTag::Maintenance},
        {.window = {.button = "Pul_AutoreInfo", .caption = Msg::AuthorInfoButton, .onLevel = 4},
         .terminal = {.word = "author",
                      .usage = Msg::UseAuthor,
                      .summary = Msg::SumAuthor,
                      .json = Msg::KeysAuthor,
                      .leastWords = 1,
                      .mostWords = 1,
                      .options = {ValueOption("--name"), ValueOption("--email"),
                                  ValueOption("--site"), ValueOption("--note")}},
         .needs = Needs::Level,
         .run = TellAuthor,
         .help = HelpTag::Author},
        {.terminal = {.word = "author", .when = ChangesAuthor},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = ChangeAuthor,
         .help = HelpTag::Author},
        {.window = {.control = "mnu_Export",
                    .caption = Msg::MenuExport,
                    .menu = "mnu_Level",
                    .onLevel = 7,
                    .noLevel = Msg::NoLevelToPlay},
         .terminal = {.word = "export",
                      .usage = Msg::UseExport,
                      .summary = Msg::SumExport,
                      .json = Msg::KeysExport,
                      .leastWords = 2,
                      .mostWords = 2,
                      .options = {FlagOption("--screenshots"), FlagOption("--savegames")},
                      .wrong = WrongExport},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = ExportLevel,
         .several = {.question = Msg::AskSeveralExport,
                     .caption = Msg::SeveralExport,
                     .step = Msg::SeveralExporting,
                     .done = Msg::SeveralExported,
                     .choose = ChooseZips,
                     .run = ExportToFolder}},
        {.window = {.button = "Pul_MoreInfo", .caption = Msg::MoreInfoButton, .onLevel = 3},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = OpenMoreInfo},
    };
    return rows;
}

} // namespace kestrova
