#pragma once

#include "formats/seen_note.h"
#include "tools/tools.h"

/// The image of a disc mounted by whatever this machine has for it.
namespace kestrova
{

/// Mounted on `place`, an empty folder. Any failure means another way.
Status MountByFuse(const Tools& tools, const Path& image, const Path& place);
/// What a program that was killed left mounted on that folder is there no more.
Status EndStaleMount(const Tools& tools, const Path& place);
/// A device of the desktop's for the image; its path.
Result<Path> LoopDeviceOf(const Tools& tools, const Path& image);
/// The folder where the desktop mounts a device, whether it was mounted there before or not.
Result<Path> MountByDesktop(const Tools& tools, const Path& device);
Status UnmountByDesktop(const Tools& tools, const Path& device);

/// Where a device is mounted; empty when it is nowhere.
Path FolderOfMounted(const Path& device);
/// True while the mount of the note stands and answers.
bool IsMounted(const SeenNote& note);
/// Ends the mount of the note, if it is still that one.
Status EndMount(const Tools& tools, const SeenNote& note);

} // namespace kestrova
