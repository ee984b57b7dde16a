#include "formats/script_text.h"

#include "check.h"
#include "formats/source_text.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// `script.txt`: what is written reads the same, each level is in its block, and nothing but line
/// ends is changed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto script = ParseScriptText(bytes);
    if (!script) {
        Promise(!script.Error().reason.empty(), "a refusal has its reason");
        return 0;
    }
    const std::string written = FormatScriptText(*script);
    const auto again = ParseScriptText(written);
    Promise(again && *again == *script, "what was written reads the same");
    std::string_view read = bytes;
    std::string_view back = written;
    while (!read.empty() && !back.empty())
        Promise(TakeSourceLine(read) == TakeSourceLine(back), "lines stay as they are");
    Promise(read.empty() && back.empty(), "no line is lost");
    for (const ScriptLevel& level : script->levels) {
        Promise(level.block.find(level.levelName) != std::string::npos, "a name is of its block");
        const auto alone = ParseScriptBlock(level.block);
        Promise(alone && *alone == level, "a block says the same alone");
    }
    return 0;
}
