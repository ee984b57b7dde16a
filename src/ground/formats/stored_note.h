#pragma once

#include "core/result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The note of what a level's `files` held when they were stored, `undo/stored.json` of the level's
/// folder: by it a file that is damaged, changed or gone is told, and one that is offered in its
/// place is proved. JSON, a file a line; names are kept exactly (bytes that are no UTF-8, and the
/// per cent sign, as %XX).
///
///     {"version":1,"whole":true,"changing":false,"files":[
///     {"name":"dawn.tr4.zl","size":4711,"time":1700000000000000000,"hash":"HASH",
///      "from":{"name":"dawn.tr4","size":90000,"hash":"HASH"}},
///     {…}
///     ]}
///
/// `from` tells of what the stored form was made, where it is another form. Members that are not
/// known are passed over, and so is an entry that says nothing sound: its file is not noted then.
namespace kestrova
{

namespace OnDisk
{
inline constexpr std::string_view FragStoredNote = "\\stored.json";
} // namespace OnDisk

/// A file as it came, before it took its stored form.
struct StoredOrigin {
    std::string name;
    std::uint64_t size = 0;
    std::string hash; ///< XXH3 of the content, as `platform::HashOf` gives it
    friend bool operator==(const StoredOrigin&, const StoredOrigin&) = default;
};

struct StoredEntry {
    std::string name; ///< in `files`, exact
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    std::string hash;
    std::optional<StoredOrigin> from; ///< no value: the file is stored as it came
    friend bool operator==(const StoredEntry&, const StoredEntry&) = default;
};

struct StoredNote {
    /// Every file was noted when this was first written: one that is not noted came by another
    /// hand.
    bool whole = false;
    /// An operation of this program was changing files. Those that are not as noted may be its
    /// work.
    bool changing = false;
    std::vector<StoredEntry> files; ///< each name once

    [[nodiscard]] const StoredEntry* Find(std::string_view name) const;
    friend bool operator==(const StoredNote&, const StoredNote&) = default;
};

/// No note is longer.
inline constexpr std::uint64_t longestStoredNote = UINT64_C(64) << 20;

std::string FormatStoredNote(const StoredNote& note);
/// `Damaged` for what is no such note as a whole: then nothing is noted.
Result<StoredNote> ParseStoredNote(std::string_view text);

} // namespace kestrova
