#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text in memory is UTF-8; bytes that are none pass through unharmed.
namespace kestrova
{

/// Without blanks at the end; without blanks at both ends.
std::string_view TrimEnd(std::string_view text);
std::string_view Trim(std::string_view text);

/// A letter of ASCII; all else as it is.
char LowerAscii(char c);
/// By simple Unicode case folding, the same in every locale.
std::string FoldCase(std::string_view text);
/// By simple Unicode upper-casing: the key by which listings are sorted.
std::string UpperCase(std::string_view text);
/// Names of files, tags and extensions are compared so.
/// Letters of 7 bits alone.
bool IsAscii(std::string_view text);
bool EqualNames(std::string_view a, std::string_view b);
bool EndsWithName(std::string_view text, std::string_view ending);
/// Where `part` stands in `text` without regard to case; npos when it does not.
std::size_t FindFolded(std::string_view text, std::string_view part, std::size_t from = 0);

/// The parts between the separators; an empty text has one empty part.
std::vector<std::string> Split(std::string_view text, char separator);
std::string Join(const std::vector<std::string>& parts, std::string_view separator);
std::string ReplaceAll(std::string text, std::string_view what, std::string_view with);

/// The number that leads the text, blanks before it skipped; 0 when there is none. A number beyond
/// 32 bits is 0 as well.
std::int32_t LeadingNumber(std::string_view text);
/// The number that the whole text is; none for an empty one, for anything beside its digits (a
/// minus alone may lead them), and for a number beyond `T`.
template <class T> std::optional<T> WholeNumber(std::string_view text)
{
    T number{};
    const char* const last = text.data() + text.size();
    const auto [end, failure] = std::from_chars(text.data(), last, number);
    return failure == std::errc{} && end == last ? std::optional{number} : std::nullopt;
}
/// At least `width` digits, filled with zeros.
std::string ZeroPadded(std::int64_t number, int width);

/// The bytes of the Windows code page 1252. What has no place there becomes '?'. The five bytes
/// that the code page leaves open stand for the control characters of the same number, as the
/// WHATWG encoding table has it, so that every byte comes back.
std::string ToWindows1252(std::string_view utf8);
std::string FromWindows1252(std::string_view bytes);
/// True when the text comes back the same from the code page.
bool FitsWindows1252(std::string_view utf8);
bool IsUtf8(std::string_view text);
/// As text that any window can show: bytes that are no UTF-8 are taken for Windows-1252.
std::string Readable(std::string_view text);
/// True for what moves a cursor, rings a bell or ends a line.
bool IsControl(char letter);
bool HasControl(std::string_view text);
/// True for one or more of the digits 0 to 9 and nothing else.
bool AreDigits(std::string_view text);
/// The beginning of UTF-8 text, of at most so many bytes, without a part of a letter at its end.
std::string CutAtLetter(std::string text, std::size_t most);
/// Line ends and other control characters replaced by blanks.
std::string OnOneLine(std::string_view text);

} // namespace kestrova
