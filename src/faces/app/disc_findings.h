#pragma once

#include "app/doctor.h"

namespace kestrova
{

/// What the doctor says of drives for discs: of those of the settings, whether their disc is there
/// and can be shown, and what shows discs here; of the machine's, what lies in them.
void DiscDriveFindings(Session& session, std::vector<Finding>& findings);

} // namespace kestrova
