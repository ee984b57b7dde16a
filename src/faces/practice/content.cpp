#include "practice/content.h"

#include "practice/file_names.h"
#include "words/practice.h"

#include <array>

namespace kestrova
{

namespace
{

using enum Content;

constexpr std::array original = std::to_array<PracticeItem>({
    {OnDisk::FragPracticeTitleLevel, GameData, 900},
    {OnDisk::FragPracticeTutorial, GameData, 2600},
    {OnDisk::FragPracticeSecond, GameData, 1800},
    {OnDisk::FragPracticeScriptDat, ScriptOf, 0, Msg::PracticeScriptText},
    {OnDisk::FragPracticeEnglishDat, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragPracticeLoad, LoadPicture},
    {OnDisk::FragPracticeManual, Text, 0, Msg::PracticeManualText},
    {OnDisk::FragPracticeManualPicture, Jpeg},
    {OnDisk::FragPracticeScriptTxt, Text, 0, Msg::PracticeScriptText},
    {OnDisk::FragPracticeEnglishTxt, Text, 0, Msg::PracticeEnglishText},
    {OnDisk::FragPracticeWad, GameData, 700},
    {OnDisk::FragPracticeSwd, GameData, 40},
    {OnDisk::FragPracticeSteps, Tune, 4},
    {OnDisk::FragPracticeDoor, Tune, 9},
    {OnDisk::FragPracticeSplash, Tune, 6},
    {OnDisk::FragPracticeItalianTxt, Text, 0, Msg::PracticeItalianText},
    {OnDisk::FragPracticeScriptResult, ScriptOf, 0, Msg::PracticeScriptText},
    {OnDisk::FragPracticeEnglishResult, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragPracticeItalianResult, Language, 0, Msg::PracticeItalianText},
    {OnDisk::FragPracticeTom, Text, 0, Msg::PracticeTomText},
    {OnDisk::FragTempleWad, GameData, 420},
    {OnDisk::FragTempleSwd, GameData, 30},
    {OnDisk::FragPracticeSounds, Text, 0, Msg::PracticeSoundList},
});

// Together with 0.9 MB of load picture these are 100 MB: 60 seconds of music are 2.66 MB.
constexpr std::array big = std::to_array<PracticeItem>({
    {OnDisk::FragBigOne, GameData, 4100},
    {OnDisk::FragBigTwo, GameData, 21900},
    {OnDisk::FragBigThree, GameData, 17500},
    {OnDisk::FragBigFour, GameData, 14200},
    {OnDisk::FragBigFive, GameData, 12800},
    {OnDisk::FragBigSix, GameData, 9700},
    {OnDisk::FragBigSeven, GameData, 8300},
    {OnDisk::FragBigTuneOne, Tune, 900},
    {OnDisk::FragBigTuneTwo, Tune, 700},
    {OnDisk::FragBigTuneThree, Tune, 500},
    {OnDisk::FragBigTuneFour, Tune, 280},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, LoadPicture},
});

constexpr std::array italian = std::to_array<PracticeItem>({
    {OnDisk::FragItalianLevel, GameData, 3100},
    {OnDisk::FragItalianTune, Tune, 60},
    {OnDisk::FragItalianScript, Script},
    {OnDisk::FragItalianLanguage, Language, 0, Msg::PracticeItalianText},
    {OnDisk::FragLevelLoad, LoadPicture},
    {OnDisk::FragItalianNote, Text, 0, Msg::PracticeItalianNote},
});

constexpr std::array letterItems = std::to_array<PracticeItem>({
    {OnDisk::FragLettersLevel, GameData, 2400},
    {OnDisk::FragLettersSecond, GameData, 1700},
    {OnDisk::FragLettersTune, Tune, 45},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, LoadPicture},
    {OnDisk::FragLettersNote, Text, 0, Msg::PracticeLettersNote},
});

constexpr std::array folders = std::to_array<PracticeItem>({
    {OnDisk::FragFoldersLevel, GameData, 3600},
    {OnDisk::FragFoldersSecond, GameData, 1100},
    {OnDisk::FragFoldersTune, Tune, 50},
    {OnDisk::FragFoldersScript, Script},
    {OnDisk::FragFoldersEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragFoldersLoad, LoadPicture},
    {OnDisk::FragFoldersNote, Text, 0, Msg::PracticeFoldersNote},
});

constexpr std::array pictures = std::to_array<PracticeItem>({
    {OnDisk::FragPicturesLevel, GameData, 2900},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, LoadPicture},
    {OnDisk::FragPicturesNote, Text, 0, Msg::PracticePicturesNote},
    {OnDisk::FragPicturesOne, Jpeg},
    {OnDisk::FragPicturesTwo, Bitmap},
});

constexpr PracticeLevel originalLevel{Msg::PracticeTrleTitle, 0, false, original};
constexpr std::array levels = std::to_array<PracticeLevel>({
    {Msg::PracticeLevelBig, 1, false, big},
    {Msg::PracticeLevelItalian, 2, true, italian},
    {Msg::PracticeLevelLetters, 3, false, letterItems},
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
