#pragma once

#include "intake/intake.h"

namespace kestrova
{

/// Unpacks the packages that lie in the draft's folder, one level deep, and drops them. What fails
/// is told and stands in the draft's report, as a Stop does.
void UnpackInside(Intake& intake);

} // namespace kestrova
