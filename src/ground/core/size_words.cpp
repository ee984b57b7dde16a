#include "core/size_words.h"

#include "words/core.h"

#include <cmath>
#include <cstdint>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

enum class Unit { Bytes, Kilo, Mega, Giga };

struct Size {
    std::string number;
    Unit unit;
};

/// The mask "###.0": one decimal, no zero before a bare decimal point.
std::string OneDecimal(double value)
{
    const std::string text = fmt::format("{:.1f}", value);
    const std::string whole = text.substr(0, text.size() - 2);
    return GetMsg(Msg::SizeDecimal, {whole == "0" ? "" : whole, text.substr(text.size() - 1)});
}

Size SizeOf(double bytes)
{
    constexpr double kilo = 1024;
    constexpr double mega = kilo * 1024;
    constexpr double giga = mega * 1024;
    if (bytes > giga)
        return {OneDecimal(bytes / giga), Unit::Giga};
    if (bytes > mega)
        return {OneDecimal(bytes / mega), Unit::Mega};
    if (bytes > kilo)
        return {std::to_string(static_cast<std::int64_t>(std::nearbyint(bytes)) / 1024),
                Unit::Kilo};
    return {fmt::format("{:.0f}", bytes), Unit::Bytes};
}

} // namespace

std::string FormatSize(double bytes)
{
    const Size size = SizeOf(bytes);
    switch (size.unit) {
    case Unit::Giga:
        return size.number + GetMsg(Msg::SizeGb);
    case Unit::Mega:
        return size.number + GetMsg(Msg::SizeMb);
    case Unit::Kilo:
        return size.number + GetMsg(Msg::SizeKb);
    case Unit::Bytes:
        break;
    }
    return size.number;
}

std::string SizeInWords(double bytes)
{
    const Size size = SizeOf(bytes);
    switch (size.unit) {
    case Unit::Giga:
        return GetMsg(Msg::SizeGigabytes, {size.number});
    case Unit::Mega:
        return GetMsg(Msg::SizeMegabytes, {size.number});
    case Unit::Kilo:
        return GetMsg(Msg::SizeKilobytes, {size.number});
    case Unit::Bytes:
        break;
    }
    return size.number == "1" ? GetMsg(Msg::SizeOneByte) : GetMsg(Msg::SizeBytes, {size.number});
}

} // namespace kestrova
