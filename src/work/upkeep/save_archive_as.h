#pragma once

#include "session/session.h"

namespace kestrova
{

bool AskSaveArchiveAs(Session& session);

} // namespace kestrova
