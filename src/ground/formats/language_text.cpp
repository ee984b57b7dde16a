#include "formats/language_text.h"

#include "formats/source_text.h"
#include "words/message.h"

namespace kestrova
{

Result<LanguageText> ParseLanguageText(std::string_view bytes)
{
    if (const auto text = LookAtSourceText(bytes); !text)
        return text.Error();
    LanguageText language;
    language.before = TakeByteOrderMark(bytes);
    std::string* zone = &language.before; // null within the strings
    while (!bytes.empty()) {
        const std::string_view line = TakeSourceLine(bytes);
        if (IsSourceHeading(line, OnDisk::HeadingStrings))
            zone = nullptr;
        else if (IsSourceHeading(line, OnDisk::HeadingPsxStrings))
            zone = &language.after;
        if (zone != nullptr)
            zone->append(line).append(lineBreak);
        else if (!line.empty() && line.front() != ';')
            language.strings.emplace_back(line);
    }
    return language;
}

std::string FormatLanguageText(const LanguageText& language)
{
    std::string text = language.before;
    for (const std::string& line : language.strings)
        text.append(line).append(lineBreak);
    return text + language.after;
}

} // namespace kestrova
