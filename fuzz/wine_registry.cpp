#include "formats/wine_registry.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// A part of Wine's registry: whatever it says, what comes out is no longer than what went in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto value = DefaultValueOf(bytes, "Software\\App\\winroomedit.exe")) {
        Promise(value->size() <= bytes.size(), "a value comes out of the text alone");
        Promise(bytes.find("@=") != std::string_view::npos, "a value has its line");
    }
    return 0;
}
