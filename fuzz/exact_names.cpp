#include "formats/exact_names.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// Exact names: whatever is taken is written so that it is taken again, and comes back to a record
/// that holds its bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ExactNames names = ParseExactNames(TextOfInput(data, size));
    Promise(ParseExactNames(FormatExactNames(names)) == names, "what was written reads the same");

    std::vector<LevelRecord> levels;
    for (const auto& [key, text] : names)
        levels.emplace_back().levelCode = std::get<0>(key);
    ApplyExactNames(names, levels);
    ExactNames merged = names;
    Promise(!MergeExactNames(merged, levels) && merged == names, "records that need none add none");

    std::size_t at = 0;
    for (const auto& [key, text] : names) {
        LevelRecord& level = levels[at++];
        if (std::get<1>(key) != 0)
            continue;
        level.levelName = text;
        ArchiveContent content{{}, {level}};
        auto back = ParseArchive(FormatArchive(content));
        Promise(back && back->levels.size() == 1, "a record with the text is a record");
        ApplyExactNames(names, back->levels);
        Promise(back->levels.front().levelName == text, "the exact text comes back");
    }
    return 0;
}
