#include "formats/script_text.h"

#include "core/text.h"
#include "formats/source_text.h"
#include "words/formats.h"

#include <algorithm>
#include <optional>

namespace kestrova
{

namespace
{

constexpr std::string_view nameTag = "name=";
constexpr std::string_view levelTag = "level=";
constexpr std::string_view tr4Ending = ".tr4";

/// What stands behind a tag, whose letters are small ones; nothing without the tag.
std::optional<std::string_view> BehindTag(std::string_view block, std::string_view tag)
{
    const auto* found = std::search(
        block.begin(), block.end(), tag.begin(), tag.end(), [](char letter, char small) {
            return letter == small ||
                   (letter >= 'A' && letter <= 'Z' && letter + ('a' - 'A') == small);
        });
    if (found == block.end())
        return std::nullopt;
    return block.substr(static_cast<std::size_t>(found - block.begin()) + tag.size());
}

Failure LacksIn(const std::string& block, Message words)
{
    constexpr std::size_t longestShown = 500;
    return {ErrorCode::Damaged, {}, GetMsg(words), Readable(block.substr(0, longestShown))};
}

} // namespace

Result<ScriptLevel> ParseScriptBlock(std::string block)
{
    const auto name = BehindTag(block, nameTag);
    if (!name)
        return LacksIn(block, Msg::ScriptLevelWithoutName);
    const auto file = BehindTag(block, levelTag);
    const std::size_t slash = file ? file->find('\\') : std::string_view::npos;
    if (slash == std::string_view::npos)
        return LacksIn(block, Msg::ScriptLevelWithoutFile);
    const std::string_view behind = file->substr(slash + 1);
    const std::string_view shown =
        name->substr(std::min(name->find_first_not_of(" \t"), name->size()));
    ScriptLevel level;
    level.tr4Name = behind.substr(0, behind.find_first_of("\r\n,"));
    level.tr4Name += tr4Ending;
    level.levelName = shown.substr(0, shown.find_first_of(lineBreak));
    level.block = std::move(block);
    return level;
}

Result<ScriptText> ParseScriptText(std::string_view bytes)
{
    if (const auto text = LookAtSourceText(bytes); !text)
        return text.Error();
    ScriptText script;
    script.header = TakeByteOrderMark(bytes);
    std::vector<std::string> blocks;
    while (!bytes.empty()) {
        const std::string_view line = TakeSourceLine(bytes);
        if (IsSourceHeading(line, OnDisk::HeadingLevel))
            blocks.emplace_back();
        std::string& part = blocks.empty() ? script.header : blocks.back();
        part += line;
        part += lineBreak;
    }
    script.levels.reserve(blocks.size());
    for (std::string& block : blocks) {
        auto level = ParseScriptBlock(std::move(block));
        if (!level)
            return level.Error();
        script.levels.push_back(std::move(*level));
    }
    return script;
}

std::string FormatScriptText(const ScriptText& script)
{
    std::string text = script.header;
    for (const ScriptLevel& level : script.levels)
        text += level.block;
    return text;
}

} // namespace kestrova
