#include "app/saves_commands.h"

#include "app/history_commands.h"
#include "app/result_text.h"
#include "archive/level_folders.h"
#include "core/dates.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/savegame_info.h"
#include "formats/trle_folder.h"
#include "history/standing.h"
#include "play/savegame_tool.h"
#include "saves/savegame_list.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/intake.h"
#include "words/menus.h"
#include "words/saves.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

bool AddSavegames(Run& run, const Path& folder, const std::string& place)
{
    const auto files = ListFiles(folder, OnDisk::SavegamePattern);
    if (!files)
        return TellFolderNotRead(run.session.host, files.Error());
    for (const Path& file : *files) {
        const platform::FileFacts facts = platform::FactsOf(file);
        const SavegameInfo info = ReadSavegameInfo(file);
        if (run.json != nullptr)
            run.json->push_back({{"place", place},
                                 {"name", Readable(file.filename().native())},
                                 {"number", info.number},
                                 {"title", Readable(info.title)},
                                 {"size", facts.size},
                                 {"modified", DateText(facts.modifiedNs)}});
        else
            AddLine(run, place + "\t" + file.filename().native() + "\t" + SavegameRow(file));
    }
    return true;
}

bool ListSaves(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto live = LiveStateFolder(run.session.Folders(), run.session.archive, run.level);
    if (!live) {
        TellFailure(run.session.host, GetMsg(Msg::CannotListSavegames), live.Error());
        return false;
    }
    if (!AddSavegames(run, *live, GetMsg(Msg::SavesLive)))
        return false;
    const Path root = InFolder(LevelHomeOf(run.session.Folders(), run.level), OnDisk::DirSavegames);
    for (int number = 1;; ++number) {
        const std::string slot = std::string{OnDisk::SlotPrefix} + std::to_string(number);
        if (!FolderExists(root / slot))
            return true;
        if (!AddSavegames(run, root / slot, slot))
            return false;
    }
}

bool ListKept(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    return AddHistory(run, run.level);
}

bool StartTool(Run& run)
{
    return StartSavegameTool(run.session);
}

bool FreeSlots(Run& run)
{
    return ArchiveWithWords(run.session, run.FromWords() ? BoxWords::OfWork : BoxWords::Always);
}

bool FillSlots(Run& run)
{
    return RestoreWithWords(run.session, run.FromWords() ? BoxWords::OfWork : BoxWords::Always);
}

/// The folder of the words; none, with words, when it is not there.
std::optional<Path> FolderOfWords(Run& run)
{
    const Path folder = PlaceFromWord(run.arguments.words[2]);
    const auto isThere = IsFolder(folder);
    if (isThere && *isThere)
        return folder;
    if (isThere)
        run.session.host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(folder)}));
    else
        TellFolderNotRead(run.session.host, isThere.Error());
    return std::nullopt;
}

bool Import(Run& run)
{
    const auto folder = FolderOfWords(run);
    SavegameList list{run.session, ListPurpose::Import};
    return folder && list.Prepare(*folder) && list.Import(list.Files());
}

bool ExportSaves(Run& run)
{
    const auto folder = FolderOfWords(run);
    SavegameList list{run.session, ListPurpose::Export};
    return folder && list.Prepare() &&
           list.Export(list.Files(), *folder, run.arguments.Has("--delete"));
}

bool BringBackSave(Run& run)
{
    return BringBackTold(run, run.level, run.arguments.words[2]);
}

struct SavesVerb {
    std::string_view name;
    std::size_t words;
    bool looks; ///< changes nothing, and has a result
};
constexpr SavesVerb savesVerbs[] = {
    {"list", 2, true},    {"archive", 2, false}, {"restore", 2, false},   {"import", 3, false},
    {"export", 3, false}, {"history", 2, true},  {"bring-back", 3, false}};

std::string WrongSaves(Run& run)
{
    const auto& words = run.arguments.words;
    const auto* verb =
        std::find_if(std::begin(savesVerbs), std::end(savesVerbs),
                     [&](const SavesVerb& row) { return row.name == words.front(); });
    if (verb == std::end(savesVerbs))
        return GetMsg(Msg::WrongWordTooMany, {words.front()});
    if (words.size() < verb->words)
        return GetMsg(Msg::WrongWordMissing, {"saves"});
    if (words.size() > verb->words)
        return GetMsg(Msg::WrongWordTooMany, {words[verb->words]});
    if (run.json != nullptr && !verb->looks)
        return GetMsg(Msg::WrongOptionHere, {"--json", words.front()});
    if (run.arguments.Has("--delete") && verb->name != "export")
        return GetMsg(Msg::WrongOptionHere, {"--delete", words.front()});
    return {};
}

/// An item of the menu of savegames. Without a level there are none, which is told as ever.
constexpr InWindow SavesItem(std::string_view control, Message caption)
{
    return {.control = control, .caption = caption, .menu = "mnu_SaveGames", .noLevel = Message{}};
}

} // namespace

std::span<const CommandRow> SavesCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "saves",
                      .verb = "list",
                      .usage = Msg::UseSaves,
                      .summary = Msg::SumSaves,
                      .json = Msg::KeysSaves,
                      .leastWords = 2,
                      .mostWords = 3,
                      .options = {FlagOption("--delete")},
                      .wrong = WrongSaves},
         .needs = Needs::LevelFiles,
         .run = ListSaves},
        {.window = {.control = "mnu_StartSaveGameMan",
                    .button = "Pul_SaveGames",
                    .caption = Msg::MenuStartSaveGameMan,
                    .menu = "mnu_SaveGames"},
         .needs = Needs::Archive,
         .touches = Touches::LevelEditor,
         .run = StartTool,
         .help = HelpTag::SavegameTool},
        {.window = SavesItem("mnu_ImportSavegame", Msg::MenuImportSavegame),
         .terminal = {.word = "saves", .verb = "import", .failsWhenTold = true},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = Import},
        {.window = SavesItem("mnu_ExportSavegame", Msg::MenuExportSavegame),
         .terminal = {.word = "saves", .verb = "export", .failsWhenTold = true},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = ExportSaves},
        {.window = SavesItem("mnu_SendSaveGameEmail", Msg::MenuSendSaveGame)},
        {.window = SavesItem("mnu_BackupSavegame", Msg::MenuBackupSavegame),
         .terminal = {.word = "saves", .verb = "archive"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = FreeSlots},
        {.window = SavesItem("mnu_RestoreSavegames", Msg::MenuRestoreSavegames),
         .terminal = {.word = "saves", .verb = "restore"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = FillSlots},
        {.window = SavesItem("mnu_SavegameHistory", Msg::HistoryTitle),
         .terminal = {.word = "saves", .verb = "history"},
         .needs = Needs::Level,
         .run = ListKept,
         .help = HelpTag::History},
        {.terminal = {.word = "saves", .verb = "bring-back"},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = BringBackSave,
         .help = HelpTag::History},
    };
    return rows;
}

} // namespace kestrova
