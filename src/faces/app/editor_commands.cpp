#include "app/editor_commands.h"

#include "app/opening.h"
#include "app/result_text.h"
#include "core/text.h"
#include "editor/compile_tom_file.h"
#include "editor/folder_comparison.h"
#include "editor/script_files.h"
#include "formats/source_text.h"
#include "session/telling.h"
#include "words/editor_commands.h"
#include "words/menus.h"

#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

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
            AddLine(run, OneField(level.tr4Name) + "\t" + OneField(level.levelName));
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
            AddLine(run, std::to_string(i) + "\t" + OneField(language->strings[i]));
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

std::string WrongEditor(Run& run)
{
    const auto& words = run.arguments.words;
    const bool compares = words.front() == "compare";
    if (!compares && words.front() != "compile")
        return GetMsg(Msg::WrongEditorWord, {words.front()});
    return words.size() == (compares ? 3U : 2U) ? std::string{} : GetMsg(Msg::WrongEditorCount);
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
                      .leastWords = 2,
                      .mostWords = 3,
                      .wrong = WrongEditor},
         .run = CompareTwo,
         .help = HelpTag::Compare},
        {.terminal = {.word = "editor", .verb = "compile"},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores, // the lent folder is as it was; its own step asks for a game
         .run = CompileTom},
    };
    return rows;
}

} // namespace kestrova
