#include "app/command_table.h"

#include "app/archive_commands.h"
#include "app/audio_commands.h"
#include "app/check_commands.h"
#include "app/config_commands.h"
#include "app/discs_commands.h"
#include "app/editor_commands.h"
#include "app/help_commands.h"
#include "app/history_commands.h"
#include "app/intake_commands.h"
#include "app/language_commands.h"
#include "app/level_commands.h"
#include "app/look_commands.h"
#include "app/mark_commands.h"
#include "app/online_commands.h"
#include "app/publish_commands.h"
#include "app/saves_commands.h"
#include "app/set_commands.h"
#include "app/setup_commands.h"
#include "app/shots_commands.h"
#include "app/swap_commands.h"
#include "app/undo_commands.h"
#include "app/upkeep_commands.h"
#include "app/wads_commands.h"
#include "words/menus.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Those that go with every command, or with none.
constexpr OptionRow commonOptions[] = {PlaceOption("--home"),   FlagOption("--yes"),
                                       FlagOption("--no"),      FlagOption("--json"),
                                       FlagOption("--version"), FlagOption("--help"),
                                       FlagOption("-h"),        FlagOption("--markdown"),
                                       FlagOption("--man"),     FlagOption("--completion")};

struct CommandGroup {
    std::span<const CommandRow> rows;
    HelpTag help;
};

/// In the order of the manual.
std::vector<CommandGroup> Groups()
{
    return {
        {SetupCommands(), HelpTag::Beginning},
        {ArchiveCommands(), HelpTag::Archives},
        {LookCommands(), HelpTag::Levels},
        {IntakeCommands(), HelpTag::NewLevel},
        {LevelCommands(), HelpTag::Levels},
        {MarkCommands(), HelpTag::Levels},
        {ConfigCommands(), HelpTag::ConfigFile},
        {EditorCommands(), HelpTag::CompileTom},
        {WadsCommands(), HelpTag::ImportWads},
        {UpkeepCommands(), HelpTag::Maintenance},
        {LanguageCommands(), HelpTag::Language},
        {SwapCommands(), HelpTag::Playing},
        {CheckCommands(), HelpTag::Problems},
        {SavesCommands(), HelpTag::Savegames},
        {HistoryCommands(), HelpTag::History},
        {UndoCommands(), HelpTag::Undo},
        {ShotsCommands(), HelpTag::Shots},
        {OnlineCommands(), HelpTag::Addresses},
        {SetCommands(), HelpTag::Settings},
        {AudioCommands(), HelpTag::Audio},
        {PublishCommands(), HelpTag::PublishOverview},
        {DiscsCommands(), HelpTag::LevelsOnCd},
        {HelpCommands(), HelpTag::Problems},
    };
}

} // namespace

std::span<const CommandRow> CommandTable()
{
    static const std::vector<CommandRow> table = [] {
        std::vector<CommandRow> rows;
        for (const CommandGroup& group : Groups())
            for (const CommandRow& row : group.rows) {
                rows.push_back(row);
                if (row.help == HelpTag::None)
                    rows.back().help = group.help;
            }
        return rows;
    }();
    return table;
}

std::span<const MenuRow> MenuTable()
{
    static constexpr MenuRow menus[] = {
        {.name = "mnu_File", .caption = Msg::MenuFile},
        {.name = "mnu_Level", .caption = Msg::MenuLevel},
        {.name = "mnu_SaveGames", .caption = Msg::MenuSaveGames},
        {.name = "mnu_Edit", .caption = Msg::MenuScreenShots},
        {.name = "mnu_Tools", .caption = Msg::MenuTools},
        {.name = "mnu_Pref", .caption = Msg::MenuPreferences},
        {.name = "mnu_Help", .caption = Msg::MenuHelp},
        {.name = "mnu_Language",
         .caption = Msg::MenuLanguage,
         .menu = "mnu_Level",
         .behind = "mnu_Property"},
        {.name = "mnu_InstallTrle", .caption = Msg::MenuInstallTrle, .menu = "mnu_Tools"},
        {.name = "mnu_ConvertAudio", .caption = Msg::MenuConvertAudio, .menu = "mnu_Tools"},
        {.name = "mnu_Manutenzione", .caption = Msg::MenuMaintenance, .menu = "mnu_Tools"},
    };
    return menus;
}

const CommandRow* FindCommand(std::string_view word)
{
    for (const CommandRow& row : CommandTable())
        if (!word.empty() && row.terminal.word == word)
            return &row;
    return nullptr;
}

std::vector<const CommandRow*> RowsThatTell(std::string_view word, std::string_view verb)
{
    std::vector<const CommandRow*> rows;
    for (const CommandRow& row : CommandTable()) {
        if (row.terminal.word != word || row.terminal.usage == Message{})
            continue;
        if (!verb.empty() && row.terminal.verb == verb)
            return {&row};
        rows.push_back(&row);
    }
    return rows;
}

const CommandRow* FindControl(std::string_view name)
{
    for (const CommandRow& row : CommandTable())
        if (!name.empty() && (row.window.control == name || row.window.button == name))
            return &row;
    return nullptr;
}

const CommandRow& RowOf(const CommandRow& first, const Run& run)
{
    const std::vector<std::string>& words = run.arguments.words;
    const CommandRow* found = &first;
    for (const CommandRow& row : CommandTable()) {
        const InTerminal& said = row.terminal;
        if (said.word == first.terminal.word &&
            (said.verb.empty() || (!words.empty() && words.front() == said.verb)) &&
            (said.when == nullptr || said.when(run)))
            found = &row;
    }
    return *found;
}

std::vector<OptionRow> AllOptions()
{
    std::vector<OptionRow> options{std::begin(commonOptions), std::end(commonOptions)};
    for (const CommandRow& row : CommandTable())
        for (const OptionRow& option : row.terminal.options) {
            const auto known =
                std::find_if(options.begin(), options.end(),
                             [&](const OptionRow& other) { return other.name == option.name; });
            if (known == options.end())
                options.push_back(option);
            else // which command may repeat it is looked at when the command is known
                known->repeats = known->repeats || option.repeats;
        }
    return options;
}

} // namespace kestrova
