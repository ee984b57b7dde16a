#pragma once

#include "core/names.h"

#include <string>
#include <vector>

/// The terminal program as a person runs it, in a process of its own, on a disk that may fail.
namespace kestrova::testing
{

/// What befalls one run of the program.
struct Trouble {
    enum class Kind {
        None,
        Kill,     ///< the process ends in front of its n-th changing call
        FailOnce, ///< that call fails, the next one works again
        FailOn,   ///< that call and all behind it fail
        ReadOnce  ///< the n-th look at the disk fails: a listing, an opening, a read
    };
    Kind kind = Kind::None;
    int call = 0; ///< which one, from 1
    std::errc error = std::errc::io_error;
};
std::string NameOf(const Trouble& trouble);

struct Outcome {
    bool killed = false;
    bool faulted = false; ///< the chosen call came and failed
    int exitCode = -1;    ///< -1 when the process was killed
    std::string said;     ///< both streams, in the order in which they came
    std::string call;     ///< the call that was hit

    [[nodiscard]] bool Done() const { return exitCode == 0; }
    /// The run went as on a whole disk.
    [[nodiscard]] bool Untroubled() const { return !killed && !faulted; }
};

/// Runs `kestrovactl` with these words. `scratch`: a folder for what it says.
Outcome RunProgram(const Path& scratch, const std::vector<std::string>& words,
                   const Trouble& trouble = {});

} // namespace kestrova::testing
