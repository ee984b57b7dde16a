#pragma once

#include "formats/archive_file.h"

/// The note of an archive's discs, `discs.json` beside its levels: what was put on each disc, file
/// by file, and what of it was read back and found equal. A level's files may leave the hard disk
/// only by what stands here. JSON; names are kept exactly (bytes that are no UTF-8, and the per
/// cent sign, as %XX).
///
///     {"version": 1, "folder": "MyLevels", "discs": [
///       {"number": 1, "label": "Kestrova #1", "capacity": 681574400, "image": "/isos/….iso",
///        "made": 1700000000, "levels": [
///          {"code": 7, "verified": true, "files": [["data/level1.tr4", 4711, "HASH"], …]}, …]},
///          …]}
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view FragDiscNote = "\\discs.json";
} // namespace OnDisk

/// A file of a level's `files` folder, as it was when it was put on a disc.
struct NotedFile {
    std::string name; ///< below `files`, exact, parts joined by `/`
    std::uint64_t size = 0;
    std::string hash; ///< XXH3 of the content, as `platform::HashOf` gives it
    bool operator==(const NotedFile&) const = default;
};

struct NotedLevel {
    LevelCode code = 0;
    /// Every file was read back from the disc, or from its image, and had the content noted here.
    bool verified = false;
    std::vector<NotedFile> files; ///< all of them, by name
    bool operator==(const NotedLevel&) const = default;
};

struct NotedDisc {
    std::int32_t number = 0; ///< what `CdNumber` of its levels says; 1 and above
    std::string label;
    std::uint64_t capacity = 0; ///< bytes; 0: nobody said
    std::string image;          ///< exact absolute path of its image; empty: a real disc
    std::int64_t made = 0;      ///< seconds since 1970
    std::vector<NotedLevel> levels;

    [[nodiscard]] const NotedLevel* Find(LevelCode code) const;
    bool operator==(const NotedDisc&) const = default;
};

struct DiscNote {
    /// The archive folder's name; a disc's own folder is called by it and the disc's number.
    std::string folder;
    std::vector<NotedDisc> discs; ///< by number, each of them once

    [[nodiscard]] const NotedDisc* Find(std::int32_t number) const;
    /// Takes the place of a disc with that number.
    void Put(NotedDisc disc);
    /// Discs above that number are forgotten.
    void CutAfter(std::int32_t number);
    bool operator==(const DiscNote&) const = default;
};

/// No note is longer.
inline constexpr std::uint64_t longestDiscNote = UINT64_C(512) << 20;

std::string FormatDiscNote(const DiscNote& note);
/// Members that it does not know are passed over. `Damaged` for anything else that this program
/// did not write: a file name that leads out of a level's folder, a number that stands twice.
Result<DiscNote> ParseDiscNote(std::string_view text);

} // namespace kestrova
