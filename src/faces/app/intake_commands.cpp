#include "app/intake_commands.h"

#include "app/add_each.h"
#include "app/result_text.h"
#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "intake/draft_files.h"
#include "intake/draft_sources.h"
#include "intake/edit_level.h"
#include "packages/name_pages.h"
#include "words/commands.h"
#include "words/menus.h"

#include <nlohmann/json.hpp>

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

std::string WrongNamesPage(Run& run)
{
    const std::string wanted = run.arguments.ValueOf("--names");
    if (!run.arguments.Has("--names") || FindNamePage(wanted) != nullptr)
        return {};
    return GetMsg(Msg::WrongNamesPage, {wanted, KnownNamePages()});
}

/// The code page of the words; empty when they name none.
std::string NamesPageOf(const Run& run)
{
    const NamePage* page = FindNamePage(run.arguments.ValueOf("--names"));
    return page == nullptr ? std::string{} : std::string{page->name};
}

/// Says in which code page names were read, unless the person said it.
void TellNamesPage(Run& run, const Intake& level)
{
    if (!level.draft.namesReadAs.empty() && !run.arguments.Has("--names"))
        run.session.host.Tell(
            Tone::Plain,
            GetMsg(Msg::NamesReadAs, {NamePageText(level.draft.namesReadAs), KnownNamePages()}));
}

/// What the words say, or else the preference.
Compile CompileWish(const Run& run)
{
    if (run.arguments.Has("--compile"))
        return Compile::Always;
    if (run.arguments.Has("--link") || run.arguments.Has("--analyse"))
        return Compile::WhereMissing;
    return run.arguments.Has("--no-compile") || run.session.preferences.noAutoCompile
               ? Compile::Never
               : Compile::WhereMissing;
}

/// Where a program that installs the level puts its files; nobody but these words lets it run.
std::optional<InstalledInto> InstallerWish(const Run& run)
{
    if (!run.arguments.Has("--installer"))
        return {};
    const std::string where = run.arguments.ValueOf("--installer");
    const Folders folders = run.session.Folders();
    return where == "trle" ? IntoTrle(folders) : IntoFolder(folders, PlaceFromWord(where));
}

std::string WrongAdd(Run& run)
{
    // What is said of one level cannot hold for each of many.
    for (const char* option : {"--name", "--note", "--link", "--analyse", "--installer"})
        if (run.arguments.Has("--each") && run.arguments.Has(option))
            return GetMsg(Msg::WrongBoth, {"--each", option});
    if (run.arguments.Has("--compile") && run.arguments.Has("--no-compile"))
        return GetMsg(Msg::WrongBoth, {"--compile", "--no-compile"});
    for (const char* option : {"--link", "--analyse"})
        if (run.arguments.Has(option) && run.arguments.Has("--no-compile"))
            return GetMsg(Msg::WrongBoth, {option, "--no-compile"});
    for (const std::string& word : run.arguments.ValuesOf("--link"))
        if (!WadLinkFromWord(word))
            return GetMsg(Msg::WrongLink, {word});
    return WrongNamesPage(run);
}

void TakeLinks(const Run& run, Intake& level)
{
    for (const std::string& word : run.arguments.ValuesOf("--link"))
        if (const auto link = WadLinkFromWord(word))
            level.draft.links.push_back(*link);
    level.draft.analysed = run.arguments.ValueOf("--analyse");
}

void TakeTexts(Run& run, Intake& level)
{
    if (run.arguments.Has("--name"))
        level.draft.name = Readable(run.arguments.ValueOf("--name"));
    if (run.arguments.Has("--note"))
        level.draft.note = Readable(run.arguments.ValueOf("--note"));
}

/// The file of that name in the level, as the game has it or as it is stored; no value, with words,
/// when there is none.
std::optional<Path> FileOfLevel(Run& run, const Intake& level, const std::string& name)
{
    for (const std::string& stored : {name, name + std::string{OnDisk::ZlExtension}})
        for (const Path& file : level.draft.files)
            if (EqualNames(file.filename().native(), stored))
                return file;
    run.session.host.Tell(Tone::Error, GetMsg(Msg::NoSuchLevelFile, {name}));
    return {};
}

bool ChangeFiles(Run& run, Intake& level)
{
    level.draft.namesPage = NamesPageOf(run);
    if (run.arguments.Has("--add")) {
        if (!AddSources(level, PlacesFrom(run.arguments.ValuesOf("--add")), Subfolders::Take) ||
            !UnpackAll(level))
            return false;
        TellNamesPage(run, level);
    }
    for (const std::string& name : run.arguments.ValuesOf("--remove-file")) {
        const auto file = FileOfLevel(run, level, name);
        if (!file || !RemoveFile(level, *file))
            return false;
    }
    if (!run.arguments.Has("--more-info"))
        return true;
    level.draft.moreInfo.clear();
    const std::string name = run.arguments.ValueOf("--more-info");
    if (name.empty())
        return true;
    const auto file = FileOfLevel(run, level, name);
    if (file)
        level.draft.moreInfo = file->filename().native();
    return file.has_value();
}

