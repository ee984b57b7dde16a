#pragma once

#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"

/// Levels whose adding was cut off.
namespace kestrova
{

/// Notes the folder of the level that is coming in, for the start after a run that was killed.
class IntakeNote
{
public:
    explicit IntakeNote(const Folders& folders);

    /// Without it only the offer at the next start would lack.
    void Write(const Path& levelFolder) const;
    void Drop() const;
    /// Empty when there is none.
    [[nodiscard]] Path LevelFolder() const;

private:
    Path file_;
};

/// Offers to clear the folder of a level whose adding was cut off. A folder that the person wants
/// to keep is not asked for again.
void OfferLeftIntake(Host& host, const Folders& folders, const Archive& archive);

} // namespace kestrova
