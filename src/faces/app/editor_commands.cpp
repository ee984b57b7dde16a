#include "app/editor_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "app/swap_commands.h"
#include "core/text.h"
#include "editor/compile_tom_file.h"
#include "editor/find_trle.h"
#include "editor/folder_comparison.h"
#include "editor/folder_test.h"
#include "editor/script_files.h"
#include "editor/setup_choice.h"
#include "editor/setup_run.h"
#include "editor/trle_registry.h"
#include "formats/source_text.h"
#include "session/telling.h"
#include "words/editor_commands.h"
#include "words/level_setup.h"
#include "words/menus.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// What nobody wrote as a name or a string would bury all the others.
std::string ShownPart(std::string_view text)
{
    constexpr std::size_t longestShown = 500; // bytes
    if (text.size() <= longestShown)
        return OneField(text);
    const auto isWithinLetter = [&](std::size_t place) {
        return (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
    };
    constexpr std::size_t longestLetter = 4;
    std::size_t end = longestShown;
    while (isWithinLetter(end) && end > longestShown - longestLetter)
        --end;
    return OneField(text.substr(0, end)) +
           GetMsg(Msg::ScriptTextCut, {std::to_string(text.size())});
}

bool ShowLevels(Run& run, const Path& file)
{
    const auto script = ReadScriptFile(file);
    if (!script)
        return DoneOrTold(run.session.host, script.Error());
    if (run.json != nullptr)
        *run.json = {{"levels", Json::array()}};
    for (const ScriptLevel& level : script->levels)
        if (run.json != nullptr)
            (*run.json)["levels"].push_back(
                {{"tr4", Readable(level.tr4Name)}, {"name", Readable(level.levelName)}});
        else
            AddLine(run, ShownPart(level.tr4Name) + "\t" + ShownPart(level.levelName));
    return true;
}

bool ShowStrings(Run& run, const Path& file)
{
    const auto language = ReadLanguageFile(file);
    if (!language)
        return DoneOrTold(run.session.host, language.Error());
    if (run.json != nullptr)
        *run.json = {{"strings", Json::array()}};
    for (std::size_t i = 0; i < language->strings.size(); ++i)
        if (run.json != nullptr)
            (*run.json)["strings"].push_back(Readable(language->strings[i]));
        else
            AddLine(run, std::to_string(i) + "\t" + ShownPart(language->strings[i]));
    return true;
}

bool ShowScript(Run& run)
{
    const Path file = PlaceFromWord(run.arguments.words[1]);
    const auto bytes = ReadSourceFile(file);
    if (!bytes)
        return DoneOrTold(run.session.host, bytes.Error());
    return KindOfSource(*bytes) == SourceKind::Language ? ShowStrings(run, file)
                                                        : ShowLevels(run, file);
}

bool CompileTom(Run& run)
{
    Path result;
    if (!CompileTomFile(run.session, PlaceFromWord(run.arguments.words[1]), result))
        return false;
    AddLine(run, TextOf(result));
    return true;
}

std::string WrongScript(Run& run)
{
    const std::string& verb = run.arguments.words.front();
    return verb == "show" ? std::string{} : GetMsg(Msg::WrongScriptWord, {verb});
}

bool CompareTwo(Run& run)
{
    const auto& words = run.arguments.words;
    Host& host = run.session.host;
    FolderComparison comparison{host, run.session.machine, run.session.Folders()};
    comparison.SetFolder(Side::Before, PlaceFromWord(words[1]));
    comparison.SetFolder(Side::After, PlaceFromWord(words[2]));
    HearInterrupts();
    if (!comparison.Compare())
        return false;
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const std::size_t row : comparison.Rows()) {
        const ComparedFile& file = comparison.Files()[row];
        const std::string name = Readable(file.name.native());
        if (file.state == FileState::Unread)
            host.Tell(Tone::Error, GetMsg(Msg::EditorUnread) + OneField(name), file.reason);
        if (run.json != nullptr)
            run.json->push_back({{"file", name}, {"state", WordOfState(file.state)}});
        else
            AddLine(run, std::string{WordOfState(file.state)} + "\t" + OneField(name));
    }
    return comparison.Count(FileState::Unread) == 0;
}

/// A Level Editor's folder that somebody knows of.
void AddEditor(Run& run, const Path& folder, const Path& prefix)
{
    const auto lacks = WhatTrleLacks(folder);
    const std::string words = lacks ? *lacks : lacks.Error().subject + ' ' + lacks.Error().reason;
    const std::string from = prefix.empty() ? "preferences" : "registry";
    if (run.json != nullptr)
        run.json->push_back({{"folder", TextOf(folder)},
                             {"from", from},
                             {"prefix", TextOf(prefix)},
                             {"lacks", Readable(words)}});
    else
        AddLine(run, OneField(TextOf(folder)) + "\t" + from + "\t" +
                         (words.empty() ? GetMsg(Msg::EditorWhole) : OneField(words)));
}

