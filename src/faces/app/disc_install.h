#pragma once

#include "app/command.h"

namespace kestrova
{

/// `discs install`: an archive whose file lies on a disc, or on an image, comes to the hard disk
/// and is loaded.
bool InstallFromWords(Run& run);
/// What is wrong with its options; empty when nothing is.
std::string WrongInstallOptions(const Run& run);
/// `discs image`: where an image of a disc of the loaded archive lies.
bool TakeImageFromWords(Run& run);

} // namespace kestrova
