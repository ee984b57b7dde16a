#pragma once

#include "words/message.h"

// clang-format off

/// Finding the Level Editor's folder, and what its own programs do there.
namespace kestrova::Msg
{

inline constexpr Message FewWavesCompact{"Music of the Level Editor is missing in ~1, and its backup is compact, so it cannot bring it back. Files that stood there when the backup was made: ~2. Copy them there from the setup of the Level Editor, or from another copy of it; nothing else has to be done."};
inline constexpr Message FewWavesUnknown{"(not noted; the tracks are called 000.wav, 001.wav and so on)"};
inline constexpr Message FolderTooLong{"This folder's name is too long for the preferences (more than 256 bytes): ~1. Nothing has been changed. Choose a folder with a shorter path."};
inline constexpr Message TrleNoTomb4{"Not right folder: Missing file 'tomb4.exe' in folder: "};
inline constexpr Message TrleNoTr4{"Not right folder: Missing files '*.tr4' in folder: ~1\\data"};
inline constexpr Message TrleNoDat{"Not right folder: Missing files '*.dat' in folder: "};
inline constexpr Message TrleFewWaves{"Not right folder: in AUDIO folder missing ~1 .wav files"};
inline constexpr Message TrleAmongKept{"Not right folder: it lies among what Kestrova keeps for itself, or in a level's folder, and would be exchanged or moved with that: ~1"};
inline constexpr Message ChooseTrleFolder{"Choose TR Level Editor folder"};
inline constexpr Message CannotRunWithoutTrle{"This program cann't run without Tomb Raider Level Editor~1Now, Kestrova ends"};
inline constexpr Message WindowStaysWithoutTrle{"What ends is its work: without a Level Editor nothing can be added or played, and the empty window is left for you to close. Start Kestrova again once you have a Level Editor; the last archive is loaded then."};
inline constexpr Message TrleTwinFolders{"several folders whose names differ by case alone (~1): move all files into one of them, and delete the others"};

inline constexpr Message CompareChooseBefore{"Choose the folder to compare with"};
inline constexpr Message CompareChooseAfter{"Choose the folder to be compared"};
inline constexpr Message CompareNoFolder{"Two folders are needed. Choose both of them first."};
inline constexpr Message CompareMissing{"This folder is not there: ~1"};
inline constexpr Message Comparing{"Files compare in progress, wait a moment"};
inline constexpr Message CompareNew{"new"};
inline constexpr Message CompareGone{"missing"};
inline constexpr Message CompareChanged{"changed"};
inline constexpr Message CompareEqual{"equal"};
inline constexpr Message CompareUnread{"could not be read"};
inline constexpr Message CompareNotThere{"There is no such file in this folder: ~1"};
inline constexpr Message CompareNotOpened{"The file could not be opened: ~1"};

inline constexpr Message SourceNotRead{"This file could not be read: "};
inline constexpr Message SourceNotWritten{"This file could not be written, and is as it was: "};

inline constexpr Message ScriptExeMissing{"Program 'script.exe' not found in: "};
inline constexpr Message ScriptNotBegun{"The script was not compiled, and the results of the last time are untouched."};
inline constexpr Message ScriptNotCompiled{"The script was not compiled: the compiler did not write ~1. The results of the last time are back in their place."};

inline constexpr Message WaveWithoutNumber{"Warning: wav file '~1' has internal format specific for trle [audio] folder (ADPMC 4bit), but its name is not numeric (trace number). ~2You should contact level's author to signal this bug.~3This wav file will be ignored"};
inline constexpr Message NoTomFiles{"There are no .tom files to compile.~1If you have tr4 files in list, press [Done] button"};
inline constexpr Message StartTom2Pc{"Now you should start tom2pc program (pressing button below)"};
inline constexpr Message Tom2PcAdd{"1) In tom2pc program press [Add] button in [Edit Script] frame"};
inline constexpr Message Tom2PcBrowse{"2) Browse and chose ~1\\graphics\\wads~2folder"};
inline constexpr Message Tom2PcClickOne{"3) Click on ~1 file"};
inline constexpr Message Tom2PcClickMany{"3) Pushing CTRL key, click on following  files: "};
inline constexpr Message Tom2PcClickName{" * "};
inline constexpr Message Tom2PcBuild{"4) In tom2pc press [Build All] button"};
inline constexpr Message Tom2PcWait{"(Warning: don't stop program before you read in last row of message box: *** Build all complete ***"};
inline constexpr Message Tom2PcDone{"5) If there are no errors, close tom2pc program and press [Done] button in this window"};
inline constexpr Message CompileCopyInFailed{"Error in copying file from: ~1 to: "};
inline constexpr Message AutoCompileFailed{"Error in auto tom files compilation. Try to compile .tom files manually"};
inline constexpr Message CompileIncomplete{"Compile is not completed! ~1Missing ~2 file"};
inline constexpr Message CompilerMissing{"Program ~1not found.~2Please select program to compile tom files"};
inline constexpr Message SelectCompiler{"Select program to compile tom files"};
inline constexpr Message CompilerFilter{"Application (*.exe)|*.exe"};
inline constexpr Message CompilerNotStarted{"Error in execution of "};
inline constexpr Message CompileNotLent{"The files could not be compiled: the Level Editor's folder could not be prepared for it. It is as it was."};
inline constexpr Message CompilerChangedOthers{"The compiler changed or deleted other files of the Level Editor's folder, too; they are back as they were: ~1"};
inline constexpr Message CompilerMadeOthers{"The compiler made other files in the Level Editor's folder, too; they were taken out of it: ~1. They are listed by \"kestrovactl history originals\"."};
inline constexpr Message CompilerChangedLarge{"The compiler wrote into files of the Level Editor's folder that are too large to be copied first; they stay as it left them: ~1"};
inline constexpr Message CompileKeeping{"What else stands in the Level Editor's folder is kept first ..."};
inline constexpr Message CompileNotReturned{"The Level Editor's folder could not come back whole from the compilation yet. Nothing is lost: what stood there lies in its hidden folder .kv~lent. Make room on the disk, or give yourself the right to write there, and start again."};
inline constexpr Message CompileStopped{"The compilation was stopped. The Level Editor's folder is as it was."};
inline constexpr Message CompileCopying{"Copying sources: ~1"};
inline constexpr Message CompileRunning{"Compiling ~1 (~2 of ~3)"};
inline constexpr Message WadsMissing{"The level was not compiled: the wads of ~1 are neither with it nor in the Level Editor's folder (~2). Nothing has been changed there."};
inline constexpr Message NotATomFile{"This is no .tom file: "};

} // namespace kestrova::Msg
