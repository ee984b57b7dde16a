#include "practice/package_content.h"

#include "practice/file_names.h"
#include "words/practice.h"

#include <array>

namespace kestrova
{

namespace
{

using enum Content;

constexpr std::array saltMine = std::to_array<PracticeItem>({
    {OnDisk::FragSaltTom, Text, 0, Msg::PracticeSaltTom},
    {OnDisk::FragSaltWad, GameData, 900},
    {OnDisk::FragSaltSwd, GameData, 60},
    {OnDisk::FragSaltSam, Text, 0, Msg::PracticeSaltSamples},
    {OnDisk::FragSaltDrip, Sample, 4},
    {OnDisk::FragSaltCart, Sample, 9},
    {OnDisk::FragSaltTune, Tune, 30},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, LoadPicture},
    {OnDisk::FragSaltNote, Text, 0, Msg::PracticeSaltNote},
});

constexpr std::array wells = std::to_array<PracticeItem>({
    {OnDisk::FragWellOne, Text, 0, Msg::PracticeWellOneTom},
    {OnDisk::FragWellTwo, Text, 0, Msg::PracticeWellTwoTom},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, LoadPicture},
    {OnDisk::FragWellNote, Text, 0, Msg::PracticeWellNotes},
});

constexpr std::array doors = std::to_array<PracticeItem>({
    {OnDisk::FragDoorA, Text, 0, Msg::PracticeDoorATom},
    {OnDisk::FragDoorAWad, GameData, 300},
    {OnDisk::FragDoorASwd, GameData, 20},
    {OnDisk::FragDoorB, Text, 0, Msg::PracticeDoorBTom},
    {OnDisk::FragDoorC, Text, 0, Msg::PracticeDoorCTom},
    {OnDisk::FragDoorTune, Tune, 1},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, LoadPicture},
    {OnDisk::FragSaltNote, Text, 0, Msg::PracticeDoorsNote},
});

constexpr std::array lagoon = std::to_array<PracticeItem>({
    {OnDisk::FragLagoonTom, Text, 0, Msg::PracticeLagoonTom},
    {OnDisk::FragLagoonWad, GameData, 500},
    {OnDisk::FragLagoonSwd, GameData, 30},
    {OnDisk::FragLagoonProject, GameData, 80},
    {OnDisk::FragLagoonPicture, GameData, 40},
    {OnDisk::FragLagoonSample, Sample, 5},
    {OnDisk::FragLagoonTune, Tune, 20},
    {OnDisk::FragLagoonHeader, Text, 0, Msg::PracticeLagoonHeader},
    {OnDisk::FragLagoonScript, Text, 0, Msg::PracticeLagoonScript},
    {OnDisk::FragLagoonStrings, Text, 0, Msg::PracticeLagoonStrings},
    {OnDisk::FragLagoonSounds, Text, 0, Msg::PracticeLagoonSounds},
    {OnDisk::FragLagoonOther, GameData, 1},
});

constexpr std::array packages = std::to_array<PracticeLevel>({
    {Msg::PracticePackageSalt, 1, true, saltMine},
    {Msg::PracticePackageWells, 2, true, wells},
    {Msg::PracticePackageDoors, 3, true, doors},
    {Msg::PracticePackageLagoon, 4, true, lagoon},
});

// The last three are what installers leave behind, and no part of a level.
constexpr std::array gate = std::to_array<PracticeItem>({
    {OnDisk::FragGateLevel, GameData, 350},
    {OnDisk::FragGateTune, Tune, 15},
    {OnDisk::FragGateNote, Text, 0, Msg::PracticeGateNote},
    {OnDisk::FragLevelScript, Script},
    {OnDisk::FragLevelEnglish, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragLevelLoad, Bitmap},
    {OnDisk::FragGateLitter, GameData, 1},
    {OnDisk::FragGateSettings, GameData, 1},
    {OnDisk::FragGateState, GameData, 1},
});
constexpr PracticeLevel installed{Msg::PracticePackageGate, 5, false, gate};

constexpr std::array setups = std::to_array<PracticeSetup>({
    {"WinZip", OnDisk::SetupOtherName, SetupKind::WinZip, OnDisk::SetupIntoFolder},
    {"WinAce", OnDisk::SetupOtherName, SetupKind::WinAce, OnDisk::SetupIntoFolder},
    {"FlyDrive", OnDisk::SetupProgramName, SetupKind::FlyDrive, OnDisk::SetupIntoTrle},
    {OnDisk::SetupWideFolder, OnDisk::SetupProgramName, SetupKind::WideFlyDrive,
     OnDisk::SetupIntoTrle},
    {"unknown", OnDisk::SetupOtherName, SetupKind::Unknown, OnDisk::SetupIntoTrle},
});

constexpr std::array editor = std::to_array<PracticeItem>({
    {OnDisk::FragSetupLoad, Jpeg},
    {OnDisk::FragSetupLoadFrench, Jpeg},
    {OnDisk::FragSetupManual, Text, 0, Msg::PracticeSetupManual},
    {OnDisk::FragSetupManualItalian, Text, 0, Msg::PracticeSetupManual},
    {OnDisk::FragPracticeScriptTxt, Text, 0, Msg::PracticeScriptText},
    {OnDisk::FragPracticeEnglishTxt, Text, 0, Msg::PracticeEnglishText},
    {OnDisk::FragPracticeItalianTxt, Text, 0, Msg::PracticeItalianText},
    {OnDisk::FragPracticeScriptResult, ScriptOf, 0, Msg::PracticeScriptText},
    {OnDisk::FragPracticeEnglishResult, Language, 0, Msg::PracticeEnglishText},
    {OnDisk::FragPracticeItalianResult, Language, 0, Msg::PracticeItalianText},
    {OnDisk::FragSetupTom, Text, 0, Msg::PracticeSetupTitleTom},
    {OnDisk::FragSetupWad, GameData, 90},
    {OnDisk::FragSetupSwd, GameData, 10},
    {OnDisk::FragSetupSample, Silence, 8},
    {OnDisk::FragSetupMakerLink, Text, 0, Msg::PracticeSetupMaker},
    {OnDisk::FragSetupSellerLink, Text, 0, Msg::PracticeSetupSeller},
});
constexpr PracticeLevel editorSetup{Msg::PracticePackageEditor, 0, true, editor};

} // namespace

std::span<const PracticeLevel> PracticePackages()
{
    return packages;
}
const PracticeLevel& PracticeEveryStep()
{
    return packages[2];
}
const PracticeLevel& PracticeInstalled()
{
    return installed;
}
std::span<const PracticeSetup> PracticeSetups()
{
    return setups;
}
const PracticeLevel& PracticeEditorSetup()
{
    return editorSetup;
}

} // namespace kestrova
