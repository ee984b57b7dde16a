#pragma once

#include "words/message.h"

// clang-format off

/// What the menus say.
namespace kestrova::Msg
{

inline constexpr Message MenuFile{"File"};
inline constexpr Message MenuNew{"New Archive"};
inline constexpr Message MenuLoad{"Load Archive"};
inline constexpr Message MenuSave{"Save Archive"};
inline constexpr Message MenuSaveAs{"Save Archive  as ..."};
inline constexpr Message MenuExit{"Exit"};
inline constexpr Message MenuLevel{"Levels"};
inline constexpr Message MenuAddLevel{"Add new level"};
inline constexpr Message MenuAddMany{"Add many levels ..."};
inline constexpr Message MenuProperty{"Properties of current level"};
inline constexpr Message MenuLanguage{"Language of level"};
inline constexpr Message MenuRemoveLevel{"Delete current level"};
inline constexpr Message MenuExport{"Export all files of current level in zip file"};
inline constexpr Message MenuShowLevelUrls{"Show urls where download new levels"};
inline constexpr Message MenuImportSavegame{"Import extern savegames in current level"};
inline constexpr Message MenuExportSavegame{"Export savegames from current level to other folder"};
inline constexpr Message MenuSendSaveGame{"Send savegames of current level to other people via Email"};
inline constexpr Message MenuBackupSavegame{"Free tombraider slot and archive savegames (F9 while you are playing)"};
inline constexpr Message MenuRestoreSavegames{"Restore in slots old savegames (F11 while you are playing)"};
inline constexpr Message MenuScreenShots{"ScreenShots"};
inline constexpr Message MenuCopyScreenShots{"Import ScreenShots archived in Brivanta program"};
inline constexpr Message MenuCaptureScreen{"Capture screenshot ([Print Screen] key  while you are playing)"};
inline constexpr Message MenuAddScreenshot{"Add new screenshot"};
inline constexpr Message MenuDeleteShot{"Delete"};
inline constexpr Message MenuRenameShot{"Rename"};
inline constexpr Message MenuResizeSave{"Resize and save ..."};
inline constexpr Message MenuSaveShot{"Save as ..."};
inline constexpr Message MenuUseAsCover{"Use as cover of the level"};
inline constexpr Message MenuCoverBack{"Choose the cover automatically"};
inline constexpr Message MenuTools{"Tools"};
inline constexpr Message MenuInstallTrle{"Installation of Tomb Raider Level Editor"};
inline constexpr Message MenuInstallTrleFolder{"Install Level Editor from a TRLE folder"};
inline constexpr Message MenuInstallCompressed{"Install Compress Level Editor"};
inline constexpr Message MenuConvertAudio{"Convert audio files "};
inline constexpr Message MenuDecodeMp3{"Decode: MP3 -> WAV"};
inline constexpr Message MenuEncodeMp3{"Encode: WAV -> MP3"};
inline constexpr Message MenuConvertWav{"Convert: WAV - >  different WAV format"};
inline constexpr Message MenuMaintenance{"Archive maintenance"};
inline constexpr Message MenuComputeSize{"Re-compute archive size"};
inline constexpr Message MenuMoveArchive{"Move Archive Folder"};
inline constexpr Message MenuCheckEqual{"Check for equal levels in archive"};
inline constexpr Message MenuCopyFileInfos{"Copy all [more info] files From Cd to HD"};
inline constexpr Message MenuCreateTr4Infos{"Create all [info tr4 files] to fast equal levels check"};
inline constexpr Message MenuFullBackup{"Create\\Refresh full backup"};
inline constexpr Message MenuRecover{"Recover archive from HD folder"};
inline constexpr Message MenuImportWads{"Import new/updated wads"};
inline constexpr Message MenuShowUrlList{"Show url list about Level Editor's World"};
inline constexpr Message MenuMoveOnCd{"Create Kestrova CD (with Levels and/or Programs)"};
inline constexpr Message MenuCompareTrle{"Compare trle mirror folders (debug)"};
inline constexpr Message MenuDoctor{"Check and repair ..."};
inline constexpr Message MenuSetOriginal{"Set original configuration in TRLE"};
inline constexpr Message MenuSetupUpload{"Upload level files Wizard  (for game designer)"};
inline constexpr Message MenuSettings{"Kestrova"};
inline constexpr Message MenuPrefArchive{"Current archive"};
inline constexpr Message MenuHelp{"Help"};
inline constexpr Message MenuAbout{"About Kestrova"};
inline constexpr Message MenuFindHelp{"Help Kestrova"};
inline constexpr Message MenuHelpSaveGameMan{"Help Brivanta "};
inline constexpr Message MenuHelpFaq{"How to solve problems (style FAQ help)"};
inline constexpr Message MenuStartSaveGameMan{"Start Brivanta program"};
inline constexpr Message MenuPreferences{"Preferences"};
inline constexpr Message MenuSaveGames{"Savegames"};
inline constexpr Message HistoryTitle{"History of savegames"};

} // namespace kestrova::Msg
