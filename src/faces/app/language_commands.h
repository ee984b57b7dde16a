#pragma once

#include "app/command.h"

namespace kestrova
{

/// The language that levels speak: that of the person, or their own.
std::span<const CommandRow> LanguageCommands();

} // namespace kestrova
