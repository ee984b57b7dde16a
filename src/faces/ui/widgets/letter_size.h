#pragma once

#include <QFont>
#include <QObject>
#include <functional>

class QAbstractScrollArea;

namespace kestrova
{

/// The font so many times as large, whether its size is given in points or in pixels.
QFont TimesAsLarge(QFont font, double factor);

/// Letters of one width for columns of text, as large as that control has them.
QFont EvenLetters(const QWidget& control);

/// Lets a person choose how large the letters of a text or list are: Ctrl and the wheel, Ctrl+plus,
/// Ctrl+minus, and Ctrl+0 for the size that the desktop has. Belongs to that control.
class LetterSize : public QObject
{
public:
    explicit LetterSize(QAbstractScrollArea& area);

    /// Steps away from the desktop's size; what is beyond the smallest and largest stays there.
    void Set(int steps);
    [[nodiscard]] int Steps() const { return steps_; }
    /// Called when a person has changed it.
    std::function<void(int steps)> changed = [](int) {};

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Change(int steps);

    QAbstractScrollArea& area_;
    int steps_ = 0;
    int turned_ = 0; ///< of the wheel, what is left of less than a notch
};

} // namespace kestrova
