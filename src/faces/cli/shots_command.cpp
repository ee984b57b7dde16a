#include "cli/shots_command.h"

#include "archive/level_folders.h"
#include "cli/work.h"
#include "core/dates.h"
#include "core/look.h"
#include "session/file_to_write.h"
#include "shots/shot_commands.h"
#include "shots/shot_import.h"
#include "words/cli.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

using Words = std::vector<std::string>;

/// False, with words, for a level that the archive does not have.
bool LoadShots(Run& run, LevelCode code, ShotList& shots)
{
    if (FindLevel(run.session, code) < 0) {
        run.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return false;
    }
    const auto loaded = shots.Load(run.session, code);
    return loaded || TellFolderNotRead(run.session, loaded.Error());
}

/// The named picture is the one that the next command takes.
bool AimAt(Run& run, ShotList& shots, const std::string& name)
{
    const std::ptrdiff_t place = shots.Find(name);
    if (place < 0)
        run.host.Tell(Tone::Error, GetMsg(Msg::ShotNone, {name, std::to_string(shots.Code())}));
    shots.SetTarget(place);
    return place >= 0;
}

Exit List(Run& run, LevelCode code)
{
    ShotList shots;
    if (!BeginLooking(run, Needs::Archive) || !HasArchiveFolder(run, code) ||
        !LoadShots(run, code, shots))
        return Exit::Failed;
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const Path& shot : shots.Files()) {
        const platform::FileFacts facts = platform::FactsOf(shot);
        const std::string name = TextOf(shot.filename());
        const std::string date = DateText(facts.modifiedNs);
        if (run.json != nullptr)
            run.json->push_back(
                {{"name", name}, {"file", TextOf(shot)}, {"size", facts.size}, {"modified", date}});
        else
            AddLine(run, GetMsg(Msg::ShotLine,
                                {date, FormatSize(static_cast<double>(facts.size)), name}));
    }
    return Exit::Done;
}

bool Import(Run& run, LevelCode code)
{
    const auto progress = run.host.BeginProgress(ProgressWindow::Progress, {});
    return ImportShots(run.session, static_cast<std::size_t>(FindLevel(run.session, code)),
                       *progress);
}

bool Export(Run& run, ShotList& shots, const Words& words)
{
    const Path& shot = shots.At(shots.Target());
    const auto target = FileToWrite(run.session, PlaceFromWord(words[3]));
    if (!target)
        return false;
    const auto isFree = IsFree(*target);
    if (!isFree)
        return TellFolderNotRead(run.session, isFree.Error());
    return (*isFree || ConfirmReplace(run.session, shot, *target)) &&
           SaveShotTo(run.session, shot, *target);
}

bool Change(Run& run, ShotList& shots, const Words& words)
{
    const std::string& verb = words[0];
    if (verb == "add")
        return AddShotFile(run.session, shots, PlaceFromWord(words[2]));
    if (verb == "import")
        return Import(run, shots.Code());
    if (!AimAt(run, shots, words[2]))
        return false;
    if (verb == "delete")
        return DeleteShot(run.session, shots);
    if (verb == "rename")
        return RenameShotTo(run.session, shots, shots.At(shots.Target()), words[3]);
    return Export(run, shots, words);
}

struct Verb {
    std::string_view name;
    std::size_t words; ///< itself included
};
constexpr Verb verbs[] = {{"list", 2},   {"add", 3},    {"rename", 4},
                          {"delete", 3}, {"export", 4}, {"import", 2}};

} // namespace

Exit RunShots(Run& run)
{
    const Words& words = run.arguments.words;
    const auto* verb = std::find_if(std::begin(verbs), std::end(verbs),
                                    [&](const Verb& row) { return row.name == words.front(); });
    if (verb == std::end(verbs))
        return WrongUse("shots", GetMsg(Msg::WrongWordTooMany, {words.front()}));
    if (words.size() < verb->words)
        return WrongUse("shots", GetMsg(Msg::WrongWordMissing, {words.back()}));
    if (words.size() > verb->words)
        return WrongUse("shots", GetMsg(Msg::WrongWordTooMany, {words[verb->words]}));
    const auto code = CodeFromWord(run, words[1]);
    if (!code)
        return Exit::WrongUse;
    if (verb->name == "list")
        return List(run, *code);
    if (run.json != nullptr)
        return WrongUse("shots", GetMsg(Msg::WrongOptionHere, {"--json", verb->name}));
    ShotList shots;
    if (!BeginWork(run, Needs::Archive) || !LoadShots(run, *code, shots))
        return Exit::Failed;
    return EndWork(run, Change(run, shots, words));
}

} // namespace kestrova
