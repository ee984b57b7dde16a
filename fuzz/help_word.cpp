#include "formats/help_text.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// Words that a mouse picks, and searches for them: the first two bytes say where.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const std::size_t caret = data[0] * 256U + data[1];
    const std::string_view help = TextOfInput(data + 2, size - 2);
    const auto word = HelpWordAt(help, caret);
    if (!word)
        return 0;
    Promise(word->length > 0 && word->from + word->length <= help.size(), "a word is in the text");
    const std::size_t place = caret < help.size() ? caret : help.size() - 1;
    Promise(word->from <= place + 1 && place <= word->from + word->length, "it is about the caret");
    const std::string_view text = help.substr(word->from, word->length);
    const auto first = FindInHelp(help, text);
    Promise(first && *first <= word->from, "it is found");
    const auto before = FindInHelpBefore(help, text, word->from + word->length);
    Promise(before && *before >= word->from, "it is found backwards");
    return 0;
}
