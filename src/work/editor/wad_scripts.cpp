#include "editor/wad_scripts.h"

#include "core/text.h"
#include "formats/source_text.h"

#include <unordered_map>
#include <unordered_set>

namespace kestrova
{

namespace
{

/// The first of each name counts.
using Positions = std::unordered_map<std::string, std::size_t>;

Positions PositionsOfLevels(const ScriptText& script)
{
    Positions positions;
    for (std::size_t i = 0; i < script.levels.size(); ++i)
        positions.emplace(FoldCase(script.levels[i].tr4Name), i);
    return positions;
}

bool IsHeadingOfStrings(std::string_view line)
{
    return IsSourceHeading(line, OnDisk::HeadingStrings) ||
           IsSourceHeading(line, OnDisk::HeadingPsxStrings);
}

/// A heading is nobody's name, whatever a script says.
Positions PositionsOfStrings(const LanguageText& language)
{
    Positions positions;
    for (std::size_t i = 0; i < language.strings.size(); ++i)
        if (!IsHeadingOfStrings(language.strings[i]))
            positions.emplace(FoldCase(language.strings[i]), i);
    return positions;
}

bool IsString(std::string_view line)
{
    return !line.empty() && line.front() != ';' && !IsHeadingOfStrings(line);
}

/// As a line of the language file, in the letters of that file. One that the file's reader would
/// take for something else is none.
std::string AsLine(const LanguageText& language, const std::string& answer,
                   const std::string& original)
{
    if (answer == Readable(original))
        return original;
    const std::string shown{Trim(OnOneLine(answer))};
    std::string_view text = language.before;
    const bool isUtf8 = !TakeByteOrderMark(text).empty();
    std::string line = isUtf8 ? shown : ToWindows1252(shown);
    return IsString(line) ? line : original;
}

/// Strings that the person's file does not have yet come as the package has them.
void PutString(LanguageText& language, std::size_t position, const LanguageText& newStrings,
               std::string line)
{
    for (std::size_t i = language.strings.size(); i <= position; ++i)
        language.strings.push_back(newStrings.strings[i]);
    language.strings[position] = std::move(line);
}

/// Of the strings at these places, those that stand at another one too.
std::vector<std::string> StringsTwice(const LanguageText& language,
                                      const std::vector<std::size_t>& places)
{
    std::unordered_map<std::string, std::size_t> times;
    for (const std::size_t place : places)
        times.emplace(FoldCase(language.strings[place]), 0);
    for (const std::string& line : language.strings)
        if (const auto found = times.find(FoldCase(line)); found != times.end())
            ++found->second;
    std::vector<std::string> twice;
    for (const std::size_t place : places)
        if (times.at(FoldCase(language.strings[place])) > 1)
            twice.push_back(language.strings[place]);
    return twice;
}

} // namespace

bool CanBeLevelName(std::string_view answer)
{
    return IsString(Trim(OnOneLine(answer)));
}

WadMergeReport MergeNewLevels(const ScriptText& newScript, const LanguageText& newStrings,
                              const std::vector<std::string>& tr4Names, const AskLevelName& askName,
                              OwnScripts& own)
{
    WadMergeReport report;
    const Positions levels = PositionsOfLevels(newScript);
    const Positions strings = PositionsOfStrings(newStrings);
    std::unordered_set<std::string> blocks; ///< a level that is there already comes no second time
    for (const ScriptLevel& level : own.script.levels)
        blocks.insert(level.block);
    std::vector<std::size_t> named;
    for (const std::string& tr4 : tr4Names) {
        const auto found = levels.find(FoldCase(tr4));
        if (found == levels.end()) {
            report.withoutLevel.push_back(tr4);
            continue;
        }
        const ScriptLevel& level = newScript.levels[found->second];
        if (blocks.insert(level.block).second)
            own.script.levels.push_back(level);
        const auto position = strings.find(FoldCase(level.levelName));
        if (position == strings.end()) {
            report.withoutName.push_back(level.levelName);
            continue;
        }
        const std::string answer = askName ? askName(Readable(level.levelName)) : std::string{};
        PutString(own.language, position->second, newStrings,
                  AsLine(own.language, answer, level.levelName));
        named.push_back(position->second);
        if (own.english)
            PutString(*own.english, position->second, newStrings, level.levelName);
    }
    if (!named.empty())
        report.twice = StringsTwice(own.language, named);
    return report;
}

} // namespace kestrova
