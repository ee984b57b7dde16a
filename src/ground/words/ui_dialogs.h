#pragma once

#include "words/message.h"

// clang-format off

/// The dialogs.
namespace kestrova::Msg
{

inline constexpr Message CompareColumnState{"State"};
inline constexpr Message CompareColumnFile{"File"};
inline constexpr Message CompareColumnBefore{"Size before"};
inline constexpr Message CompareColumnAfter{"Size after"};
inline constexpr Message CompareShowNew{"New (~1)"};
inline constexpr Message CompareShowMissing{"Missing (~1)"};
inline constexpr Message CompareShowChanged{"Changed (~1)"};
inline constexpr Message CompareShowEqual{"Equal (~1)"};
inline constexpr Message CompareShowUnread{"Not read (~1)"};
inline constexpr Message CompareListName{"Files of both folders"};
inline constexpr Message CompareSearchHint{"Find in names"};
inline constexpr Message CompareHint{"Choose two folders and press Compare."};
inline constexpr Message CompareAllEqual{"Both folders hold the same files."};
inline constexpr Message CompareBothEmpty{"Both folders are empty."};
inline constexpr Message CompareNothingFound{"Nothing of this kind was found."};
inline constexpr Message CompareCount{"Files shown: ~1 of ~2"};
inline constexpr Message HistoryOfLevel{"What was kept of the savegames of ~1 before something replaced or deleted it. A file that you bring back goes into a free slot and stays in the history."};
inline constexpr Message HistoryEmpty{"Nothing has been kept of the savegames of this level yet."};
inline constexpr Message HistoryColumnKept{"Kept"};
inline constexpr Message HistoryColumnFile{"File"};
inline constexpr Message HistoryColumnNumber{"Number"};
inline constexpr Message HistoryColumnTitle{"Title"};
inline constexpr Message HistoryColumnTime{"Saved"};
inline constexpr Message HistoryColumnReason{"Kept because"};
inline constexpr Message LeftShotName{"Left screen-shot"};
inline constexpr Message RightShotName{"Right screen-shot"};
inline constexpr Message NoPicture{"No picture"};
inline constexpr Message PicturesNotThereNow{"The level's folder is not there now. Connect its drive to see the pictures."};
inline constexpr Message ShotNotFound{"Screen-shot: [~1] not found"};
inline constexpr Message ShotUnreadable{"This picture cannot be shown: ~1"};
inline constexpr Message AskDropTyped{"What you typed or changed in this window is not stored yet. Do you want to give it up?"};
inline constexpr Message AboutVersion{"Version ~1"};
inline constexpr Message AboutText{"Keeps your custom levels in an archive and puts the one you want to play into the Level Editor's folder: its files, savegames and pictures come in, the level before goes out, and the original files come back whenever you want.~1~2Free software under the GNU General Public License, version 3 or later. It comes without any warranty.~3~4Tomb Raider and the Level Editor belong to their owners; Kestrova is not their work and not connected with them."};
inline constexpr Message SettingsPageServers{"Servers"};
inline constexpr Message SettingsPageWine{"Windows programs"};
inline constexpr Message SettingsPageSystem{"This computer"};
inline constexpr Message TrovaNothing{"(no folder chosen)"};
inline constexpr Message TrovaGone{"Not there, or not whole any more: ~1"};
inline constexpr Message NewLevelTitle{" Add new level"};
inline constexpr Message NewLevelNamesTip{"The names in the package do not say in which alphabet they are written. If they look wrong, choose another one; the package is unpacked anew."};
inline constexpr Message LevelPropertiesTitle{" Properties of level"};
inline constexpr Message SitiListName{"Web addresses"};
inline constexpr Message SitiNoteName{"Description of the chosen address"};
inline constexpr Message SitiEmpty{"There is no address of this kind yet. An update brings those of the update servers; you can also add your own."};
inline constexpr Message SitiNotRead{"The list of addresses could not be read: ~1. What you add or update here goes into a new file; the old one stays beside it."};
inline constexpr Message SitiNothingFound{"No address of this kind holds these letters."};
inline constexpr Message ColumnSize{"Size"};
inline constexpr Message NewLevelDropHint{"Drop a package, a folder or files here, or take them in with the buttons beside."};
inline constexpr Message NoMoreInfo{"< NONE >"};
inline constexpr Message FlagYes{"YES"};
inline constexpr Message FlagNo{"NO"};
inline constexpr Message ShotImportDone{"Import screeen-shot performed"};
inline constexpr Message ShotImportNone{"There was no picture to import: the game keeps them beside savegames that were freed into the archive (F9), and none has one."};
inline constexpr Message DownloadNotChosen{"(not chosen yet: where your first file comes from)"};
inline constexpr Message ViewShotTitle{"Screen-Shot: "};
inline constexpr Message ViewShotTip{"Mouse wheel or + and -: zoom. 0: whole picture. Arrow keys: next picture. Esc: close."};
inline constexpr Message ResizePicture{"Resized screen-shot"};
inline constexpr Message ImportShotTitle{"Import screen-shots for level: "};
inline constexpr Message CapturePicture{"Captured screen-shot"};
inline constexpr Message FrameDecode{" Select mp3 files to decode"};
inline constexpr Message FrameEncode{" Select wav files to encode"};
inline constexpr Message FrameConvert{" Select wav files to convert"};
inline constexpr Message FrameTargetMp3{" Choose target folder where save mp3 files "};
inline constexpr Message FrameTargetWave{" Choose target folder where save converted wav files "};
inline constexpr Message AudioNoTarget{"No folder chosen yet"};
inline constexpr Message AudioDropHint{"Drop ~1 files or folders here."};
inline constexpr Message OriginalsWords{"Files of the Level Editor's folder that nothing else held, kept before a level took their place or a swap took them out. A file that you bring back goes where it stood; what stands there now is kept first."};
inline constexpr Message OriginalsNone{"No file of the Level Editor's folder had to be kept yet."};
inline constexpr Message OriginalsColumnFolder{"Folder"};

} // namespace kestrova::Msg
