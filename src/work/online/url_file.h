#pragma once

#include "core/result.h"
#include "formats/url_list.h"
#include "session/folders.h"

namespace kestrova
{

/// Where the list lies, in whatever spelling it is there.
Path UrlListPath(const Folders& folders);
/// `Missing` without a file, `Damaged` for one that is no list.
Result<UrlList> LoadUrlList(const Path& file);
/// Whole or not at all. `Refused` for a text that is too long for the list.
Status SaveUrlList(const Path& file, const UrlList& list);

} // namespace kestrova
