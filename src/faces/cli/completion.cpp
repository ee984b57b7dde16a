#include "cli/completion.h"

#include "app/command_table.h"

namespace kestrova
{

namespace
{

struct CompletedWords {
    std::string_view command;
    std::string_view usage;
    std::vector<OptionRow> own;
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
            now.usage = said.usage.text;
            now.own = said.options;
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

std::string OptionsWithValues()
{
    std::string valued;
    for (const OptionRow& option : AllOptions())
        if (option.takesValue)
            valued += (valued.empty() ? "" : " ") + std::string{option.name};
    return valued;
}

/// A word of fish, whatever letters it has.
std::string InQuotes(std::string_view text)
{
    std::string quoted = "'";
    for (const char letter : text) {
        if (letter == '\'' || letter == '\\')
            quoted += '\\';
        quoted += letter;
    }
    return quoted + '\'';
}

/// The beginning of a line for one condition, a function of packaging/completion.fish.
std::string WhenFish(const std::string& condition)
{
    return "complete -c kestrovactl -n '" + condition + '\''; // not shown
}

std::string CommandOfFish(const CompletedWords& command)
{
    const std::string word{command.command};
    std::string lines = WhenFish("__kestrovactl_at 0");
    lines += " -f -a " + word + " -d " + InQuotes(command.usage) + '\n';
    if (!command.verbs.empty())
        lines +=
            WhenFish("__kestrovactl_at 1 " + word) + " -f -a " + InQuotes(command.verbs) + '\n';
    for (const OptionRow& option : command.own) {
        lines += WhenFish("__kestrovactl_in " + word);
        lines += " -l " + std::string{option.name.substr(2)} + (option.takesValue ? " -r\n" : "\n");
    }
    return lines;
}

} // namespace

std::string CompletionForFish()
{
    std::string text = "set -g __kestrovactl_valued " + OptionsWithValues() + '\n'; // not shown
    for (const CompletedWords& command : WordsOfCommands())
        text += CommandOfFish(command);
    return text;
}

std::string CompletionTables()
{
    const std::vector<CompletedWords> commands = WordsOfCommands();
    return "_kestrovactl_valued=\"" + OptionsWithValues() + "\"\n" +
           Table("_kestrovactl_verbs", &CompletedWords::verbs, commands) +
           Table("_kestrovactl_options", &CompletedWords::options, commands);
}

} // namespace kestrova
