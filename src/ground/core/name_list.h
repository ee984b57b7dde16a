#pragma once

#include <string>
#include <vector>

namespace kestrova
{

/// The names as a message can show them, however many and long they are: the first ones, parted by
/// commas, and how many more there are. What stands there several times is named once.
std::string ShownNames(const std::vector<std::string>& names);
/// Lines below each other, the first twenty of them, and how many more there are.
std::string ShownLines(const std::vector<std::string>& lines);

} // namespace kestrova
