#pragma once

#include "app/command.h"

/// How a command's result is written: what is shown goes through these, since names and texts come
/// out of downloads, and none of them may steer the terminal or look like a line or column of its
/// own.
namespace kestrova
{

/// As a terminal may show it: lines end by LF; characters that would steer the terminal, or turn
/// the direction of what follows, are gone.
std::string ForTerminal(std::string_view text);
/// A name among others on a line.
std::string OneField(std::string_view text);
/// The exact value, on one line without an indent; what could steer a terminal is escaped.
std::string JsonText(const Json& value, int indent = -1);

void AddLine(Run& run, std::string_view line);
/// A text of several lines; those behind the first are set in.
void AddText(Run& run, const std::string& head, std::string_view text);

} // namespace kestrova
