#include "online/download_words.h"

#include "core/files.h"
#include "core/size_words.h"
#include "core/text.h"
#include "words/online.h"

#include <algorithm>
#include <cmath>

namespace kestrova
{

std::int64_t SecondsLeft(const DownloadState& state)
{
    constexpr double longest = 1e9; // seconds; a line so slow is no better for being told exactly
    const std::uint64_t came = state.received - std::min(state.before, state.received);
    if (came == 0 || state.total <= state.received)
        return 0;
    const std::int64_t seconds = state.elapsedMs / 1000;
    const double estimated =
        std::floor(static_cast<double>(seconds) * static_cast<double>(state.total - state.before) /
                   static_cast<double>(came));
    return static_cast<std::int64_t>(std::min(estimated, longest)) - seconds;
}

std::string MinutesText(std::int64_t seconds)
{
    const std::int64_t shown = std::max<std::int64_t>(seconds, 0);
    return ZeroPadded(shown / 60, 2) + GetMsg(Msg::DownloadMinutes) + ZeroPadded(shown % 60, 2) +
           GetMsg(Msg::DownloadSeconds);
}

std::string DownloadLabel(const std::string& fileName, const DownloadState& state)
{
    const std::string received = FormatSize(static_cast<double>(state.received));
    if (state.total == 0)
        return GetMsg(Msg::DownloadedSize) + received;
    std::string label =
        GetMsg(Msg::DownloadOf) + fileName +
        GetMsg(Msg::DownloadSizes, {received, FormatSize(static_cast<double>(state.total))});
    if (state.received > state.before) // or there is nothing to estimate by
        label += GetMsg(Msg::DownloadTimes, {MinutesText(SecondsLeft(state))}) +
                 MinutesText(state.elapsedMs / 1000);
    return label;
}

} // namespace kestrova
