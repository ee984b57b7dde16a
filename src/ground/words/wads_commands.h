#pragma once

#include "words/message.h"

// clang-format off

/// Wad packages, as menus and the terminal say it.
namespace kestrova::Msg
{

inline constexpr Message MenuUndoImportWads{"Undo last import of wads"};
inline constexpr Message UndoImportOf{"Undo last import of wads (~1)"};
inline constexpr Message UseWads{"wads import PACKAGE... [--name OLD=NEW]... | wads undo"};
inline constexpr Message SumWads{"(import) Puts the files of wad packages (zips, folders, files) into the Level Editor's folder and into the backup of its originals, for good: wads, projects, textures, sounds. Tom files are compiled, new levels come into the script sources, which are compiled too. The level in play goes out first. Nothing that a package brings is started. --name gives the new level OLD the name NEW in the language file; without it, it keeps its own. What is replaced is kept, and the whole import can be undone. The report has a line for each file; a failed file or compilation gives exit code 1. (undo) Takes the newest import back as a whole, as long as nothing of it has changed since."};
inline constexpr Message KeysWads{"(import) an object with `done`, `report`, an array of lines."};
inline constexpr Message WrongWadsWord{"'~1' is neither import nor undo."};
inline constexpr Message WrongWadsCount{"import takes at least one package, undo nothing."};
inline constexpr Message WrongWadsOption{"undo takes neither --name nor --json."};
inline constexpr Message WrongWadsName{"--name takes OLD=NEW. Neither may be empty, and NEW is neither a heading such as [Strings] nor a comment, which begins with a semicolon: ~1"};
inline constexpr Message WrongWadsNameTwice{"--name gives this level more than one name: ~1"};
inline constexpr Message WadsNameUnused{"No new level is called so, and its --name was left out: ~1"};
inline constexpr Message WadsSomeFailed{"Something of the import failed; the report says what, in the lines that end with [ERROR] or say [ERROR COMPILE]. The whole import can be undone: kestrovactl wads undo"};

} // namespace kestrova::Msg
