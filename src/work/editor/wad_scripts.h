#pragma once

#include "formats/language_text.h"
#include "formats/script_text.h"

#include <functional>
#include <optional>

/// New levels of a wad package in the person's own sources of scripts, in memory.
namespace kestrova
{

/// The person's own sources. A string's position is its number, in all languages alike.
struct OwnScripts {
    ScriptText script;
    LanguageText language;               ///< the one that is played in
    std::optional<LanguageText> english; ///< where that is another one
};

/// What could not be merged, as names of its levels.
struct WadMergeReport {
    std::vector<std::string> withoutLevel; ///< finished levels that the new script does not have
    std::vector<std::string> withoutName;  ///< names that the new strings do not have
    std::vector<std::string> twice;        ///< names of new levels that another string is as well
};

/// The name of a level, as it was made, that the person wants to read in the game; one that is
/// empty is refused by whoever asks. What is no line of a language file gives the original name.
using AskLevelName = std::function<std::string(const std::string& original)>;

/// Whether a language file's reader takes the text for a string: it is neither empty nor a comment
/// nor a heading.
bool CanBeLevelName(std::string_view answer);

/// Takes the level of each finished file into the script, and its name into the strings, at the
/// position that it has in the new strings. `tr4Names`: files of levels that are new.
WadMergeReport MergeNewLevels(const ScriptText& newScript, const LanguageText& newStrings,
                              const std::vector<std::string>& tr4Names, const AskLevelName& askName,
                              OwnScripts& own);

} // namespace kestrova
