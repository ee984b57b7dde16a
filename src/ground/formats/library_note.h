#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the library notes of a level beside its record: when it came and was played, and what its
/// player thinks of it.
namespace kestrova
{

enum class LevelStatus {
    New,     ///< nothing was said and it was never played
    Playing, ///< said, or played while nothing was said
    Finished,
    GivenUp,
};

struct LevelNote {
    std::optional<std::int64_t> added;      ///< seconds since 1970, UTC; no value: before it was noted
    std::optional<std::int64_t> lastPlayed; ///< the same; no value: never seen
    std::int64_t secondsPlayed = 0;
    LevelStatus status = LevelStatus::New;
    int stars = 0;                 ///< 1 to 5; 0: none given
    std::vector<std::string> tags; ///< in the order of their names, each once without regard to case
    std::string ownNote;
    std::string cover; ///< file name of the chosen screen-shot; empty: the first one

    friend bool operator==(const LevelNote&, const LevelNote&) = default;
};

} // namespace kestrova
