#pragma once

#include "words/message.h"

// clang-format off

/// The backup and the vault.
namespace kestrova::Msg
{

inline constexpr Message OriginalsId{"o-~1"};
inline constexpr Message OriginalsUnknownId{"Nothing is kept under the name ~1. See: kestrovactl history originals"};
inline constexpr Message BackupLinkBroken{"The folder ~1 leads to a place that is not there now, so the backup would lack its files. The backup is as it was. Connect the drive and try again."};
inline constexpr Message InterruptedFailed{"An interrupted swap could not be mended yet. No savegame is lost. Make the disk writable and start again; until then no level can be played."};
inline constexpr Message OriginalsUnreadable{"The list of what was kept of the Level Editor's folder cannot be read. The files lie in history/originals of the program's folder."};
inline constexpr Message OriginalNotBroughtBack{"The file could not be brought back. It is still kept."};
inline constexpr Message OriginalBroughtBack{"Brought back: ~1. It stays in the list as well."};

inline constexpr Message AskDeleteOriginals{"Delete ~1 for good? Nothing else has what is in it."};
inline constexpr Message OriginalNotDeleted{"The file was not deleted, and is still kept."};
inline constexpr Message OriginalDeleted{"Deleted: ~1"};
inline constexpr Message DoctorVault{"kept of the Level Editor's folder"};
inline constexpr Message DoctorVaultHolds{"~1 (~2); kestrovactl history originals lists them, and deletes what you do not need"};

inline constexpr Message LoanStillWaits{"the Level Editor's folder still has to come back from a compilation or an installer that was interrupted; see kestrovactl doctor"};
inline constexpr Message HandoverNoRoom{"files of the Level Editor's folder that its backup lacks are copied first, for which ~1 have to be free in ~2; ~3 are"};
inline constexpr Message LoanFolderInTheWay{"a folder stands where a file of the level has to go"};

} // namespace kestrova::Msg
