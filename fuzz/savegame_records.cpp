#include "formats/savegame_records.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The two records of a savegame store: what parses gives back its own bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto header = ParseSavegameArchiveHeader(bytes);
    Promise(bool{header} == (size >= savegameArchiveHeaderSize), "a cut header is refused");
    if (header)
        Promise(FormatSavegameArchiveHeader(*header) == bytes.substr(0, savegameArchiveHeaderSize),
                "the header's bytes");
    const auto prefs = ParseSavegameToolPrefs(bytes);
    Promise(bool{prefs} == (size >= savegameToolPrefsSize), "cut preferences are refused");
    if (prefs)
        Promise(FormatSavegameToolPrefs(*prefs) == bytes.substr(0, savegameToolPrefsSize),
                "the preferences' bytes");
    return 0;
}
