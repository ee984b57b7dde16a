#pragma once

#include "app/command.h"

namespace kestrova
{

std::span<const CommandRow> PublishCommands();

} // namespace kestrova
