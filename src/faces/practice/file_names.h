#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view PracticeZipTool = "zip";
inline constexpr std::string_view PracticeHere = ".";
inline constexpr std::string_view FragPracticeTrle = "\\trle";
inline constexpr std::string_view FragPracticeLevels = "\\levels";
inline constexpr std::string_view StandInGame = "kestrova-practice-game";
inline constexpr std::string_view StandInCompiler = "kestrova-practice-tom2pc";
inline constexpr std::string_view StandInScriptCompiler = "kestrova-practice-script";
inline constexpr std::string_view FragPracticeGame = "\\tomb4.exe";
inline constexpr std::string_view FragPracticeCompiler = "\\tom2pc.exe";
inline constexpr std::string_view FragPracticeScriptExe = "\\Script\\script.exe";
inline constexpr std::string_view FragPracticeItalianTxt = "\\Script\\italian.txt";
inline constexpr std::string_view FragPracticeScriptResult = "\\Script\\script.dat";
inline constexpr std::string_view FragPracticeEnglishResult = "\\Script\\english.dat";
inline constexpr std::string_view FragPracticeItalianResult = "\\Script\\italian.dat";
inline constexpr std::string_view FragPracticeTom = "\\Graphics\\Wads\\Practice.tom";
inline constexpr std::string_view FragTempleWad = "\\Graphics\\Wads\\TEMPLE.wad";
inline constexpr std::string_view FragTempleSwd = "\\Graphics\\Wads\\temple.SWD";
inline constexpr std::string_view FragPracticeTitleLevel = "\\DATA\\Title.tr4";
inline constexpr std::string_view FragPracticeTutorial = "\\DATA\\TUT1.tr4";
inline constexpr std::string_view FragPracticeSecond = "\\DATA\\coastal.TR4";
inline constexpr std::string_view FragPracticeScriptDat = "\\Script.dat";
inline constexpr std::string_view FragPracticeEnglishDat = "\\ENGLISH.DAT";
inline constexpr std::string_view FragPracticeLoad = "\\LOAD.BMP";
inline constexpr std::string_view FragPracticeWaveLower = "\\Audio\\~1.wav";
inline constexpr std::string_view FragPracticeWaveUpper = "\\Audio\\~1.WAV";
inline constexpr std::string_view FragPracticeManual = "\\manual\\Practice.HTM";
inline constexpr std::string_view FragPracticeManualPicture = "\\manual\\temple.jpg";
inline constexpr std::string_view FragPracticeScriptTxt = "\\Script\\SCRIPT.TXT";
inline constexpr std::string_view FragPracticeEnglishTxt = "\\Script\\english.txt";
inline constexpr std::string_view FragPracticeWad = "\\Graphics\\Wads\\Practice.WAD";
inline constexpr std::string_view FragPracticeSwd = "\\Graphics\\Wads\\Practice.swd";
inline constexpr std::string_view FragPracticeSteps = "\\Sound\\SAMPLES\\Steps_Stone.wav";
inline constexpr std::string_view FragPracticeDoor = "\\Sound\\SAMPLES\\DOOR_OPEN.WAV";
inline constexpr std::string_view FragPracticeSplash = "\\Sound\\SAMPLES\\splash.wav";
inline constexpr std::string_view FragBigOne = "\\title.tr4";
inline constexpr std::string_view FragBigTwo = "\\observatory.tr4";
inline constexpr std::string_view FragBigThree = "\\flooded.tr4";
inline constexpr std::string_view FragBigFour = "\\tunnels.tr4";
inline constexpr std::string_view FragBigFive = "\\starroom.tr4";
inline constexpr std::string_view FragBigSix = "\\lens.tr4";
inline constexpr std::string_view FragBigSeven = "\\surface.tr4";
inline constexpr std::string_view FragBigTuneOne = "\\104.wav";
inline constexpr std::string_view FragBigTuneTwo = "\\108.wav";
inline constexpr std::string_view FragBigTuneThree = "\\110.wav";
inline constexpr std::string_view FragBigTuneFour = "\\112.wav";
inline constexpr std::string_view FragLevelScript = "\\script.dat";
inline constexpr std::string_view FragLevelEnglish = "\\english.dat";
inline constexpr std::string_view FragLevelLoad = "\\load.bmp";
inline constexpr std::string_view FragItalianLevel = "\\Harbour.tr4";
inline constexpr std::string_view FragItalianTune = "\\105.WAV";
inline constexpr std::string_view FragItalianScript = "\\SCRIPT.DAT";
inline constexpr std::string_view FragItalianLanguage = "\\italian.dat";
inline constexpr std::string_view FragItalianNote = "\\Leggimi.txt";
inline constexpr std::string_view FragLettersLevel = "\\Schloß.tr4";
inline constexpr std::string_view FragLettersSecond = "\\Tür_im_Fels.tr4";
inline constexpr std::string_view FragLettersTune = "\\Fête.wav";
inline constexpr std::string_view FragLettersNote = "\\Führer für Gäste.txt";
inline constexpr std::string_view FragFoldersLevel = "\\Data\\Ridge.tr4";
inline constexpr std::string_view FragFoldersSecond = "\\Data\\Bonus\\nest.tr4";
inline constexpr std::string_view FragFoldersTune = "\\Audio\\106.wav";
inline constexpr std::string_view FragFoldersScript = "\\main files\\Script.dat";
inline constexpr std::string_view FragFoldersEnglish = "\\main files\\English.dat";
inline constexpr std::string_view FragFoldersLoad = "\\main files\\Load.bmp";
inline constexpr std::string_view FragFoldersNote = "\\docs\\walkthrough.txt";
inline constexpr std::string_view FragPicturesLevel = "\\ATTIC.TR4";
inline constexpr std::string_view FragPicturesNote = "\\readme.txt";
inline constexpr std::string_view FragPicturesOne = "\\attic by night.jpg";
inline constexpr std::string_view FragPicturesTwo = "\\the stairs.bmp";

} // namespace kestrova::OnDisk
