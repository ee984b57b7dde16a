#include "formats/page_text.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kestrova
{

namespace
{

constexpr std::string_view hiddenParts[] = {"script", "style"};
/// Tags that part words; all others may stand within one.
constexpr std::string_view partingTags[] = {"p",  "br", "div", "li",    "tr", "td", "th", "ul",
                                            "ol", "hr", "pre", "table", "h1", "h2", "h3", "h4"};

struct Entity {
    std::string_view name;
    std::string_view text;
};
constexpr Entity entities[] = {{"amp", "&"},   {"lt", "<"},   {"gt", ">"},
                               {"quot", "\""}, {"apos", "'"}, {"nbsp", " "}};

bool IsLetter(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// The name of the tag that begins behind `<`; empty when none does.
std::string_view TagName(std::string_view tag)
{
    if (tag.starts_with('/'))
        tag.remove_prefix(1);
    const auto end = std::find_if(tag.begin(), tag.end(), [](char byte) {
        return !IsLetter(byte) && (byte < '0' || byte > '9');
    });
    return IsLetter(tag.empty() ? ' ' : tag.front())
               ? tag.substr(0, static_cast<std::size_t>(end - tag.begin()))
               : std::string_view{};
}

template <class Names> bool IsOneOf(std::string_view name, const Names& names)
{
    return std::any_of(std::begin(names), std::end(names),
                       [&](std::string_view other) { return EqualNames(name, other); });
}

/// The UTF-8 form of a number; `?` for one that is no letter.
void AppendCode(std::string& text, std::uint32_t code)
{
    const auto byte = [&](std::uint32_t value) { text += static_cast<char>(value); };
    const auto next = [&](int shift) { byte(0x80U | ((code >> shift) & 0x3FU)); };
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
        text += '?';
    else if (code < 0x80)
        byte(code);
    else if (code < 0x800)
        byte(0xC0U | (code >> 6U)), next(0);
    else if (code < 0x10000)
        byte(0xE0U | (code >> 12U)), next(6), next(0);
    else
        byte(0xF0U | (code >> 18U)), next(12), next(6), next(0);
}

/// Takes the entity at the beginning of `rest`, behind its `&`, into `text`; what is none stays.
std::size_t TakeEntity(std::string_view rest, std::string& text)
{
    constexpr std::size_t longest = 10;
    const std::size_t end = rest.substr(0, longest).find(';');
    if (end == std::string_view::npos)
        return 0;
    const std::string_view name = rest.substr(0, end);
    for (const Entity& entity : entities)
        if (name == entity.name) {
            text += entity.text;
            return end + 1;
        }
    if (!name.starts_with('#'))
        return 0;
    const bool isHex = name.size() > 1 && (name[1] == 'x' || name[1] == 'X');
    const std::string_view digits = name.substr(isHex ? 2 : 1);
    std::uint32_t code = 0;
    const auto [last, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, isHex ? 16 : 10);
    if (digits.empty() || failure != std::errc{} || last != digits.data() + digits.size())
        return 0;
    AppendCode(text, code);
    return end + 1;
}

/// Where the page goes on behind a part that is not shown, which begins at `from`.
std::size_t BehindHidden(std::string_view page, std::size_t from, std::string_view name)
{
    for (std::size_t at = page.find("</", from); at != std::string_view::npos;
         at = page.find("</", at + 1))
        if (EqualNames(page.substr(at + 2, name.size()), name))
            return at;
    return page.size();
}

/// Goes on behind what begins with `<` at `from`, and says in `text` what a person sees of it.
std::size_t TakeMarkup(std::string_view page, std::size_t from, std::string& text)
{
    constexpr std::string_view commentEnd = "-->";
    const std::string_view rest = page.substr(from + 1);
    if (rest.starts_with("!--")) {
        const std::size_t end = page.find(commentEnd, from);
        return end == std::string_view::npos ? page.size() : end + commentEnd.size();
    }
    const std::string_view name = TagName(rest);
    if (name.empty() && !rest.starts_with('!') && !rest.starts_with('?')) {
        text += '<';
        return from + 1;
    }
    const std::size_t end = page.find('>', from);
    if (end == std::string_view::npos)
        return page.size();
    if (IsOneOf(name, partingTags))
        text += '\n';
    return !rest.starts_with('/') && IsOneOf(name, hiddenParts) ? BehindHidden(page, end + 1, name)
                                                                : end + 1;
}

} // namespace

bool IsPage(std::string_view bytes)
{
    constexpr std::size_t looked = 1024;
    const std::string_view start = bytes.substr(0, looked);
    return FindFolded(start, OnDisk::PageTag) != std::string_view::npos ||
           FindFolded(start, OnDisk::PageDeclaration) != std::string_view::npos;
}

std::string TextOfPage(std::string_view page)
{
    std::string text;
    text.reserve(page.size());
    for (std::size_t at = 0; at < page.size();) {
        if (page[at] == '<') {
            at = TakeMarkup(page, at, text);
            continue;
        }
        std::size_t taken = 0;
        if (page[at] == '&')
            taken = TakeEntity(page.substr(at + 1), text);
        if (taken == 0)
            text += page[at];
        at += taken + 1;
    }
    return text;
}

bool IsUtf16(std::string_view bytes)
{
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

std::string FromUtf16(std::string_view bytes)
{
    const bool isLittle = bytes.starts_with('\xFF');
    const auto unit = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(isLittle ? second << 8 | first : first << 8 | second);
    };
    std::string text;
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
        std::uint32_t code = unit(at);
        if (code >= 0xD800 && code < 0xDC00 && at + 3 < bytes.size()) {
            const std::uint32_t low = unit(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        AppendCode(text, code);
    }
    return text;
}

} // namespace kestrova
