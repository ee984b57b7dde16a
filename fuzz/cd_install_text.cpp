#include "formats/cd_install_text.h"

#include "core/names.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// What a disc says of itself: whatever parses names places below the disc's root, and is written
/// and read the same where its letters allow it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto install = ParseCdInstall(bytes)) {
        for (const std::string* path : {&install->setup, &install->archive})
            Promise(path->empty() || bool{SafeRelative(*path)}, "a path stays on the disc");
        const auto again = ParseCdInstall(FormatCdInstall(*install));
        Promise(again && *again == *install, "what was written reads the same");
    }
    CdInstall given;
    given.archive = bytes;
    const auto back = ParseCdInstall(FormatCdInstall(given));
    Promise(!back || back->trle.empty() || bytes.empty(), "a value adds no other");
    return 0;
}
