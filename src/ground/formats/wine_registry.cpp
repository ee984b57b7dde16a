#include "formats/wine_registry.h"

#include "core/text.h"

#include <array>
#include <cstdint>

namespace kestrova
{

namespace
{

/// No path of Windows, and no key, is longer.
constexpr std::size_t longestRegistryText = 32 * 1024;
constexpr std::uint32_t firstHighHalf = 0xD800;
constexpr std::uint32_t firstLowHalf = 0xDC00;
constexpr std::uint32_t behindHalves = 0xE000;

void AppendLetter(std::string& text, std::uint32_t letter)
{
    const auto byte = [](std::uint32_t value) { return static_cast<char>(value); };
    if (letter < 0x80) {
        text += byte(letter);
    } else if (letter < 0x800) {
        text += byte(0xC0 | letter >> 6);
        text += byte(0x80 | (letter & 0x3F));
    } else if (letter < 0x10000) {
        text += byte(0xE0 | letter >> 12);
        text += byte(0x80 | (letter >> 6 & 0x3F));
        text += byte(0x80 | (letter & 0x3F));
    } else {
        text += byte(0xF0 | letter >> 18);
        text += byte(0x80 | (letter >> 12 & 0x3F));
        text += byte(0x80 | (letter >> 6 & 0x3F));
        text += byte(0x80 | (letter & 0x3F));
    }
}

/// Reads digits of a base from the front, up to so many.
std::optional<std::uint32_t> TakeDigits(std::string_view& rest, int base, std::size_t most)
{
    std::uint32_t number = 0;
    const std::string_view digits = rest.substr(0, most);
    const auto [end, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (failure != std::errc{})
        return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(end - digits.data()));
    return number;
}

/// The UTF-16 unit, or the character, that stands behind a backslash.
std::optional<std::uint32_t> TakeEscaped(std::string_view& rest)
{
    constexpr std::array letters{std::pair{'a', '\a'}, std::pair{'b', '\b'}, std::pair{'e', '\x1b'},
                                 std::pair{'f', '\f'}, std::pair{'n', '\n'}, std::pair{'r', '\r'},
                                 std::pair{'t', '\t'}, std::pair{'v', '\v'}};
    if (rest.empty())
        return std::nullopt;
    if (rest.front() >= '0' && rest.front() <= '7')
        return TakeDigits(rest, 8, 3);
    const char letter = rest.front();
    rest.remove_prefix(1);
    if (letter == 'x')
        return TakeDigits(rest, 16, 4);
    for (const auto& [name, meaning] : letters)
        if (name == letter)
            return static_cast<unsigned char>(meaning);
    return static_cast<unsigned char>(letter);
}

/// The text up to `end`, which no backslash stands before; none without such an end.
std::optional<std::string> TakeText(std::string_view rest, char end)
{
    std::string text;
    std::uint32_t high = 0; // the first half of a pair that waits for the second
    while (!rest.empty() && text.size() <= longestRegistryText) {
        const char next = rest.front();
        if (next == end)
            return text;
        rest.remove_prefix(1);
        if (next != '\\') {
            text += next;
            continue;
        }
        const auto unit = TakeEscaped(rest);
        if (!unit)
            return std::nullopt;
        const bool isLow = *unit >= firstLowHalf && *unit < behindHalves;
        if (*unit >= firstHighHalf && *unit < firstLowHalf)
            high = *unit;
        else if (isLow && high != 0)
            AppendLetter(text, 0x10000 + ((high - firstHighHalf) << 10) + (*unit - firstLowHalf));
        else if (!isLow)
            AppendLetter(text, *unit);
        if (isLow)
            high = 0;
    }
    return std::nullopt;
}

/// The text behind `@=`; none for values of other kinds.
std::optional<std::string> TextValue(std::string_view line)
{
    for (const std::string_view lead : {R"(@=")", R"(@=str(2):")"})
        if (line.starts_with(lead))
            return TakeText(line.substr(lead.size()), '"');
    return std::nullopt;
}

} // namespace

std::optional<std::string> DefaultValueOf(std::string_view registry, std::string_view key)
{
    bool isInKey = false;
    while (!registry.empty()) {
        const std::string_view line = registry.substr(0, registry.find('\n'));
        registry.remove_prefix(std::min(registry.size(), line.size() + 1));
        if (line.starts_with('[')) {
            const auto name = TakeText(line.substr(1), ']');
            isInKey = name && EqualNames(*name, key);
        } else if (isInKey && line.starts_with("@=")) {
            return TextValue(line);
        }
    }
    return std::nullopt;
}

} // namespace kestrova
