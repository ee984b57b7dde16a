#pragma once

#include <QScrollArea>
#include <QSize>
#include <QString>

class QFontMetrics;
class QMessageBox;

namespace kestrova
{

/// Gives the window that size, more where a `ScrollPage` in it is wider, as with a large font, and
/// not more than its screen has room for. A dialog is so high that no such page has to be scrolled.
void ResizeToFit(QWidget& window, QSize wanted);

/// What stands above a window's buttons, shown whole where there is room and scrolled where the
/// screen is too small, so that the buttons stay on it. Boxes to tick and round buttons get a
/// second line where their words are wider than the page.
class ScrollPage : public QScrollArea
{
public:
    explicit ScrollPage(QWidget* content);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
};

/// A box whose words would make it larger than its screen shows them in `Text_Words` instead, where
/// they can be scrolled. To be called when the box has all its words and buttons.
void KeepOnScreen(QMessageBox& box);

/// The text with every word that is wider than that shortened in its middle, so that a label that
/// wraps it need not be wider.
QString WithWordsWithin(const QString& text, const QFontMetrics& metrics, int width);

} // namespace kestrova
