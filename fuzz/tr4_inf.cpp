#include "formats/tr4_inf.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// `tr4.inf`: what parses gives back its own bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto entries = ParseTr4Inf(bytes);
    if (!entries)
        return 0;
    const std::string written = FormatTr4Inf(*entries);
    Promise(bytes.starts_with(written), "the entries' bytes");
    const auto again = ParseTr4Inf(written);
    Promise(again && again->size() == entries->size() && FormatTr4Inf(*again) == written,
            "what was written reads the same");
    Promise(!ParseTr4Inf(std::string_view{written}.substr(0, written.size() - 1)),
            "a cut list is refused");
    return 0;
}
