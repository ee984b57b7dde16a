#include "formats/config_entry.h"

#include "check.h"
#include "core/text.h"

#include <algorithm>

using namespace kestrova;
using namespace kestrova::fuzz;

/// The text by which a level is known: no file outside the level's folder is looked at, and what is
/// written is read the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto entry = ParseConfigEntry(FromWindows1252(TextOfInput(data, size)));
    if (!entry)
        return 0;
    Matches(*entry, [](const Path& relative) -> std::optional<std::uint64_t> {
        Promise(relative.is_relative() && !relative.empty(), "a file lies below a folder");
        Promise(std::find(relative.begin(), relative.end(), "..") == relative.end(),
                "no way leads out of it");
        return 1;
    });
    if (const auto text = FormatConfigEntry(*entry)) {
        const auto again = ParseConfigEntry(*text);
        Promise(again && again->files == entry->files,
                "an entry that is written again is the same");
        Promise(FormatConfigEntry(*again).ValueOr({}) == *text, "and so is its text");
    }
    return 0;
}
