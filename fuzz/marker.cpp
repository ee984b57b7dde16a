#include "swap/swap_run.h"

#include "check.h"
#include "swap/placements.h"

#include <algorithm>

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

/// Said again here without the program's own path code: the name, put behind a folder, stays in it.
bool StaysInside(const std::string& name)
{
    const Path root = "/level editor";
    const auto relative = SafeRelative(name);
    if (!relative || relative->is_absolute() || relative->native().find('\0') != std::string::npos)
        return false;
    const Path place = (root / *relative).lexically_normal();
    const auto [end, rest] = std::mismatch(root.begin(), root.end(), place.begin(), place.end());
    return end == root.end() && rest != place.end() &&
           std::find(relative->begin(), relative->end(), "..") == relative->end();
}

} // namespace

/// The marker: every name that the removal would follow stays in the folder, every other one is
/// named to the person, and a marker that is written again says the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const MarkerContent content = ParseMarker(bytes);

    // The input's second half, line by line, is what the owner record lists.
    std::optional<OwnerRecord> owner;
    if (size % 2 == 1) {
        owner.emplace();
        for (const std::string& line : Split(bytes.substr(size / 2), '\n')) {
            owner->added.push_back({line, line.size(), 1});
            owner->overwritten.push_back(line);
        }
    }
    const Belongings belongings = BelongingsOf(content, owner);
    for (const OwnedFile& file : belongings.added)
        Promise(StaysInside(file.name), "what is deleted lies in the folder");
    for (const std::string& name : belongings.overwritten)
        Promise(StaysInside(name), "what is restored lies in the folder");
    if (!owner) {
        const auto count = [](const std::vector<std::string>& names) {
            return static_cast<std::size_t>(std::count_if(
                names.begin(), names.end(), [](const std::string& name) { return !name.empty(); }));
        };
        Promise(count(content.copied) + count(content.overwritten) ==
                    belongings.added.size() + belongings.overwritten.size() +
                        belongings.refused.size(),
                "each entry is either followed or named");
    }

    // A name that would break its line, or hide in it, is written with blanks instead.
    const std::string name{Trim(OnOneLine(FromWindows1252(MarkerValue(tagLevelName, bytes))))};
    const std::string written = MarkerText(content.code, name, content.overwritten, content.copied);
    const MarkerContent again = ParseMarker(written);
    Promise(again.code == content.code && again.overwritten == content.overwritten &&
                again.copied == content.copied,
            "a marker that is written again says the same");
    Promise(FromWindows1252(MarkerValue(tagLevelName, written)) == name,
            "the level's name comes back");
    return 0;
}
