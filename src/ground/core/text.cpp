#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace kestrova
{

namespace
{

/// Bytes 0x80 to 0x9F of the code page.
constexpr std::array<char16_t, 32> highControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Calls `sink(code point, bytes)`; a byte that is no UTF-8 comes alone with a negative code point.
template <class Sink> void ForEachCharacter(std::string_view text, Sink sink)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < length;) {
        const std::int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        if (c < 0)
            i = start + 1;
        sink(c, text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(i - start)));
    }
}

void AppendUtf8(std::string& text, UChar32 c)
{
    std::array<std::uint8_t, 4> buffer{};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(buffer.data(), length, c);
    text.append(reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(length));
}

char UpperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

template <class ByteCase, class CodeCase>
std::string WithCase(std::string_view text, ByteCase byteCase, CodeCase codeCase)
{
    std::string result;
    result.reserve(text.size());
    if (IsAscii(text)) {
        std::transform(text.begin(), text.end(), std::back_inserter(result), byteCase);
        return result;
    }
    ForEachCharacter(text, [&](UChar32 c, std::string_view bytes) {
        if (c < 0)
            result += bytes;
        else
            AppendUtf8(result, codeCase(c));
    });
    return result;
}

} // namespace

std::string_view TrimEnd(std::string_view text)
{
    // An archive of 10,000 levels has 16 megabytes of padding: eight blanks at a time.
    constexpr std::uint64_t eightBlanks = 0x2020202020202020;
    for (std::uint64_t word = 0; text.size() >= sizeof word; text.remove_suffix(sizeof word)) {
        std::memcpy(&word, text.data() + text.size() - sizeof word, sizeof word);
        if (word != eightBlanks)
            break;
    }
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

std::string_view Trim(std::string_view text)
{
    text = TrimEnd(text);
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return text;
}

char LowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string FoldCase(std::string_view text)
{
    return WithCase(text, LowerAscii, [](UChar32 c) { return u_foldCase(c, U_FOLD_CASE_DEFAULT); });
}

std::string UpperCase(std::string_view text)
{
    return WithCase(text, UpperAscii, [](UChar32 c) { return u_toupper(c); });
}

bool IsAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t word = 0;
    for (; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
        std::memcpy(&word, text.data(), sizeof word);
        if ((word & highBits) != 0)
            return false;
    }
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool EqualNames(std::string_view a, std::string_view b)
{
    if (a == b)
        return true;
    if (IsAscii(a) && IsAscii(b))
        return a.size() == b.size() &&
               std::equal(a.begin(), a.end(), b.begin(),
                          [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
    return FoldCase(a) == FoldCase(b);
}

bool EndsWithName(std::string_view text, std::string_view ending)
{
    return text.size() >= ending.size() &&
           EqualNames(text.substr(text.size() - ending.size()), ending);
}

std::size_t FindFolded(std::string_view text, std::string_view part, std::size_t from)
{
    // Tags are ASCII, so that positions of the folded text are positions of the text.
    const auto found = std::search(
        text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size())), text.end(),
        part.begin(), part.end(), [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
    return found == text.end() && !part.empty() ? std::string_view::npos
                                                : static_cast<std::size_t>(found - text.begin());
}

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::string Join(const std::vector<std::string>& parts, std::string_view separator)
{
    return fmt::format("{}", fmt::join(parts, separator));
}

std::string ReplaceAll(std::string text, std::string_view what, std::string_view with)
{
    std::size_t place = text.find(what);
    if (place == std::string::npos || what.empty())
        return text;
    // Into a new text: in place, each hit would move all that is behind it.
    std::string replaced;
    replaced.reserve(text.size());
    std::size_t from = 0;
    for (; place != std::string::npos; place = text.find(what, from)) {
        replaced.append(text, from, place - from).append(with);
        from = place + what.size();
    }
    return replaced.append(text, from);
}

std::int32_t LeadingNumber(std::string_view text)
{
    text = Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc{} ? number : 0;
}

std::string ZeroPadded(std::int64_t number, int width)
{
    return fmt::format("{:0{}}", number, number < 0 ? width + 1 : width);
}

std::string ToWindows1252(std::string_view utf8)
{
    if (IsAscii(utf8))
        return std::string{utf8};
    std::string bytes;
    bytes.reserve(utf8.size());
    ForEachCharacter(utf8, [&](UChar32 c, std::string_view) {
        const auto high = std::find(highControls.begin(), highControls.end(), c);
        if (c >= 0 && (c < 0x80 || (c >= 0xA0 && c <= 0xFF)))
            bytes += static_cast<char>(c);
        else if (c >= 0 && high != highControls.end())
            bytes += static_cast<char>(0x80 + (high - highControls.begin()));
        else
            bytes += '?';
    });
    return bytes;
}

std::string FromWindows1252(std::string_view bytes)
{
    if (IsAscii(bytes))
        return std::string{bytes};
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 0x80)
            text += byte;
        else
            AppendUtf8(text, value < 0xA0 ? highControls[value - 0x80U] : UChar32{value});
    }
    return text;
}

bool FitsWindows1252(std::string_view utf8)
{
    return FromWindows1252(ToWindows1252(utf8)) == utf8;
}

bool IsUtf8(std::string_view text)
{
    bool valid = true;
    ForEachCharacter(text, [&](UChar32 c, std::string_view) { valid = valid && c >= 0; });
    return valid;
}

std::string Readable(std::string_view text)
{
    return IsUtf8(text) ? std::string{text} : FromWindows1252(text);
}

bool IsControl(char letter)
{
    return static_cast<unsigned char>(letter) < ' ' || letter == '\x7F';
}

bool HasControl(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), IsControl);
}

bool AreDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string CutAtLetter(std::string text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U)
        --most;
    text.resize(most);
    return text;
}

std::string OnOneLine(std::string_view text)
{
    std::string line{text};
    std::replace_if(line.begin(), line.end(), IsControl, ' ');
    return line;
}

} // namespace kestrova
