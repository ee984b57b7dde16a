#pragma once

#include "app/command.h"

namespace kestrova
{

/// All commands, one line each.
std::string HelpText();
/// Of a command's word; of one verb of it where that has words of its own.
std::string HelpFor(std::string_view word, std::string_view verb);
/// The manual page of the terminal, as it stands in the documents.
std::string HelpAsMarkdown();
/// Of that page what is told of all commands and of each one.
std::string HelpOfCommands();

} // namespace kestrova
