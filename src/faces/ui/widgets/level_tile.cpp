#include "ui/widgets/level_tile.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBoundaryFinder>

namespace kestrova
{

namespace
{

constexpr int mostInitials = 2;
/// Of the tile's shorter side.
constexpr double letterPart = 0.38;

/// What stands for a name without letters; it may be made of several characters.
QString FirstPicture(const QString& name)
{
    QTextBoundaryFinder parts(QTextBoundaryFinder::Grapheme, name);
    qsizetype begin = 0;
    for (qsizetype end = parts.toNextBoundary(); end > 0; end = parts.toNextBoundary()) {
        const QString part = name.mid(begin, end - begin);
        if (QChar::category(part.toStdU32String().front()) == QChar::Symbol_Other)
            return part;
        begin = end;
    }
    return {};
}

} // namespace

QString InitialsOf(const QString& name)
{
    QString initials;
    int count = 0;
    bool inWord = false;
    for (const char32_t letter : name.toStdU32String()) {
        const bool part = QChar::isLetterOrNumber(letter);
        // A mark belongs to the letter before it, an apostrophe stands within a word.
        const bool within = QChar::isMark(letter) || letter == U'\'' || letter == U'\u2019';
        if (part && !inWord && count++ < mostInitials)
            initials += QString::fromUcs4(&letter, 1);
        inWord = part || (inWord && within);
    }
    return initials.isEmpty() ? FirstPicture(name) : initials.toUpper();
}

QColor TileColourOf(const QString& name)
{
    std::uint32_t sum = 2166136261U; // FNV-1a, since Qt's own hash is another one in each run
    for (const char byte : name.toUtf8())
        sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619U;
    // Yellow and green look lighter than they are: they get less light.
    const int hue = static_cast<int>(sum % 360);
    const int light = hue > 40 && hue < 200 ? 70 : 100;
    return QColor::fromHsl(hue, 90, light);
}

void PaintInitials(QPainter& painter, const QRectF& place, const QString& name)
{
    const QColor colour = TileColourOf(name);
    QLinearGradient ground(place.topLeft(), place.bottomLeft());
    ground.setColorAt(0, colour);
    ground.setColorAt(1, colour.darker(130));
    painter.save();
    painter.fillRect(place, ground);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(qMax(1, static_cast<int>(qMin(place.width(), place.height()) * letterPart)));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter, InitialsOf(name));
    painter.restore();
}

} // namespace kestrova
