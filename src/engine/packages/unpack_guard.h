#pragma once

#include "formats/tool_listing.h"
#include "session/machine.h"

#include <chrono>

namespace kestrova
{

/// What a package may become before it counts as one that was made to do harm.
struct UnpackLimits {
    std::uint64_t mostFiles = 20'000; ///< folders count too
    /// It may become so big whatever its own size is; beyond that so many times its own size.
    std::uint64_t alwaysAllowed = std::uint64_t{256} << 20;
    std::uint64_t mostTimes = 100;
    /// What must stay free on the disk, or a quarter of what was free when that is less.
    std::uint64_t keepFree = std::uint64_t{64} << 20;
    /// Of the names, in bytes. What the longest one leads to can still be opened and removed by its
    /// path, wherever the folder lies that it is unpacked into.
    std::size_t longestName = 255;
    std::size_t longestPath = 1'000;
    std::size_t deepest = 32; ///< parts of a path, the file's own name among them
};

/// How much there is below a folder.
struct Amount {
    std::uint64_t entries = 0; ///< files and folders
    std::uint64_t bytes = 0;   ///< a folder takes a block of the disk
    std::size_t depth = 0;
};

/// Watches over a folder while a package, and the packages inside it, are unpacked into it: by what
/// their lists promise, by what the folder holds, and by the room that is left. One guard serves
/// all packages that came out of one: what they become counts together. Words mean stop; they name
/// the package, say why, and what is untouched.
class UnpackGuard
{
public:
    /// `package` is the one that the player gave; what lies in `folder` already does not count.
    UnpackGuard(Machine& machine, const Path& package, const Path& folder,
                const UnpackLimits& limits = {});

    /// Before anything is unpacked.
    [[nodiscard]] std::string Refuses(const std::vector<PackageEntry>& entries) const;
    /// To be asked every now and then while a tool unpacks. Costs next to nothing most of the time.
    std::string Watch();
    /// The same without sparing the work.
    std::string Look();
    /// What it said last was that the disk has no room.
    [[nodiscard]] bool LacksRoom() const { return lacksRoom_; }
    /// The most that a look found above what lay there before.
    [[nodiscard]] const Amount& Came() const { return came_; }

private:
    [[nodiscard]] std::string TooBig(std::uint64_t bytes) const;
    [[nodiscard]] std::string NoRoom(std::uint64_t needed) const;
    [[nodiscard]] std::string BadName(const std::vector<PackageEntry>& entries) const;
    [[nodiscard]] std::string PackageName() const { return TextOf(package_.filename()); }

    Machine& machine_;
    Path package_;
    Path folder_;
    UnpackLimits limits_;
    std::uint64_t mostBytes_;
    std::uint64_t keepFree_ = 0;
    Amount before_;
    Amount came_;
    mutable bool lacksRoom_ = false;
    std::chrono::steady_clock::time_point nextLook_{};
};

} // namespace kestrova
