#pragma once

#include "core/result.h"

#include <string>
#include <string_view>

/// The text files that the Level Editor's script compiler reads: one line a line, in whatever
/// single-byte alphabet their author has. In memory they keep their bytes; who shows a line makes
/// it `Readable`. CR LF ends a line, and so do LF and CR alone; what is written ends in CR LF.
namespace kestrova
{

/// Refused, with the reason in words, for a text of two bytes a letter, which the compiler cannot
/// read, and for bytes that are no text.
Status LookAtSourceText(std::string_view bytes);
/// The mark of UTF-8 at the beginning of the text, taken off it; empty when there is none.
std::string_view TakeByteOrderMark(std::string_view& text);
/// The first line, without its end, taken off the text, which is not empty.
std::string_view TakeSourceLine(std::string_view& text);
/// True for `[Level]`, whatever its case, blanks and tabs about it.
bool IsSourceHeading(std::string_view line, std::string_view heading);

/// What a text says by its first heading of the two kinds; one without any counts as a script.
enum class SourceKind { Script, Language };
SourceKind KindOfSource(std::string_view text);

} // namespace kestrova
