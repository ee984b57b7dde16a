#pragma once

#include "words/message.h"

// clang-format off

/// What the terminal says about packages that an author makes.
namespace kestrova::Msg
{

inline constexpr Message UsePublish{"publish FOLDER OUT.zip FIELD=TEXT… [--config-only] [--mp3]"};
inline constexpr Message SumPublish{"Packs an author's level with the kestrova.cfg by which it installs itself: the files of FOLDER and of its sub-folders, which stays as it is. The fields are those of `config write`, without duplicate; name must be among them, unless a kestrova.cfg in FOLDER says it, whose texts stand where no field says otherwise. With --config-only the package holds the configuration file alone; with --mp3 the waves become mp3 of 24 kbit/s in mono."};
inline constexpr Message KeysPublish{"an object with `file`, `size` (bytes), `name` (of the level), `files` (how many the level has)."};
inline constexpr Message WrongPublishDuplicate{"The field 'duplicate' makes no sense here: a package brings its files itself."};
inline constexpr Message NoSuchPublishFile{"The level has no file of this name, so it cannot be its documentation: ~1"};
inline constexpr Message PublishGivenUp{"The package was not made. The level's own files are untouched, and so is an older package of that name."};

} // namespace kestrova::Msg
