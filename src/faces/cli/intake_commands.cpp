#include "cli/intake_commands.h"

#include "archive/level_folders.h"
#include "cli/work.h"
#include "core/file_kinds.h"
#include "intake/add_level.h"
#include "packages/name_pages.h"
#include "words/cli.h"

namespace kestrova
{

namespace
{

std::vector<Path> PlacesFrom(const std::vector<std::string>& words)
{
    std::vector<Path> places;
    for (const std::string& word : words)
        places.push_back(PlaceFromWord(word));
    return places;
}

std::string KnownNamePages()
{
    std::vector<std::string> names;
    for (const NamePage& page : NamePages())
        names.emplace_back(page.name);
    return Join(names, ", ");
}

/// False, with words, when the page is none.
bool CheckNamesPage(const Run& run, std::string_view command)
{
    const std::string wanted = run.arguments.ValueOf("--names");
    if (!run.arguments.Has("--names") || FindNamePage(wanted) != nullptr)
        return true;
    (void)WrongUse(command, GetMsg(Msg::WrongNamesPage, {wanted, KnownNamePages()}));
    return false;
}

void TakeNamesPage(const Run& run, NewLevel& level)
{
    if (const NamePage* page = FindNamePage(run.arguments.ValueOf("--names")); page != nullptr)
        level.namesPage = page->name;
}

/// Says in which code page names were read, unless the person said it.
void TellNamesPage(Run& run, const NewLevel& level)
{
    if (!level.NamesReadAs().empty() && !run.arguments.Has("--names"))
        run.host.Tell(Tone::Plain, GetMsg(Msg::NamesReadAs,
                                          {NamePageText(level.NamesReadAs()), KnownNamePages()}));
}

void TakeTexts(Run& run, NewLevel& level)
{
    if (run.arguments.Has("--name"))
        level.name = Readable(run.arguments.ValueOf("--name"));
    if (run.arguments.Has("--note"))
        level.note = Readable(run.arguments.ValueOf("--note"));
}

/// The file of that name in the level, as the game has it or as it is stored; no value, with words,
/// when there is none.
std::optional<Path> FileOfLevel(Run& run, const NewLevel& level, const std::string& name)
{
    for (const std::string& stored : {name, name + std::string{OnDisk::ZlExtension}})
        for (const Path& file : level.Files())
            if (EqualNames(file.filename().native(), stored))
                return file;
    run.host.Tell(Tone::Error, GetMsg(Msg::NoSuchLevelFile, {name}));
    return {};
}

bool ChangeFiles(Run& run, NewLevel& level)
{
    TakeNamesPage(run, level);
    if (run.arguments.Has("--add")) {
        if (!level.AddSources(PlacesFrom(run.arguments.ValuesOf("--add")), Subfolders::Take) ||
            !level.UnpackAll())
            return false;
        TellNamesPage(run, level);
    }
    for (const std::string& name : run.arguments.ValuesOf("--remove-file")) {
        const auto file = FileOfLevel(run, level, name);
        if (!file || !level.RemoveFile(*file))
            return false;
    }
    if (!run.arguments.Has("--more-info"))
        return true;
    level.moreInfo.clear();
    const std::string name = run.arguments.ValueOf("--more-info");
    if (name.empty())
        return true;
    const auto file = FileOfLevel(run, level, name);
    if (file)
        level.moreInfo = file->filename().native();
    return file.has_value();
}

Exit ShowAdded(Run& run, bool done, LevelCode code, const std::string& namesPage = {})
{
    if (!done)
        return EndWork(run, false);
    const std::string name = Readable(LevelNameOf(run.session, code));
    if (run.json == nullptr) {
        AddLine(run, std::to_string(code) + "\t" + OneField(name));
    } else {
        *run.json = {{"code", code}, {"name", name}};
        if (!namesPage.empty())
            (*run.json)["names"] = namesPage;
    }
    return EndWork(run, true);
}

} // namespace

Exit RunAdd(Run& run)
{
    if (!CheckNamesPage(run, "add"))
        return Exit::WrongUse;
    const std::vector<Path> sources = PlacesFrom(run.arguments.words);
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const Operation operation{run.session};
    const auto progress = run.host.BeginProgress(ProgressWindow::Progress, {});
    LevelCode code = 0;
    std::string namesPage;
    const bool added = AddLevel(
        run.session, *progress,
        [&](NewLevel& level) {
            TakeNamesPage(run, level);
            level.keepGoing = run.arguments.Has("--keep-going");
            bool all = level.AddSources(sources, Subfolders::Take);
            if (!level.LastReport().stopped)
                all = level.UnpackAll() && all;
            const auto giveUp = [&](Message words) {
                run.host.Tell(Tone::Error, GetMsg(words));
                return false;
            };
            if (level.LastReport().stopped || !progress->Step())
                return giveUp(Msg::AddStopped);
            // A file that nobody could be asked about was not taken either.
            all = all && !run.host.LeftUnanswered();
            if (!all && !level.keepGoing)
                return giveUp(Msg::AddGivenUp);
            namesPage = level.NamesReadAs();
            TellNamesPage(run, level);
            TakeTexts(run, level);
            return level.Accept() || giveUp(Msg::AddStopped);
        },
        code);
    return ShowAdded(run, added, code, namesPage);
}

Exit RunEdit(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code || !CheckNamesPage(run, "edit"))
        return Exit::WrongUse;
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const Operation operation{run.session};
    const auto progress = run.host.BeginProgress(ProgressWindow::Progress, {});
    const bool changed = EditLevel(run.session, *progress, *code, [&](NewLevel& level) {
        TakeTexts(run, level);
        if (ChangeFiles(run, level) && level.Accept())
            return true;
        level.Cancel();
        return false;
    });
    return ShowAdded(run, changed, *code);
}

} // namespace kestrova
