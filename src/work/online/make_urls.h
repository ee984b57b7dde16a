#pragma once

#include "core/result.h"
#include "formats/url_json.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"
#include "tools/tools.h"

namespace kestrova
{

/// The list that a text in JSON tells of. `base`: the folder that its files count from. Of an entry
/// for a level the sizes of the files are measured, and its name comes out of the configuration
/// package unless the text says it. A failure's subject names the record.
Result<UrlList> MakeUrls(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                         std::string_view json, const Path& base);

} // namespace kestrova
