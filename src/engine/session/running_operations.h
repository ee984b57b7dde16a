#pragma once

namespace kestrova
{

/// The operations that run now, one inside the other.
struct RunningOperations {
    int count = 0; ///< above 0: timers and notices return at once, commands are refused
    /// The person goes on though a program runs in the Level Editor's folder; asked once for all of
    /// them.
    bool agreedToProgramsInTrle = false;

    operator int() const { return count; }
};

} // namespace kestrova
