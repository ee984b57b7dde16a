#pragma once

#include "core/result.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Names of files as text, and the one way from a text with backslashes to a path.
namespace kestrova
{

using Path = std::filesystem::path;

/// The part behind the last backslash, slash or colon; the whole text when there is none.
std::string FileNameOf(std::string_view path);
/// From the last dot to the end, with the dot; empty when there is none.
std::string ExtensionOf(std::string_view name);
/// The part before the last dot; the whole text when there is none.
std::string StripExtension(std::string_view name);
/// `StripExtension` of `FileNameOf`.
std::string BaseNameOf(std::string_view path);
bool HasWildcard(std::string_view name);
/// Each of / \ < > : ? | and the double quote replaced by one blank; an asterisk stays.
std::string ReplaceForbiddenChars(std::string_view name);
/// A name from outside as the text files that list names can hold it: readable, `|` and control
/// characters replaced by `_`.
std::string ListableName(std::string_view name);

/// `*.*` is every name, `x.*` matches `x` too, `*.htm` does not match `.html`; `*` and `?` as
/// usual, case ignored.
bool MatchesPattern(std::string_view name, std::string_view pattern);

/// A relative name with backslashes (`\data\level1.tr4`) as a path below some folder. Refused:
/// an empty name, `.` and `..`, a drive letter or any colon, a second leading backslash, an empty
/// part, control characters. This is the only way from a name out of a file to a path.
Result<Path> SafeRelative(std::string_view name);
/// The same for a name without any folder.
Result<Path> SafeName(std::string_view name);
/// The way back: `data/level1.tr4` gives `\data\level1.tr4`.
std::string ToBackslashes(const Path& relative);

/// A folder and a fragment of a path (`\screenshots`), or a fragment's ending.
Path InFolder(const Path& folder, std::string_view fragment);

/// What a person reads for a path, and what the fixed fields of a record hold.
std::string TextOf(const Path& path);
/// A folder as it is held: absolute or as given, without a trailing separator.
Path FolderFromText(std::string_view text);

} // namespace kestrova
