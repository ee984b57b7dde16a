#pragma once

#include "archive/archive_parts.h"

/// All savegames that a level has, one by one, and what a person does with those that are chosen.
namespace kestrova
{

enum class SavegamePlace {
    Live,   ///< in one of the game's slots, or waiting to come back there with the level
    Slot,   ///< in one of the level's archive slots
    History ///< kept when it was overwritten or deleted
};

struct LevelSavegame {
    SavegamePlace place = SavegamePlace::Live;
    int slot = 0;      ///< number of the archive slot
    Path file;         ///< none in the history
    std::string id;    ///< of the history's entry
    std::string name;  ///< `savegame.3`
    std::string title; ///< as the game shows it
    std::int32_t number = 0;
    std::int64_t savedNs = 0;
    std::uint64_t size = 0;
    std::string reason{}; ///< why the history has it
};

/// The live ones in the order of the slots, those of the archive slots, the last slot first, and
/// those of the history, newest first. Nothing is written.
Result<std::vector<LevelSavegame>> SavegamesOfLevel(const Folders& folders, const Archive& archive,
                                                    LevelCode code);
/// What lies beside a savegame in its folder: the picture, and the player's note. The history keeps
/// those by themselves.
struct BesideSavegame {
    Path picture;     ///< empty: there is none
    std::string note; ///< its first lines, in one
};
BesideSavegame BesideOf(const LevelSavegame& savegame);

/// Slot, title, number and time, in one line for a person.
std::string WordsOf(const LevelSavegame& savegame);

/// Each comes into a free slot of the game, those of the history as they do from their own window;
/// what lies in an archive slot stays there too. False, told, when one of them could not.
bool BringIntoSlots(const ArchiveParts& parts, LevelCode code,
                    const std::vector<LevelSavegame>& chosen);
/// Copies them into a folder. What they would replace there is named first, and is in the history
/// afterwards. False, told, when one could not be copied, or when the person said no.
bool ExportChosen(const ArchiveParts& parts, LevelCode code,
                  const std::vector<LevelSavegame>& chosen, const Path& folder);
/// Deletes them with their notes and pictures, once they are in the history; those that only the
/// history has are left alone. Asks first. False, told, when it was not done.
bool DeleteChosen(const ArchiveParts& parts, LevelCode code,
                  const std::vector<LevelSavegame>& chosen);

} // namespace kestrova
