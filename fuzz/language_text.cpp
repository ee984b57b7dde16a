#include "formats/language_text.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// `english.txt`: what is written holds all that was read, and once written it stays byte for byte.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto language = ParseLanguageText(TextOfInput(data, size));
    if (!language)
        return 0;
    for (const std::string& line : language->strings)
        Promise(!line.empty() && line.front() != ';' &&
                    line.find_first_of("\r\n") == std::string::npos,
                "a string is a line");
    const std::string written = FormatLanguageText(*language);
    const auto again = ParseLanguageText(written);
    Promise(again && again->strings == language->strings && again->before == language->before &&
                again->after == language->after,
            "what was written reads the same");
    Promise(FormatLanguageText(*again) == written, "and is written the same");
    return 0;
}
