#pragma once

#include "library/mark_levels.h"

#include <QTimer>
#include <QWidget>
#include <functional>

class QComboBox;
class QLabel;
class QPlainTextEdit;

namespace kestrova
{

class StarsBox;

/// What the player thinks of the chosen level: stars, how far it is, and a note of their own, which
/// is stored once nobody types any more. Beside it, when it came and how long it was played.
class MarksBox : public QWidget
{
public:
    explicit MarksBox(QWidget* parent);

    void Show(LevelCode code, LevelNote note);
    void Clear();
    /// What was typed is said now, and what is typed next is undone by itself.
    void EndTyping();

    /// The player says something of that level.
    std::function<void(LevelCode, const LevelMarks&)> marked = [](LevelCode, const LevelMarks&) {};

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Commit();
    void Say(const LevelMarks& marks);

    std::optional<LevelCode> code_;
    LevelNote note_;
    StarsBox* stars_;
    QComboBox* status_;
    QPlainTextEdit* text_;
    QLabel* tags_;
    QLabel* times_;
    QTimer typed_;        ///< runs while somebody types
    bool goesOn_ = false; ///< a part of what is typed now was stored already
};

} // namespace kestrova
