#include "app/run_command.h"

#include "app/command_table.h"
#include "app/opening.h"
#include "archive/level_folders.h"
#include "session/operation.h"
#include "words/commands.h"
#include "words/levels.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::string_view optionsOfAll[] = {"--home", "--yes", "--no", "--json"};

bool TakesOption(const CommandRow& row, std::string_view option)
{
    const auto& own = row.terminal.options;
    const auto* const common = std::find(std::begin(optionsOfAll), std::end(optionsOfAll), option);
    return common != std::end(optionsOfAll) ||
           std::any_of(own.begin(), own.end(),
                       [&](const OptionRow& known) { return known.name == option; });
}

std::string WrongOptions(const CommandRow& first, const Run& run)
{
    const Arguments& arguments = run.arguments;
    const std::string_view word = first.terminal.word;
    for (const auto& [option, value] : arguments.options)
        if (!TakesOption(first, option))
            return GetMsg(Msg::WrongOptionHere, {option, word});
    if (arguments.Has("--json") && first.terminal.json == Message{})
        return GetMsg(Msg::WrongOptionHere, {"--json", word});
    if (arguments.Has("--yes") && arguments.Has("--no"))
        return GetMsg(Msg::WrongBoth, {"--yes", "--no"});
    const auto emptyPlace = [&](std::string_view option) {
        const std::vector<std::string> places = arguments.ValuesOf(option);
        return std::find(places.begin(), places.end(), "") != places.end();
    };
    if (emptyPlace("--home"))
        return GetMsg(Msg::WrongValueMissing, {"--home"});
    for (const OptionRow& option : first.terminal.options) {
        if (option.isPlace && emptyPlace(option.name))
            return GetMsg(Msg::WrongValueMissing, {option.name});
        if (!option.repeats && arguments.ValuesOf(option.name).size() > 1)
            return GetMsg(Msg::WrongTwice, {option.name});
    }
    return {};
}

std::string WrongCount(const CommandRow& first, const Run& run)
{
    const InTerminal& said = first.terminal;
    const auto& words = run.arguments.words;
    if (!said.mayBeEmpty && std::find(words.begin(), words.end(), "") != words.end())
        return GetMsg(Msg::WrongWordEmpty, {said.word});
    if (words.size() < said.leastWords)
        return GetMsg(Msg::WrongWordMissing, {said.word});
    if (words.size() > said.mostWords)
        return GetMsg(Msg::WrongWordTooMany, {words[said.mostWords]});
    return {};
}

bool NeedsLevel(const CommandRow& row)
{
    return row.needs >= Needs::Level;
}

/// Reads the level's number, the first word behind the verb; answers what is wrong with it.
std::string TakeLevel(const CommandRow& row, Run& run)
{
    if (!NeedsLevel(row))
        return {};
    const std::string& word = run.arguments.words[row.terminal.verb.empty() ? 0 : 1];
    const auto code = CodeFromWord(word);
    if (code)
        run.level = *code;
    return WrongCodeIn(word);
}

/// False, with words, when what the row needs is not in the archive that was opened.
bool HasLevel(const CommandRow& row, Run& run)
{
    if (!NeedsLevel(row))
        return true;
    if (FindLevel(run.session.archive, run.level) < 0) {
        run.session.host.Tell(Tone::Error,
                              GetMsg(Msg::UnknownLevelCode, {std::to_string(run.level)}));
        return false;
    }
    run.session.list.Select(run.level);
    return row.needs != Needs::LevelFiles ||
           HasArchiveFolder(run.session.host, run.session.archive, run.level);
}

bool RunCounted(const CommandRow& row, Run& run)
{
    const Operation operation{run.session};
    return row.run(run);
}

bool Look(const CommandRow& row, Run& run)
{
    return OpenToLook(run, row.needs) && HasLevel(row, run) && RunCounted(row, run);
}

/// It goes on only while the command would change something.
enum class Looked { Failed, Done, GoesOn };
Looked LookFirst(const CommandRow& row, Run& run)
{
    if (row.terminal.looksWhen == nullptr)
        return Looked::GoesOn;
    if (!OpenToLook(run, row.needs) || !HasLevel(row, run))
        return Looked::Failed;
    if (!row.terminal.looksWhen(run.session, run.level))
        return Looked::GoesOn;
    return RunCounted(row, run) ? Looked::Done : Looked::Failed;
}

bool Work(const CommandRow& row, Run& run)
{
    if (const Looked looked = LookFirst(row, run); looked != Looked::GoesOn)
        return looked == Looked::Done;
    if (!OpenToWork(run, row.needs))
        return false;
    const bool done = HasLevel(row, run) && RunCounted(row, run);
    // What went wrong beside it has been told.
    return EndWork(run, done && !(row.terminal.failsWhenTold && run.face.ToldError()));
}

} // namespace

std::string WrongWords(const CommandRow& first, Run& run)
{
    std::string wrong = WrongOptions(first, run);
    if (wrong.empty())
        wrong = WrongCount(first, run);
    const CommandRow& row = RowOf(first, run);
    // Behind a verb stands the level: first it must be a verb.
    const bool levelFirst = row.terminal.verb.empty();
    if (wrong.empty() && levelFirst)
        wrong = TakeLevel(row, run);
    if (wrong.empty() && first.terminal.wrong != nullptr)
        wrong = first.terminal.wrong(run);
    if (wrong.empty() && !levelFirst)
        wrong = TakeLevel(row, run);
    return wrong;
}

bool RunFromWords(const CommandRow& row, Run& run)
{
    switch (row.touches) {
    case Touches::Nothing:
        return Look(row, run);
    case Touches::Stores:
    case Touches::LevelEditor:
        return Work(row, run);
    case Touches::ItsOwn:
        break;
    }
    return RunCounted(row, run);
}

bool RunOnChosen(const CommandRow& row, Session& session, Face& face)
{
    if (session.running.operations > 0)
        return false;
    const Operation operation{session};
    const Arguments none;
    Run run{session, face, none};
    if (NeedsLevel(row)) {
        const auto chosen = session.list.Selected();
        const Message noLevel = row.window.noLevel.value_or(Msg::NoLevelSelected);
        if (!chosen && noLevel != Message{}) {
            session.host.Tell(Tone::Error, GetMsg(noLevel));
            return false;
        }
        run.level = chosen.value_or(originalCode);
    }
    return row.run(run);
}

} // namespace kestrova
