#pragma once

#include <cstdint>
#include <string>

/// What a download says while it runs.
namespace kestrova
{

/// How far a download is. Bytes that an earlier one brought are in `before`.
struct DownloadState {
    std::uint64_t before = 0;
    std::uint64_t received = 0; ///< of the whole file, those included
    std::uint64_t total = 0;    ///< 0: the server does not say it
    std::int64_t elapsedMs = 0;
};

/// Whole seconds that are still to come if it goes on like this; 0 while nothing has come.
std::int64_t SecondsLeft(const DownloadState& state);
/// `02' 15"`
std::string MinutesText(std::int64_t seconds);
std::string DownloadLabel(const std::string& fileName, const DownloadState& state);

} // namespace kestrova
