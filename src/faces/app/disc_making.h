#pragma once

#include "app/command.h"

/// The discs of an archive as the terminal makes and verifies them.
namespace kestrova
{

/// What is wrong with the words of `discs create`; empty when nothing is.
std::string WrongDiscMaking(Run& run);

bool PlanDiscs(Run& run);
bool MakeDiscSet(Run& run);
bool VerifyDiscSet(Run& run);

} // namespace kestrova
