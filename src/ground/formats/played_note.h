#pragma once

#include "core/names.h"
#include "formats/archive_file.h"

#include <vector>

/// The note of the game that runs, `swap/played` of the program's folder, brought up to date while
/// it runs, so that a killed program loses a minute at most; and of games that ended while their
/// level's archive was not loaded. JSON; names are kept exactly (bytes that are no UTF-8, and the
/// per cent sign, as %XX).
///
///     {"games": [{"code": 7, "home": "/…/LEVEL_0007", "token": "HASH", "pid": 4711,
///                 "boot": "ID", "steady": 1234, "seconds": 5400, "before": 60}, …]}
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view FragPlayed = "\\swap\\played";
} // namespace OnDisk

struct PlayedGame {
    LevelCode code = 0;
    std::string home;          ///< the level's own folder, exact
    std::string token;         ///< of that folder; empty: it has none
    std::int64_t pid = 0;      ///< of the game; 0: it has ended
    std::string boot;          ///< the machine's start in which it runs
    std::int64_t steadyNs = 0; ///< the steady clock of that start when `seconds` was written
    std::int64_t seconds = 0;  ///< played, and not yet noted of the level
    std::int64_t before = 0;   ///< what was noted of the level when the game began
    friend bool operator==(const PlayedGame&, const PlayedGame&) = default;
};

struct PlayedNote {
    std::vector<PlayedGame> games; ///< at most one of them runs, the last
    friend bool operator==(const PlayedNote&, const PlayedNote&) = default;
};

inline constexpr std::size_t mostPlayedGames = 100;
inline constexpr std::int64_t mostSecondsOfGame = 7 * 24 * 3600;
inline constexpr std::uint64_t longestPlayedNote = UINT64_C(1) << 20;

std::string FormatPlayedNote(const PlayedNote& note);
/// `Damaged` for anything that this program did not write.
Result<PlayedNote> ParsePlayedNote(std::string_view text);

} // namespace kestrova
