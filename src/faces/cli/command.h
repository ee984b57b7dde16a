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
    Message usage;   ///< its words behind the program's name
    Message summary; ///< one line
    Message json;    ///< the keys of its result; `BeforeFirst` when it has none
    std::size_t leastWords = 0;
    std::size_t mostWords = 0;
    std::vector<std::string_view> options{}; ///< its own; those of every command go without saying
    Exit (*run)(Run&) = nullptr;
};

} // namespace kestrova
