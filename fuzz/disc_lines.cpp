// What the tools of discs print: listings, progress, times, errors.

#include "check.h"
#include "formats/burn_lines.h"
#include "formats/iso_listing.h"

#include <algorithm>
#include <array>

using namespace kestrova;
using namespace kestrova::fuzz;

namespace
{

void KeepsToItsText(const Result<std::vector<DiscEntry>>& files, std::string_view text)
{
    if (!files)
        return;
    for (const DiscEntry& file : *files) {
        Promise(file.path.size() > 1 && file.path.front() == '/', "a path begins at the root");
        Promise(file.path.find('\n') == std::string::npos, "a path is one line");
        Promise(file.month >= 1 && file.month <= 12 && file.day >= 1 && file.day <= 31,
                "a date is one");
    }
    Promise(files->size() <= text.size() / 10, "a file has its line");
    const std::string tree = TreeListOf(*files);
    const auto lines = [](const std::string& list) {
        return std::count(list.begin(), list.end(), '\n');
    };
    Promise(static_cast<std::size_t>(lines(tree)) == files->size() &&
                static_cast<std::size_t>(lines(FlatListOf(*files))) == files->size() &&
                static_cast<std::size_t>(lines(ReferenceListOf(*files))) == files->size(),
            "each form has all of them");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = TextOfInput(data, size);
    KeepsToItsText(ParseIsoinfoListing(text), text);
    KeepsToItsText(ParseXorrisoListing(text, 2026, 6), text);
    for (const std::string& path : ParseIsoinfoPaths(text))
        Promise(path.front() == '/', "a path begins at the root");
    (void)ExtractedBytesIn(text);
    if (const auto part = ImageProgressIn(text))
        Promise(part->done <= part->total, "no image is more than done");
    (void)BurnProgressIn(text);
    const std::string kept = WithoutCountdown(text);
    Promise(WithoutCountdown(kept) == kept, "the countdown goes at once");
    (void)SectorsToCome(text);
    (void)SectorsWritten(text);
    const BurnTimes times = BurnTimesIn(text);
    Promise(!IsWholeBurn(times, false) || IsWholeBurn(times, true), "a dummy burn needs less");
    (void)IsWholeBlanking(times);
    constexpr std::array<std::string_view, 2> words{"Warning", "Error"};
    Promise(WordsBehind(text, "wodim:", words).find('\n') == std::string::npos, "words are a line");
    return 0;
}
