#pragma once

#include "words/message.h"

// clang-format off

/// Archive discs: which levels go onto which disc, how the set is made, what is proved of it.
namespace kestrova::Msg
{

inline constexpr Message Capacity650{"650 MB"};
inline constexpr Message Capacity700{"700 MB"};
inline constexpr Message Capacity4700{"4.7 GB DVD"};
inline constexpr Message Capacity25{"25 GB Blu-ray"};
inline constexpr Message ComputeArchiveSize{"Compute archive size in progress"};
inline constexpr Message NotingFiles{"Noting what the files of the levels hold"};
inline constexpr Message ComputeTrleSize{"Computing size of Tomb Raider Level Editor folder"};
inline constexpr Message LevelHasNoFiles{"Its files are not on the hard disk."};
inline constexpr Message LevelHoldsLink{"~1 is a link or a device, which no disc takes."};
inline constexpr Message LevelHasTwins{"~1 is there twice, spelled with other capitals, and on a disc nobody could tell them apart. Rename one of them."};
inline constexpr Message LevelNotRead{"Its files cannot be read: ~1"};

inline constexpr Message SpecifyCapacity{"You must specify, CD capacity"};
inline constexpr Message SpecifySpeed{"You must specify speed cd burn"};
inline constexpr Message SpecifyUnit{"You must specify unit letter used by CD writer"};
inline constexpr Message SpecifyImages{"You must specify the folder that the images come into"};
inline constexpr Message CapacityBounds{"The capacity of a disc is a number of megabytes from ~1 to ~2."};
inline constexpr Message AskEncloseSetup{"The discs will hold the Level Editor's folder, but not the setup of Kestrova, which would install both.~1Do you want to enclose the setup of Kestrova, too?"};
inline constexpr Message NothingToEnclose{"There is nothing to enclose in cd"};
inline constexpr Message AllOnDiscs{"Current archive is already ALL on CDs. No operation to perform"};
inline constexpr Message NoTrleToEnclose{"No Level Editor's folder is known, so that none can be enclosed. Choose its folder first, or leave it out."};
inline constexpr Message AskLevelsTooLarge{"Larger than a disc of ~1 are: ~2~3Each of them gets a disc of its own, which such a disc cannot take. Do you want to go on all the same?"};
inline constexpr Message ExtrasTooLarge{"What goes onto the first disc beside the levels is larger than a disc of ~1. Nothing has been changed. Choose larger discs, or enclose less."};
inline constexpr Message LevelsStayBehind{"These levels cannot go onto a disc and stay on the hard disk:"};
inline constexpr Message LevelLine{"~1 (~2): ~3"};

inline constexpr Message LocateSetupExplained{"The setup of Kestrova goes onto the first disc. Now locate its files: a zip that holds them, the file TrKestrova.cab among them, or a package of this system."};
inline constexpr Message LocateSetup{"Locate setup files of Kestrova program"};
inline constexpr Message SetupFilter{"Kestrova setup files (*.zip *.cab)|*.zip;*.cab|Packages of this system (*.deb *.AppImage)|*.deb;*.AppImage"};
inline constexpr Message ErrorUnzippingSetup{"Error unzipping: "};
inline constexpr Message SetupFileMissing{"In folder ~1 is missing file "};

inline constexpr Message NoTempFolder{"The folder for the files of the discs cannot be made. No level has been changed."};
inline constexpr Message ErrorSavingCdArchive{"Error saving CD archive.kva in "};
inline constexpr Message ErrorPreparingDisc{"Error preparing cd burning"};
inline constexpr Message HaveBlankDiscs{"Have you ~1 blank CDs by "};
inline constexpr Message NoRoomForImage{"In your pc, no disk have enough free space to host intermediate ISO image. Burning will be done with ISO image created at-fly"};
inline constexpr Message InsertBlankDisc{"Insert a blank CD (~1) in unit ~2Click on [YES] to burn CD ~3Click on [NO] to skip burning of CD ~4 but to perform next CD burning (~5Click on [CANCEL] to abort whole burning CD operation"};
inline constexpr Message InsertBlankAgain{"Insert a blank CD (~1) in unit "};
inline constexpr Message NoNextDisc{"it is the last one"};
inline constexpr Message DiscIsNotBlank{"The disc in ~1 is not blank. Nothing was written to it."};
inline constexpr Message DiscIsTooSmall{"The disc in ~1 takes ~2, and ~3 are needed. Nothing was written to it."};
inline constexpr Message NoDiscInUnit{"No disc lies in ~1."};
inline constexpr Message UnitIsGone{"The unit ~1 is not there. Nothing was written. Connect it, or choose another one."};
inline constexpr Message AskVerifyDisc{"Cd burning seems correct. However, do you want verify CD contents, before continue?"};
inline constexpr Message BurningFailed{"Failed burning of CD (~1You can choose: ~2To RETRY burning. This time, burning will be performed at halfed of previous speed ~3To ABORT burning. To abort whole burning operation~4To IGNORE. In this case you could choose to burn ISO image (if it's available) using your burn CD program (like Nero or Easy CD)"};
inline constexpr Message OnYes{"[YES] "};
inline constexpr Message OnNo{"[NO] "};
inline constexpr Message OnCancel{"[CANCEL] "};
inline constexpr Message LowestSpeed{"The speed is ~1 already: half of it is none, and at the next try the unit chooses its speed by itself."};
inline constexpr Message NoImageToBurn{"Sorry, in you HDs there are no need free space to save ISO image. Burning CD operation is failed"};
inline constexpr Message BurnImageYourself{"Now you must burn on cd (with your burn program) the ISO image locate in: ~1Press [OK] in this window only AFTER you've burned successfully this ISO image (or press [Cancel] if you wish abort operation)"};
inline constexpr Message DiscsStopped{"No disc is made any more. The archive is as it was, and all levels are on the hard disk."};
inline constexpr Message ImageNotMade{"The image of ~1 was not made. All levels are on the hard disk, as before."};
inline constexpr Message DiscReadBack{"Reading back ~1"};
inline constexpr Message DiscOfDiscs{"~1 (~2 of ~3): ~4"};
inline constexpr Message NoteNotWritten{"What was proved of ~1 could not be noted, so that none of its levels counts as moved. They are on the hard disk, as before."};

inline constexpr Message ImagesFolderIsFile{"~1 is no folder. Choose another one for the images."};
inline constexpr Message ImagesInsideOthers{"The images cannot come into ~1, which belongs to the Level Editor, to the archive or to Kestrova's own work. Choose a folder of its own."};
inline constexpr Message ImageIsThere{"~1 is there already, and nothing there is written over. Choose another folder, or move that file away."};
inline constexpr Message NoRoomForImages{"The images take ~1, and only ~2 are free in ~3. Nothing has been changed. Make room, or choose a folder on another disk."};
inline constexpr Message ImagesFolderTooLong{"The folder for the images has so long a name that the archive has no place for it. Choose another one."};
inline constexpr Message ImageName{"Kestrova ~1 ~2.iso"};

inline constexpr Message DiscsComplete{"CD creation complete: no errors"};
inline constexpr Message DiscsWithoutLevels{"Warning: all levels of current archive were already on CDs~1In this new cd there are programs and last kva archive. Use this CD as Startup CD to install programs and level archive"};
inline constexpr Message AskLevelsUnproved{"~1 levels were not read back from their discs: ~2~3Nothing proves that those discs hold them. Do you have the discs? With Yes each of them is compared with the levels before their files leave the hard disk. With No these levels stay where they are now."};
inline constexpr Message AskRemoveFromHd{"Remove from local disk (hard disk) ~1 levels currently saved on CDs?~2If you choose YES, level files on CD will be removed from local disk, so you free space on your local disk but in future you'll have to insert CD everytime you wish swap level to play~3If you choose NO, current archive not will be changed"};

inline constexpr Message DiscNoteDamaged{"The note of what lies on the archive's discs is damaged: ~1. Nothing has been changed. Rename that file; the levels are found on their discs all the same, and \"kestrovactl discs verify --all\" notes anew what can be compared."};
inline constexpr Message VerifyingDiscs{"Reading the discs back"};
inline constexpr Message LevelOnDiscDiffers{"~1 is not on ~2 as it was written there: ~3"};
inline constexpr Message LevelNotNoted{"Nothing is known of what ~1 had when it came onto ~2, and its files are not on the hard disk."};

} // namespace kestrova::Msg
