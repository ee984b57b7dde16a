#pragma once

#include "words/message.h"

// clang-format off

/// Tom files, the wads that they are linked with, and the assistant that links them.
namespace kestrova::Msg
{

inline constexpr Message TomHasNoWad{"Source file '~1' has not .wad file to be converted~2Please, select wads to convert '~3'"};
inline constexpr Message DocumentNotRead{"The text of '~1' could not be read."};

inline constexpr Message AssistantHelpTask{"This level require to choose which wads files to use to convert every .tom file."};
inline constexpr Message AssistantHelpBegin{"Tom converter Assistant help you to perform necessary operations, but you should say to it what  perform."};
inline constexpr Message AssistantHelpSteps{"So, now you should:"};
inline constexpr Message AssistantHelpRead{"1) Read installation note of this level. (Click on name in below list box: usually these notes are in "};
inline constexpr Message AssistantHelpNames{"file named \"readme.txt\" o \"installation.txt\")"};
inline constexpr Message AssistantHelpPerform{"2) When you've understand what this level want, set name of .tom file to convert and, below, source files to use to convert it and press [Perform now] button.\""};
inline constexpr Message AssistantHelpDone{"3) When you have executed all operations, click on  [Done] button"};
inline constexpr Message AssistantHelpNote{"Note: if you have no ideas about what perform you could click on [Automatic analyse] button. Automatic analyse will try to discover what it's necessary to do and it will perform these operations."};
inline constexpr Message AllTomsHaveSources{"All .tom files of current level, have their source files to be converted."};
inline constexpr Message TomLinked{"Source file '~1' linked with wads files '~2'"};
inline constexpr Message TomNotLinked{"Source file '~1' was not linked with the wads '~2', or not with all of them. What lies in the level's folder already stays, and you can try again."};
inline constexpr Message LinkNoRoom{"The set of wads needs ~1, and ~2 are free on the disk. Nothing was copied."};
inline constexpr Message TomHasOwnWads{"~1 has wads of its own already, and they stay: the wads ~2 were not copied. Delete those of its own to use these."};
inline constexpr Message AnalysisNotNeeded{"All .tom files have their wads, so this document was not looked through: ~1"};
inline constexpr Message NoSuchWads{"There are no such wads, neither among those of the Level Editor nor in the level: ~1"};
inline constexpr Message SelectWads{"You must select wads used from source files: "};
inline constexpr Message NothingPerformed{"You have performed no operations. If you wish execute an operation press [Perform now], while click on [Cancel] button if you wish abort"};
inline constexpr Message AskCancelLinks{"Are you sure to wish cancel all operations performed?"};
inline constexpr Message AskAnalyseFirst{"Before giving out, do you want try automatic analyse? Pheraps I can discover correct operations to perform, for you"};
inline constexpr Message SelectReadme{"You must select (highlight) 'readme_file' to scan in automatic analyse"};
inline constexpr Message AskScan{"Now I will scan text file '~1' to discover necessary assignments bewtween .TOM files and .WAD files to convert current level"};
inline constexpr Message AllTomsHaveWads{"All .tom files have a correct .wad file to be converted."};
inline constexpr Message NoSolution{"Sorry, I'm not been able to find a solution~1You could trying to choose a different 'readme' file to scan in automatic analyse."};
inline constexpr Message SolutionIs{"Pheraps solution is: "};
inline constexpr Message SolutionLine{"~1.tom  should use -> ~2.*"};
inline constexpr Message AskExecuteLinks{"Do you want that I execute these link operations?"};
inline constexpr Message Linking{"Copying the wads of ~1"};
inline constexpr Message Scanning{"Reading ~1"};
inline constexpr Message SourcesAskConvert{"There are level files in source .tom format.~1Start converting procedure"};
inline constexpr Message SourcesFurtherControl{"Now it will be performed a further controll to verify if all source files are present"};
inline constexpr Message SourcesNotLinked{"The level's sources were not compiled: ~1 has no wads of its own. Its readme mostly tells which set of wads it is compiled with. Say so with --link ~2=WADS, or have the readme looked through with --analyse DOCUMENT."};
inline constexpr Message SourcesLeft{"~1 has no wads of its own. Added alone, it is linked with a set of wads by the assistant, or in the terminal by --link ~2=WADS or --analyse DOCUMENT."};
inline constexpr Message LinkNoSuchTom{"The level has no .tom file of this name: ~1"};
inline constexpr Message AnalysedMissing{"This document is neither among the level's files nor elsewhere: ~1"};

inline constexpr Message AssistantTitle{" Tom -> Tr4 conversion Assistant"};
inline constexpr Message AssistantHelpName{"What to do here"};
inline constexpr Message AssistantReadmes{"Documents of the level:"};
inline constexpr Message AssistantRead{"Read file"};
inline constexpr Message AssistantAnalyse{"Automatic analyse"};
inline constexpr Message AssistantToms{".tom file to convert:"};
inline constexpr Message AssistantWads{"Wads files to use:"};
inline constexpr Message AssistantChooseWads{"Choose a set of wads"};
inline constexpr Message AssistantEssential{"Show only .tom files that have no wads yet"};
inline constexpr Message AssistantPerform{"Perform now"};
inline constexpr Message AssistantDone{"Done"};
inline constexpr Message CompilaTitle{" Compile .tom files by hand"};
inline constexpr Message CompilaStepsName{"Steps of the compilation"};
inline constexpr Message CompilaLent{"The sources of the level lie in the Level Editor's folder until you press [Done] or [Cancel]; both give it back as it was. So leave this window by one of them."};
inline constexpr Message CompilaStart{"Start tom2pc"};
inline constexpr Message CompilaDone{"Done"};

} // namespace kestrova::Msg
