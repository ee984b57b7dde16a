#include "history/state_change.h"

#include "check.h"
#include "core/names.h"
#include "formats/record_json.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of a move of savegames: no name in it leads out of its folder, and whatever parses is
/// written and read the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto change = ParseStateChange(TextOfInput(data, size));
    if (!change)
        return 0;
    const auto check = [](const auto& files) {
        for (const auto& file : files)
            Promise(SafeName(file.name) && IsContentHash(file.hash), "a name in its folder");
    };
    for (const ChangedFolder& folder : change->folders) {
        Promise(Path{folder.folder}.is_absolute(), "a folder of its own");
        check(folder.before);
        check(folder.after);
    }
    const std::string written = FormatStateChange(*change);
    const auto again = ParseStateChange(written);
    Promise(again && FormatStateChange(*again) == written, "what was written reads the same");
    return 0;
}
