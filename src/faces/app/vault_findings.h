#pragma once

#include "app/doctor.h"

namespace kestrova
{

/// How much of the Level Editor's folder is kept for good, and who sees to it.
void VaultFindings(const Folders& folders, std::vector<Finding>& findings);

} // namespace kestrova
