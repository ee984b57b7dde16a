#pragma once

#include "words/message.h"

// clang-format off

/// What the terminal says about a level's configuration file.
namespace kestrova::Msg
{

inline constexpr Message UseConfig{"config show FILE.cfg | config write FOLDER [FIELD=TEXT…] | config find FOLDER"};
inline constexpr Message SumConfig{"Shows a level's configuration file, writes one with the given fields and the files of a folder, or names what the list of addresses has for the level in a folder. Fields: name, note, author, author-note, email, site, more-info, import-notes, exe-format; of several parts, parted by |: extern-wave=CD|SOURCE|TARGET|ALTERNATIVE, import-wad=CHECK|URL, duplicate=PATTERN|TARGET, tom-wads=TOM|WADS. Those of several parts, email and site may stand there more than once."};
inline constexpr Message KeysConfig{"(show) an object with the fields, lists as arrays, groups joined by `|`, and `files`, an array of objects with `name` and `size` (bytes); (find) an array of objects with `name`, `url`."};
inline constexpr Message WrongConfigWord{"'~1' is none of show, write and find."};
inline constexpr Message WrongConfigField{"'~1' is no FIELD=TEXT. The fields are: ~2."};
inline constexpr Message WrongConfigTwice{"The field '~1' stands there twice."};
inline constexpr Message WrongConfigParts{"'~1' makes no sense for ~2: it takes ~3 parts, parted by |."};
inline constexpr Message WrongConfigExe{"'~1' makes no sense for exe-format: it takes nothing or one of ~2."};
inline constexpr Message WrongConfigTooLong{"The field '~1' becomes too long: it has room for ~2 letters."};
inline constexpr Message WrongConfigLetters{"The field '~1' has letters that this kind of file cannot hold: ~2. Nothing was written. Write it with the letters of western Europe."};
inline constexpr Message ConfigNoUrlList{"There is no list of addresses yet, so nothing is known of this level: ~1. `kestrovactl urls update` fetches one, once an update server is set."};
inline constexpr Message ConfigWriteWords{"config write"};

} // namespace kestrova::Msg
