#pragma once

#include <functional>

/// Windows that playing and installing from discs ask for.
namespace kestrova
{

class InsertCd;
class SetupCd;

/// Each shows a state without windows until the person leaves it; True when it was accepted. One
/// that is empty cannot be shown, as in the terminal: words take its place.
struct DiscWindows {
    std::function<bool(InsertCd& question)> insert{};
    std::function<bool(SetupCd& setup)> setup{};
};

} // namespace kestrova
