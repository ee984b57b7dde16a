#pragma once

#include "words/message.h"

// clang-format off

/// What a level needs that did not come with it, as its configuration file or its sources say.
namespace kestrova::Msg
{

inline constexpr Message DuplicationSource{"Duplication source: "};
inline constexpr Message LinkingWads{"Copying wads for: "};
inline constexpr Message CopyNamesRefused{"The configuration file of this level asks for copies under names that no file of a level can have, so they were not made: ~1."};
inline constexpr Message CopiesTooMany{"The configuration file of this level asks for more than ~1 copies of files, which no level needs. None of them was made, and its files are as they were. Its readme may tell what it really needs."};
inline constexpr Message CopiesNoRoom{"The copies that the configuration file of this level asks for need ~1, and there is no room for them on the disk (~2 are free). None of them was made, and the level's files are as they were. Make room, and add the level again."};
inline constexpr Message CopiesNotMade{"The copies that the configuration file of this level asks for could not be made, and its files are as they were. Make room on the disk, or give yourself the right to write there, and add the level again."};

inline constexpr Message WaveRequest{"Request extern wave files: "};
inline constexpr Message WaveCdUnknown{"Kestrova.cfg error: original cd for extern wave unknown (~1)"};
inline constexpr Message AskHaveCd{"Current level require an extern wav file that you can find in ~1 CD~2Have you this CD?"};
inline constexpr Message InsertCd{"Please insert ~1 CD in unit "};
inline constexpr Message InsertCdAnywhere{"(no disc is there yet; you can also choose a folder with its files next)"};
inline constexpr Message ChooseCdFolder{"Select the folder with the files of ~1 CD"};
inline constexpr Message AskRetryCd{"File '~1' not found~2Do you want retry?"};
inline constexpr Message WaveMissing{"Kestorva.cfg error: request extern wave file is missing ("};
inline constexpr Message WavesMoreWrong{"The configuration file of this level has ~1 more such errors with its extern wave files. Its author should mend it."};
inline constexpr Message WaveImport{"Import extern wave file: "};
inline constexpr Message WaveNamesRefused{"The configuration file of this level asks for sounds under names that no file of a level can have, so they were passed over: ~1."};
inline constexpr Message WavesNoRoom{"There is no room on the disk for the sound ~1 (~2), which this level needs. None of its sounds was copied, and its files are as they were. Make room, and add the level again."};
inline constexpr Message WavesNotCopied{"The sounds that this level needs from elsewhere could not be copied: ~1. Make room on the disk, or give yourself the right to write there, and add the level again."};

inline constexpr Message ListedMissing{"File '~1 in internal file list of configuration file, it's not present in current level files"};
inline constexpr Message ListedDiffers{"Size of file '~1 in internal file list of configuration file, it's different than current file in level files of current level"};
inline constexpr Message ListedWarning{"Warning: ~1Do you want continue?"};
inline constexpr Message ListedRest{"~1 more files of the internal file list of configuration file are missing or different"};
inline constexpr Message TomsMissing{"Missing [.tom] files to convert"};
inline constexpr Message TomLacksSource{"Missing source file [~1] for file ~2.tom"};
inline constexpr Message AssistantStarts{"Now it will be started Tom/Tr4 Assistant to solve this problem"};
inline constexpr Message RevisedFailed{"Failed import of revised_wads~1Probably this level can run also without revised wads, however some animations or graphic effects could be not too good"};

inline constexpr Message WadsNotImported{"Without importing wads it's not possible convert this level"};
inline constexpr Message WadsInstalling{"Installing new wads in progress..."};
inline constexpr Message AskHaveWads{"Current level needs to import a wads file: ~1Have you already in your pc file '"};
inline constexpr Message AskHaveWadsEnd{"'?"};
inline constexpr Message AskFetchWads{"Do you want download now wads file: ~1?"};
inline constexpr Message WadsFetching{"Download file ~1 in progress..."};
inline constexpr Message AskFetchByHand{"Error downloading from url: ~1Do you want download file manually whereby Internet Explorer?"};
inline constexpr Message FetchByHand{"Now download wads file '~1'"};
inline constexpr Message WhenFetched{"When download is finished press [Ok] button in this window"};
inline constexpr Message SelectWadsFile{"Select wads file: "};
inline constexpr Message WadsNoServer{"No server of wads is set, so the package ~1 is not fetched from there. Whoever keeps such a server can tell you its address, which goes into Preferences, Kestrova, Servers (kestrovactl set wad-server ADDRESS). You can also get the package in another way."};
inline constexpr Message WadsNoAddress{"This is not the address of a web site, so it was not opened: ~1. Get the package in another way."};
inline constexpr Message WadsNotOpened{"The address could not be opened: ~1. Open it with your browser."};
inline constexpr Message WadsNotFetched{"The package ~1 could not be fetched: ~2"};
inline constexpr Message WadsNotFetchable{"The package '~1' cannot be fetched, since this is not the address of a zip file on a web site: ~2. kestrovactl wads import PACKAGE takes one that you have, and then the level is added without it being asked for."};
inline constexpr Message WadsNobody{"Nobody can be asked here, so the package ~1 was not fetched. With --fetch it is; kestrovactl wads import PACKAGE takes one that you have, and then the level is added without it being asked for."};
inline constexpr Message AskKnownWads{"This level needs of wads file not currently installed in Tomb Raider Level Editor: ~1It's possible download now from internet this wads file or, if you've already downloaded it, import it now~2Do you want import this wads file?"};
inline constexpr Message WadsAngkor{"Angkor Wat wads (10 MB)"};
inline constexpr Message WadsNew{"New_wads0110 : Library, Guard, Newcity (12.6 MB)"};
inline constexpr Message WadsRevised{"Revised_wads (11.2 MB)"};

} // namespace kestrova::Msg
