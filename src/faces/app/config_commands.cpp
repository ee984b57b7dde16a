#include "app/config_commands.h"

#include "app/config_fields.h"
#include "app/result_text.h"
#include "formats/nul_list.h"
#include "levels/export_level.h"
#include "online/config_database.h"
#include "online/url_file.h"
#include "packages/level_config_file.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "words/commands.h"
#include "words/config_commands.h"
#include "words/intake.h"
#include "words/online_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// The texts of a field, those of a group joined; an incomplete last group is passed over.
std::vector<std::string> TextsOf(const ConfigField& row, const LevelConfig& config)
{
    const std::string value{Trim(config.*row.field)};
    if (row.group == 0)
        return value.empty() ? std::vector<std::string>{} : std::vector<std::string>{value};
    const std::vector<std::string> parts = SplitNulList(value);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i + row.group <= parts.size(); i += row.group)
        texts.push_back(Join({parts.begin() + static_cast<std::ptrdiff_t>(i),
                              parts.begin() + static_cast<std::ptrdiff_t>(i + row.group)},
                             std::string_view{&fieldPartMark, 1}));
    return texts;
}

Json AsJson(const LevelConfig& config)
{
    Json json = Json::object();
    for (const ConfigField& row : ConfigFields()) {
        Json texts = Json::array();
        for (const std::string& text : TextsOf(row, config))
            texts.push_back(Readable(text));
        const std::string name{row.name};
        if (row.group == 0)
            json[name] = texts.empty() ? Json("") : texts.front();
        else
            json[name] = std::move(texts);
    }
    json["files"] = Json::array();
    for (const ConfigFile& file : config.files)
        json["files"].push_back({{"name", Readable(file.name)}, {"size", file.size}});
    return json;
}

bool ShowConfig(Run& run, const Path& file)
{
    const auto read = ReadLevelConfig(file);
    if (!read)
        return DoneOrTold(run.session.host, read.Error());
    const LevelConfig& config = *read;
    if (run.json != nullptr) {
        *run.json = AsJson(config);
        return true;
    }
    for (const ConfigField& row : ConfigFields())
        for (const std::string& text : TextsOf(row, config))
            AddLine(run, std::string{row.name} + "\t" + OneField(text));
    for (const ConfigFile& listed : config.files)
        AddLine(run, "file\t" + OneField(listed.name) + "\t" + std::to_string(listed.size));
    return true;
}

/// Puts `name=value` into the record; what is wrong with it, or nothing.
std::string TakeField(const std::string& word, LevelConfig& config)
{
    const auto said = ReadFieldWord(word);
    if (!said)
        return said.Error().sentence;
    const ConfigField& row = said->field;
    if (!FitsWindows1252(said->text))
        return GetMsg(Msg::WrongConfigLetters, {row.name, said->text});
    if (row.group == 0 && !(config.*row.field).empty())
        return GetMsg(Msg::WrongConfigTwice, {row.name});
    std::string& field = config.*row.field;
    const std::string joined = JoinNulList(said->parts);
    field = field.empty() ? joined : JoinNulList({field, joined});
    if (ToWindows1252(field).size() > row.width)
        return GetMsg(Msg::WrongConfigTooLong, {row.name, std::to_string(row.width)});
    return {};
}

/// The record of the words; what is wrong with them, or nothing.
std::string TakeFields(const Run& run, LevelConfig& config)
{
    const auto& words = run.arguments.words;
    for (std::size_t i = 2; i < words.size(); ++i)
        if (std::string wrong = TakeField(words[i], config); !wrong.empty())
            return wrong;
    return {};
}

std::string WrongConfig(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.front() == "show" || words.front() == "find")
        return words.size() > 2 ? GetMsg(Msg::WrongWordTooMany, {words[2]}) : std::string{};
    if (words.front() != "write")
        return GetMsg(Msg::WrongConfigWord, {words.front()});
    if (run.json != nullptr)
        return GetMsg(Msg::WrongOptionHere, {"--json", Shown(Msg::ConfigWriteWords)});
    LevelConfig config;
    return TakeFields(run, config);
}

bool Show(Run& run)
{
    return ShowConfig(run, PlaceFromWord(run.arguments.words[1]));
}

bool Find(Run& run)
{
    Host& host = run.session.host;
    const Path folder = PlaceFromWord(run.arguments.words[1]);
    if (!FolderExists(folder)) {
        host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(folder)}));
        return false;
    }
    const Path file = UrlListPath(run.session.Folders());
    const auto list = LoadUrlList(file);
    if (!list && list.Error().code == ErrorCode::Missing) {
        host.Tell(Tone::Error, GetMsg(Msg::ConfigNoUrlList, {TextOf(file)}));
        return false;
    }
    if (!list) {
        TellFailure(host, GetMsg(Msg::UrlListNotReadFile) + TextOf(file), list.Error());
        return false;
    }
    const auto configs = ConfigsFor(*list, folder);
    if (!configs)
        return TellFolderNotRead(host, configs.Error());
    if (run.json != nullptr)
        *run.json = Json::array();
    for (const OnlineConfig& config : *configs)
        if (run.json != nullptr)
            run.json->push_back({{"name", config.level}, {"url", config.url}});
        else
            AddLine(run, OneField(config.level) + "\t" + OneField(config.url));
    return true;
}

bool Write(Run& run)
{
    LevelConfig config;
    (void)TakeFields(run, config); // nothing is wrong with them
    const Path folder = PlaceFromWord(run.arguments.words[1]);
    if (!FolderExists(folder)) {
        run.session.host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(folder)}));
        return false;
    }
    auto listed = ConfigForFolder({}, folder);
    if (!listed)
        return TellFolderNotRead(run.session.host, listed.Error());
    config.files = std::move(listed->files);
    const auto file = FileToReplace(run.session.host, LevelConfigPath(folder));
    const Status written =
        file ? WriteLevelConfig(*file, config, OldConfig::Replaced) : file.Error();
    if (!written)
        return DoneOrTold(run.session.host, written);
    AddLine(run, TextOf(*file));
    return true;
}

} // namespace

std::span<const CommandRow> ConfigCommands()
{
    constexpr std::size_t mostFields = 1'000'000;
    static const CommandRow rows[] = {
        {.terminal = {.word = "config",
                      .verb = "show",
                      .usage = Msg::UseConfig,
                      .summary = Msg::SumConfig,
                      .json = Msg::KeysConfig,
                      .leastWords = 2,
                      .mostWords = mostFields,
                      .wrong = WrongConfig},
         .run = Show},
        {.terminal = {.word = "config", .verb = "write"}, .run = Write},
        {.terminal = {.word = "config", .verb = "find"}, .run = Find},
    };
    return rows;
}

} // namespace kestrova
