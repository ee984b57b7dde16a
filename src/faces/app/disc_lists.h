#pragma once

#include "app/command.h"

namespace kestrova
{

/// Words about options of these two that make no sense; empty when they do.
std::string WrongListOptions(const Run& run);

/// `discs list IMAGE`: what lies on an image.
bool ListDisc(Run& run);
/// `discs blank DRIVE all|fast`.
bool BlankInDrive(Run& run);

} // namespace kestrova
