#pragma once

#include "words/message.h"

// clang-format off

/// The setup of the Level Editor.
namespace kestrova::Msg
{

inline constexpr Message SetupAgain{"Tomb Raider Level Editor is already installed on your pc. However, do you install it newly?"};
inline constexpr Message SetupChooseFolder{"Select source TRLE folder to install"};
inline constexpr Message SetupChooseZip{"Select compress trle setup .zip file"};
inline constexpr Message SetupChooseTarget{"Select the folder to install Tomb Raider Level Editor into"};
inline constexpr Message SetupZipTwice{"File '~1' already exists"};
inline constexpr Message SetupZipMissing{"it is not there: ~1"};
inline constexpr Message SetupInstalling{"Installing Tomb Raider Level Editor"};
inline constexpr Message SetupDone{"Tomb Raider Level Editor correctly installed"};
inline constexpr Message SetupFromFolderFailed{"Setup from folder failed"};
inline constexpr Message SetupAtStartFailed{"Failed trle setup from folder"};
inline constexpr Message SetupStopped{"Setup stopped"};
inline constexpr Message SetupFailed{"Tomb Raider Level Editor setup failed"};
inline constexpr Message SetupNoRoomHere{"In current unit free space is not sufficient to install Tomb Raider Level Editor, sorry.~1Tomb Raider Level Editor needs about 250 Mb of available space"};
inline constexpr Message SetupVerifySize{"Verify source trle size in progress..."};
inline constexpr Message SetupOtherDrive{"Warning. Unit [C:] has not enough free space to install Tomb Raider Level Editor.~1Do you want install program in other drive?"};
inline constexpr Message SetupRoomOf{"~1 has ~2 free, and ~3 are needed."};
inline constexpr Message SetupNoDrive{"Sorry, no disk in your pc has enough free space to install Tomb Raider Level Editor. (Required space = "};
inline constexpr Message SetupNoZips{"You must insert in list box full path of compress setup zip file/s"};
inline constexpr Message SetupNotice{"Setup will last several minutes (about 25 minutes on PC Pentium 600mhz)~1Please, don't stop setup and don't launch ohter applications~2You will not be ever prompted in setup phase if there are no errors"};
inline constexpr Message SetupWhere{"Level Editor: ~1"};
inline constexpr Message SetupUnzipping{"Unzipping '~1' in progress"};
inline constexpr Message SetupUnzipFailed{"Error unzipping '"};
inline constexpr Message SetupCheckingSource{"Checking integrity source setup files"};
inline constexpr Message SetupNotTrle{"Folder ~1 is not TRLE folder"};
inline constexpr Message SetupListMissing{"Warning: missing 'list.txt' file in folder '~1I cann't check integrity setup files~2Do you want continue?"};
inline constexpr Message SetupFilesMissing{"Error. In setup files missing following files: ~1Do you want continue?"};
inline constexpr Message SetupMoreMissing{"There could be more missing files..."};
inline constexpr Message SetupCopying{"Copying files from "};
inline constexpr Message SetupCopyFailed{"Error copying files from folder [~1] to folder ["};
inline constexpr Message SetupFlags{"Removing only read flag from "};
inline constexpr Message SetupLinks{"Creating link files in progress..."};
inline constexpr Message SetupNoLinkFolder{"I cann't create folder: "};
inline constexpr Message SetupLoadFailed{"Error converting file : ~1It's necessary to create 'load.bmp' file."};
inline constexpr Message SetupLanguageFailed{"Error copying file: ~1\\script\\"};
inline constexpr Message SetupScriptFailed{"Error copying file: ~1\\script\\script.dat"};
inline constexpr Message SetupMusic{"Converting audio files in progress (AUDIO folder)"};
inline constexpr Message SetupSamples{"Converting audio files in progress (SOUND\\SAMPLES folder)"};
inline constexpr Message SetupAudioFailed{"Failed audio conversion: "};
inline constexpr Message SetupRemovingMp3{"Removing .mp3 files in progress"};
inline constexpr Message SetupCompiling{"Creating .tr4 files (compiling .tom files)"};
inline constexpr Message SetupCompileFailed{"Error compiling '"};
inline constexpr Message SetupRegistering{"Creating register key"};
inline constexpr Message SetupRegisterFailed{"Warning: error creating register key"};
inline constexpr Message SetupCheckingTarget{"Checking integrity target setup files"};
inline constexpr Message SetupTargetFine{"OK (No errors)"};
inline constexpr Message SetupTargetErrors{" Errors: "};
inline constexpr Message SetupFinished{"Setup finished"};
inline constexpr Message SetupError{"error: "};
inline constexpr Message SetupContinue{"Do you want continue?"};

inline constexpr Message SetupNoTarget{"Say which folder the Level Editor is to be installed into."};
inline constexpr Message SetupTargetFull{"The folder ~1 holds something already, so the Level Editor was not installed there, and nothing was changed. Choose a folder that is empty, or one that is not there yet."};
inline constexpr Message SetupTargetNoFolder{"~1 is no folder, so the Level Editor cannot be installed there. Nothing was changed. Choose a folder that is empty, or one that is not there yet."};
inline constexpr Message SetupTargetInSource{"The folder ~1 and the folder that the setup comes from lie one in the other. Nothing was changed. Choose another folder to install into."};
inline constexpr Message SetupTargetKept{"The folder ~1 lies in Kestrova's own folder, or among the files of an archive, a level or the Level Editor in use. Nothing was changed. Choose another folder to install into."};
inline constexpr Message SetupTargetTooLong{"This folder's name is too long for the preferences (more than 256 bytes): ~1. Nothing was changed. Choose a folder with a shorter path."};
inline constexpr Message SetupNotPlaced{"The Level Editor could not be put into its place, and nothing is left of it: ~1"};
inline constexpr Message SetupNotPrepared{"No place could be made to work in, and nothing was changed: ~1"};
inline constexpr Message SetupGoesOn{"The setup that was broken off had brought the Level Editor to ~1 already. It goes on there."};

inline constexpr Message SetupRoomThere{"Free there: ~1. The Level Editor needs about 250 MB."};

inline constexpr Message InstallaTitle{" Compress TR Level Editor Setup"};
inline constexpr Message InstallaFolderTitle{" TR Level Editor Setup"};
inline constexpr Message InstallaAdd{"Add zip file"};
inline constexpr Message InstallaRemove{"Remove from list"};
inline constexpr Message InstallaLanguage{"Choose language :"};
inline constexpr Message InstallaTarget{"Install into:"};
inline constexpr Message InstallaBrowse{"Browse ..."};
inline constexpr Message InstallaInstall{"Install"};
inline constexpr Message InstallaFrom{"From: ~1"};
inline constexpr Message InstallaZipsName{"Zip files of the setup"};
inline constexpr Message InstallaHint{"Add the zip files of the setup, in their order, or drop them here."};

inline constexpr Message SetupLanguageNames{"English|Italian|French|German|Spanish|Russian (only manual, other in english)"};
inline constexpr Message LinkGroup{"Tomb Raider Level Editor|Editor dei livelli di Tomb Raider|Editeur de niveaux de Tomb Raider|Tomb-Raider-Level-Editor|Editor de Niveles de Tomb Raider"};
inline constexpr Message LinkDocuments{"Documentation|Documentazione|Documentation|Dokummentation|Documentación"};
inline constexpr Message LinkTools{"Tools|Strumenti|Outils|Tools|Herramientas"};
inline constexpr Message LinkWeb{"Web Links|Collegamenti Web|Sites Web|Weblinks|Vinculos de Web"};
inline constexpr Message LinkGame{"Run Tomb Raider|Avvia Tomb Raider|Lancer Tomb Raider|Tomb Raider starten|Ejecutar Tomb Raider"};
inline constexpr Message LinkGameSetup{"Setup Tomb Raider|Configurazione di Tomb Raider|Configurer Tomb Raider|Setup Tomb Raider|Configuración de Tomb Raider"};
inline constexpr Message LinkManual{"Manual|Manuale|Manuel|Handbuch|Manual"};
inline constexpr Message LinkRoomEditor{"Room Editor|Editor delle stanze|Editeur de pièces|Zimmer-Editor|Editor de habitación"};
inline constexpr Message LinkConverter{"Level Convertor|Convertitore dei livelli|Convertisseur de Niveaux|Level-Konverter|Conversor de niveles"};

} // namespace kestrova::Msg
