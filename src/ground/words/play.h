#pragma once

#include "words/message.h"

// clang-format off

/// Starting the game, the keys during play.
namespace kestrova::Msg
{

inline constexpr Message ToolNotCurrent{"Warning: level ~1 is not current level in Tomb Raider Level Editor, so if you in Brivanta try to examine savegames there will be troubles.~2Would you like set in TRLE this level like current level to examine savegames?"};
inline constexpr Message ToolHeaderNotWritten{"I cannot overwrite savegame archive: "};
inline constexpr Message ToolNotFound{"Brivanta not found. ~1In folder ~2 is missing: "};
inline constexpr Message ToolNotStarted{"Brivanta could not be started. Nothing of the level was changed."};
inline constexpr Message HotKeyArchiveFailed{"F9: the game's slots could not be freed (~1 ~2). No savegame is lost."};
inline constexpr Message HotKeyRestoreFailed{"F11: the savegames could not be brought back (~1 ~2). No savegame is lost."};
inline constexpr Message HotKeyArchived{"F9: ~1"};
inline constexpr Message HotKeyRestored{"F11: ~1"};
inline constexpr Message HotKeyCaptured{"Print Screen: the picture is kept as “~1”."};
inline constexpr Message CaptureFailed{"Error saving captured screen-shot as: "};
inline constexpr Message CaptureNotRead{"A picture was copied, but it cannot be read, so no screen-shot was kept. It is still on the clipboard: paste it into a paint program, or press Print Screen again."};
inline constexpr Message CaptureNoLevel{"The level that stands in the Level Editor's folder is not in this archive."};
inline constexpr Message KeysNotSeen{"While you play, F9, F11 and Print Screen do not reach Kestrova: this desktop shows a program only its own keys, and there is no X display beside it.~1Turn on Xwayland in the desktop's settings, or choose the session “on Xorg” when you log in, and start Kestrova again. The game's window must be one of X too, as it is under Wine.~2The menu Savegames does what F9 and F11 do, at any time. This is said only once."};
inline constexpr Message PlayInstallFailed{"Error while installing files to play new level"};
inline constexpr Message GameNotStarted{"The game could not be started. The level stands in the Level Editor's folder, and nothing else has changed."};
inline constexpr Message GameFileMissing{"the Level Editor's folder has no such game file; its name is in the settings (Tomb.exe name)"};
inline constexpr Message AskPlayIncomplete{"This level is incomplete. It lacks: ~1~2Nothing has been changed yet. Install what is there all the same?"};
inline constexpr Message WaitsForGame{"The game runs. Its end is waited for."};

} // namespace kestrova::Msg
