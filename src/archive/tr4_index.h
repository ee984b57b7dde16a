#pragma once

#include "records/tr4_inf.h"
#include "session/session.h"

namespace kestrova
{

/// Name (cut to 80 characters), date and size of each `*.tr4` of a folder.
std::vector<Tr4Entry> ScanTr4Files(const Path& folder);
Path Tr4InfPath(const Session& session, std::size_t index);
Status WriteTr4Inf(const Session& session, std::size_t index, const std::vector<Tr4Entry>& entries);
Result<std::vector<Tr4Entry>> ReadTr4Inf(const Session& session, std::size_t index);

} // namespace kestrova
