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
inline constexpr Message PracticeLevelBig{"The Drowned Observatory"};
inline constexpr Message PracticeLevelItalian{"Lanterns of Salt Harbour"};
inline constexpr Message PracticeItalianNote{"Le lanterne del porto si spengono una dopo l'altra.~1Riaccendile tutte prima dell'alba.~1"}; // every one is filled
inline constexpr Message PracticeLevelLetters{"Schloß Grünfels"};
inline constexpr Message PracticeLettersNote{"Das Schloß schläft.~1Die Tür im Fels öffnet sich nur für Gäste.~1"}; // every one is filled
inline constexpr Message PracticeLevelFolders{"Winds over Kestrel Ridge"};
inline constexpr Message PracticeFoldersNote{"Climb the ridge while the wind rests.~1The nest is behind the third pillar.~1"}; // every one is filled
inline constexpr Message PracticeLevelPictures{"The Clockmaker's Attic"};
inline constexpr Message PracticePicturesNote{"The Clockmaker's Attic~1~1Author: the practice folder~1~1Every clock in the house stopped at the "        "same minute.~1Find the four springs, wind the great clock and leave before it strikes.~1"}; // every one is filled

} // namespace kestrova::Msg
