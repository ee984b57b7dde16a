#include "app/editor_commands.h"

#include "app/result_text.h"
#include "core/text.h"
#include "editor/script_files.h"
#include "formats/source_text.h"
#include "session/telling.h"
#include "words/editor_commands.h"

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

std::string WrongScript(Run& run)
{
    const std::string& verb = run.arguments.words.front();
    return verb == "show" ? std::string{} : GetMsg(Msg::WrongScriptWord, {verb});
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
    };
    return rows;
}

} // namespace kestrova