bool FindEditors(Run& run)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    const Folders folders = run.session.Folders();
    const auto registered = RegisteredEditors(folders);
    if (!folders.trle.empty())
        AddEditor(run, folders.trle, {});
    for (const RegisteredEditor& editor : registered)
        AddEditor(run, editor.folder, editor.prefix);
    if (!folders.trle.empty() || !registered.empty())
        return true;
    run.session.host.Tell(Tone::Error, GetMsg(Msg::EditorNotFound));
    return false;
}

/// The zips of a setup may be many.
constexpr std::size_t mostEditorWords = 100;
/// The verbs, and how many words each of them takes, itself among them.
constexpr std::pair<std::string_view, std::size_t> editorVerbs[] = {
    {"compare", 3}, {"compile", 2}, {"find", 1}, {"restore", 1}};

/// Of `editor setup`, whose zips may stand behind each other.
std::string WrongEditorSetup(const Arguments& arguments)
{
    const bool fromZips = arguments.Has("--zip");
    const bool hasMoreWords = arguments.words.size() > 1;
    if (fromZips == arguments.Has("--folder") || (!fromZips && hasMoreWords))
        return GetMsg(Msg::WrongSetupSource);
    const std::string language = arguments.ValueOf("--language");
    if (arguments.Has("--language") && FindSetupLanguage(language) == nullptr)
        return GetMsg(Msg::WrongSetupLanguage, {language});
    return {};
}

bool SetUpEditor(Run& run)
{
    Session& session = run.session;
    const Arguments& arguments = run.arguments;
    std::optional<Path> folder;
    if (arguments.Has("--folder"))
        folder = PlaceFromWord(arguments.ValueOf("--folder"));
    SetupChoice choice{session, folder};
    for (const std::string& zip : arguments.ValuesOf("--zip"))
        choice.AddZip(PlaceFromWord(zip));
    for (std::size_t i = 1; i < arguments.words.size(); ++i)
        choice.AddZip(PlaceFromWord(arguments.words[i]));
    if (arguments.Has("--to"))
        choice.SetTarget(PlaceFromWord(arguments.ValueOf("--to")));
    if (arguments.Has("--language"))
        choice.SetLanguage(*FindSetupLanguage(arguments.ValueOf("--language")));
    if (!WantsSetup(session.host, session.Folders(), session.preferences))
        return false;
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::SetupInstalling));
    TrleFinder finder{session};
    if (!choice.Install(*progress) || !finder.Take(choice.Installed()) || !finder.Accept())
        return false;
    AddLine(run, TextOf(choice.Installed()));
    return true;
}

std::string WrongEditor(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.front() == "setup")
        return WrongEditorSetup(run.arguments);
    for (const std::string_view option : {"--zip", "--folder", "--to", "--language"})
        if (run.arguments.Has(option))
            return GetMsg(Msg::WrongSetupOption, {option});
    for (const auto& [verb, count] : editorVerbs)
        if (words.front() == verb)
            return words.size() == count ? std::string{} : GetMsg(Msg::WrongEditorCount);
    return GetMsg(Msg::WrongEditorWord, {words.front()});
}

} // namespace

std::span<const CommandRow> EditorCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "script",
                      .verb = "show",
                      .usage = Msg::UseScript,
                      .summary = Msg::SumScript,
                      .json = Msg::KeysScript,
                      .leastWords = 2,
                      .mostWords = 2,
                      .wrong = WrongScript},
         .run = ShowScript},
        {.window = {.control = "mnu_CompareTrle",
                    .caption = Msg::MenuCompareTrle,
                    .menu = "mnu_Tools",
                    .behind = "mnu_MoveOnCd"},
         .terminal = {.word = "editor",
                      .verb = "compare",
                      .usage = Msg::UseEditor,
                      .summary = Msg::SumEditor,
                      .json = Msg::KeysEditor,
                      .leastWords = 1,
                      .mostWords = mostEditorWords,
                      .options = {{"--zip", true, true, true},
                                  PlaceOption("--folder"),
                                  PlaceOption("--to"),
                                  ValueOption("--language")},
                      .wrong = WrongEditor},
         .run = CompareTwo,
         .help = HelpTag::Compare},
        {.terminal = {.word = "editor", .verb = "compile"},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores, // the lent folder is as it was; its own step asks for a game
         .run = CompileTom},
        {.terminal = {.word = "editor", .verb = "find"}, .run = FindEditors},
        {.terminal = {.word = "editor", .verb = "setup"},
         .touches = Touches::Stores,
         .run = SetUpEditor,
         .help = HelpTag::InstallTrle},
        {.terminal = {.word = "editor", .verb = "restore"},
         .touches = Touches::LevelEditor,
         .run = BringOriginals,
         .help = HelpTag::Originals},
    };
    return rows;
}

} // namespace kestrova
