#pragma once

#include "intake/package_sources.h"
#include "packages/unzip.h"

#include <deque>

namespace kestrova
{

class WorkFolder;

/// Packages that workers unpack while the levels before them are still being taken in: as many at
/// once as there are cores. What nobody takes goes at the end.
class UnpackedAhead
{
public:
    /// What came out of a package, in a folder of its own.
    struct Unpacked {
        std::shared_ptr<WorkFolder> place;
        UnpackReport report;
        Amount came;
    };

    UnpackedAhead(Machine& machine, Folders folders, Tools tools);
    ~UnpackedAhead();
    UnpackedAhead(const UnpackedAhead&) = delete;
    UnpackedAhead& operator=(const UnpackedAhead&) = delete;

    /// True when the package is under way now, or was before. False when it is none, or when every
    /// core has one already.
    bool Begin(const Path& package, const SourceOptions& options);
    /// The package, waited for. Nothing when it was not begun, was written to since, failed, or
    /// when the person stopped it: it is to be unpacked in the ordinary way then, which tells why.
    std::optional<Unpacked> Take(const Path& package, ProgressScope& progress);
    /// Nobody wants it any more.
    void Drop(const Path& package);
    /// The same of all of them. False when there was none.
    bool DropAll();

private:
    class Job;

    Machine& machine_;
    Folders folders_;
    Tools tools_;
    std::deque<std::unique_ptr<Job>> jobs_;
};

} // namespace kestrova
