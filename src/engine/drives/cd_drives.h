#pragma once

#include "session/host.h"
#include "session/machine.h"
#include "session/settings.h"

#include <optional>

/// The drives for discs: those of this machine, and those that settings name, whose discs are
/// files.
namespace kestrova
{

using DiscMedium = platform::Medium;

struct CdDrive {
    std::string name;  ///< `sr0`, or the setting's
    std::string model; ///< maker and model; empty for a drive of the settings
    /// What a writing tool is given: the system's device, or the file that lies in a drive of the
    /// settings; empty while none does.
    Path device;
    bool emulated = false; ///< by the settings
    bool writer = false;
    Path folder; ///< where its disc is seen now; empty: nowhere
    DiscMedium medium = DiscMedium::None;
    std::string label;
    std::uint64_t total = 0; ///< bytes of the disc; 0 where that is not known
    std::uint64_t free = 0;  ///< what a blank disc takes; 0 where that is not known
    int megabytes = 0;       ///< what the settings let a disc of their drive take; 0: nothing said
    Path place{};            ///< where the settings want the disc of their drive to be seen
    Path gone{};             ///< the file that lay in a drive of the settings and is not there now
};

/// The machine's drives first, then those of the settings in their order.
std::vector<CdDrive> ListCdDrives(Machine& machine, const Path& programFolder,
                                  const ProgramSettings& settings);
/// The drive of that name, device or folder.
std::optional<CdDrive> FindCdDrive(Machine& machine, const Path& programFolder,
                                   const ProgramSettings& settings, const std::string& name);

/// The first drive that writes; `Missing`, in words, when none does. `warning` has words when
/// another one writes too.
Result<CdDrive> FindCdWriter(const std::vector<CdDrive>& drives, std::string& warning);

/// A drive has this long to become ready before somebody is asked.
inline constexpr std::int64_t readyWaitNs = INT64_C(8'000'000'000);
/// Waits until the drive's disc can be read and answers the drive as it is then; the machine is
/// asked again every three tenths of a second, and the person after eight seconds. The failures
/// are in words: a drive that is not ready, and a disc that is empty.
Result<CdDrive> WaitReady(Machine& machine, Host& host, const Path& programFolder,
                          const ProgramSettings& settings, const CdDrive& drive);

} // namespace kestrova
