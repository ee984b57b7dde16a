#include "play/hot_keys.h"

#include "archive/level_folders.h"
#include "history/standing.h"
#include "play/file_names.h"
#include "saves/savegame_list.h"
#include "session/operation.h"
#include "session/telling.h"
#include "shots/shot_files.h"
#include "words/play.h"

namespace kestrova
{

namespace
{

constexpr std::int64_t longRead = 1'000'000'000;
/// An owner that hands nothing over is asked again for three seconds.
constexpr int mostTries = 20;

/// Nothing else begins while one action is on its way.
class Asleep
{
public:
    explicit Asleep(bool& active) : active_(active) { active_ = false; }
    ~Asleep() { active_ = true; }
    Asleep(const Asleep&) = delete;
    Asleep& operator=(const Asleep&) = delete;

private:
    bool& active_;
};

} // namespace

const HotKeys::Action HotKeys::actions[] = {
    {GameKey::F9, ArchiveSavegames, WordsOfArchived, Msg::HotKeyArchived, Msg::HotKeyArchiveFailed},
    {GameKey::F11, RestoreSavegames, WordsOfRestored, Msg::HotKeyRestored,
     Msg::HotKeyRestoreFailed},
};

void HotKeys::Tick()
{
    if (!session_.running.hotKeys || session_.running.operations > 0) {
        awake_ = false;
        return;
    }
    std::set<GameKey> down;
    for (const Action& action : actions)
        if (session_.machine.IsKeyDown(action.key))
            down.insert(action.key);
    // What was pressed before the game was started, or into a dialog, is meant for nobody here.
    if (!awake_) {
        awake_ = true;
        held_.clear();
        return;
    }
    for (const Action& action : actions)
        if (down.contains(action.key))
            Act(action);
    held_ = std::move(down);
    LookAtClipboard();
}

void HotKeys::NoteClipboard()
{
    clipboardChanged_ = true;
    clipboardTries_ = 0;
}

void HotKeys::Act(const Action& action)
{
    const Asleep asleep{session_.running.hotKeys};
    const Operation operation{session_};
    const auto code = session_.list.Selected();
    const auto moved = action.move(session_);
    if (!moved)
        return failed(GetMsg(action.failure, {moved.Error().subject, moved.Error().reason}));
    if (!moved->kept.empty() && code)
        return failed(WordsAboutKept(*moved, *code));
    if (code && (moved->moved > 0 || !held_.contains(action.key)))
        done(GetMsg(action.done, {action.words(*moved)}));
}

void HotKeys::LookAtClipboard()
{
    if (!clipboardChanged_ || !session_.preferences.captureEnabled)
        return;
    const std::int64_t began = session_.machine.NowNs();
    const auto bytes = session_.machine.ClipboardPicture();
    const bool tooLong = session_.machine.NowNs() - began > longRead;
    if (!bytes && !tooLong && ++clipboardTries_ < mostTries)
        return;
    clipboardChanged_ = false;
    if (!bytes || bytes->empty())
        return;
    if (auto picture = DecodePicture(*bytes))
        Keep(std::move(*picture));
    else
        failed(GetMsg(Msg::CaptureNotRead));
}

void HotKeys::Keep(Picture picture)
{
    const Asleep asleep{session_.running.hotKeys};
    if (!TellUnlessKnown(session_.host, session_.Folders(), session_.archive))
        return; // the picture stays on the clipboard
    const LevelCode code = CurrentLevelCode(session_.Folders(), session_.archive);
    const std::ptrdiff_t index = FindLevel(session_.archive, code);
    CapturedShot shot{std::move(picture),
                      static_cast<std::size_t>(std::max<std::ptrdiff_t>(index, 0)),
                      ShotFolderOf(session_.Folders(), code)};
    if (index < 0 || !session_.preferences.promptCapture) {
        const Operation operation{session_};
        std::string extension;
        const auto file =
            index < 0 ? Result<Path>{shot.folder}
                      : NewShotName(session_.Folders(), session_.archive, shot.level, extension);
        if (!file) {
            TellFolderNotRead(session_.host, file.Error());
            return; // the picture stays on the clipboard
        }
        const auto saved =
            index < 0 ? Status{Failure{ErrorCode::Missing, {}, GetMsg(Msg::CaptureNoLevel)}}
                      : SaveCapturedShot(session_, shot, *file);
        if (!saved) {
            session_.host.Tell(Tone::Error, GetMsg(Msg::CaptureFailed) + TextOf(*file),
                               saved.Error().reason);
            session_.machine.ClearClipboard();
            return;
        }
        done(GetMsg(Msg::HotKeyCaptured, {TextOf(file->filename())}));
    } else {
        session_.machine.TypeKeys(OnDisk::CaptureTypes);
        ask(shot);
    }
    if (const auto selected = session_.list.Selected())
        session_.list.Select(*selected);
    session_.machine.ClearClipboard();
}

} // namespace kestrova
