#include "formats/preferences.h"

#include "check.h"

#include <array>

using namespace kestrova;
using namespace kestrova::fuzz;

/// `Kestrova.prf`: any bytes are preferences; what is missing has its first-run value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size).substr(0, preferencesSize);
    const std::string written = FormatPreferences(ParsePreferences(bytes));
    Promise(written.size() == preferencesSize, "the record has its one size");

    constexpr std::array<Loose, 2> flags{{{0, 10}, {1290, 6}}};
    std::string expected = FormatPreferences(DefaultPreferences());
    expected.replace(0, bytes.size(), bytes);
    Promise(SameBut(written, expected, flags), "the fields' bytes");
    Promise(FormatPreferences(ParsePreferences(written)) == written,
            "what was written reads the same");
    return 0;
}
