#include "formats/source_text.h"

#include "core/text.h"
#include "formats/language_text.h"
#include "formats/script_text.h"
#include "words/formats.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

bool IsOfTwoBytesALetter(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return true;
    // Without a mark: every second byte of plain letters is zero.
    return bytes.size() >= 4 && (bytes[0] == '\0') != (bytes[1] == '\0') &&
           (bytes[0] == '\0') == (bytes[2] == '\0') && (bytes[1] == '\0') == (bytes[3] == '\0');
}

} // namespace

Status LookAtSourceText(std::string_view bytes)
{
    if (IsOfTwoBytesALetter(bytes))
        return Failure{ErrorCode::Refused, {}, GetMsg(Msg::SourceIsUtf16)};
    if (bytes.find('\0') != std::string_view::npos)
        return Failure{ErrorCode::Refused, {}, GetMsg(Msg::SourceIsNoText)};
    return {};
}

std::string_view TakeByteOrderMark(std::string_view& text)
{
    const std::string_view mark = text.substr(0, text.starts_with(utf8Mark) ? utf8Mark.size() : 0);
    text.remove_prefix(mark.size());
    return mark;
}

std::string_view TakeSourceLine(std::string_view& text)
{
    const std::size_t end = std::min(text.find_first_of(lineBreak), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with(lineBreak) ? lineBreak.size()
                                                   : std::min<std::size_t>(1, text.size()));
    return line;
}

bool IsSourceHeading(std::string_view line, std::string_view heading)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t from = std::min(line.find_first_not_of(blanks), line.size());
    line.remove_prefix(from);
    return line.starts_with('[') &&
           EqualNames(line.substr(0, line.find_last_not_of(blanks) + 1), heading);
}

SourceKind KindOfSource(std::string_view text)
{
    TakeByteOrderMark(text);
    while (!text.empty()) {
        const std::string_view line = TakeSourceLine(text);
        if (IsSourceHeading(line, OnDisk::HeadingStrings))
            return SourceKind::Language;
        if (IsSourceHeading(line, OnDisk::HeadingLevel))
            break;
    }
    return SourceKind::Script;
}

} // namespace kestrova
