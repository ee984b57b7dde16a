#include "practice/content.h"

#include <array>

namespace kestrova
{

namespace
{

using enum Content;

constexpr std::array original = std::to_array<PracticeItem>({
    {Msg::FragPracticeTitleLevel, GameData, 900},
    {Msg::FragPracticeTutorial, GameData, 2600},
    {Msg::FragPracticeSecond, GameData, 1800},
    {Msg::FragPracticeScriptDat, Script},
    {Msg::FragPracticeEnglishDat, Language, 0, Msg::PracticeEnglishText},
    {Msg::FragPracticeLoad, LoadPicture},
    {Msg::FragPracticeManual, Text, 0, Msg::PracticeManualText},
    {Msg::FragPracticeManualPicture, Jpeg},
    {Msg::FragPracticeScriptTxt, Text, 0, Msg::PracticeScriptText},
    {Msg::FragPracticeEnglishTxt, Text, 0, Msg::PracticeEnglishText},
    {Msg::FragPracticeWad, GameData, 700},
    {Msg::FragPracticeSwd, GameData, 40},
    {Msg::FragPracticeSteps, Tune, 4},
    {Msg::FragPracticeDoor, Tune, 9},
    {Msg::FragPracticeSplash, Tune, 6},
});

// Together with 0.9 MB of load picture these are 100 MB: 60 seconds of music are 2.66 MB.
constexpr std::array big = std::to_array<PracticeItem>({
    {Msg::FragBigOne, GameData, 4100},
    {Msg::FragBigTwo, GameData, 21900},
    {Msg::FragBigThree, GameData, 17500},
    {Msg::FragBigFour, GameData, 14200},
    {Msg::FragBigFive, GameData, 12800},
    {Msg::FragBigSix, GameData, 9700},
    {Msg::FragBigSeven, GameData, 8300},
    {Msg::FragBigTuneOne, Tune, 900},
    {Msg::FragBigTuneTwo, Tune, 700},
    {Msg::FragBigTuneThree, Tune, 500},
    {Msg::FragBigTuneFour, Tune, 280},
    {Msg::FragLevelScript, Script},
    {Msg::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {Msg::FragLevelLoad, LoadPicture},
});

constexpr std::array italian = std::to_array<PracticeItem>({
    {Msg::FragItalianLevel, GameData, 3100},
    {Msg::FragItalianTune, Tune, 60},
    {Msg::FragItalianScript, Script},
    {Msg::FragItalianLanguage, Language, 0, Msg::PracticeItalianText},
    {Msg::FragLevelLoad, LoadPicture},
    {Msg::FragItalianNote, Text, 0, Msg::PracticeItalianNote},
});

constexpr std::array letters = std::to_array<PracticeItem>({
    {Msg::FragLettersLevel, GameData, 2400},
    {Msg::FragLettersSecond, GameData, 1700},
    {Msg::FragLettersTune, Tune, 45},
    {Msg::FragLevelScript, Script},
    {Msg::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {Msg::FragLevelLoad, LoadPicture},
    {Msg::FragLettersNote, Text, 0, Msg::PracticeLettersNote},
});

constexpr std::array folders = std::to_array<PracticeItem>({
    {Msg::FragFoldersLevel, GameData, 3600},
    {Msg::FragFoldersSecond, GameData, 1100},
    {Msg::FragFoldersTune, Tune, 50},
    {Msg::FragFoldersScript, Script},
    {Msg::FragFoldersEnglish, Language, 0, Msg::PracticeEnglishText},
    {Msg::FragFoldersLoad, LoadPicture},
    {Msg::FragFoldersNote, Text, 0, Msg::PracticeFoldersNote},
});

constexpr std::array pictures = std::to_array<PracticeItem>({
    {Msg::FragPicturesLevel, GameData, 2900},
    {Msg::FragLevelScript, Script},
    {Msg::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {Msg::FragLevelLoad, LoadPicture},
    {Msg::FragPicturesNote, Text, 0, Msg::PracticePicturesNote},
    {Msg::FragPicturesOne, Jpeg},
    {Msg::FragPicturesTwo, Bitmap},
});

constexpr PracticeLevel originalLevel{Msg::PracticeTrleTitle, 0, false, original};
constexpr std::array levels = std::to_array<PracticeLevel>({
    {Msg::PracticeLevelBig, 1, false, big},
    {Msg::PracticeLevelItalian, 2, true, italian},
    {Msg::PracticeLevelLetters, 3, false, letters},
    {Msg::PracticeLevelFolders, 4, true, folders},
    {Msg::PracticeLevelPictures, 5, false, pictures},
});

} // namespace

const PracticeLevel& PracticeOriginal()
{
    return originalLevel;
}
std::span<const PracticeLevel> PracticeLevels()
{
    return levels;
}

} // namespace kestrova
