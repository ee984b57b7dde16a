#pragma once

#include "originals/loan_return.h"
#include "originals/standing_tree.h"
#include "session/host.h"

#include <set>

namespace kestrova
{

/// The Level Editor's folder, handed over whole to a program of which nobody knows what it does
/// there. What stands there and the backup lacks is copied to the program's folder first, and all
/// that stands there is noted, both flushed; so the folder comes back as it was from a failure, a
/// kill and a power cut (`RecoverInterruptedWork`). It is a loan like those of `FolderLoan`, of
/// which there is one at a time. One that was not given back is at the end of this object's life.
class FolderHandover
{
public:
    FolderHandover(Machine& machine, Folders folders)
        : machine_(machine), folders_(std::move(folders))
    {
    }
    ~FolderHandover();
    FolderHandover(const FolderHandover&) = delete;
    FolderHandover& operator=(const FolderHandover&) = delete;

    /// A failure, and a Stop, leave the folder untouched. `Refused`, in words, while another loan
    /// waits, or when there is no room for the copies.
    Status Begin(ProgressScope& progress);
    [[nodiscard]] bool IsOpen() const { return open_; }
    /// What stood there at first.
    [[nodiscard]] const StandingTree& Before() const { return *note_.whole; }
    /// What stands there now, links of the program's own passed over.
    [[nodiscard]] Result<StandingTree> Now(const Heartbeat& heartbeat = {}) const;

    /// The folder as it was, but for new files of these names, which stay.
    Status GiveBack(const std::set<Path>& stays = {});

private:
    Status Keep(ProgressScope& progress);

    Machine& machine_;
    Folders folders_;
    LoanNote note_;
    bool open_ = false;
};

} // namespace kestrova
