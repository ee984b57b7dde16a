#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What tools that make images and burn discs print. Pure: text to values.
namespace kestrova
{

struct PartDone {
    std::uint64_t done = 0;
    std::uint64_t total = 0;

    bool operator==(const PartDone&) const = default;
};

/// `  2.57% done, estimate finish Sat …` (genisoimage), `xorriso : UPDATE :  38.13% done`: whole
/// hundredths.
std::optional<PartDone> ImageProgressIn(std::string_view line);
/// `Track 01:    7 of   38 MB written (fifo 100%)` (wodim, cdrskin), `xorriso : UPDATE :   16 of
/// 39 MB written`: megabytes.
std::optional<PartDone> BurnProgressIn(std::string_view line);
/// `xorriso : UPDATE :      18 files restored ( 97645k) in 1 seconds`: bytes.
std::optional<std::uint64_t> ExtractedBytesIn(std::string_view line);
/// `Last chance to quit, starting real write in   3 seconds.`, as far as the line goes.
bool IsCountdown(std::string_view line);
/// The lines of an output, CRLF-ended, without the countdown.
std::string WithoutCountdown(std::string_view output);

/// The sectors of 2,048 bytes that an image will have, of the output to `-print-size`: the number
/// behind `Total extents … =`, or else the last line that is a number alone.
std::optional<std::uint64_t> SectorsToCome(std::string_view output);
/// Those that a tool says it has written: `14845 extents written (28 MB)`, `Written to medium :
/// 14841 sectors at LBA 0`, `Total bytes read/written: 40548352/40548352 (19799 sectors).`
std::optional<std::uint64_t> SectorsWritten(std::string_view output);

/// The times that a burning tool prints at its end, in seconds; none where it does not.
struct BurnTimes {
    std::optional<double> writing{};  ///< `Writing  time:    6.084s`, two blanks
    std::optional<double> fixating{}; ///< `Fixating time:`
    std::optional<double> blanking{}; ///< `Blanking time:`
    std::optional<double> speed{};    ///< `at speed   4.0 in`
};
BurnTimes BurnTimesIn(std::string_view output);
/// A burn took ten seconds, and its end five, which a dummy one need not.
bool IsWholeBurn(const BurnTimes& times, bool dummy);
/// A disc is not blanked in less than four seconds.
bool IsWholeBlanking(const BurnTimes& times);

/// The rest of the first line that has `voice` in it and, behind that, one of `words`; letters'
/// case ignored. Empty when there is none.
std::string WordsBehind(std::string_view output, std::string_view voice,
                        std::span<const std::string_view> words);

} // namespace kestrova
