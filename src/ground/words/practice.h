#pragma once

#include "words/message.h"

// clang-format off

/// The practice folder.
namespace kestrova::Msg
{

inline constexpr Message PracticeExists{"~1 is already there, and nothing was changed. Choose another folder, or remove that one first."};
inline constexpr Message PracticeNoProgram{"The stand-in program ~1 is missing, and nothing was made. Install or build the program again."};
inline constexpr Message PracticeNoZip{"The levels were not packed as zips too, since the program 'zip' is not installed. The folders are complete."};
inline constexpr Message PracticeZipFailed{"The program 'zip' did not pack ~1. The folders are complete."};
inline constexpr Message PracticePacking{"Packing ~1"};
inline constexpr Message PracticeTrleTitle{"TRLE"};
inline constexpr Message PracticeManualText{"<html><head><title>Practice folder</title></head><body>~1<h1>A Level Editor's folder to "        "practise with</h1>~1<p><img src=\"temple.jpg\" alt=\"A temple\"></p>~1<p>Everything in this "        "folder was made by Kestrova. It has the shape of a real Level Editor's folder, and levels can "        "be played in it and taken out again, but no real game is here: <b>tomb4.exe</b> is a small "        "stand-in. It shows the load picture and the name of the level that is installed.</p>~1<p>Press "        "S in the game to save. The savegame belongs to the level that is installed, and it must be "        "there again when you come back to that level. Q ends the game.</p>~1</body></html>~1"}; // every one is filled
inline constexpr Message PracticeScriptText{"; The script of the practice folder.~1;title=TRLE~1~1[Language]~1File= 0,english.txt~1File= "        "1,italian.txt~1~1[Options]~1FirstLevel= Tut1~1~1[Title]~1Level= "        "DATA\\TITLE,104~1~1[Level]~1Name= Tut1~1Level= DATA\\TUT1,108~1"}; // every one is filled
inline constexpr Message PracticeEnglishText{"; The words of the practice folder.~1~1[Strings]~1;The names of the levels stand first.~1Tut1~1Level two~1Level three~1Level "        "four~1Load Game~1Save Game~1New Game~1Game over~1A key of stone~1The gate is open~1~1[PSXStrings]~1; Of another machine.~1Press "        "the button~1~1[PCStrings]~1Press a key~1"}; // every one is filled
inline constexpr Message PracticeItalianText{"; Le parole in italiano.~1~1[Strings]~1;I nomi dei livelli vengono prima.~1Tut1~1Livello due~1Livello tre~1Livello "        "quattro~1Carica partita~1Salva partita~1Nuova partita~1Fine della partita~1Una chiave di "        "pietra~1Il cancello è aperto~1~1[PSXStrings]~1; Di un'altra macchina.~1Premi il "        "tasto~1~1[PCStrings]~1Premi un tasto~1"}; // every one is filled
inline constexpr Message PracticeTomText{"KVTOM~1name=Practice~1"}; // every one is filled
inline constexpr Message PracticeSoundList{"STEPS: steps_stone~1DOOR: door_open~1SPLASH: splash~1"}; // every one is filled
inline constexpr Message PracticeLevelBig{"The Drowned Observatory"};
inline constexpr Message PracticeLevelItalian{"Lanterns of Salt Harbour"};
inline constexpr Message PracticeItalianNote{"Le lanterne del porto si spengono una dopo l'altra.~1Riaccendile tutte prima dell'alba.~1"}; // every one is filled
inline constexpr Message PracticeLevelLetters{"Schloß Grünfels"};
inline constexpr Message PracticeLettersNote{"Das Schloß schläft.~1Die Tür im Fels öffnet sich nur für Gäste.~1"}; // every one is filled
inline constexpr Message PracticeLevelFolders{"Winds over Kestrel Ridge"};
inline constexpr Message PracticeFoldersNote{"Climb the ridge while the wind rests.~1The nest is behind the third pillar.~1"}; // every one is filled
inline constexpr Message PracticeLevelPictures{"The Clockmaker's Attic"};
inline constexpr Message PracticePicturesNote{"The Clockmaker's Attic~1~1Author: the practice folder~1~1Every clock in the house stopped at the "        "same minute.~1Find the four springs, wind the great clock and leave before it strikes.~1"}; // every one is filled
inline constexpr Message PracticePackageSalt{"The Salt Mine"};
inline constexpr Message PracticeSaltTom{"KVTOM~1name=The Salt Mine~1needs=sam~1"}; // every one is filled
inline constexpr Message PracticeSaltSamples{"drip.wav~1cart.wav~1Steps_Stone.wav~1"}; // every one is filled
inline constexpr Message PracticeSaltNote{"The Salt Mine~1~1The mine comes as sources: its tom file has to be compiled before it can be played.~1Kestrova does so by itself.~1"}; // every one is filled
inline constexpr Message PracticePackageWells{"Two Wells"};
inline constexpr Message PracticeWellOneTom{"KVTOM~1name=The dry well~1"}; // every one is filled
inline constexpr Message PracticeWellTwoTom{"KVTOM~1name=The deep well~1"}; // every one is filled
inline constexpr Message PracticeWellNotes{"Two Wells~1~1Both levels use wads that every Level Editor has. Use practice.wad for well_one.tom first.~1~1The second well is older than the first one, and a good deal darker; the rope is behind the mill.~1Use temple.wad for well_two.tom then.~1"}; // every one is filled
inline constexpr Message PracticePackageDoors{"Seven Doors"};
inline constexpr Message PracticeDoorATom{"KVTOM~1name=The first door~1"}; // every one is filled
inline constexpr Message PracticeDoorBTom{"KVTOM~1name=The second door~1needs=swd~1"}; // every one is filled
inline constexpr Message PracticeDoorCTom{"KVTOM~1name=The third door~1"}; // every one is filled
inline constexpr Message PracticeDoorsNote{"Seven Doors~1~1What this level needs stands in its kestrova.cfg: the wads of the lagoon, a tune of the game, and which wads each of its three tom files is compiled with.~1"}; // every one is filled
inline constexpr Message PracticeDoorsShortNote{"Every step of the configuration in one level"};
inline constexpr Message PracticeDoorsImportNote{"The wads of the lagoon lie beside this level, in the practice folder's packages."};
inline constexpr Message PracticePackageLagoon{"lagoon_wads"};
inline constexpr Message PracticeLagoonTom{"KVTOM~1name=The Lagoon~1"}; // every one is filled
inline constexpr Message PracticeLagoonScript{"; The lagoon alone.~1~1[Title]~1Level= DATA\\TITLE,104~1~1[Level]~1Name= The Lagoon~1Level= DATA\\lagoon,112~1Horizon= ENABLED~1"}; // every one is filled
inline constexpr Message PracticeLagoonStrings{"[Strings]~1Tut1~1Level two~1The Lagoon~1Level four~1Load Game~1Save Game~1New Game~1Game over~1A key of stone~1The gate is open~1~1[PSXStrings]~1Press the button~1~1[PCStrings]~1Press a key~1"}; // every one is filled
inline constexpr Message PracticeLagoonHeader{"#define LAGOON_REED 3~1#define LAGOON_BOAT 4~1"}; // every one is filled
inline constexpr Message PracticeLagoonSounds{"RIPPLE: ripple~1"};
inline constexpr Message PracticePackageSetup{"Saltgate setup, ~1"};
inline constexpr Message PracticePackageGate{"Saltgate"};
inline constexpr Message PracticeGateNote{"Saltgate~1~1A level that comes with a program to install it.~1"}; // every one is filled
inline constexpr Message PracticePackageEditor{"Level Editor setup"};
inline constexpr Message PracticeSetupManual{"%PDF-1.1~11 0 obj<</Type/Catalog/Pages 2 0 R>>endobj~12 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj~13 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 80]/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>endobj~14 0 obj<</Length 49>>stream~1BT /F 12 Tf 10 40 Td (Practice Level Editor) Tj ET~1endstream endobj~15 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj~1trailer<</Root 1 0 R>>~1%%EOF~1"}; // every one is filled
inline constexpr Message PracticeSetupMaker{"[InternetShortcut]~1URL=http://practice.invalid/maker~1"}; // every one is filled
inline constexpr Message PracticeSetupSeller{"[InternetShortcut]~1URL=http://practice.invalid/seller~1"}; // every one is filled
inline constexpr Message PracticeSetupTitleTom{"KVTOM~1name=The title~1"}; // every one is filled
inline constexpr Message PracticeNoSetupRoom{"The stand-in program ~1 cannot be made into a setup program, and nothing was made. Install or build the program again."};

} // namespace kestrova::Msg
