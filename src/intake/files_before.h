#pragma once

#include "core/files.h"

namespace kestrova
{

/// The files of a level as they were before it was edited, for the case that the person gives the
/// change up. Names of the same files where the file system can, copies elsewhere; they go at the
/// end of its life.
class FilesBefore
{
public:
    explicit FilesBefore(Path folder);
    ~FilesBefore();
    FilesBefore(const FilesBefore&) = delete;
    FilesBefore& operator=(const FilesBefore&) = delete;

    /// Before the folder's files change. Does its work once.
    Status Keep(const Heartbeat& heartbeat);
    /// Before a file of another folder is written as a copy of `source`, be it there or not. One
    /// that was not there goes again while it is as that copy; without a source it goes at all
    /// events.
    Status KeepTarget(const Path& target, const Path& source = {});
    /// The folder's files are those that were kept, and the targets too.
    Status PutBack();

private:
    [[nodiscard]] Status PutFilesBack();
    [[nodiscard]] Status PutTargetsBack();

    Path folder_;
    Path kept_;
    bool isKept_ = false;
    struct Target {
        Path file;
        Path kept; ///< empty: the file was missing
        Path source;
        std::uint64_t size = 0; ///< of the source, as is its time
        std::int64_t modifiedNs = 0;
    };
    std::vector<Target> targets_;
};

} // namespace kestrova
