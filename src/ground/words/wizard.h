#pragma once

#include "words/message.h"

// clang-format off

/// The wizard that makes a level ready for others.
namespace kestrova::Msg
{

inline constexpr Message UploadTitle1{"Upload wizard - Step 1 : Overwiev"};
inline constexpr Message UploadTitle2{"Upload wizard - Step 2 : Set level files"};
inline constexpr Message UploadTitle3{"Upload wizard - Step 3 : Author's infos"};
inline constexpr Message UploadTitle4{"Upload wizard - Step 4 : Level's infos"};
inline constexpr Message UploadTitle5{"Upload wizard - Step 5 : Import wads files"};
inline constexpr Message UploadTitle6{"Upload wizard - Step 6 : Specify wad files used for conversion"};
inline constexpr Message UploadTitle7{"Upload wizard - Step 7 : End notes"};

inline constexpr Message UploadNoExe{"<Files setup is not in .exe format>"};
inline constexpr Message UploadExeZip{"Setup files are enclosed in a Zip Autoextractor file"};
inline constexpr Message UploadExeTrle{"Exe installs files in Tomb Raider Level Editor folder"};
inline constexpr Message UploadExeMirror{"Exe installs files in Mirror TR Level Editor folder"};
inline constexpr Message UploadExeFlyDrive{"Exe installs files using FlyDrive"};
inline constexpr Message UploadNone{"<NONE>"};
inline constexpr Message UploadTr4{"Tr4 The Last Revelation"};
inline constexpr Message UploadTr5{"Tr5 Chronicles"};

inline constexpr Message UploadNoFiles{"You must insert your level files"};
inline constexpr Message AskUploadDocument{"You have not selected any file as [more info]~1If exits a readme or walkthrought file, please select it, otherwise press [NO] button.~2Have you a documentation file?"};
inline constexpr Message UploadNameTooLong{"Your name field is too long. Please reduce size to max 80 characters"};
inline constexpr Message UploadMessageTooLong{"A message to readers field is too long. Please reduce size to max 255 characters"};
inline constexpr Message UploadEmailsTooLong{"Author's emails field is too long. Please, remove any email address"};
inline constexpr Message UploadSitesTooLong{"Author's web sites field is too long. Please, remove any url address"};
inline constexpr Message UploadNoLevelName{"You must type level name"};
inline constexpr Message UploadLevelNameTooLong{"Level name is too long. Please reduce size to max 255 characters"};
inline constexpr Message UploadNoteTooLong{"Single row note is too long. Please reduce size to max 255 characters"};
inline constexpr Message UploadNoImportNotes{"Please, insert a description for files to download"};
inline constexpr Message UploadListTooLong{"The configuration file has no room for all of this. Please, shorten or remove some of it: ~1"};
inline constexpr Message UploadDocumentTooLong{"The configuration file has room for 80 letters of the name of the [more info] file. Rename the file, and add it again: ~1"};
inline constexpr Message UploadLetters{"A configuration file cannot hold these letters: ~1. Please write it with the letters of western Europe"};
inline constexpr Message UploadDuplicates{"The configuration file that came with the files names files to duplicate. What this wizard writes never does, so that part was left out. Put the files themselves into the package instead."};

inline constexpr Message AddEmailTitle{"Add email address"};
inline constexpr Message AskOtherEmail{"Change current email adresss"};
inline constexpr Message ChangeEmailTitle{"Change email"};
inline constexpr Message AskWebSite{"Insert new web site"};
inline constexpr Message AddSiteTitle{"Add web site"};
inline constexpr Message AskOtherSite{"Change current web site"};
inline constexpr Message ChangeSiteTitle{"Change web site"};
inline constexpr Message ValueMissing{"Value missing"};
inline constexpr Message FileNeedsExtension{"Please specifiy an extension for file: "};
inline constexpr Message FileWithoutPath{"Please don't insert any path for file: "};
inline constexpr Message UploadNoUrl{"You must insert url where download file"};
inline constexpr Message UploadNoCd{"You must select orginal Tomb Raider Cd from where copy extern wave"};
inline constexpr Message WaveNoSource{"You must type a source file for target file '~1'"};
inline constexpr Message WaveNoTarget{"You must type a target file for source file '~1'"};
inline constexpr Message WaveNoPath{"You must type file names without path but only single name"};
inline constexpr Message WaveNoExtension{"You must specific a file extension"};
inline constexpr Message UploadNoTom{"You must select tom file name"};
inline constexpr Message UploadNoWads{"You must select wad files used to convert your tom file"};
inline constexpr Message ImportWadsRow{"CHECK: ~1  URL: "};
inline constexpr Message ExternWaveRow{" FROM ~1 OR "};
inline constexpr Message ExternWaveTarget{" -> "};
inline constexpr Message TomWadsRow{" CONVERT USING -> "};

inline constexpr Message LoadBmpNotFound{"load.bmp not found"};
inline constexpr Message ErrorLoadBmp{"Error convrting load.bmp to load.jpg"};
inline constexpr Message ErrorCopyingDecoder{"Error copying decoder utility from '~1' to temp folder: "};
inline constexpr Message NoWavFiles{"Found no wav files."};
inline constexpr Message AudioInProgress{"Audio conversion in progress"};
inline constexpr Message ErrorConvertingWaves{"Error converting wav files: "};
inline constexpr Message DecoderLacks{"The package goes without ~1, which does not lie in the program's folder ~2. Whoever adds the level with Kestrova needs none of it: the sounds are decoded there."};

inline constexpr Message UploadSaveTitle{"Save upload zip file"};
inline constexpr Message UploadZipping{"Zipping files in progress. Wait please ..."};
inline constexpr Message UploadErrorZipping{"Error zipping file in: "};
inline constexpr Message UploadTextsKept{"No package was made; the level's own files are untouched. What you filled in is kept: the wizard brings it back when you open it again."};
inline constexpr Message UploadTextsNotKept{"What you filled in could not be kept either, so the wizard stays open. Make room on the disk, and press Finish again."};
inline constexpr Message UploadTextsNotRead{"What you filled in for the last package could not be read: ~1. The file stays where it is."};
inline constexpr Message AskUploadTexts{"The last package was not made. Do you want back what you filled in then? With No it is forgotten."};
inline constexpr Message UploadDone{"Create zip file in: "};
inline constexpr Message UploadClearing{"Removing temporary folder. Wait please ..."};
inline constexpr Message UploadNotBegun{"The wizard's folder could not be made: ~1. Nothing has been changed. Make room on the disk, or give yourself the right to write there, and try again."};

inline constexpr Message UploadTitle{"Upload wizard"};
inline constexpr Message UploadBack{"Back"};
inline constexpr Message UploadNext{"Next"};
inline constexpr Message UploadFinish{"Finish"};
inline constexpr Message UploadOverview{"This wizard makes one zip of your level, ready to be uploaded. With it Kestrova adds the level for its players all by itself: with its texts, its readme, the wads and sounds that it needs from elsewhere.~1You will be asked for:~2~3~4Your own files are only read. The wizard works on copies, and your folder stays as it is."};
inline constexpr Message UploadOverviewStep{"~1.  ~2~3"};
inline constexpr Message UploadOverviewFiles{"the level's files, or a zip or folder with them"};
inline constexpr Message UploadOverviewAuthor{"your name, addresses, and a message to the players"};
inline constexpr Message UploadOverviewLevel{"the level's name, and a note on it"};
inline constexpr Message UploadOverviewImport{"wads and sounds that players need from elsewhere, if there are any"};
inline constexpr Message UploadOverviewTom{"the wads for .tom files, if there are any"};
inline constexpr Message UploadOverviewEnd{"where the zip is to be saved"};
inline constexpr Message UploadDropHint{"Drop the level's files here, or a zip or a folder with them. A kestrova.cfg among them fills in the other pages."};
inline constexpr Message UploadAddFolder{"Add folder ..."};
inline constexpr Message UploadRemoveFile{"Remove file"};
inline constexpr Message UploadMoreInfo{"More info (readme):"};
inline constexpr Message UploadComprBmp{"load.bmp as jpeg"};
inline constexpr Message UploadComprWav{"Waves as mp3 ..."};
inline constexpr Message UploadComprBmpTip{"Makes the load picture much smaller."};
inline constexpr Message UploadComprWavTip{"Makes the sounds much smaller. Only the copies in the package change."};
inline constexpr Message UploadMessageFrame{" A message to readers "};
inline constexpr Message UploadEmailFrame{" Email addresses "};
inline constexpr Message UploadSiteFrame{" Web sites "};
inline constexpr Message UploadItemAdd{"Add ..."};
inline constexpr Message UploadItemChange{"Change ..."};
inline constexpr Message UploadItemRemove{"Remove"};
inline constexpr Message UploadLevelName{"Level name:"};
inline constexpr Message UploadLevelNote{"Single row note:"};
inline constexpr Message UploadExeFormat{"Setup files:"};
inline constexpr Message UploadLevelHint{"A setup that is an .exe is run by Kestrova as you say here, when a player adds the level."};
inline constexpr Message UploadImportFrame{" Wad packages that players download "};
inline constexpr Message UploadCheck{"File to look for:"};
inline constexpr Message UploadUrl{"Url of the package:"};
inline constexpr Message UploadNotes{"What players are told:"};
inline constexpr Message UploadCheckTip{"A file of the package, such as newcity.wad. Where it is in graphics\\wads of the Level Editor's folder, nothing is downloaded."};
inline constexpr Message UploadWaveFrame{" Sounds that come from a Tomb Raider CD "};
inline constexpr Message UploadFromCd{"From cd:"};
inline constexpr Message UploadWaveSource{"File on the cd:"};
inline constexpr Message UploadWaveTarget{"Name in the level:"};
inline constexpr Message UploadWaveMissing{"Or this file:"};
inline constexpr Message UploadWaveMissingTip{"Where the player has no cd, this file of the level, or of the Level Editor's folder audio, is taken."};
inline constexpr Message UploadChooseCd{"Choose a cd"};
inline constexpr Message UploadRowAdd{"Add"};
inline constexpr Message UploadRowUpdate{"Update"};
inline constexpr Message UploadRowRemove{"Remove"};
inline constexpr Message UploadTomFrame{" Wads with which tom files are converted "};
inline constexpr Message UploadTom{"Tom file:"};
inline constexpr Message UploadWads{"Wads:"};
inline constexpr Message UploadNoTomHint{"The level has no tom files, so nothing is needed here. Go on with Next."};
inline constexpr Message UploadTomHint{"A tom file whose wads have its own name needs nothing here."};
inline constexpr Message UploadConfigOnly{"Pack only the configuration file, for the online database"};
inline constexpr Message UploadEndHint{"All is ready. Finish asks where the zip is to be saved, and packs ~1 of the level ~2.~3To try it, drop the zip onto Kestrova's main window: the level must come in with all its texts."};

} // namespace kestrova::Msg
