#pragma once

#include "session/session.h"

namespace kestrova
{

/// Brings a file of the vault back to where it stood, unless a program runs there and the person
/// says no; says where it is, or why it is not.
bool BringOriginalBackTold(Session& session, const std::string& id);

} // namespace kestrova
