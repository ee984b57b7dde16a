#pragma once

#include "core/name_set.h"
#include "swap/placements.h"
#include "swap/state_out.h"

#include <set>

namespace kestrova
{

/// What stands in the Level Editor's folder leaves it: behind the player's own files those that the
/// level brought, in whose place the originals come back.
class FilesOut : protected StateOut
{
public:
    /// `to` is the level that will come; -1 when none does.
    FilesOut(const SwapParts& parts, ActivityLog& log, LevelCode to);

    /// Takes out what stands in the folder. `previous` is the answer for callers that know only
    /// codes. False when the player's files could not be kept: then nothing has changed.
    bool TakeOut(LevelCode& previous);
    /// True when the removal left files behind, or originals are not back.
    [[nodiscard]] bool LeavesAnything() const;
    /// True when a marker stood there that named no level, and no record knew better.
    [[nodiscard]] bool MarkerSaidNothing() const { return markerSaidNothing_; }
    /// True once a journal was written that is still there.
    [[nodiscard]] bool HasBegun() const { return begun_; }

protected:
    /// Keeps files of the folder that are safe nowhere else; the failed ones are told and spared.
    void Keep(const std::vector<Path>& relatives);
    [[nodiscard]] bool IsSpared(const Path& relative) const;

    std::vector<OwnedFile> leftAdded_; ///< what a removal left behind
    std::vector<std::string> leftOverwritten_;
    std::vector<std::string> kept_; ///< told at the end

private:
    /// True when the level that is to come stands there already, with its own state.
    [[nodiscard]] bool Stands(LevelCode marked) const;
    [[nodiscard]] LevelPlace StandingPlace(LevelCode marked) const;
    bool TakeOutOriginal(LevelCode& previous);
    /// True when the state in the folder is a level's whose own folder is not there just now.
    [[nodiscard]] Result<bool> StateIsHomeless() const;
    /// False when a file that the level brought is still there.
    bool DeleteAdded(const LevelPlace& level, const Belongings& belongings);
    void RestoreOverwritten(const std::vector<std::string>& names);

    bool markerSaidNothing_ = false;
    std::set<Path> safeLeft_; ///< could not be deleted, as they are spelled
    NameSet spared_;          ///< could not be kept, so they stay
};

} // namespace kestrova
