#include "app/wine_trial.h"

#include "core/files.h"
#include "core/text.h"
#include "play/game_launch.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
#include "words/app.h"

namespace kestrova
{

namespace
{

/// The first start of a new Wine takes some seconds, on a slow machine ten times as many.
constexpr std::chrono::seconds trialLimit{60};
constexpr std::string_view versionWord = "--version";

/// What a trial finds, line by line.
struct WineFindings {
    std::vector<std::string> lines;
    bool lacks = false;

    void Fine(std::string line) { lines.push_back(std::move(line)); }
    void Lack(std::string line)
    {
        lines.push_back(std::move(line));
        lacks = true;
    }
};

/// The first line that Wine prints of itself; the failure says why there is none.
Result<std::string> VersionOfWine(Host& host, platform::Launch launch)
{
    launch.argv.emplace_back(versionWord);
    const auto progress = host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::WineAsked));
    progress->AllowStop();
    ToolOrder order;
    order.name = launch.argv.front();
    order.notStarted = GetMsg(Msg::WineNotStarted, {order.name});
    order.launch = std::move(launch);
    order.output = ToolOrder::Output::Lines;
    order.limit = trialLimit;
    ToolRun run{std::move(order)};
    if (run.Start()) {
        const WatchedRun watched{run, progress.get(), true};
        RunToEnds({&watched, 1});
    }
    const ToolReport& report = run.Report();
    if (!report.status)
        return report.status.Error();
    const std::string line{Trim(report.output.substr(0, report.output.find_first_of("\r\n")))};
    if (line.empty())
        return MakeFailure(ErrorCode::CannotRead, {});
    return line;
}

void LookAtPrefix(const Path& place, WineFindings& found)
{
    const Path prefix = WinePrefixFor(place);
    found.Fine(GetMsg(FolderExists(prefix) ? Msg::WinePrefixThere : Msg::WinePrefixNotYet,
                      {TextOf(prefix)}));
}

void LookAtGame(const Session& session, const Tools& tools, WineFindings& found)
{
    const Folders folders = session.Folders();
    if (folders.trle.empty())
        return;
    const auto launch = GameLaunch(folders, session.preferences, tools);
    if (launch)
        found.Fine(GetMsg(Msg::WineGameStarts, {Trim(session.preferences.tombExeName)}));
    else
        found.Lack(GetMsg(Msg::WineGameNot, {launch.Error().subject, launch.Error().reason}));
}

} // namespace

bool TryWine(Session& session, const ProgramSettings& settings)
{
    Tools tools = ToolsOf(session);
    tools.wineCommand = settings.wineCommand;
    tools.wineWords = settings.wineWords;
    auto launch = WineItself(tools, tools.wineCommand);
    if (!launch) {
        session.host.Tell(Tone::Warning, GetMsg(Msg::WineNotThere, {tools.wineCommand}));
        return false;
    }
    const Path wine = launch->argv.front();
    const auto version = VersionOfWine(session.host, std::move(*launch));
    if (!version && version.Error().code == ErrorCode::Stopped)
        return false;
    WineFindings found;
    if (version)
        found.Fine(GetMsg(Msg::WineAnswers, {TextOf(wine), *version}));
    else
        found.Lack(GetMsg(Msg::WineSilent, {TextOf(wine)}));
    if (Has32BitWine(wine))
        found.Fine(GetMsg(Msg::WineHas32));
    else
        found.Lack(GetMsg(Msg::WineLacks32));
    LookAtPrefix(session.TrleFolder() / session.preferences.tombExeName, found);
    LookAtGame(session, tools, found);
    session.host.Tell(found.lacks ? Tone::Warning : Tone::Plain,
                      GetMsg(found.lacks ? Msg::WineLacks : Msg::WineIsFine),
                      Join(found.lines, lineBreak),
                      version ? std::string{} : version.Error().details);
    return !found.lacks;
}

} // namespace kestrova
