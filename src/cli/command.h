#pragma once

#include "cli/arguments.h"
#include "cli/terminal_host.h"

#include <nlohmann/json_fwd.hpp>

/// One command of the terminal: a row of the table and the function behind it.
namespace kestrova
{

using Json = nlohmann::ordered_json;

enum class Exit { Done = 0, Failed = 1, WrongUse = 2 };

/// What one run of a command has. Results are gathered here and go out at the end.
struct Run {
    Session& session;
    TerminalHost& host;
    const Arguments& arguments;
    std::string text{};   ///< lines for a person
    Json* json = nullptr; ///< where the result goes with `--json`; null without
    /// The preference that stands while a working run saves after every change.
    std::optional<bool> keptAutoSave{};
};

struct CommandRow {
    std::string_view name;
    Msg usage;   ///< its words behind the program's name
    Msg summary; ///< one line
    Msg json;    ///< the keys of its result; `BeforeFirst` when it has none
    std::size_t leastWords = 0;
    std::size_t mostWords = 0;
    std::vector<std::string_view> options{}; ///< its own; those of every command go without saying
    Exit (*run)(Run&) = nullptr;
};

/// In the order of the manual.
std::span<const CommandRow> CommandTable();
const CommandRow* FindCommand(std::string_view name);
std::span<const OptionRow> AllOptions();

Exit RunPractice(Run& run);
Exit RunSetup(Run& run);
Exit RunBackup(Run& run);
Exit RunNew(Run& run);
Exit RunLoad(Run& run);
Exit RunLevels(Run& run);
Exit RunInfo(Run& run);
Exit RunAdd(Run& run);
Exit RunEdit(Run& run);
Exit RunRemove(Run& run);
Exit RunSizes(Run& run);
Exit RunAuthor(Run& run);
Exit RunExport(Run& run);
Exit RunConfig(Run& run);
Exit RunRecompress(Run& run);
Exit RunLanguage(Run& run);
Exit RunEqual(Run& run);
Exit RunIndex(Run& run);
Exit RunDocuments(Run& run);
Exit RunPlay(Run& run);
Exit RunCurrent(Run& run);
Exit RunOriginal(Run& run);
Exit RunPlan(Run& run);
Exit RunVerify(Run& run);
Exit RunMend(Run& run);
Exit RunHistory(Run& run);
Exit RunSaves(Run& run);
Exit RunShots(Run& run);
Exit RunSet(Run& run);
Exit RunAudio(Run& run);
Exit RunDoctor(Run& run);

} // namespace kestrova
