#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrova
{

/// The whole of the terminal program: the words behind its name, to its exit code (0 done, 1 failed
/// or refused, 2 wrong use). `version` as `--version` shows it.
int RunTerminal(const std::vector<std::string>& words, std::string_view version);

} // namespace kestrova
