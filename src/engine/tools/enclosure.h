#pragma once

#include "platform/child_process.h"
#include "tools/tools.h"

/// Where somebody else's program runs so that it reaches as little as it can: `bwrap` gives it a
/// disk that it can only read, without anybody's home, without the network, and with processes of
/// its own, all of which end with it.
namespace kestrova
{

/// What of the disk is there for the program beside the system's own files.
struct Enclosure {
    std::vector<Path> writable; ///< with all below them, but for what links in them lead to
    std::vector<Path> readable{};
    std::vector<Path> guarded{}; ///< in one that is writable, and not to be written
};

/// The program that encloses others, when it works here; empty when there is none, or when the
/// system forbids it. It is tried anew each time, which takes some milliseconds.
Path EncloserOf(const Tools& tools);

/// The same launch, enclosed. Its folder must be one of those that are there. It ends when the
/// program and what that started have ended, which is waited for as long as `left`; helpers of Wine
/// are asked to end, and write down what they hold.
platform::Launch Enclosed(const Path& encloser, const Tools& tools, const platform::Launch& launch,
                          const Enclosure& enclosure, std::chrono::milliseconds left);
/// The variable by which all that runs for this program's folder is known, and its value: what a
/// kill leaves of it is ended later (`EndForgottenRuns`).
std::pair<std::string, std::string> OwnerMark(const Tools& tools);

/// How the program inside ended, by how its enclosure did.
platform::ChildEnd EndInside(platform::ChildEnd end);

} // namespace kestrova
