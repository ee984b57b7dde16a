#pragma once

#include "archive/archive_parts.h"
#include "shots/shot_list.h"

/// What a person does with the screen-shots of the level that the list shows. Each takes the
/// picture that was chosen for it, or asks which of the two panes is meant.
namespace kestrova
{

/// Asks for a file and adds it; the pair with it is shown.
bool AddShot(const ArchiveParts& parts, ShotList& shots);
/// Copies a file into the level's folder. Where the name is taken it asks, and on No finds a new
/// one; a question that nobody answers ends it. Refuses a file that no list would show, and one
/// without a picture in it.
bool AddShotFile(const ArchiveParts& parts, ShotList& shots, const Path& source);

/// Asks first.
bool DeleteShot(const ArchiveParts& parts, ShotList& shots);

/// Asks for the new name.
bool RenameShot(const ArchiveParts& parts, ShotList& shots);
/// Refuses a name that is taken, blank, or reaches outside the folder. A name without an ending of
/// a picture gets the one that the picture has.
bool RenameShotTo(const ArchiveParts& parts, ShotList& shots, const Path& shot,
                  const std::string& wish);

/// Asks where to, and copies, the picture's ending being kept.
bool SaveShotAs(Host& host, const Folders& folders, ShotList& shots);
/// Copies a picture to a place outside the list.
bool SaveShotTo(Host& host, const Path& shot, const Path& target);

/// The picture that a resize is meant for; none, with words, when a default picture is.
std::optional<Path> ShotToResize(Host& host, ShotList& shots);
/// The same of the picture that is to stand for its level.
std::optional<Path> ShotForCover(Host& host, ShotList& shots);

} // namespace kestrova
