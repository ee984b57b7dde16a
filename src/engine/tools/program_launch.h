#pragma once

#include "session/session.h"

namespace kestrova
{

/// How an outside program is started, in its own folder: a Windows program through Wine, with the
/// settings' command and words, anything else as it is. The failure tells what of Wine is missing.
Result<platform::Launch> LaunchOf(Session& session, const Path& program,
                                  const std::vector<std::string>& arguments = {});

} // namespace kestrova
