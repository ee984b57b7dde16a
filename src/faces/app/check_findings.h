#pragma once

#include "app/doctor.h"

namespace kestrova
{

/// What the doctor says of the last checks of levels; nothing while they found all whole.
void CheckFindings(const Folders& folders, const Archive& archive, std::vector<Finding>& findings);

} // namespace kestrova
