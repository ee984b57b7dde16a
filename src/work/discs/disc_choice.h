#pragma once

#include "discs/disc_set.h"

/// Whether what a person chose can be made.
namespace kestrova
{

/// The capacity as it is shown.
std::string TextOfCapacity(int megabytes);
/// The names of those levels; of many, the first ones.
std::string NamesOf(const Archive& archive, const std::vector<LevelCode>& codes);

/// The checks before anything starts. False, with words, when something is missing in the choice,
/// or there is nothing to do. The setup may be added to the choice, which is asked.
bool CheckChoice(const DiscParts& parts, DiscPlan& plan);
/// The checks of the division. What does not fit is told; a level that is larger than a disc, as a
/// question.
bool MayDivideSo(const DiscParts& parts, const DiscPlan& plan);

} // namespace kestrova
