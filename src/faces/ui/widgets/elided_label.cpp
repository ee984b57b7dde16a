#include "ui/widgets/elided_label.h"

#include "ui/widgets/qt_text.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>

namespace kestrova
{

namespace
{

/// In letters: less of a path says nothing.
constexpr int fewestOfPart = 12;

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::SetElide(Qt::TextElideMode elide)
{
    elide_ = elide;
    update();
}

void ElidedLabel::SetElidedPart(const QString& path)
{
    part_ = path;
    update();
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 4, QLabel::minimumSizeHint().height()};
}

QString ElidedLabel::Shown() const
{
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const int room = contentsRect().width();
    const int tooMuch = fontMetrics().horizontalAdvance(line) - room;
    if (const auto at = line.indexOf(part_); tooMuch > 0 && !part_.isEmpty() && at >= 0) {
        const int least = fewestOfPart * fontMetrics().averageCharWidth();
        const int left = fontMetrics().horizontalAdvance(part_) - tooMuch;
        line.replace(at, part_.size(),
                     fontMetrics().elidedText(part_, Qt::ElideMiddle, std::max(left, least)));
    }
    return fontMetrics().elidedText(line, elide_, room);
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    if (Shown() != text())
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainTip(text()), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                          isEnabled(), Shown(), foregroundRole());
}

ElidedParagraph::ElidedParagraph(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

QStringList ElidedParagraph::ShownLines() const
{
    const int width = contentsRect().width();
    const int most = std::max(1, contentsRect().height() / fontMetrics().lineSpacing());
    QString words = text();
    words.remove(QLatin1Char('\r')).replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(words, font());
    QTextOption wrapped;
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapped);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (lines.size() == most) {
            // What follows the last line that has room shows in it that there is more.
            const int start = layout.lineAt(most - 1).textStart();
            QString rest = words.mid(start);
            rest.replace(QChar::LineSeparator, QLatin1Char(' '));
            lines.last() = fontMetrics().elidedText(rest, Qt::ElideRight, width);
            break;
        }
        lines.append(words.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines;
}

void ElidedParagraph::paintEvent(QPaintEvent* event)
{
    const QStringList words = text().simplified().split(QLatin1Char(' '));
    const bool broken = std::any_of(words.begin(), words.end(), [&](const QString& word) {
        return fontMetrics().horizontalAdvance(word) > contentsRect().width();
    });
    // The label's own painting shows what is selected, but no word that it would have to break.
    // Its own measure would lay it out, and so paint it, anew.
    const QRect needed = fontMetrics().boundingRect(contentsRect(), Qt::TextWordWrap, text());
    if (!broken && needed.height() <= contentsRect().height())
        return QLabel::paintEvent(event);
    const QStringList lines = ShownLines();
    QPainter painter(this);
    QRect row = contentsRect();
    row.setHeight(fontMetrics().lineSpacing());
    for (const QString& line : lines) {
        style()->drawItemText(&painter, row, static_cast<int>(Qt::AlignLeft), palette(),
                              isEnabled(), line, foregroundRole());
        row.translate(0, row.height());
    }
}

} // namespace kestrova
