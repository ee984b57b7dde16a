#pragma once

#include "app/doctor.h"

namespace kestrova
{

/// What the doctor says of the notes on the levels; nothing while all of them are understood.
void LibraryFindings(const Folders& folders, const Archive& archive,
                     std::vector<Finding>& findings);

} // namespace kestrova
