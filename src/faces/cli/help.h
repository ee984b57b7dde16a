#pragma once

#include "app/command.h"

namespace kestrova
{

/// All commands, one line each.
std::string HelpText();
std::string HelpFor(const CommandRow& row);
/// The manual page of the terminal, as it stands in the documents.
std::string HelpAsMarkdown();
/// Of that page what is told of all commands and of each one.
std::string HelpOfCommands();

} // namespace kestrova
