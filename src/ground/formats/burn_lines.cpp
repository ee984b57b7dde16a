#include "formats/burn_lines.h"

#include "core/text.h"

#include <algorithm>
#include <cctype>

namespace kestrova
{

namespace
{

bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// The first number in the text, with a point and what is behind that; the text begins behind it
/// afterwards. None of them has more than 18 digits.
std::optional<double> TakeNumber(std::string_view& text)
{
    const auto first = std::find_if(text.begin(), text.end(), IsDigit);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    if (text.empty())
        return {};
    constexpr std::size_t mostDigits = 18;
    double number = 0;
    std::size_t at = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        if (at >= mostDigits)
            return {};
        number = number * 10 + (text[at] - '0');
    }
    if (at + 1 < text.size() && text[at] == '.' && IsDigit(text[at + 1])) {
        double place = 1;
        for (++at; at < text.size() && IsDigit(text[at]); ++at)
            number += (text[at] - '0') * (place /= 10);
    }
    text.remove_prefix(at);
    return number;
}

std::optional<double> NumberBehind(std::string_view output, std::string_view words)
{
    const std::size_t at = output.find(words);
    if (at == std::string_view::npos)
        return {};
    std::string_view rest = output.substr(at + words.size());
    rest = rest.substr(0, rest.find_first_of("\r\n"));
    return TakeNumber(rest);
}

std::optional<std::uint64_t> Whole(std::optional<double> number)
{
    return number ? std::optional{static_cast<std::uint64_t>(*number)} : std::nullopt;
}

/// Calls for each line that is not empty, its blanks at both ends left out; True ends it.
template <class Take> void EachLine(std::string_view text, const Take& take)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && take(line))
            return;
    }
}

} // namespace

std::optional<std::uint64_t> ExtractedBytesIn(std::string_view line)
{
    constexpr std::string_view restored = "files restored ("; // not shown
    constexpr std::string_view units = "kmgt";
    const std::size_t at = line.find(restored);
    if (at == std::string_view::npos)
        return {};
    std::string_view rest = line.substr(at + restored.size());
    const auto number = TakeNumber(rest);
    if (!number || rest.empty())
        return {};
    double bytes = *number;
    const std::size_t unit = units.find(rest.front());
    for (std::size_t i = 0; unit != std::string_view::npos && i <= unit; ++i)
        bytes *= 1024;
    constexpr double most = 1e18;
    return bytes < most ? std::optional{static_cast<std::uint64_t>(bytes)} : std::nullopt;
}

std::optional<PartDone> ImageProgressIn(std::string_view line)
{
    const std::size_t at = line.find("% done"); // not shown
    if (at == std::string_view::npos)
        return {};
    std::size_t first = at;
    while (first > 0 && (IsDigit(line[first - 1]) || line[first - 1] == '.'))
        --first;
    std::string_view number = line.substr(first, at - first);
    const auto percent = TakeNumber(number);
    if (!percent || *percent > 100)
        return {};
    return PartDone{static_cast<std::uint64_t>(*percent), 100};
}

std::optional<PartDone> BurnProgressIn(std::string_view line)
{
    const std::size_t end = line.find("MB written"); // not shown
    if (end == std::string_view::npos)
        return {};
    std::string_view rest = line.substr(0, end);
    const std::size_t colon = rest.rfind(':');
    if (colon == std::string_view::npos)
        return {};
    rest.remove_prefix(colon + 1);
    const auto done = TakeNumber(rest);
    const auto total = TakeNumber(rest);
    if (!done || !total)
        return {};
    return PartDone{static_cast<std::uint64_t>(*done), static_cast<std::uint64_t>(*total)};
}

bool IsCountdown(std::string_view line)
{
    constexpr std::string_view words = "last chance"; // not shown
    line = Trim(line);
    return !line.empty() && EqualNames(line.substr(0, words.size()), words.substr(0, line.size()));
}

std::string WithoutCountdown(std::string_view output)
{
    std::string kept;
    EachLine(output, [&](std::string_view line) {
        if (!IsCountdown(line))
            kept.append(line).append("\r\n");
        return false;
    });
    return kept;
}

std::optional<std::uint64_t> SectorsToCome(std::string_view output)
{
    const std::size_t at = output.find("Total extents"); // not shown
    if (at != std::string_view::npos) {
        const auto number = NumberBehind(output.substr(at), "=");
        if (number)
            return Whole(number);
    }
    std::optional<std::uint64_t> last;
    EachLine(output, [&](std::string_view line) {
        if (const auto number = WholeNumber<std::uint32_t>(line))
            last = *number;
        return false;
    });
    return last;
}

std::optional<std::uint64_t> SectorsWritten(std::string_view output)
{
    std::optional<double> sectors = NumberBehind(output, "Written to medium :"); // not shown
    if (!sectors)
        if (const std::size_t at = output.find("Total bytes read/written:"); // not shown
            at != std::string_view::npos)
            sectors = NumberBehind(output.substr(at), "(");
    if (!sectors)
        EachLine(output, [&](std::string_view line) {
            if (line.find("extents written") != std::string_view::npos) // not shown
                sectors = TakeNumber(line);
            return sectors.has_value();
        });
    // cdrskin counts none of a disc that it wrote in less than a second.
    return sectors && *sectors > 0 ? Whole(sectors) : std::nullopt;
}

BurnTimes BurnTimesIn(std::string_view output)
{
    return {NumberBehind(output, "Writing  time:"),
            NumberBehind(output, "Fixating time:"),                                    // not shown
            NumberBehind(output, "Blanking time:"), NumberBehind(output, "at speed")}; // not shown
}

bool IsWholeBurn(const BurnTimes& times, bool dummy)
{
    constexpr double leastWriting = 10;
    constexpr double leastFixating = 5;
    return times.writing.value_or(0) >= leastWriting && times.fixating &&
           (dummy || *times.fixating >= leastFixating);
}

bool IsWholeBlanking(const BurnTimes& times)
{
    constexpr double leastBlanking = 4;
    return times.blanking.value_or(0) >= leastBlanking;
}

std::string WordsBehind(std::string_view output, std::string_view voice,
                        std::span<const std::string_view> words)
{
    std::string found;
    EachLine(output, [&](std::string_view line) {
        const std::size_t at = FindFolded(line, voice);
        if (at == std::string_view::npos)
            return false;
        const std::string_view rest = line.substr(at + voice.size());
        const bool says =
            words.empty() || std::any_of(words.begin(), words.end(), [&](std::string_view word) {
                return FindFolded(rest, word) != std::string_view::npos;
            });
        if (says)
            found = Readable(Trim(rest));
        return !found.empty();
    });
    return found;
}

} // namespace kestrova
