#pragma once

#include "formats/library_note.h"

/// What a player said of a level in one go, as a change notes it that can be undone.
namespace kestrova
{

/// What has no value was not said.
struct SaidMarks {
    std::optional<LevelStatus> status;
    std::optional<int> stars;
    std::optional<std::vector<std::string>> tags;
    std::optional<std::string> ownNote;
    std::optional<std::string> cover;
    friend bool operator==(const SaidMarks&, const SaidMarks&) = default;
};

struct MarkedLevel {
    LevelCode code = 0;
    std::string token; ///< of the level's folder: another level of this number has another
    SaidMarks before;
    SaidMarks after; ///< tells of the same things as `before`
};

/// What is different in two notes of a level, of what its player says; without a token.
MarkedLevel MarkedBetween(LevelCode code, const LevelNote& before, const LevelNote& after);
/// True when the note says all of it.
bool Says(const LevelNote& note, const SaidMarks& marks);
/// The note says it from now on.
void PutMarks(LevelNote& note, const SaidMarks& marks);
/// The one thing that is said: `status`, `stars`, `tags`, `note` or `cover`; empty for several.
std::string_view OnlyMarkOf(const SaidMarks& marks);

} // namespace kestrova
