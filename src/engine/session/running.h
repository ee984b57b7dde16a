#pragma once

#include <cstdint>

namespace kestrova
{

/// What runs now.
struct Running {
    int operations = 0; ///< one in the other; above 0 timers and notices return at once, commands
                        ///< are refused
    /// The person goes on though a program runs in the Level Editor's folder; asked once for all of
    /// the operations.
    bool agreedToProgramsInTrle = false;
    std::int64_t game = 0; ///< process id of the game started last; 0 when none was
    bool hotKeys = false;  ///< they work, from the first game that was started
};

} // namespace kestrova
