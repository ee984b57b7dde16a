#pragma once

#include <string>
#include <string_view>

/// `list.txt` of a setup of the Level Editor: the files that belong to it, one a line, with the
/// folders in front and backslashes or slashes between. Lines may be empty, and end with CR, LF or
/// both.
///
///     trle\tomb4.exe
///     \audio\000.mp3
namespace kestrova
{

/// The next name of the list, which is taken off it, with blanks at its ends left out; empty at the
/// list's end. The bytes are as they stand: a name may be of any length and lead anywhere.
std::string_view NextSetupName(std::string_view& list);

/// A name as paths are compared: folded, with slashes, none in front. Empty for a name that would
/// lead out of its folder, or that no path can have.
std::string SetupKey(std::string_view name);

} // namespace kestrova
