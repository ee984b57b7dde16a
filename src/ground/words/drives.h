#pragma once

#include "words/message.h"

// clang-format off

/// Drives for discs, and the folders in which their discs are seen.
namespace kestrova::Msg
{

inline constexpr Message NoCdWriter{"Impossible identify cd writer unit"};
inline constexpr Message CdWriterDoubtful{"Not identified in sure way unit of CD writer"};
inline constexpr Message WaitForReadyUnit{"Wait for 'ready unit' status"};
inline constexpr Message AskUnitNotReady{"Unit ~1 is not ready~2Retry to check unit "};
inline constexpr Message CdUnitNotReady{"CD unit not ready"};
inline constexpr Message CdIsEmpty{"CD is empty"};
inline constexpr Message DiscImageMissing{"There is no file ~1. It was moved, renamed or deleted, or its drive is not connected."};
inline constexpr Message DiscImageNone{"~1 is not the image of a disc, or its beginning is damaged. Nothing has been changed."};
inline constexpr Message DiscImageShort{"~1 is damaged: it says that it holds ~2, and the file ends after ~3. Make the image anew, or get it again."};
inline constexpr Message DiscDriveEmpty{"No disc lies in the drive ~1. Insert one, then try again."};
inline constexpr Message DiscDriveBlank{"The disc in the drive ~1 is blank."};
inline constexpr Message DiscPlaceTaken{"The disc in the drive ~1 should be seen in the folder ~2, but something lies there already. It stays untouched. Empty the folder, or name another one for the drive."};
inline constexpr Message DiscPlaceUnusable{"The disc cannot be seen in the folder ~1. Nothing has been changed."};
inline constexpr Message DiscNoRoomToExtract{"The files of ~1 need ~2 on the disk, since no disc image can be mounted here, and there is room for ~3 only. Nothing has been changed. Install the package fuseiso, or make room."};
inline constexpr Message DiscExtracting{"Reading the files of the disc"};
inline constexpr Message DiscNotExtracted{"The files of ~1 could not be read. The image may be damaged."};
inline constexpr Message DiscWaitForOther{"Another Kestrova is reading the same disc"};
inline constexpr Message DiscNotMounted{"The disc in the drive ~1 could not be mounted. Open it in the desktop's file manager, or mount it as root (mount -o ro ~2 /mnt), then try again."};
inline constexpr Message DiscNotReleased{"The folder ~1, in which a disc is seen, is still in use, so the disc stays there. Close what shows the folder, then try again."};
inline constexpr Message DiscFolderForeign{"The folder ~1 is not as it was when a disc was shown there, so it stays as it is. What it holds beside the disc's files is yours."};
inline constexpr Message DiscUsedByOther{"Another Kestrova uses the disc in ~1. Nothing has been changed. Close it there, then try again."};
inline constexpr Message DriveIsReal{"~1 is a drive of this machine. Put the disc in by hand."};
inline constexpr Message DriveDoesNotWrite{"The drive ~1 does not write, so it takes no blank disc."};
inline constexpr Message DriveHoldsThatDisc{"~1 lies in the drive ~2 already. One disc cannot lie in two drives."};
inline constexpr Message DriveNotChanged{"What lies in the drive ~1 could not be changed. It is as it was."};
inline constexpr Message DriveDoorStuck{"The door of the drive ~1 did not move."};

} // namespace kestrova::Msg
