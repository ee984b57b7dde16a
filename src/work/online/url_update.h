#pragma once

#include "formats/url_list.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"

#include <string>
#include <vector>

namespace kestrova
{

/// Addresses of the update servers' lists, best first.
using UpdateServers = std::vector<std::string>;
/// The servers as a setting holds them: up to three addresses parted by blanks.
UpdateServers ServersFrom(std::string_view setting);

/// Opens an address of the web, or of mail, with the desktop; anything else is refused in words.
bool OpenUrl(Host& host, Machine& machine, const Folders& folders, const std::string& url);

/// Fetches the list from the first server that gives one, puts the person's own records in front of
/// it, and tells its notices. True when `list` is another one now; nothing is saved. All failures
/// are told and leave it as it was, and so does a Stop.
bool UpdateUrls(Host& host, Machine& machine, const Folders& folders, const UpdateServers& servers,
                UrlList& list);

} // namespace kestrova
