#pragma once

#include "core/result.h"
#include "formats/url_list.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"
#include "tools/tools.h"

#include <string>
#include <vector>

/// Configuration files that the list of addresses has for levels whose packages bring none.
namespace kestrova
{

/// True when the list is 30 days old and the person wants it updated now.
bool WantsDatabaseUpdate(Host& host, Machine& machine, const Folders& folders);

/// A configuration file that a list has for a level.
struct OnlineConfig {
    std::string level;
    std::string url;
};
/// What the list has for the level in `working`, in its order: all files that an entry names are
/// there with exactly their sizes. The folder is looked at only for a list that has entries.
Result<std::vector<OnlineConfig>> ConfigsFor(const UrlList& list, const Path& working);

enum class MayFetchConfig {
    Asked,   ///< by nobody but the person
    Granted, ///< said beforehand: the first that fits is taken
};
/// Offers what the list has for the level in `working`, fetches what the person takes, and puts it
/// there. True when the level has a configuration file now. Failures are told; without a list
/// nothing is.
bool FindOnlineConfig(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                      const Path& working, MayFetchConfig may = MayFetchConfig::Asked);

} // namespace kestrova
