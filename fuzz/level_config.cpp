#include "formats/level_config.h"

#include "check.h"
#include "core/text.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// `kestrova.cfg`: what parses is written in a form that reads and writes the same for ever.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto config = ParseLevelConfig(bytes);
    if (!config)
        return 0;
    const auto written = FormatLevelConfig(*config);
    Promise(written && written->size() >= levelConfigBlockSize + 2, "what parses can be written");
    const std::string_view view = *written;
    Promise(view.starts_with(bytes.substr(0, levelConfigBlockSize)), "the fixed block's bytes");
    const auto again = ParseLevelConfig(view);
    Promise(again && again->files.size() == config->files.size() &&
                again->tomWads == config->tomWads,
            "nothing but folders in front of file names is lost");
    const auto rewritten = FormatLevelConfig(*again);
    Promise(rewritten && *rewritten == view, "what was written reads the same");
    LevelConfig plain = *config; // without the exact texts behind the list
    plain.name = plain.note = plain.author = plain.authorNote = plain.moreInfo = {};
    plain.authorEmails = plain.authorSites = plain.importNotes = {};
    const std::size_t listEnd =
        FormatLevelConfig(plain)->size() - 2 - ToWindows1252(config->tomWads).size();
    Promise(!ParseLevelConfig(view.substr(0, listEnd - 1)), "a cut list is refused");
    return 0;
}
