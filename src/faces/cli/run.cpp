#include "cli/run.h"

#include "app/command_table.h"
#include "app/languages.h"
#include "app/result_text.h"
#include "app/run_command.h"
#include "app/session_discs.h"
#include "app/start_up.h"
#include "cli/completion.h"
#include "cli/help.h"
#include "cli/man_page.h"
#include "cli/terminal_host.h"
#include "help/help_file.h"
#include "help/help_topics.h"
#include "platform/folder_memory.h"
#include "platform/places.h"
#include "platform/terminal.h"
#include "words/cli.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

using platform::Stream;

/// The word that asks for all topics of the help.
constexpr std::string_view topicList = "topics";

enum class Exit { Done = 0, Failed = 1, WrongUse = 2 };

std::string VerbOf(const std::vector<std::string>& words)
{
    return words.empty() ? std::string{} : words.front();
}

/// Names the wrong word or option and shows the usage of what was said; null: of no command.
int WrongUse(const Arguments* said, const std::string& what)
{
    std::string words = ForTerminal(what) + "\n";
    std::string usage;
    if (said != nullptr)
        for (const CommandRow* row : RowsThatTell(said->command, VerbOf(said->words)))
            usage += GetMsg(Msg::UsageLine, {row->terminal.usage.text}) + "\n";
    words += usage.empty() ? GetMsg(Msg::UsageHint) + "\n" : usage;
    (void)platform::WriteStream(Stream::Error, words);
    return static_cast<int>(Exit::WrongUse);
}

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

/// A topic of the help, its words behind each other.
int RunTopic(const Arguments& arguments)
{
    constexpr std::size_t mostNear = 8;
    constexpr std::size_t width = 78;
    std::string topic;
    for (const std::string& word : arguments.words)
        topic += (topic.empty() ? "" : " ") + word;
    TerminalHost host;
    const auto folder = ChooseProgramFolder(arguments.ValueOf("--home"), false);
    const Folders folders{folder ? *folder : Path{}, {}, {}};
    const auto help = LoadHelp(host, folders, platform::ResourceFolder());
    if (!help)
        return WrongUse(nullptr, GetMsg(Msg::WrongCommand, {topic}));
    if (topic == topicList)
        return Finish(ForTerminal(ListOfTopics(*help)), Exit::Done);
    if (const auto text = HelpOf(*help, topic))
        return Finish(ForTerminal(Wrapped(*text, width)), Exit::Done);
    std::string words = GetMsg(Msg::WrongTopic, {topic});
    for (const std::string& near : TopicsNear(*help, topic, mostNear))
        words += '\n' + GetMsg(Msg::NearTopic, {near});
    return WrongUse(nullptr, words + '\n' + GetMsg(Msg::TopicsHint));
}

/// What a package installs: the page of a program, or what a shell completes by.
int RunMadeHelp(const Arguments& arguments, std::string_view version)
{
    const std::string what = arguments.words.empty() ? std::string{} : arguments.words.front();
    if (arguments.Has("--man")) {
        if (what == "kestrova")
            return Finish(WindowsManPage(version), Exit::Done);
        if (what.empty() || what == "kestrovactl")
            return Finish(ManPage(version), Exit::Done);
    } else {
        if (what == "fish")
            return Finish(CompletionForFish(), Exit::Done);
        if (what == "zsh") // its first line names what it completes
            return Finish("#compdef kestrovactl kestrova\n" + CompletionTables(), // not shown
                          Exit::Done);
        if (what.empty() || what == "bash")
            return Finish(CompletionTables(), Exit::Done);
    }
    return WrongUse(nullptr, GetMsg(Msg::WrongMadeHelp, {what}));
}

int RunHelp(const Arguments& arguments, std::string_view version)
{
    if (arguments.Has("--markdown"))
        return Finish(HelpAsMarkdown(), Exit::Done);
    if (arguments.Has("--man") || arguments.Has("--completion"))
        return RunMadeHelp(arguments, version);
    // `help discs create` is `discs create --help`.
    const bool isHelp = arguments.command == "help";
    const std::string name = isHelp ? VerbOf(arguments.words) : arguments.command;
    std::vector<std::string> behind = arguments.words;
    if (isHelp && !behind.empty())
        behind.erase(behind.begin());
    if (name.empty())
        return Finish(HelpText(), Exit::Done);
    if (FindCommand(name) != nullptr)
        return Finish(HelpFor(name, VerbOf(behind)), Exit::Done);
    if (!isHelp)
        return WrongUse(nullptr, GetMsg(Msg::WrongCommand, {name}));
    return RunTopic(arguments);
}

int RunCommand(const CommandRow& first, const Arguments& arguments)
{
    TerminalHost host;
    if (arguments.Has("--yes"))
        host.SetStandingAnswer(StandingAnswer::Yes);
    else if (arguments.Has("--no"))
        host.SetStandingAnswer(StandingAnswer::No);
    DesktopMachine machine;
    TerminalList list;
    Session session{host, machine, list, {}};
    const SessionDiscs discs{session};
    Json json;
    Run run{session, host, arguments};
    if (arguments.Has("--json"))
        run.json = &json;
    if (const std::string wrong = WrongWords(first, run); !wrong.empty())
        return WrongUse(&arguments, wrong);
    const platform::FolderMemory folders;
    const bool done = RunFromWords(RowOf(first, run), run) && !host.LeftUnanswered();
    if (!session.programFolder.empty())
        GiveDiscsBack(session);
    if (run.json != nullptr && !json.is_null())
        run.text = JsonText(json, 1) + "\n";
    return Finish(run.text, done ? Exit::Done : Exit::Failed);
}

/// What scripts read, and what is made for a package, is told English whatever the settings say.
bool IsForPersons(const Arguments& arguments)
{
    return !arguments.Has("--json") && !arguments.Has("--man") && !arguments.Has("--markdown") &&
           !arguments.Has("--completion");
}

} // namespace

int RunTerminal(const std::vector<std::string>& words, std::string_view version)
{
    platform::IgnoreBrokenPipes();
    Arguments arguments = ParseArguments(words, AllOptions());
    if (IsForPersons(arguments))
        if (const auto folder = ChooseProgramFolder(arguments.ValueOf("--home"), false))
            SpeakAsSet(*folder);
    if (!arguments.wrong.empty()) {
        arguments = ParseArguments(words, AllOptions()); // in the words of that language
        return WrongUse(&arguments, arguments.wrong);
    }
    if (arguments.Has("--version"))
        return Finish(GetMsg(Msg::VersionLine, {version}) + "\n", Exit::Done);
    if (arguments.Has("--help") || arguments.Has("-h") || arguments.command == "help")
        return RunHelp(arguments, version);
    if (arguments.command.empty())
        return WrongUse(nullptr, GetMsg(Msg::WrongNoCommand));
    const CommandRow* row = FindCommand(arguments.command);
    if (row == nullptr)
        return WrongUse(nullptr, GetMsg(Msg::WrongCommand, {arguments.command}));
    return RunCommand(*row, arguments);
}

} // namespace kestrova
