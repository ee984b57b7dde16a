#include "cli/completion.h"

#include "app/command_table.h"

namespace kestrova
{

namespace
{

struct CompletedWords {
    std::string_view command;
    std::string verbs;
    std::string options;
};

std::vector<CompletedWords> WordsOfCommands()
{
    std::vector<CompletedWords> commands;
    for (const CommandRow& row : CommandTable()) {
        const InTerminal& said = row.terminal;
        if (said.word.empty())
            continue;
        if (commands.empty() || commands.back().command != said.word) {
            CompletedWords& now = commands.emplace_back();
            now.command = said.word;
            for (const OptionRow& option : said.options)
                now.options += std::string{option.name} + ' ';
            now.options += said.json == Message{} ? "--home --yes --no" // not shown
                                                  : "--home --yes --no --json";
        }
        std::string& verbs = commands.back().verbs;
        if (!said.verb.empty() &&
            (' ' + verbs + ' ').find(' ' + std::string{said.verb} + ' ') == std::string::npos)
            verbs += (verbs.empty() ? "" : " ") + std::string{said.verb};
    }
    return commands;
}

std::string Table(std::string_view name, std::string CompletedWords::*words,
                  const std::vector<CompletedWords>& commands)
{
    std::string table = "declare -gA " + std::string{name} + "=(\n"; // not shown
    for (const CompletedWords& command : commands)
        table += "    [" + std::string{command.command} + "]=\"" + command.*words + "\"\n";
    return table + ")\n";
}

} // namespace

std::string CompletionTables()
{
    const std::vector<CompletedWords> commands = WordsOfCommands();
    std::string valued;
    for (const OptionRow& option : AllOptions())
        if (option.takesValue)
            valued += (valued.empty() ? "" : " ") + std::string{option.name};
    return "_kestrovactl_valued=\"" + valued + "\"\n" +
           Table("_kestrovactl_verbs", &CompletedWords::verbs, commands) +
           Table("_kestrovactl_options", &CompletedWords::options, commands);
}

} // namespace kestrova
