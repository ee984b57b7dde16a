#include "check.h"
#include "core/text.h"
#include "editor/wad_scripts.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// A package's script and strings, the person's own strings and the name that they choose, parted
/// by bytes of value 1: whatever is merged reads back the same, and every position but those of new
/// levels keeps its string.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto parts = Split(TextOfInput(data, size), '\x01');
    parts.resize(4);
    const auto script = ParseScriptText(parts[0]);
    const auto strings = ParseLanguageText(parts[1]);
    const auto before = ParseLanguageText(parts[2]);
    if (!script || !strings || !before || strings->strings.empty() || before->strings.empty())
        return 0;
    std::vector<std::string> levels;
    for (const ScriptLevel& level : script->levels)
        levels.push_back(level.tr4Name);
    OwnScripts own{{}, *before, *before};
    std::size_t named = 0;
    const auto report = MergeNewLevels(
        *script, *strings, levels, [&](const std::string&) { return ++named, parts[3]; }, own);
    Promise(own.script.levels.size() <= script->levels.size(), "no level comes twice");
    Promise(report.withoutLevel.empty() && named + report.withoutName.size() == levels.size(),
            "each level has its answer");
    Promise(report.twice.size() <= named, "only names of new levels are told");
    for (const LanguageText* language : {&own.language, &*own.english}) {
        const auto again = ParseLanguageText(FormatLanguageText(*language));
        Promise(again && again->strings == language->strings && again->after == language->after,
                "what was merged reads the same");
        Promise(language->strings.front() == before->strings.front(), "the heading stays");
        std::size_t changed = 0;
        for (std::size_t i = 0; i < before->strings.size(); ++i)
            changed += language->strings[i] != before->strings[i] ? 1 : 0;
        Promise(changed <= named, "no other string is changed");
    }
    return 0;
}
