#pragma once

#include "core/files.h"

namespace kestrova
{

/// A place for work is free afterwards, whatever a package or a killed program left there. What
/// cannot be removed is renamed to a name beside it that no listing shows, so that it holds up
/// nothing; it is tried again with the leftovers of killed programs (`core/leftovers.h`). Only a
/// failure of that too is one.
Status ClearPlace(const Path& place, const Heartbeat& heartbeat = {});

/// A free name in `folder` for a folder to work in, one that no listing shows.
Path FreshPlaceIn(const Path& folder);

/// A folder to work in: empty at the beginning, whatever a killed program left there, and gone with
/// all that is in it at the end.
class WorkFolder
{
public:
    enum class Make {
        Now,    ///< a failure shows with the first file that is put there
        Later,  ///< by whoever needs it first
        IsMade, ///< what stands there is what is worked on
    };
    /// `alive`: called while the folder is cleared at the end; its answer counts for nothing.
    explicit WorkFolder(Path folder, Make make = Make::Later, Heartbeat alive = {});
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    [[nodiscard]] const Path& Folder() const { return folder_; }
    /// A failure when something of an earlier use stays in it.
    [[nodiscard]] const Status& IsClear() const { return clear_; }

private:
    Path folder_;
    Heartbeat alive_;
    Status clear_;
};

/// The folder with all that is in it. Links are unlinked, never entered.
Status RemoveTree(const Path& folder, const Heartbeat& heartbeat = {});

/// Gives a file that name, or, where something has it, a free one with a number, which is the
/// answer.
Result<Path> RenameToFree(const Path& file, const Path& place);
/// A file that nobody can read must not stand in the way, nor be lost: it gets a free, numbered
/// name beside its own, which is the answer.
Result<Path> RenameAside(const Path& file);

} // namespace kestrova
