#pragma once

#include "core/files.h"

namespace kestrova
{

/// What becomes of a target that was not there before.
enum class IfNew {
    StaysUnlessHeld, ///< it goes while the folder holds its content; otherwise it stays
    Goes
};

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
    /// Before a file of another folder is written from one of this folder, be it there or not.
    Status KeepTarget(const Path& target, IfNew ifNew = IfNew::StaysUnlessHeld);
    /// The folder's files are those that were kept, and the targets too.
    Status PutBack();

private:
    [[nodiscard]] Status PutFilesBack() const;
    [[nodiscard]] Status PutTargetsBack();

    Path folder_;
    Path kept_;
    bool isKept_ = false;
    struct Target {
        Path file;
        Path kept; ///< empty: the file was missing
        IfNew ifNew;
    };
    std::vector<Target> targets_;
};

} // namespace kestrova
