#pragma once

#include <string>
#include <string_view>

/// What a program wrote, fit to be shown.
namespace kestrova
{

/// A line of a tool as a label can show it.
std::string ShownLine(std::string_view line);
/// The last lines of what a program wrote, fit to be shown: readable, without control characters,
/// a few lines of bounded length.
std::string LastLines(std::string_view written);

} // namespace kestrova
