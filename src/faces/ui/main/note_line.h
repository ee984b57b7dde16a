#pragma once

#include "session/session.h"

#include <QWidget>
#include <functional>

class QToolButton;

namespace kestrova
{

class ElidedLabel;

/// The line of the status bar about what went well. Where that left something to undo, it offers
/// so beside the words. It stays until the next command begins.
class NoteLine : public QWidget
{
public:
    NoteLine(Session& session, QWidget* parent);

    /// A command begins: what it leaves is told apart from what was there.
    void Begin();
    void Show(const std::string& text);
    /// What it says now goes when the game ends, unless something else is said by then.
    void LastsWhileTheGameRuns();
    void GameEnded();
    /// A command is over: names what it left to undo, where it said nothing itself.
    void End();

    std::function<void()> undoWanted = [] {};

private:
    /// The number of what would be undone now; 0 without anything.
    [[nodiscard]] std::int32_t Newest() const;

    Session& session_;
    ElidedLabel* words_;
    QToolButton* undo_;
    QString ofTheGame_;
    std::int32_t before_ = 0;  ///< the newest when the command began
    std::int32_t offered_ = 0; ///< what the button undoes
};

} // namespace kestrova
