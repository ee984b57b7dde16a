#include "program.h"

#include "cli/run.h"
#include "platform/file_content.h"
#include "platform/files.h"
#include "sandbox/faults.h"

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

/// What a run leaves beside its words when it was not killed.
struct Ending {
    int exitCode = -1;
    bool faulted = false;
    std::string call;
};

void SendStreamsTo(const Path& file)
{
    const int words = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(words, STDOUT_FILENO);
    ::dup2(words, STDERR_FILENO);
}

Ending RunOn(const std::vector<std::string>& words, const Trouble& trouble)
{
    Ending ending;
    const auto run = [&] {
        ending.exitCode = RunTerminal(words, "model");
        return ending.exitCode == 0;
    };
    if (trouble.kind == Trouble::Kind::None || trouble.kind == Trouble::Kind::Kill) {
        (void)run();
        return ending;
    }
    const AfterFault after =
        trouble.kind == Trouble::Kind::FailOn ? AfterFault::Fails : AfterFault::Works;
    const FaultRun fault = trouble.kind == Trouble::Kind::ReadOnce
                               ? WithReadFaultAt(trouble.call, run, trouble.error)
                               : WithFaultAt(trouble.call, run, trouble.error, after);
    ending.faulted = fault.reached;
    ending.call = fault.call;
    return ending;
}

std::string WordsOf(const Path& file)
{
    std::string words;
    return platform::ReadAll(file, words) ? std::string{} : words;
}

} // namespace

std::string NameOf(const Trouble& trouble)
{
    const std::string at = " at call " + std::to_string(trouble.call);
    switch (trouble.kind) {
    case Trouble::Kind::Kill:
        return "killed" + at;
    case Trouble::Kind::FailOnce:
        return "one failure" + at + " (" + std::make_error_code(trouble.error).message() + ")";
    case Trouble::Kind::FailOn:
        return "failures from" + at + " (" + std::make_error_code(trouble.error).message() + ")";
    case Trouble::Kind::ReadOnce:
        return "one failing look" + at + " (" + std::make_error_code(trouble.error).message() + ")";
    case Trouble::Kind::None:
        break;
    }
    return "no trouble";
}

Outcome RunProgram(const Path& scratch, const std::vector<std::string>& words,
                   const Trouble& trouble)
{
    const Path said = scratch / "said";
    const Path ended = scratch / "ended";
    (void)platform::Unlink(ended); // of the run before, if there was one
    const KillRun run = WithKillAt(trouble.kind == Trouble::Kind::Kill ? trouble.call : 0, [&] {
        SendStreamsTo(said);
        const Ending ending = RunOn(words, trouble);
        std::ofstream{ended} << ending.exitCode << ' ' << ending.faulted << ' ' << ending.call;
        return ending.exitCode == 0;
    });
    Outcome outcome;
    outcome.killed = run.killed;
    outcome.call = run.call;
    outcome.said = WordsOf(said);
    if (!run.killed) {
        std::ifstream in{ended};
        in >> outcome.exitCode >> outcome.faulted;
        std::getline(in >> std::ws, outcome.call);
    }
    return outcome;
}

} // namespace kestrova::testing
