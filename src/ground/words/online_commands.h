#pragma once

#include "words/message.h"

// clang-format off

/// Downloads and the list of addresses, as the terminal says them.
namespace kestrova::Msg
{

inline constexpr Message UseFetch{"fetch URL FILE"};
inline constexpr Message SumFetch{"Downloads a file of the web. One that was stopped is gone on with; FILE is replaced only by a whole one, and not unasked."};
inline constexpr Message UseUrls{"urls list [--kind KIND] | urls add KIND DESCRIPTION URL | urls change NUMBER DESCRIPTION URL | urls remove|open NUMBER | urls update | urls make FROM TO"};
inline constexpr Message SumUrls{"Works on the list of web addresses: shows it; adds, changes, removes or opens one of them; fetches the list of the update servers (see `set update-servers`). KIND: 1 levels, 2 the Level Editor, 3 updates of the program, 4 forums, 5 tools, 8 configuration files for levels. NUMBER is the first column of the list. `make` writes a list for a server from a text in JSON (FROM ends in .json), or such a text from a list: {\"records\": [{\"kind\": 1, \"description\": \"…\", \"url\": \"…\"}, {\"kind\": 8, \"url\": \"…\", \"package\": \"Config_Level.zip\", \"folder\": \"level\", \"files\": [\"data/level.tr4\"]}]}; of kind 8 the sizes of the files are measured, and `level` may say the name that the package has otherwise."};
inline constexpr Message KeysUrls{"(list) an array of objects with `kind`, `description`, `url`, `user` (added by you), `number`."};
inline constexpr Message WrongUrlsWord{"'~1' is none of list, add, change, remove, open, update and make."};
inline constexpr Message WrongUrlKind{"'~1' is no kind of address: 1, 2, 3, 4, 5 or 8."};
inline constexpr Message WrongUrlNumber{"'~1' is no number of the list; kestrovactl urls list shows them."};
inline constexpr Message FetchFailed{"The file was not downloaded, and nothing has been replaced: "};
inline constexpr Message FetchStopped{"The download was stopped, and nothing has been replaced."};
inline constexpr Message UrlMakeFailed{"No list was made: "};
inline constexpr Message UrlListNotReadFile{"This list of addresses could not be read: "};
inline constexpr Message TakesServers{"it takes up to three addresses of http or https, parted by blanks, or nothing (\"\")"};
inline constexpr Message TakesServer{"it takes one address of http or https, or nothing (\"\")"};

} // namespace kestrova::Msg
