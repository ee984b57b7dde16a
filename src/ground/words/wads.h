#pragma once

#include "words/message.h"

// clang-format off

/// Wads imported into the Level Editor's folder and the backup of its originals.
namespace kestrova::Msg
{

inline constexpr Message ImportOriginalFailed{"Error installing original trle configuration in trle folder~1Could be some troubles to import new wads now :-/"};
inline constexpr Message ImportCopying{"Copy source files in progress..."};
inline constexpr Message ImportKeeping{"What stands in the way is kept first ..."};
inline constexpr Message ImportCompilingToms{"Compile .tom files in progress ..."};
inline constexpr Message ImportCompilingScript{"Compiling script files in progress ..."};
inline constexpr Message ImportCleaning{"Removing temp folders in progress..."};

inline constexpr Message ImportLineBackup{"backup_trle"};
inline constexpr Message ImportLineTrle{"trle"};
inline constexpr Message ImportLineAnalyse{" -> Temp folder to analyse"};
inline constexpr Message ImportLineIgnored{" -> [IGNORED]"};
inline constexpr Message ImportLineCompiled{" -> [OK COMPILE]"};
inline constexpr Message ImportLineNotCompiled{" -> [ERROR COMPILE] "};
inline constexpr Message ImportLineBackupData{" -> \\backup_trle\\data\\"};
inline constexpr Message ImportLineLanguage{"~1.TXT -> Compiling"};
inline constexpr Message ImportLineScript{"script.TXT -> Compiling"};
inline constexpr Message ImportLineFinished{"*** Wads update finished ***"};
inline constexpr Message ImportLineStopped{"*** Wads update stopped: all is as it was ***"};

inline constexpr Message ImportNoSources{"Missing 'script.TXT' or 'english.TXT'~1I shall use .DAT source files without changes"};
inline constexpr Message ImportNoLevel{"Error. Missing data for level '~1' in new file script.TXT"};
inline constexpr Message ImportNoLevelName{"Error: missing level name '~1' in new english.TXT"};
inline constexpr Message ImportNameTwice{"The name of a new level stands in your ~2.TXT twice now, since another string is the same already: ~1. The game goes by the place of a string, so nothing is lost. To give the level a name of its own, undo the import, and import the wads again."};
inline constexpr Message ImportScriptNotSaved{"Error saving 'script.TXT'"};
inline constexpr Message ImportLanguageNotSaved{"Error saving '~1.TXT'"};
inline constexpr Message ImportEnglishNotSaved{"Error saving 'ENGLISH.TXT'"};
inline constexpr Message ImportNotCompiled{"Error compiling '~1.DAT'"};
inline constexpr Message ImportFinished{"Wads update finished"};
inline constexpr Message ImportOwnSources{"Your own script sources cannot be used, so the new levels were not put into them, and they are as they were. Mend the file, and import the wads again."};

inline constexpr Message ImportOwnSourcesStay{"Your own script sources stay as they are, since those of the package are not whole and cannot be merged into them: ~1. Its new levels are not in your script."};

inline constexpr Message ImportOwnEnglish{"Your own 'english.txt' cannot be used, so the names of the new levels were not put into it, and it is as it was."};

inline constexpr Message ImportNotBegun{"The wads were not imported, and nothing has been changed."};
inline constexpr Message ImportNotKept{"The import of wads stopped, since what it would replace could not be kept. All is as it was."};
inline constexpr Message ImportStopped{"The import of wads was stopped. All is as it was."};
inline constexpr Message ImportNotTakenBack{"The import of wads could not be taken back as a whole. It is tried again at the next start; until then no level comes into the Level Editor's folder."};
inline constexpr Message ImportNotEnded{"The wads are imported, but the import could not be noted as one that can be undone."};

inline constexpr Message ImportStillWaits{"An import of wads waits to be taken back. Start Kestrova again, or say \"kestrovactl mend\"."};
inline constexpr Message ImportTakenBack{"An import of wads was interrupted. All that it had put into the Level Editor's folder and its backup is out again."};
inline constexpr Message ImportRedoneLate{"Doing an import of wads again was interrupted. It is whole now, and can be undone."};
inline constexpr Message ImportEndedLate{"An import of wads was interrupted at its very end. It is whole, and can be undone."};
inline constexpr Message ImportFolderGone{"An import of wads was interrupted, and its Level Editor's folder is not there now: ~1. It is taken back once the folder is there again. Is it gone for good, \"kestrovactl mend --let-go\" drops the note; what the import replaced is listed by \"kestrovactl history originals\"."};
inline constexpr Message ImportLetGo{"The note of an interrupted import of wads is dropped. What it replaced in ~1 is listed by \"kestrovactl history originals\"."};
inline constexpr Message ImportNoteDamaged{"The note of an interrupted import of wads cannot be read. It lies in ~1; what the import replaced is listed by \"kestrovactl history originals\"."};

inline constexpr Message WaitingImport{"an import of wads was interrupted, and has to be taken back"};

inline constexpr Message ImportOtherFolder{"The import went into another Level Editor's folder: ~1"};
inline constexpr Message ImportChangedSince{"This file has changed since the import: ~1"};
inline constexpr Message ImportContentGone{"What the import replaced is not kept any more: ~1"};
inline constexpr Message ImportNotUndone{"The import of \"~1\" was not undone, and nothing has been changed. What it replaced is listed by \"kestrovactl history originals\"; each file can be brought back from there."};
inline constexpr Message ImportUndone{"The import of \"~1\" is undone"};
inline constexpr Message ImportUndoing{"The import is being taken back: ~1"};
inline constexpr Message ImportRedoing{"The import is being done again: ~1"};
inline constexpr Message ImportNotRedone{"The import of \"~1\" was not done again, and nothing has been changed. Its package can be imported anew."};
inline constexpr Message ImportNoneToUndo{"There is no import of wads that can be undone."};
inline constexpr Message AskUndoImport{"Take the import of \"~1\" back, with all that it put into the Level Editor's folder and its backup?"};

} // namespace kestrova::Msg