void ShowLevel(Run& run, LevelCode code, const std::string& namesPage = {})
{
    const std::string name = Readable(LevelNameOf(run.session.archive, code));
    if (run.json == nullptr) {
        AddLine(run, std::to_string(code) + "\t" + OneField(name));
    } else {
        *run.json = {{"code", code}, {"name", name}};
        if (!namesPage.empty())
            (*run.json)["names"] = namesPage;
    }
}

/// What the words want of every level that comes in.
void TakeWishes(const Run& run, LevelDraft& draft)
{
    draft.namesPage = NamesPageOf(run);
    draft.fetches = run.arguments.Has("--fetch");
    draft.compile = CompileWish(run);
    draft.keepGoing = run.arguments.Has("--keep-going");
}

bool Add(Run& run)
{
    if (run.arguments.Has("--each"))
        return AddEach(run, [&](LevelDraft& draft) { TakeWishes(run, draft); });
    const std::vector<Path> sources = PlacesFrom(run.arguments.words);
    const auto progress = run.session.host.BeginProgress(ProgressWindow::Progress, {});
    LevelCode code = 0;
    std::string namesPage;
    const bool added = AddLevel(
        run.session, *progress,
        [&](Intake& level) {
            TakeWishes(run, level.draft);
            level.draft.looksOnline = !run.session.settings.updateServers.empty();
            level.draft.installer = InstallerWish(run);
            TakeLinks(run, level);
            const Status came = AddWhole(level, sources);
            const auto giveUp = [&](Message words) {
                run.session.host.Tell(Tone::Error, GetMsg(words));
                return false;
            };
            if (IsStop(came) || level.draft.givenUp || !progress->Step())
                return giveUp(Msg::AddStopped);
            // A file that nobody could be asked about was not taken either.
            const bool all = came && !run.session.host.LeftUnanswered();
            if (!all && !level.draft.keepGoing)
                return giveUp(Msg::AddGivenUp);
            namesPage = level.draft.namesReadAs;
            TellNamesPage(run, level);
            TakeTexts(run, level);
            return Accept(level) || giveUp(Msg::AddStopped);
        },
        code);
    if (added)
        ShowLevel(run, code, namesPage);
    return added;
}

bool Edit(Run& run)
{
    const auto progress = run.session.host.BeginProgress(ProgressWindow::Progress, {});
    const bool changed = EditLevel(run.session, *progress, run.level, [&](Intake& level) {
        TakeTexts(run, level);
        if (ChangeFiles(run, level) && Accept(level))
            return true;
        GiveUp(level);
        return false;
    });
    if (changed)
        ShowLevel(run, run.level);
    return changed;
}

} // namespace

std::span<const CommandRow> IntakeCommands()
{
    constexpr std::size_t mostSources = 1'000'000;
    static const CommandRow rows[] = {
        {.window = {.control = "mnu_AddLevel", .caption = Msg::MenuAddLevel, .menu = "mnu_Level"},
         .terminal = {.word = "add",
                      .usage = Msg::UseAdd,
                      .summary = Msg::SumAdd,
                      .json = Msg::KeysAdd,
                      .leastWords = 1,
                      .mostWords = mostSources,
                      .options = {FlagOption("--each"),
                                  ValueOption("--name"),
                                  ValueOption("--note"),
                                  ValueOption("--names"),
                                  FlagOption("--keep-going"),
                                  FlagOption("--fetch"),
                                  FlagOption("--compile"),
                                  FlagOption("--no-compile"),
                                  {.name = "--link", .takesValue = true, .repeats = true},
                                  {.name = "--analyse", .takesValue = true, .isPlace = true},
                                  PlaceOption("--installer")},
                      .wrong = WrongAdd},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = Add},
        {.window = {.control = "mnu_AddMany", .caption = Msg::MenuAddMany, .menu = "mnu_Level"},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .help = HelpTag::AddMany},
        {.window = {.control = "mnu_Property",
                    .caption = Msg::MenuProperty,
                    .keys = "F2; Ctrl+I",
                    .menu = "mnu_Level",
                    .onLevel = 2},
         .terminal =
             {.word = "edit",
              .usage = Msg::UseEdit,
              .summary = Msg::SumEdit,
              .json = Msg::KeysEdit,
              .leastWords = 1,
              .mostWords = 1,
              .options = {ValueOption("--name"),
                          ValueOption("--note"),
                          {.name = "--add", .takesValue = true, .repeats = true, .isPlace = true},
                          ValueOption("--names"),
                          {.name = "--remove-file", .takesValue = true, .repeats = true},
                          ValueOption("--more-info")},
              .wrong = WrongNamesPage},
         .needs = Needs::Level,
         .touches = Touches::Stores,
         .run = Edit},
    };
    return rows;
}

} // namespace kestrova
