#include "formats/change_note.h"

#include "check.h"
#include "core/names.h"
#include "formats/record_json.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of a change: no name in it leads out of its folder, and whatever parses is
/// written and read the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto change = ParseChange(TextOfInput(data, size));
    if (!change)
        return 0;
    const auto check = [](const auto& files) {
        for (const auto& file : files)
            Promise(Path{file.name}.filename() == file.name && IsContentHash(file.hash),
                    "a name in its folder");
    };
    for (const ChangedFolder& folder : change->folders) {
        Promise(Path{folder.folder}.is_absolute(), "a folder of its own");
        check(folder.before);
        check(folder.after);
    }
    const std::string written = FormatChange(*change);
    const auto again = ParseChange(written);
    Promise(again && FormatChange(*again) == written, "what was written reads the same");
    return 0;
}
