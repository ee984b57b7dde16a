#pragma once

#include <string>
#include <string_view>

namespace kestrova
{

/// Where the help tells of something: the number of its tag. The first ones are known outside.
enum class HelpTag {
    None = 0,
    Assistant = 1,
    NewLevel = 2,
    CompileTom = 3,
    Settings = 4,
    ArchivePreferences = 5,
    LevelsAsPrograms = 6,
    ImportWads = 7,
    ImportShots = 8,
    LevelsOnCd = 9,
    FindTrle = 10,
    InstallTrle = 11,
    PublishOverview = 12,
    PublishFiles = 13,
    PublishAuthor = 14,
    PublishLevel = 15,
    PublishImportWads = 16,
    PublishTomWads = 17,
    SavegameTool = 18,
    Beginning = 19,
    Playing = 20,
    Archives = 21,
    Levels = 22,
    Savegames = 23,
    History = 24,
    Shots = 25,
    Audio = 26,
    Addresses = 27,
    Problems = 28,
    Undo = 29,
    Originals = 30,
    Maintenance = 31,
    Language = 32,
    Author = 33,
    Terminal = 34,
    Crash = 35,
    Download = 36,
    Compare = 37,
    ThisHelp = 38,
    MainWindow = 39,
    OriginalsHistory = 41,
    ShotWindow = 42,
    ResizeShot = 43,
    CaptureShot = 44,
    KeepMp3 = 45,
    Servers = 46,
    ConfigFile = 47,
    Backup = 48,
    AddMany = 53,
    FirstStart = 49,
    Check = 54,
};

/// As the help's text has it: `#2#`.
std::string TagText(HelpTag tag);

/// Of a window, of a part of one, or of a command's menu item or button, by its name. `None` for a
/// name that the help knows nothing of.
HelpTag HelpTagOf(std::string_view name);

} // namespace kestrova
