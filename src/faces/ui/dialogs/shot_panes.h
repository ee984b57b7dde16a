#pragma once

#include "session/session.h"
#include "shots/shot_list.h"
#include "ui/dialogs/shot_strip.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/picture_reading.h"
#include "ui/widgets/picture_view.h"
#include "words/message.h"

#include <QToolButton>

namespace kestrova
{

/// The two panes with the pictures of the selected level, the left one large, and all of them as
/// small ones below. Only what is seen is decoded.
class ShotPanes : public QWidget
{
public:
    explicit ShotPanes(QWidget* parent = nullptr);

    void ShowLevel(Session& session, LevelCode code);
    /// The pair of the list again, after a command has changed the list.
    void ShowPair();
    void Clear();
    /// The level's folder is not there now.
    void ShowGone(Session& session, LevelCode code);
    [[nodiscard]] ShotList& List() { return shots_; }

    /// A picture is to be looked at in a window of its own; its place may lie outside the list.
    std::function<void(std::ptrdiff_t)> zoomed = [](std::ptrdiff_t) {};
    /// Pictures were dropped here, to be added to the level.
    std::function<void(const std::vector<Path>&)> dropped = [](const std::vector<Path>&) {};
    /// The commands are wanted at that place of the screen; the list's target is the picture there.
    std::function<void(QPoint)> menuWanted = [](QPoint) {};

private:
    struct Pane {
        PictureView* view = nullptr;
        ElidedLabel* label = nullptr;
        QToolButton* zoom = nullptr;
        Path shown; ///< what was decoded last
        platform::FileFacts shownFacts;
    };
    static void ShowFile(Pane& pane, const Path& file);
    void ShowWords(const QString& words);
    QLayout* MakePane(Pane& pane, int side, Message name);

    ShotList shots_;
    Pane left_;
    Pane right_;
    void TakeDrops();

    QToolButton* previous_;
    QToolButton* next_;
    ShotStrip* strip_;
    bool shown_ = false; ///< pictures of a level, into which others can be dropped
};

} // namespace kestrova
