#include "words/catalogue.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// A catalogue: each text that it gives lies whole in its bytes, and ends there.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (const auto catalogue = Catalogue::Read(std::string{TextOfInput(data, size)}))
        for (const std::string_view told : {"Yes", "Level ~1 of ~2", "", "no such text"}) {
            const std::string_view shown = catalogue->Of(told);
            Promise(shown.size() <= size || shown == told, "it is no longer than all of them");
            Promise(shown.data()[shown.size()] == '\0', "it ends");
        }
    return 0;
}
