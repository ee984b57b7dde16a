#include "help/help_topics.h"
#include "core/text.h"
#include "help/help_reader.h"

#include "check.h"

#include <algorithm>

using namespace kestrova;
using namespace kestrova::fuzz;

/// Topics by their names, their words wrapped, and places in what is shown. The first line is what
/// is asked for, the rest is the help.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input = TextOfInput(data, size);
    const std::size_t line = std::min(input.find('\n'), input.size());
    const std::string name = FromWindows1252(input.substr(0, line));
    const std::string help{input.substr(std::min(line + 1, input.size()))};

    constexpr std::size_t most = 8;
    const std::vector<std::string> near = TopicsNear(help, name, most);
    Promise(near.size() <= most, "not more than were wanted");
    if (const auto text = HelpOf(help, name)) {
        Promise(!near.empty(), "what is found is near");
        constexpr std::size_t width = 20;
        const std::string wrapped = Wrapped(*text, width);
        const auto letters = [](std::string words) {
            std::erase_if(words, [](char c) { return c == ' ' || c == '\n'; });
            return words;
        };
        Promise(letters(wrapped) == letters(*text), "no letter is lost");
    }
    const HelpReader reader{help, {}};
    for (std::size_t place = 0; place < help.size(); ++place)
        Promise(reader.PlaceOf(reader.ShownPlace(place)) == place, "places lead back");
    return 0;
}
