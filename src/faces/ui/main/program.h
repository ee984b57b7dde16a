#pragma once

namespace kestrova
{

/// The program with windows, from its first argument to its exit code.
int RunWindows(int argc, char** argv);

} // namespace kestrova
