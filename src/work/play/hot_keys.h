#pragma once

#include "saves/savegame_moves.h"
#include "shots/shot_capture.h"
#include "words/message.h"

#include <functional>
#include <set>

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
    /// Told of an F9 or F11 that did its work, or had nothing to do, and of a picture that was
    /// kept. A key that is held and does nothing more is not told again.
    std::function<void(const std::string&)> done = [](const std::string&) {};
    /// Told of an F9 or F11 that could not do its work or left savegames to the history alone, and
    /// of a picture that cannot be read: words that must not hide the game.
    std::function<void(const std::string&)> failed = [](const std::string&) {};

private:
    /// What one of the two keys does, and what is said of it.
    struct Action {
        GameKey key;
        Result<SavegamesMoved> (*move)(const ArchiveParts&);
        std::string (*words)(const SavegamesMoved&);
        Message done;
        Message failure;
    };
    static const Action actions[];
    void Act(const Action& action);
    void LookAtClipboard();
    void Keep(Picture picture);

    Session& session_;
    bool awake_ = false;     ///< the last tick was one with the keys active
    std::set<GameKey> held_; ///< were down at the last tick, and acted
    bool clipboardChanged_ = false;
    int clipboardTries_ = 0;
};

} // namespace kestrova
