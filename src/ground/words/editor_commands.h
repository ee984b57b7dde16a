#pragma once

#include "words/message.h"

// clang-format off

/// The Level Editor's own work, as the terminal says it.
namespace kestrova::Msg
{

inline constexpr Message UseScript{"script show FILE"};
inline constexpr Message SumScript{"Shows what a source of the Level Editor's script compiler says: the levels of a script.txt, each with its file and its name, or the strings of a language file by their position, their heading first. Of a text that is longer than any name the first 500 bytes are shown; --json has all of it."};
inline constexpr Message KeysScript{"of a script, an object with `levels`, an array of objects with `tr4`, `name`; of a language file, an object with `strings`, an array."};
inline constexpr Message UseEditor{"editor find | editor setup --zip FILE…|--folder DIR [--to DIR] [--language L] | editor compare BEFORE AFTER | editor compile TOM | editor restore"};
inline constexpr Message SumEditor{"(find) Names the Level Editor's folders that are known: the one of the preferences, and those that the registries of the Wine prefixes here name for winroomedit.exe, each with what it lacks. (setup) Installs the Level Editor from the zips of its setup, which may follow each other, or from a folder, into DIR, which must hold nothing; without --to into a folder below a Wine prefix, or in your data folder. Languages: english, italian, french, german, spanish, russian. The preferences know the folder then; make its backup with setup --trle. (compare) Compares two folders file by file, by content, and names what is new in AFTER, missing there, or changed; what is equal in both is left out. A link to a folder counts as what it leads to where the other folder has a folder of its name; anywhere else it is one thing of its own, and is not gone through. Capitals and small letters in names make no difference. A file that cannot be read gives exit code 1. (compile) Has the Level Editor's own compiler make a level's .tr4 of TOM, a .tom file, with the wads of its name and the samples that lie beside it, or with those of the Level Editor's folder. The result is put beside TOM; the Level Editor's folder is as it was afterwards, and so are the sources. (restore) The same as original --full."};
inline constexpr Message KeysEditor{"(find) an array of objects with `folder`, `from` (preferences or registry), `prefix`, `lacks`, empty for a whole folder. (compare) an array of objects with `file` and `state`: new, missing, changed; unread for one that cannot be read."};
inline constexpr Message WrongEditorWord{"'~1' is neither find nor setup, compare, compile, restore."};
inline constexpr Message WrongEditorCount{"compare takes two folders, compile one .tom file, find and restore nothing."};
inline constexpr Message EditorUnread{"This file could not be read, so nobody knows whether it is equal: "};
inline constexpr Message WrongSetupSource{"setup takes either --zip with one or more files, or --folder with one."};
inline constexpr Message WrongSetupOption{"The option '~1' goes with setup alone."};
inline constexpr Message WrongSetupLanguage{"'~1' is no language of the setup. There are: english, italian, french, german, spanish, russian."};
inline constexpr Message EditorWhole{"whole"};
inline constexpr Message EditorNotFound{"No Level Editor was found: the preferences name no folder, and no registry of a Wine prefix here does. If you have one, say where it is: kestrovactl setup --trle DIR"};
inline constexpr Message ScriptTextCut{" … (the first 500 of ~1 bytes)"};
inline constexpr Message WrongScriptWord{"'~1' is not show."};

} // namespace kestrova::Msg
