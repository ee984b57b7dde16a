#pragma once

#include "core/files.h"
#include "core/text.h"
#include "formats/config_groups.h"
#include "session/host.h"
#include "session/machine.h"

#include <map>

/// Copies of files under other stems, as a configuration file asks for them: all of them are worked
/// out before the first one is made, and all of them are made or none.
namespace kestrova
{

struct SizedFile {
    Path place;
    std::uint64_t size = 0;
};

/// The files of a folder by their names, in the order of a listing.
class NamedFiles
{
public:
    static Result<NamedFiles> Of(const Path& folder);
    void Add(const std::string& name, SizedFile file);
    [[nodiscard]] bool Has(const std::string& name) const;
    /// Those that match, in their order. `Stopped` by the heartbeat.
    [[nodiscard]] Result<std::vector<std::pair<std::string, SizedFile>>>
    Matching(const std::string& pattern, const Heartbeat& heartbeat) const;

private:
    // By upper-cased name, as listings are sorted, and by spelling within it.
    std::map<std::pair<std::string, std::string>, SizedFile> files_;
};

struct PlannedCopy {
    SizedFile source;
    std::string name;     ///< in the level; free when the plan was made
    std::size_t wish = 0; ///< which of the wishes asks for it
};
struct CopyPlan {
    std::vector<PlannedCopy> copies;
    std::vector<std::string> refused; ///< names that no file of a level can have
};

/// Works out the wishes one after the other, each on what those before it will have made. Files
/// come out of `first`, or else of the level itself. A name that the level has is not asked for
/// again. A failure for more copies than a level needs says so.
Result<CopyPlan> PlanCopies(const std::vector<StemCopy>& wishes, NamedFiles level,
                            const NamedFiles* first, const Heartbeat& heartbeat);

/// Makes them in `folder`, whose room is looked at first. After a failure, or a Stop, none is
/// there.
Status MakeCopies(Machine& machine, const CopyPlan& plan, const Path& folder,
                  ProgressScope& progress, const std::function<void(std::size_t wish)>& begin);

} // namespace kestrova
