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
inline constexpr std::size_t mostUpdateServers = 3;
/// The servers as a setting holds them: up to three addresses parted by blanks.
UpdateServers ServersFrom(std::string_view setting);

/// Whether somebody who gave up adding a level, or has no Level Editor, wants to see where to
/// find some. The first is asked only while `levels`, those of the archive, are no more than the
/// original configuration.
bool WantsLevelUrls(Host& host, std::size_t levels);
bool WantsEditorUrls(Host& host);

/// Opens an address of the web, or of mail, with the desktop; anything else is refused in words.
bool OpenUrl(Host& host, Machine& machine, const Folders& folders, const std::string& url);

/// Fetches the list from the first server that gives one, puts the person's own records in front of
/// it, and tells its notices. True when `list` is another one now; nothing is saved. All failures
/// are told and leave it as it was, and so does a Stop.
bool UpdateUrls(Host& host, Machine& machine, const Folders& folders, const UpdateServers& servers,
                UrlList& list);

} // namespace kestrova
