#pragma once

#include "session/session.h"

namespace kestrova
{

/// Brings a file of the vault back to where it stood, unless a program runs there and the person
/// says no; says where it is, or why it is not.
bool BringOriginalBackTold(Session& session, const std::string& id);

/// Deletes files of the vault for good, after a question that names them.
bool DeleteOriginalsTold(Session& session, const std::vector<std::string>& ids);

} // namespace kestrova
