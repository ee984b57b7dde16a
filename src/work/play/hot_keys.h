#pragma once

#include "saves/savegame_moves.h"
#include "shots/shot_capture.h"
#include "words/message.h"

#include <functional>

namespace kestrova
{

/// How often `HotKeys` wants its tick.
inline constexpr int hotKeysMs = 150;

/// What works while the game has the screen, from the first game that was started until the program
/// ends: F9 frees the game's slots, F11 brings savegames back, and a picture that comes onto the
/// clipboard is kept with the level that stands in the Level Editor's folder.
class HotKeys
{
public:
    explicit HotKeys(Session& session) : session_(session) {}

    /// Looks at keys and clipboard once. A key that is held acts at each tick.
    void Tick();
    /// The clipboard has something new: only then is it read, since a read may take seconds.
    void NoteClipboard();

    /// Lets a person name and save, or drop, a captured picture.
    std::function<void(const CapturedShot&)> ask = [](const CapturedShot&) {};
    /// Told of an F9 or F11 that could not do its work or left savegames to the history alone, and
    /// of a picture that cannot be read: words that must not hide the game.
    std::function<void(const std::string&)> failed = [](const std::string&) {};

private:
    void Act(Result<SavegamesMoved> (*move)(Session&), Message failure);
    void LookAtClipboard();
    void Keep(Picture picture);

    Session& session_;
    bool awake_ = false; ///< the last tick was one with the keys active
    bool clipboardChanged_ = false;
    int clipboardTries_ = 0;
};

} // namespace kestrova
