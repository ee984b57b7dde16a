#pragma once

#include "words/message.h"

// clang-format off

/// Discs and their images: what goes onto them, making and burning them.
namespace kestrova::Msg
{

inline constexpr Message BurnPathNotValid{"Path not valid"};
inline constexpr Message BurnPathEnds{"It's not allowed to end a path with characters: '\\\\' or '/'"};
inline constexpr Message BurnNoWildcards{"It's not allowed to use wildcards (i.e. chars like '*' or '?')"};
inline constexpr Message BurnItemNotInserted{"Impossible insert item in VetItems()"};
inline constexpr Message BurnNotAbsolute{"In VetItems() is not allowed insert path missing of unit letters ('c:')"};
inline constexpr Message BurnPathMissing{"Path ~1 doesn't exist"};
inline constexpr Message BurnFolderTarget{"Relative path for folders should end with characters '\\' or '/'"};
inline constexpr Message BurnTargetOutside{"The place '~1' does not lie on the disc. It must be a path from the disc's root, without '.' and '..'."};
inline constexpr Message BurnNoItemTarget{"It's not allowed insert a relative path (with '=' character) in VetNoItems()"};
inline constexpr Message BurnNoItemNotInserted{"Impossible insert item in VetNoItems()"};
inline constexpr Message BurnNoItemTwiceTitle{"Item already present"};
inline constexpr Message BurnNoItemTwice{"NoItem value ~1 is already present in VetNoItems()"};
inline constexpr Message BurnNoArgument{"Argomento1 not present"};
inline constexpr Message BurnItemNotFound{"Item not found"};
inline constexpr Message BurnItemUnknown{"Item ~1 not exist in VetItems()"};
inline constexpr Message BurnNullArgument{"Null argument. It's necessary insert item to convert"};
inline constexpr Message BurnPathNotExist{"Path not exist"};
inline constexpr Message BurnNotAFolder{"Argument is not a valid folder path"};
inline constexpr Message BurnImageNotDeleted{"The image of the disc could not be deleted"};
inline constexpr Message BurnUnitUnknown{"Unit letter doesn't exist"};

inline constexpr Message BurnNotReadable{"'~1' cannot be read, so it would be missing on the disc. Nothing was written."};
inline constexpr Message BurnNameUnfit{"The name of '~1' holds a line end or another control character, which no disc can take. Rename it. Nothing was written."};
inline constexpr Message BurnLinkToNothing{"'~1' is a link that leads to nothing, so it would be missing on the disc. Remove it. Nothing was written."};
inline constexpr Message BurnLinkToFolder{"'~1' is a link to a folder. A disc holds no links: put the folder itself in its place, or remove it. Nothing was written."};
inline constexpr Message BurnNoFile{"'~1' is neither a file nor a folder, so no disc can hold it. Remove it. Nothing was written."};
inline constexpr Message BurnPlaceTaken{"'~1' would come to a place on the disc that another file takes already. Nothing was written."};

inline constexpr Message BurnTextTooLong{"The text '~1' is longer than the ~2 letters that a disc has for it. Nothing was written."};
inline constexpr Message BurnFileTooLarge{"The file '~1' has 4 GB or more, which '~2' cannot put on a disc. Install xorriso, then try again. Nothing was written."};
inline constexpr Message BurnImagerMissing{"Missing 'mkhybrid.exe' utility in folder of current application"};
inline constexpr Message BurnBurnerMissing{"Missing 'Cdrecord.exe' utility in folder of current application"};
inline constexpr Message BurnNothingToInsert{"There are NO files to insert in ISO image"};
inline constexpr Message BurnSizeUnknown{"The tool for images did not say how large the image will be."};
inline constexpr Message BurnNoRoomForImage{"There is no room for the image '~1': it takes ~2 at least, and ~3 are free. Nothing was written."};
inline constexpr Message BurnImageNotWhole{"The image is not whole: the tool wrote less than it should have. It was removed."};
inline constexpr Message BurnStopped{"Operation stopped by user"};

inline constexpr Message BurnFolderNotOnDisc{"Folder ~1 not exist on CD"};
inline constexpr Message BurnFileNotOnDisc{"File ~1 not exist on CD"};
inline constexpr Message BurnFileOtherSize{"File ~1 has on cd a size different by original"};
inline constexpr Message BurnContentDiffers{"File ~1 has on cd other content than the original"};
inline constexpr Message BurnSectorNotRead{"File ~1 cannot be read from the disc: ~2"};
inline constexpr Message BurnDiscEnds{"the disc ends before it"};
inline constexpr Message BurnSourceNotRead{"The original of ~1 cannot be read: ~2"};
inline constexpr Message BurnSourceChanged{"The original of ~1 has changed since the disc was made"};
inline constexpr Message BurnDiscNotRead{"The disc in '~1' cannot be read."};
inline constexpr Message BurnImageCut{"The image '~1' is shorter than it says itself: it was cut, or its making was broken off. Nothing of it is used."};

inline constexpr Message BurnImageFailedTitle{"Creation ISO image, failed"};
inline constexpr Message BurnImageWarningTitle{"Operation concluse without errors, but there is a warning"};
inline constexpr Message BurnFailedTitle{"Burning CD failed"};
inline constexpr Message BurnPipeFailedTitle{"Burning CD without ISO image, failed"};
inline constexpr Message BlankRunFailedTitle{"Erasing rewritable CD, failed"};
inline constexpr Message BlankFailedTitle{"Erasing CD, failed"};
inline constexpr Message BurnArgumentNotValid{"Argument not valid for current command"};
inline constexpr Message BlankArguments{"CancellaCdRiscrivibile command allows like argument only values: 'ALL' or 'FAST'"};
inline constexpr Message BurnNoImage{"No ISO image to burn"};
inline constexpr Message BurnNoWriter{"There is no drive that writes, or no disc in it."};
inline constexpr Message BurnNotBlank{"The disc in the drive '~1' is not blank. Blank it, or insert another one. It was left as it is."};
inline constexpr Message BurnMediumFull{"Medium full: ~1 are to be written, and the disc takes ~2. Nothing was written."};
inline constexpr Message BurnDiscNotWhole{"The disc is not whole: less was written than should have been."};
inline constexpr Message BurnPipeFailed{"Creating input pipe, failed"};
inline constexpr Message BurnNoDiscToBlank{"The file '~1' is no disc, so it is not emptied. It was left as it is."};
inline constexpr Message BurnLabelImage{"Creation ISO image in progress..."};
inline constexpr Message BurnLabelSize{"Computing size files in progress..."};

inline constexpr Message ReportNotPossible{"Impossible create a list report from ISO image"};
inline constexpr Message ReportNoImage{"There are no ISO image to read"};
inline constexpr Message ReportNoLister{"In application path it's missing 'isoinfo.exe' utility"};
inline constexpr Message ReportOptionNotValid{"Not valid option"};
inline constexpr Message ReportKinds{"To create a report ISO file file, you must set kind of list, choosing between: 'FlatList', 'TreeList' or 'ReferenceList'"};
inline constexpr Message ReportFailedTitle{"Creation report list from ISO image, failed"};
inline constexpr Message ReportLabelScan{"Scanning file in progress..."};
inline constexpr Message ReportLabel{"Creation report list in progress..."};
inline constexpr Message ReportLabelFormat{"Formatting report list in progress..."};
inline constexpr Message ItemsArgumentNotValid{"Argument not valid for 'cw_ReportItemsFileList' command"};
inline constexpr Message ItemsArguments{"Valid arguments are: ~1Target~2 or ~3Source"};
inline constexpr Message ItemsFailedTitle{"Creation report list, failed."};
inline constexpr Message ItemsLabel{"Creation report file list in progress..."};
inline constexpr Message ItemsLabelFormat{"Formatting report file list in progress..."};
inline constexpr Message VerifyArgumentNotValid{"Argument not valid for cw_verificaCD command"};
inline constexpr Message VerifyArguments{"Valid arguments for command 'cw_VerificaCD' are 'FAST' or 'ALL'"};
inline constexpr Message VerifyLabel{"CD Verify: checking all files in progress..."};
inline constexpr Message VerifyStopped{"CD Verify stopped by user"};
inline constexpr Message DoorUnitNotCorrect{"Unit letter not correct"};
inline constexpr Message DoorArgument{"Open/Close_CD_Door equire unit letter in two characters format like 'D:'"};
inline constexpr Message DoorNotOpened{"Error opening device with unit letter: "};
inline constexpr Message DoorNotMoved{"Error sending command to device with unit letter: "};
inline constexpr Message AutoRunArgumentNotValid{"Argument not valid for AddAutoRun_Inf command"};
inline constexpr Message AutoRunArgument{"You must insert full path of source file where it's now"};

} // namespace kestrova::Msg
