#include "app/result_text.h"

#include "core/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

/// How many bytes the character takes with which the text begins when that would steer a terminal:
/// control characters but LF and tab, the upper ones too, and those that part lines or change the
/// direction of writing. 0 for any other.
std::size_t SteeringAt(std::string_view text)
{
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte < ' ' || byte == 0x7F)
        return byte == '\n' || byte == '\t' ? 0 : 1;
    if (byte == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0)
        return 2;
    for (const std::string_view mark : {"\u2028", "\u2029", "\u202A", "\u202B", "\u202C", "\u202D",
                                        "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"})
        if (text.starts_with(mark))
            return mark.size();
    return 0;
}

} // namespace

std::string ForTerminal(std::string_view text)
{
    // Nearly every line, and there may be thousands.
    if (std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; }))
        return std::string{text};
    const std::string readable = Readable(text);
    std::string shown;
    shown.reserve(readable.size());
    for (std::size_t i = 0; i < readable.size();) {
        const std::size_t steering = SteeringAt(std::string_view{readable}.substr(i));
        if (steering == 0)
            shown += readable[i];
        i += std::max<std::size_t>(steering, 1);
    }
    return shown;
}

std::string JsonText(const Json& value, int indent)
{
    constexpr std::string_view escape = "\\u{:04x}"; // not shown
    const std::string text = value.dump(indent, ' ', false, Json::error_handler_t::replace);
    std::string safe;
    safe.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool upperControl = byte == 0xC2 && next < 0xA0;
        if (upperControl)
            ++i;
        if (upperControl || byte == 0x7F)
            safe += fmt::format(escape, static_cast<unsigned char>(text[i]));
        else
            safe += text[i];
    }
    return safe;
}

std::string OneField(std::string_view text)
{
    return OnOneLine(ForTerminal(text));
}

void AddLine(Run& run, std::string_view line)
{
    run.text += ReplaceAll(ForTerminal(line), "\n", " ");
    run.text += '\n';
}

void AddText(Run& run, const std::string& head, std::string_view text)
{
    const std::vector<std::string> lines = Split(ForTerminal(text), '\n');
    for (std::size_t i = 0; i < lines.size(); ++i)
        AddLine(run, (i == 0 ? head : "  ") + lines[i]);
}

} // namespace kestrova
