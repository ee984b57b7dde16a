#include "cli/run.h"

#include "cli/command_table.h"
#include "cli/help.h"
#include "cli/work.h"
#include "platform/terminal.h"
#include "words/cli.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using platform::Stream;

/// The options that go with every command.
constexpr std::string_view commonOptions[] = {"--home", "--yes", "--no", "--json"};

/// The options whose value is a path.
constexpr std::string_view placeOptions[] = {"--home",           "--trle", "--folder",
                                             "--archive-folder", "--out",  "--add"};
/// A setting may be set to nothing; behind every other command a word is a path or a name.
constexpr std::string_view settingCommand = "set";

int Finish(const std::string& result, Exit code)
{
    const auto failure = platform::WriteStream(Stream::Output, result);
    if (!failure)
        return static_cast<int>(code);
    // A reader that has seen enough is no matter to speak of.
    if (failure != std::errc::broken_pipe)
        (void)platform::WriteStream(Stream::Error, GetMsg(Msg::ResultNotWritten) + "\n");
    return static_cast<int>(Exit::Failed);
}

/// What is wrong with the words for that command; empty when nothing is.
std::string WrongWords(const CommandRow& row, const Arguments& arguments)
{
    for (const auto& [option, value] : arguments.options)
        if (std::find(std::begin(commonOptions), std::end(commonOptions), option) ==
                std::end(commonOptions) &&
            std::find(row.options.begin(), row.options.end(), option) == row.options.end())
            return GetMsg(Msg::WrongOptionHere, {option, row.name});
    if (arguments.Has("--json") && row.json == Message{})
        return GetMsg(Msg::WrongOptionHere, {"--json", row.name});
    if (arguments.Has("--yes") && arguments.Has("--no"))
        return GetMsg(Msg::WrongBoth, {"--yes", "--no"});
    for (const std::string_view option : placeOptions) {
        const std::vector<std::string> places = arguments.ValuesOf(option);
        if (std::find(places.begin(), places.end(), "") != places.end())
            return GetMsg(Msg::WrongValueMissing, {option});
    }
    if (row.name != settingCommand &&
        std::find(arguments.words.begin(), arguments.words.end(), "") != arguments.words.end())
        return GetMsg(Msg::WrongWordEmpty, {row.name});
    if (arguments.words.size() < row.leastWords)
        return GetMsg(Msg::WrongWordMissing, {row.name});
    if (arguments.words.size() > row.mostWords)
        return GetMsg(Msg::WrongWordTooMany, {arguments.words[row.mostWords]});
    return {};
}

int RunHelp(const Arguments& arguments)
{
    if (arguments.Has("--markdown"))
        return Finish(HelpAsMarkdown(), Exit::Done);
    const std::string name = arguments.command != "help" ? arguments.command
                             : arguments.words.empty()   ? std::string{}
                                                         : arguments.words.front();
    if (name.empty())
        return Finish(HelpText(), Exit::Done);
    const CommandRow* row = FindCommand(name);
    if (row == nullptr)
        return static_cast<int>(WrongUse({}, GetMsg(Msg::WrongCommand, {name})));
    return Finish(HelpFor(*row), Exit::Done);
}

int RunCommand(const CommandRow& row, const Arguments& arguments)
{
    TerminalHost host;
    if (arguments.Has("--yes"))
        host.SetStandingAnswer(StandingAnswer::Yes);
    else if (arguments.Has("--no"))
        host.SetStandingAnswer(StandingAnswer::No);
    DesktopMachine machine;
    TerminalList list;
    Session session{host, machine, list, {}};
    Json json;
    Run run{session, host, arguments};
    if (arguments.Has("--json"))
        run.json = &json;
    const platform::FolderMemory folders;
    Exit code = row.run(run);
    if (host.LeftUnanswered() && code == Exit::Done)
        code = Exit::Failed;
    if (run.json != nullptr && !json.is_null())
        run.text = JsonText(json, 1) + "\n";
    return Finish(run.text, code);
}

} // namespace

int RunTerminal(const std::vector<std::string>& words, std::string_view version)
{
    platform::IgnoreBrokenPipes();
    const Arguments arguments = ParseArguments(words, AllOptions());
    if (!arguments.wrong.empty())
        return static_cast<int>(WrongUse(arguments.command, arguments.wrong));
    if (arguments.Has("--version"))
        return Finish(GetMsg(Msg::VersionLine, {version}) + "\n", Exit::Done);
    if (arguments.Has("--help") || arguments.Has("-h") || arguments.command == "help")
        return RunHelp(arguments);
    if (arguments.command.empty())
        return static_cast<int>(WrongUse({}, GetMsg(Msg::WrongNoCommand)));
    const CommandRow* row = FindCommand(arguments.command);
    if (row == nullptr)
        return static_cast<int>(WrongUse({}, GetMsg(Msg::WrongCommand, {arguments.command})));
    if (const std::string wrong = WrongWords(*row, arguments); !wrong.empty())
        return static_cast<int>(WrongUse(row->name, wrong));
    return RunCommand(*row, arguments);
}

} // namespace kestrova
