#pragma once

#include "formats/archive_file.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the library notes of a level beside its record: when it came and was played, and what its
/// player thinks of it. All of it stands in `library.json` beside the levels; an entry a line:
///
///     {"version":1,"levels":[
///     {"code":12,"token":"HASH","name":"The Temple","added":1700000000,"lastPlayed":1700086400,
///      "secondsPlayed":5400,"status":"playing","stars":4,"tags":["jungle"],"note":"…",
///      "cover":"shot3.jpg"},
///     {…}
///     ]}
///
/// Numbers of removed levels are used again, so an entry belongs to the level whose folder bears
/// its token (`archive/level_token.h`), and several may have one code. What says nothing is left
/// out. Members that this program does not know, and values that it does not understand, are kept
/// and written again.
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view FragLibrary = "\\library.json";
} // namespace OnDisk

enum class LevelStatus {
    New,     ///< nothing was said and it was never played
    Playing, ///< said, or played while nothing was said
    Finished,
    GivenUp,
};

struct LevelNote {
    std::optional<std::int64_t> added; ///< seconds since 1970, UTC; no value: before it was noted
    std::optional<std::int64_t> lastPlayed; ///< the same; no value: never seen
    std::int64_t secondsPlayed = 0;
    LevelStatus status = LevelStatus::New;
    int stars = 0; ///< 1 to 5; 0: none given
    std::vector<std::string>
        tags; ///< in the order of their names, each once without regard to case
    std::string ownNote;
    std::string cover; ///< file name of the chosen screen-shot; empty: the first one

    friend bool operator==(const LevelNote&, const LevelNote&) = default;
};

inline constexpr int mostStars = 5;
inline constexpr std::size_t mostTags = 50;
inline constexpr std::size_t longestTag = 100; ///< bytes
inline constexpr std::size_t longestOwnNote = 20'000;

/// What a level is, as files and the terminal say it: `new`, `playing`, `finished`, `given-up`.
std::string_view WordOf(LevelStatus status);
std::optional<LevelStatus> StatusFromWord(std::string_view word);

/// The note within its bounds: tags and texts as they are written, and read again.
void MakeTidy(LevelNote& note);
/// True for two tags that differ in case alone.
bool IsSameTag(std::string_view a, std::string_view b);

struct LibraryEntry {
    LevelCode code = 0;
    std::string token; ///< of the level's folder; empty: it has none yet
    std::string name;  ///< of the level when this was written
    LevelNote note;
    std::string others; ///< members that are not understood, as a JSON object; empty: none
    friend bool operator==(const LibraryEntry&, const LibraryEntry&) = default;
};

struct LibraryFile {
    std::vector<LibraryEntry> levels;
    std::vector<std::string> damaged; ///< what is no entry, as JSON; it is written again
    std::string others;               ///< members beside the list
    friend bool operator==(const LibraryFile&, const LibraryFile&) = default;
};

/// No file is longer.
inline constexpr std::uint64_t longestLibrary = UINT64_C(64) << 20;

std::string FormatLibrary(const LibraryFile& library);
/// `Damaged` for what is no such file as a whole: then nothing of it is known.
Result<LibraryFile> ParseLibrary(std::string_view text);

} // namespace kestrova
