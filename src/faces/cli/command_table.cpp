#include "cli/command_table.h"

#include "cli/archive_commands.h"
#include "cli/audio_command.h"
#include "cli/command.h"
#include "cli/config_command.h"
#include "cli/history_command.h"
#include "cli/intake_commands.h"
#include "cli/level_commands.h"
#include "cli/look_commands.h"
#include "cli/saves_commands.h"
#include "cli/set_command.h"
#include "cli/setup_commands.h"
#include "cli/shots_command.h"
#include "cli/swap_commands.h"
#include "words/cli.h"

#include <algorithm>

namespace kestrova
{

std::span<const CommandRow> CommandTable()
{
    constexpr Message noJson = Message{};
    constexpr std::size_t mostFiles = 1'000'000;
    static const std::vector<CommandRow> table{
        {"practice", Msg::UsePractice, Msg::SumPractice, noJson, 1, 1, {}, RunPractice},
        {"setup",
         Msg::UseSetup,
         Msg::SumSetup,
         noJson,
         0,
         0,
         {"--trle", "--full", "--compact", "--folder-is-original"},
         RunSetup},
        {"backup",
         Msg::UseBackup,
         Msg::SumBackup,
         noJson,
         0,
         0,
         {"--refresh", "--folder-is-original"},
         RunBackup},
        {"new", Msg::UseNew, Msg::SumNew, Msg::KeysNew, 0, 1, {"--folder"}, RunNew},
        {"load", Msg::UseLoad, Msg::SumLoad, Msg::KeysNew, 1, 1, {"--folder"}, RunLoad},
        {"levels", Msg::UseLevels, Msg::SumLevels, Msg::KeysLevels, 0, 0, {}, RunLevels},
        {"info", Msg::UseInfo, Msg::SumInfo, Msg::KeysInfo, 1, 1, {}, RunInfo},
        {"add",
         Msg::UseAdd,
         Msg::SumAdd,
         Msg::KeysAdd,
         1,
         mostFiles,
         {"--name", "--note", "--names", "--keep-going"},
         RunAdd},
        {"edit",
         Msg::UseEdit,
         Msg::SumEdit,
         Msg::KeysEdit,
         1,
         1,
         {"--name", "--note", "--add", "--names", "--remove-file", "--more-info"},
         RunEdit},
        {"remove", Msg::UseRemove, Msg::SumRemove, noJson, 1, 1, {"--keep-files"}, RunRemove},
        {"sizes", Msg::UseSizes, Msg::SumSizes, Msg::KeysSizes, 0, 0, {}, RunSizes},
        {"author",
         Msg::UseAuthor,
         Msg::SumAuthor,
         Msg::KeysAuthor,
         1,
         1,
         {"--name", "--email", "--site", "--note"},
         RunAuthor},
        {"export",
         Msg::UseExport,
         Msg::SumExport,
         Msg::KeysExport,
         2,
         2,
         {"--screenshots", "--savegames"},
         RunExport},
        {"config", Msg::UseConfig, Msg::SumConfig, Msg::KeysConfig, 2, mostFiles, {}, RunConfig},
        {"recompress", Msg::UseRecompress, Msg::SumRecompress, noJson, 0, 0, {}, RunRecompress},
        {"language", Msg::UseLanguage, Msg::SumLanguage, noJson, 1, 2, {"--all"}, RunLanguage},
        {"equal", Msg::UseEqual, Msg::SumEqual, Msg::KeysEqual, 0, 0, {}, RunEqual},
        {"index", Msg::UseIndex, Msg::SumIndex, noJson, 0, 0, {}, RunIndex},
        {"documents", Msg::UseDocuments, Msg::SumDocuments, noJson, 0, 0, {}, RunDocuments},
        {"play", Msg::UsePlay, Msg::SumPlay, Msg::KeysPlay, 1, 1, {"--no-start"}, RunPlay},
        {"current", Msg::UseCurrent, Msg::SumCurrent, Msg::KeysCurrent, 0, 0, {}, RunCurrent},
        {"original", Msg::UseOriginal, Msg::SumOriginal, noJson, 0, 0, {"--full"}, RunOriginal},
        {"plan", Msg::UsePlan, Msg::SumPlan, Msg::KeysPlan, 1, 1, {}, RunPlan},
        {"verify", Msg::UseVerify, Msg::SumVerify, Msg::KeysVerify, 0, 1, {}, RunVerify},
        {"mend",
         Msg::UseMend,
         Msg::SumMend,
         noJson,
         0,
         0,
         {"--trle", "--archive-folder", "--let-go"},
         RunMend},
        {"saves", Msg::UseSaves, Msg::SumSaves, Msg::KeysSaves, 2, 3, {"--delete"}, RunSaves},
        {"history", Msg::UseHistory, Msg::SumHistory, Msg::KeysHistory, 0, 3, {"--to"}, RunHistory},
        {"shots", Msg::UseShots, Msg::SumShots, Msg::KeysShots, 1, 4, {}, RunShots},
        {"set", Msg::UseSet, Msg::SumSet, Msg::KeysSet, 0, 2, {}, RunSet},
        {"audio",
         Msg::UseAudio,
         Msg::SumAudio,
         Msg::KeysAudio,
         2,
         mostFiles,
         {"--out", "--format", "--bitrate", "--mono", "--frequency"},
         RunAudio},
        {"doctor", Msg::UseDoctor, Msg::SumDoctor, Msg::KeysDoctor, 0, 0, {}, RunDoctor},
    };
    return table;
}

const CommandRow* FindCommand(std::string_view name)
{
    const auto table = CommandTable();
    const auto row = std::find_if(table.begin(), table.end(),
                                  [&](const CommandRow& command) { return command.name == name; });
    return row == table.end() ? nullptr : &*row;
}

std::span<const OptionRow> AllOptions()
{
    // clang-format off
    static constexpr OptionRow options[] = {
        {"--home", true},
        {"--yes"},
        {"--no"},
        {"--json"},
        {"--version"},
        {"--help"},
        {"-h"},
        {"--markdown"},
        {"--trle", true},
        {"--full"},
        {"--compact"},
        {"--folder-is-original"},
        {"--folder", true},
        {"--refresh"},
        {"--archive-folder", true},
        {"--let-go"},
        {"--name", true},
        {"--note", true},
        {"--keep-files"},
        {"--no-start"},
        {"--keep-going"},
        {"--names", true},
        {"--add", true, true},
        {"--remove-file", true, true},
        {"--more-info", true},
        {"--all"},
        {"--out", true},
        {"--format", true},
        {"--bitrate", true},
        {"--mono"},
        {"--frequency", true},
        {"--email", true},
        {"--screenshots"},
        {"--savegames"},
        {"--site", true},
        {"--delete"},
        {"--to", true},
    };
    // clang-format on
    return options;
}

} // namespace kestrova
