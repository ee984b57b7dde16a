#pragma once

#include "intake/package_sources.h"
#include "packages/unzip.h"
#include "storage/ready_streams.h"

#include <atomic>
#include <deque>

namespace kestrova
{

class WorkFolder;

/// What workers deflate of what they have unpacked.
enum class DeflateAhead {
    Nothing,
    All,         ///< that is stored deflated
    AllButWaves, ///< those become mp3 first
};

/// Packages that workers unpack while the levels before them are still being taken in: as many at
/// once as there are cores. They deflate what came out, too, as far as some memory goes, so that no
/// core waits for the largest file of the level before. What nobody takes goes at the end.
class UnpackedAhead
{
public:
    /// What came out of a package, in a folder of its own.
    struct Unpacked {
        std::shared_ptr<WorkFolder> place;
        UnpackReport report;
        Amount came;
        ReadyStreams streams; ///< of files in it
    };

    UnpackedAhead(Machine& machine, Folders folders, Tools tools, DeflateAhead deflate);
    ~UnpackedAhead();
    UnpackedAhead(const UnpackedAhead&) = delete;
    UnpackedAhead& operator=(const UnpackedAhead&) = delete;

    /// True when the package is under way now, or was before. False when it is none, or when every
    /// core has one already.
    bool Begin(const Path& package, const SourceOptions& options);
    /// The package, waited for. Nothing when it was not begun, was written to since, failed, or
    /// when the person stopped it: it is to be unpacked in the ordinary way then, which tells why.
    std::optional<Unpacked> Take(const Path& package, ProgressScope& progress);
    /// Streams of files that came out of the package that was taken last.
    [[nodiscard]] const ReadyStreams& Streams() const { return streams_; }
    /// Nobody wants it any more.
    void Drop(const Path& package);
    /// The same of all of them. False when there was none.
    bool DropAll();

private:
    class Job;

    /// The memory of streams that nobody needs any more.
    void GiveBack(ReadyStreams& streams);

    Machine& machine_;
    Folders folders_;
    Tools tools_;
    DeflateAhead deflate_;
    std::atomic<std::int64_t> room_; ///< bytes of memory that streams may still take
    ReadyStreams streams_;
    std::deque<std::unique_ptr<Job>> jobs_;
};

} // namespace kestrova
