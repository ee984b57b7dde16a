#pragma once

#include "archive/archive_parts.h"
#include "burning/content_check.h"
#include "discs/disc_notes.h"
#include "discs/disc_plan.h"
#include "tools/tools.h"

#include <set>

/// A set of discs while it is made: what goes onto each, and what was proved of it.
namespace kestrova
{

/// What the making of discs needs of a session, which becomes it with a progress.
struct DiscParts {
    DiscParts(Session& session, ProgressScope& scope)
        : host(session.host), machine(session.machine), archive(session),
          folders(session.Folders()), tools(ToolsOf(session)), progress(scope)
    {
    }

    Host& host;
    Machine& machine;
    ArchiveParts archive;
    Folders folders;
    Tools tools;
    ProgressScope& progress;
};

class DiscSet
{
public:
    /// `plan` has its discs; the archive of `parts` is not changed. `temp`: where the files of the
    /// first disc are made.
    DiscSet(const DiscParts& parts, const DiscPlan& plan, Path temp);

    /// What the discs' folders are called, without a number, below the place where discs are seen.
    [[nodiscard]] Path MainFolderIn(const Path& place) const { return place / name_; }
    /// Reads what is known of earlier discs, and writes the archive's list as it will be and what a
    /// program that sets the discs up reads. The failure says what was not done.
    Status Prepare(const Path& mainFolder);
    /// What goes onto a disc, with its places there.
    [[nodiscard]] std::vector<BurnItem> ItemsOf(const PlannedDisc& disc) const;
    /// Notes what was found on a disc. A level is proved when every file of its folder is among
    /// `same`, and when the folder has no other. `image`: where the disc's image stays; empty: it
    /// is a real disc.
    Status Note(const PlannedDisc& disc, const Path& image, const std::vector<SameFile>& same);
    /// The note forgets a disc that is no more.
    Status Forget(const PlannedDisc& disc);
    /// A disc of that number that an earlier run made counts for each level that it was proved of,
    /// while the level's files are still what was proved.
    void TakeEarlier(const PlannedDisc& disc);

    /// Levels of the plan that nothing proves.
    [[nodiscard]] std::vector<LevelCode> Unproved() const;
    /// The archive with the levels on their discs; those of `without` stay where they are.
    [[nodiscard]] Archive Made(const Path& mainFolder, const std::vector<LevelCode>& without) const;

    /// The name of the archive's folder on the discs, without a number.
    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const DiscPlan& Plan() const { return plan_; }

private:
    /// The folder of the disc of that number, as a place on it.
    [[nodiscard]] std::string PlaceOn(std::int32_t number) const;
    Status WriteInstall();

    const DiscParts& parts_;
    const DiscPlan& plan_;
    std::string name_;
    Path temp_;
    DiscNote note_;
    DiscNote coming_;            ///< what the first disc tells of all of them
    std::set<LevelCode> proved_; ///< of this plan
};

} // namespace kestrova
