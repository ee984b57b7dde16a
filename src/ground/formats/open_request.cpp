#include "formats/open_request.h"

#include <algorithm>
#include <charconv>

namespace kestrova
{

namespace
{

constexpr std::string_view requestHead = "kestrova open 1\n"; // not shown
constexpr std::size_t mostLengthDigits = 7;
constexpr std::size_t longestActivation = 512;
constexpr std::size_t longestItem = 4096;

bool IsActivation(std::string_view text)
{
    return text.size() <= longestActivation &&
           std::all_of(text.begin(), text.end(),
                       [](char letter) { return letter >= ' ' && letter <= '~'; });
}

bool IsItem(std::string_view text)
{
    return text.starts_with('/') && text.size() <= longestItem && text.find('\0') == text.npos;
}

/// The length that stands in its own line; `Part` while the line has not ended.
Arrived TakeLength(std::string_view bytes, std::size_t& length, std::size_t& digits)
{
    digits = bytes.find('\n');
    if (digits == std::string_view::npos)
        return bytes.size() > mostLengthDigits ? Arrived::Wrong : Arrived::Part;
    const char* const end = bytes.data() + digits;
    const auto read = std::from_chars(bytes.data(), end, length);
    const bool isNumber = read.ec == std::errc{} && read.ptr == end;
    return isNumber && length <= longestOpenRequest ? Arrived::Whole : Arrived::Wrong;
}

/// False for what is no request.
bool TakeFields(std::string_view fields, OpenRequest& request)
{
    if (!fields.ends_with('\0'))
        return false;
    bool first = true;
    for (; !fields.empty(); first = false) {
        const std::string_view field = fields.substr(0, fields.find('\0'));
        fields.remove_prefix(field.size() + 1);
        if (first ? !IsActivation(field) : !IsItem(field) || request.items.size() == mostOpenItems)
            return false;
        if (first)
            request.activation = field;
        else
            request.items.emplace_back(field);
    }
    return true;
}

} // namespace

std::string FormatOpenRequest(const OpenRequest& request)
{
    std::string fields = IsActivation(request.activation) ? request.activation : std::string{};
    fields += '\0';
    bool fits = request.items.size() <= mostOpenItems;
    for (const std::string& item : request.items) {
        fits = fits && IsItem(item);
        fields += item;
        fields += '\0';
    }
    if (!fits || fields.size() > longestOpenRequest)
        return {};
    return std::string{requestHead} + std::to_string(fields.size()) + '\n' + fields;
}

Arrived ParseOpenRequest(std::string_view bytes, OpenRequest& request, std::size_t& used)
{
    request = {};
    const std::string_view head = bytes.substr(0, requestHead.size());
    if (!requestHead.starts_with(head))
        return Arrived::Wrong;
    if (head.size() < requestHead.size())
        return Arrived::Part;
    std::size_t length = 0;
    std::size_t digits = 0;
    const std::string_view rest = bytes.substr(head.size());
    if (const Arrived line = TakeLength(rest, length, digits); line != Arrived::Whole)
        return line;
    const std::string_view fields = rest.substr(digits + 1);
    if (fields.size() < length)
        return Arrived::Part;
    used = head.size() + digits + 1 + length;
    return TakeFields(fields.substr(0, length), request) ? Arrived::Whole : Arrived::Wrong;
}

} // namespace kestrova
