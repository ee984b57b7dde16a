#pragma once

#include "intake/intake.h"

namespace kestrova
{

/// Unpacks the packages that lie in the draft's folder, one level deep, and drops them. What fails
/// is told and stands in the draft's report; only a Stop is answered.
Status UnpackInside(Intake& intake);

} // namespace kestrova
