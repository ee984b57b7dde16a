#pragma once

#include <QAbstractButton>

namespace kestrova
{

/// The palette's colour of links, made light where the ground is dark and the desktop's theme has
/// left it as it is on white.
QColor LinkColour(const QPalette& palette, QPalette::ColorRole ground);

/// A line of words that leads somewhere, by the mouse and by the keyboard, or words alone. Shows
/// "…" where they do not fit; the whole of them is the tool tip then, unless it has one of its own.
class LinkButton : public QAbstractButton
{
public:
    explicit LinkButton(QWidget* parent);

    /// `tip`: where it leads; empty: nowhere.
    void Show(const QString& words, const QString& tip);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool hitButton(const QPoint& place) const override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool Leads() const { return focusPolicy() != Qt::NoFocus; }
    [[nodiscard]] QString Shown() const;

    QString words_; ///< not the button's own text, in which "&" would mark a letter
};

} // namespace kestrova
