#pragma once

#include "archive/level_folders.h"
#include "formats/swap_journal.h"
#include "swap/swap_parts.h"

/// Where the folders of an interrupted swap are now. A folder that merely stands at the noted path
/// is not taken for the noted one.
namespace kestrova
{

/// What the person says about folders that are not where they were.
struct Whereabouts {
    Path trle;          ///< where the Level Editor's folder of the swap is now; empty: not said
    Path archiveFolder; ///< where the archive's folder is now; empty: not said
    bool letGo = false; ///< what is not there is gone for good
};

enum class Place { LevelEditor, Archive };
/// A folder without which the interrupted swap cannot be mended.
struct LackingFolder {
    Place place = Place::LevelEditor;
    Path noted;                  ///< where it was
    bool anotherIsThere = false; ///< a folder stands there, but not that one
};

/// The store of the journal that mending needs; empty when it needs none.
Path NeededStore(const Folders& folders, const SwapJournal& journal);
/// The level of that store, whose folder is known even when it is given up.
LevelPlace LevelOfNeededStore(const Folders& folders, const SwapJournal& journal);
/// What the journal waits for; no value when everything is there. A failure while a folder cannot
/// be looked at: it is not gone then.
Result<std::optional<LackingFolder>> LackingOf(const Folders& folders, const SwapJournal& journal);
/// The same for the journal that waits in the program's folder.
Result<std::optional<LackingFolder>> WhatMendingLacks(const Folders& folders,
                                                      const Archive& archive);

/// Brings the journal's paths up to date: with folders that the preferences or the archive in
/// memory name, as far as they are the noted ones, and with what the person said. Where the disk
/// does not tell that it is the noted one, the person is asked. False, with words, when what was
/// said was not taken.
bool FollowMovedFolders(const SwapParts& parts, SwapJournal& journal, const Whereabouts& said);

/// True when the person says that `said` is the folder that stood in `noted`; told when it is not.
bool Confirmed(Host& host, const Path& said, const Path& noted);

/// Asks where a lacking folder is now, for a face in which a person can answer: no value to wait.
std::optional<Whereabouts> AskWhere(Host& host, const LackingFolder& lacking);

} // namespace kestrova
