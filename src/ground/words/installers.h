#pragma once

#include "words/message.h"

// clang-format off

/// Levels that come as a program, which installs them.
namespace kestrova::Msg
{

inline constexpr Message InstallerUnknown{"Unknown installer"};
inline constexpr Message InstallerFlyDrive{"FlyDrive Installer"};
inline constexpr Message InstallerWinAce{"WinAce Self Extractor"};
inline constexpr Message InstallerWinZip{"WinZip Self Extractor"};


inline constexpr Message InstallerAsk{"Current level is in exe format. If you have already insert in list box ALL files of this level, Kestrova will start installation procedure~1Have you load in list box ALL files about current level?"};
inline constexpr Message InstallerStarts{"This level is in exe format. Now starts setup process.~1Please, look carefully where setup program will copy level files, then I'll ask you the folder where files have been copied"};
inline constexpr Message InstallerReachesLittle{"The setup program is somebody else's. It runs apart from what is yours, without network: it can write only into the Level Editor's folder, the folder of this level's files and Wine's drive C (in ~1). Let it install into one of them."};
inline constexpr Message InstallerReachesAll{"Warning: the setup program is somebody else's, and this machine cannot shut it in (the program bwrap is missing, or is not allowed to). It could reach everything that you can: read, change and delete your files, and use the network. Run it only if you trust whoever made it."};
inline constexpr Message InstallerOriginal{"Installing orginal trle configuration"};
inline constexpr Message InstallerNoSetup{"In spite of exe file presence, this level is not a level in exe format.~1Exe files enclosed in this level are not setup programs."};
inline constexpr Message InstallerDetected{"Detected: "};
inline constexpr Message InstallerExecuting{"Executing ~1 in progress"};
inline constexpr Message InstallerNotStarted{"Error executing: "};
inline constexpr Message InstallerPressOk{"Press [OK] when setup is complete"};
inline constexpr Message InstallerWhere{" Where did the files copied?"};
inline constexpr Message InstallerAfter{"Warning: click  buttons  only AFTER setup is finished"};
inline constexpr Message InstallerInTrle{"File has been copied in Tomb Raider Level Editor folder"};
inline constexpr Message InstallerInOther{"File has been copied in another folder ..."};
inline constexpr Message InstallerChooseFolder{"Select folder where the files have been copied"};
inline constexpr Message InstallerNeedsFolder{"You must choose a folder!"};
inline constexpr Message InstallerCopying{"Copying and restoring files in progress..."};
inline constexpr Message InstallerCompact{"Warning: because you chose a COMPACT trle backup (without .wav files and other..), the new .wav files will not be enclosed in current level files but they will be let in AUDIO folder "};
inline constexpr Message InstallerNoLevel{"Warning: no tom or tr4 files found."};
inline constexpr Message InstallerFinished{"Install procedure is finished: no error"};
inline constexpr Message InstallerRemoving{"Removing files from temporary folder"};
inline constexpr Message InstallerTaking{"Copying files in progress"};
inline constexpr Message InstallerClearing{"Removing temporary folders"};
inline constexpr Message InstallerFailed{"Error or cancel installing level in exe format"};
inline constexpr Message InstallerNoTrle{"The setup program was not run: it needs a Level Editor's folder, and there is none. Choose one first (Preferences), then add this level again."};
inline constexpr Message InstallerFolderMissing{"The setup program was not run: the folder that it is to install into is not there: ~1"};
inline constexpr Message InstallerFolderWide{"The setup program was not run: Kestrova's own files, the Level Editor's or your levels lie in or around the folder that it is to install into, and it could change them: ~1. Name a folder of its own."};
inline constexpr Message InstallerNotBegun{"The setup program was not run, and the Level Editor's folder is untouched: "};
inline constexpr Message InstallerEnded{"The setup program ~1 was ended, and the Level Editor's folder is as it was: "};
inline constexpr Message InstallerCrashed{"The setup program ~1 broke down (signal ~2). The Level Editor's folder is as it was."};
inline constexpr Message InstallerCode{"The setup program ~1 ended with the code ~2. That may be its way; look whether the level is whole."};
inline constexpr Message InstallerNotCopied{"A file that the setup program installed could not be copied: ~1"};
inline constexpr Message InstallerTooMuch{"The setup program installed ~1, which is more than the ~2 that a level may take. Nothing of it came into the level."};
inline constexpr Message InstallerLeftOut{"What the setup program wrote into the Level Editor's folder beside the level's files is gone from there again: ~1"};
inline constexpr Message InstallerElsewhere{"The setup program also wrote to other places of Wine's drive C, which stay as they are: ~1"};
inline constexpr Message InstallerWroteAtHome{"The setup program was not shut in. This changed below ~1 while it ran, by it or by another program, and stays as it is: ~2"};
inline constexpr Message InstallerHomeTooLarge{"Not all of ~1 was looked through for what the setup program wrote there."};
inline constexpr Message InstallerNotReturned{"The Level Editor's folder could not come back whole from the setup program yet. Nothing is lost: what its backup lacks lies in the hidden folder .kv~handed of Kestrova's own folder. Make room on the disk, or give yourself the right to write there, and start again."};
inline constexpr Message InstallerNotTaken{"Not all files that the setup program installed came into the level: "};
inline constexpr Message InstallerStays{"A setup program could not be deleted from the level's files: "};

} // namespace kestrova::Msg
