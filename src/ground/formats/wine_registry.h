#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The text in which Wine keeps a part of the registry (`system.reg`, `user.reg` of a prefix):
///
///     WINE REGISTRY Version 2
///     ;; a remark
///     #arch=win64
///
///     [Software\\Maker\\Program] 1700000000     a key: its parts, and when it was changed
///     #time=1da0c5d4f0a8f00
///     @="C:\\place\\program.exe"                its value without a name
///     @=str(2):"%ProgramFiles%\\place"          the same, with variables in it
///     "Name"=dword:00000001                     values with names, and of other kinds
///     "Other"=hex:01,02,\                      a line that goes on
///       03
///
/// Within keys and texts a backslash leads `\`, `"`, `[`, `]`, the letters of C (`\n`), the number
/// of a character in octal digits, or `x` and the one to four hexadecimal digits of a UTF-16 unit.
/// Taken from what Wine 8 writes.
namespace kestrova
{

/// The value without a name of a key, whose parts are parted by single backslashes, case ignored.
/// None when the key is not there, has no such value, or one that is no text.
std::optional<std::string> DefaultValueOf(std::string_view registry, std::string_view key);

} // namespace kestrova
