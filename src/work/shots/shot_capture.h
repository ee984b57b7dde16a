#pragma once

#include "archive/archive_parts.h"
#include "pictures/picture.h"

/// Screen-shots of the game, taken from the clipboard.
namespace kestrova
{

struct CapturedShot {
    Picture picture;
    std::size_t level = 0; ///< its index
    Path folder;           ///< where the level's screen-shots lie
};

/// Writes a captured picture as a jpeg and counts it.
Status SaveCapturedShot(const ArchiveParts& parts, const CapturedShot& shot, const Path& jpeg);

/// Asks for a place and saves there; a failure is told. False when the person cancelled, so that
/// the picture waits for another decision.
bool AskSaveCapturedShot(const ArchiveParts& parts, const CapturedShot& shot);

/// Gives the screen back to the game, which waits behind the prompt, when its window is there.
void BringGameBack(Machine& machine);

} // namespace kestrova
