#include "editor/link_analysis.h"

#include "check.h"
#include "core/text.h"
#include "editor/wad_links.h"
#include "formats/page_text.h"

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

/// The wad of one tom file, sought the plain way in a text of one byte a letter.
std::optional<std::size_t> PlainLink(const std::string& text, const std::string& tom,
                                     const std::vector<std::string>& wads)
{
    const std::string key = tom + ".";
    for (std::size_t place = FindFolded(text, key); !tom.empty() && place != std::string::npos;
         place = FindFolded(text, key, place + 1)) {
        const std::string window = text.substr(place < 40 ? 0 : place - 40, 80);
        std::optional<std::size_t> best;
        std::size_t longest = 0;
        for (std::size_t i = 0; i < wads.size(); ++i) {
            const std::string stem = StripExtension(wads[i]);
            if (stem.empty() || FindFolded(window, stem + ".") == std::string::npos)
                continue;
            const std::size_t length = CommonPrefixLength(wads[i], key);
            if (best && length <= longest)
                continue;
            best = i;
            longest = length;
        }
        if (best)
            return best;
    }
    return {};
}

} // namespace

/// A line of tom files' stems, a line of wads, and a readme: what is found in one walk is what the
/// plain search finds. Any bytes can be read as a page.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const std::size_t first = bytes.find('\n');
    const std::size_t second =
        bytes.find('\n', first == std::string_view::npos ? first : first + 1);
    if (second == std::string_view::npos)
        return 0;
    const auto toms = Split(bytes.substr(0, first), '|');
    auto wads = Split(bytes.substr(first + 1, second - first - 1), '|');
    for (std::string& wad : wads)
        wad += ".wad";
    const std::string text = TextOfPage(bytes.substr(second + 1));
    Promise(text.size() <= bytes.size() - second - 1, "a page's text is no longer than the page");
    const auto links = FindLinks(text, toms, wads);
    Promise(links && links->size() == toms.size(), "each tom file has its answer");
    if (IsAscii(bytes))
        for (std::size_t i = 0; i < toms.size(); ++i)
            Promise((*links)[i] == PlainLink(text, toms[i], wads),
                    "the plain search finds the same");
    (void)FromUtf16(bytes);
    return 0;
}
