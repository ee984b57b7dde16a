#include "ui/main/level_delegate.h"

#include "ui/main/level_view.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/level_tile.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr int gap = 6;
constexpr int markSide = 12;
/// Of words below a cover.
constexpr int coverLines = 3;

QPalette::ColorGroup GroupOf(const QStyleOptionViewItem& option)
{
    return !option.state.testFlag(QStyle::State_Enabled) ? QPalette::Disabled
           : option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                         : QPalette::Inactive;
}

QColor InkOf(const QStyleOptionViewItem& option, bool quiet)
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    QColor ink = option.palette.color(GroupOf(option),
                                      selected ? QPalette::HighlightedText : QPalette::Text);
    constexpr double quieter = 0.7;
    if (quiet && !selected) // on the highlight it could not be read
        ink.setAlphaF(static_cast<float>(quieter));
    return ink;
}

void PaintWords(QPainter& painter, const QRect& room, const QString& words, Qt::Alignment place)
{
    painter.drawText(room, static_cast<int>(place) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(words, Qt::ElideRight, room.width()));
}

/// As they are painted: widths are fractions of a pixel.
bool IsWhole(const QString& words, const QFontMetrics& metrics, int width)
{
    return metrics.elidedText(words, Qt::ElideRight, width) == words;
}

/// As many words as fit are taken from the beginning; all of them where the rest would be a part of
/// a word alone.
QString TakeLine(QString& words, const QFontMetrics& metrics, int width)
{
    qsizetype end = words.size();
    while (end > 0 && !IsWhole(words.left(end), metrics, width))
        end = words.lastIndexOf(QLatin1Char(' '), end - 1);
    if (end <= 0)
        end = words.size();
    const QString line = words.left(end);
    words = words.mid(end).trimmed();
    return line;
}

QFont NameFont(const QStyleOptionViewItem& option, const LibraryLevel& level)
{
    QFont font = option.font;
    font.setBold(level.current);
    return font;
}

void PaintMark(QPainter& painter, const QRect& room, const QStyleOptionViewItem& option)
{
    static const QIcon mark = DrawnIcon(Drawing::Here);
    mark.paint(&painter, room, Qt::AlignCenter,
               option.state.testFlag(QStyle::State_Selected) ? QIcon::Selected : QIcon::Normal);
}

/// Stars and status, as far as they were given.
QString MarksOf(const LibraryLevel& level)
{
    QString words(level.own.stars, QChar(0x2605));
    const Message status[] = {Message{}, Msg::StatusPlaying, Msg::StatusFinished,
                              Msg::StatusGivenUp};
    const auto number = static_cast<std::size_t>(level.own.status);
    if (number > 0 && !words.isEmpty())
        words += QLatin1Char(' ');
    if (number > 0)
        words += Words(status[number]);
    return words;
}

/// The parts of a row.
struct RowPlaces {
    QRect mark;
    QRect picture;
    QRect words;
};

/// Where one reads from the right, the mark stands there.
RowPlaces PlacesIn(const QRect& name, Qt::LayoutDirection way)
{
    const QRect inside = name.adjusted(gap / 2, 3, -gap, -3);
    const QRect mark(inside.left(), inside.center().y() - markSide / 2, markSide, markSide);
    // In a narrow list the name has its room.
    constexpr int roomyHeights = 5;
    const bool hasPicture = name.width() >= roomyHeights * inside.height();
    const QRect picture(mark.right() + gap / 2, inside.top(),
                        hasPicture ? inside.height() * 4 / 3 : 0, inside.height());
    const QRect words(QPoint(picture.right() + gap + 2, inside.top()), inside.bottomRight());
    const auto seen = [&](const QRect& part) { return QStyle::visualRect(way, name, part); };
    return {seen(mark), seen(picture), seen(words)};
}

} // namespace

LevelDelegate::LevelDelegate(LevelView& view) : QStyledItemDelegate(&view), view_(view) {}

QSize LevelDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    // A row is as wide as the list.
    return view_.Look() == LibraryLook::Rows ? QSize(1, view_.RowHeight()) : view_.CoverCell();
}

void LevelDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QStyleOptionViewItem own = option;
    initStyleOption(&own, index);
    own.text.clear();
    view_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &own, painter, &view_);
    painter->save();
    if (view_.Look() == LibraryLook::Rows)
        PaintRow(*painter, own, index);
    else
        PaintCover(*painter, own, index);
    painter->restore();
}

void LevelDelegate::PaintPicture(QPainter& painter, const QRect& room,
                                 const LibraryLevel& level) const
{
    if (room.isEmpty())
        return;
    const QPixmap shown = picture(level.code);
    if (shown.isNull())
        return PaintInitials(painter, room, ToQt(NameOf(level)));
    const QSize fitting = shown.size().scaled(room.size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), fitting);
    place.moveCenter(room.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, shown);
}

void LevelDelegate::PaintRow(QPainter& painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const auto& model = *static_cast<const LevelModel*>(index.model());
    const LibraryLevel& level = model.Shown().At(index.row());
    const RowPlaces places =
        PlacesIn(view_.ColumnRect(LevelModel::NameColumn, option.rect), option.direction);
    if (level.current)
        PaintMark(painter, places.mark, option);
    PaintPicture(painter, places.picture, level);
    QString below = MarksOf(level);
    if (level.cdNumber != 0)
        below =
            Words(Msg::DiscBadge, {std::to_string(level.cdNumber)}) + QLatin1String("  ") + below;
    if (view_.ColumnRect(LevelModel::AuthorColumn, option.rect).isNull())
        below = ToQt(level.author) + QLatin1String("  ") + below;
    below = below.trimmed();
    QRect line = places.words;
    if (!below.isEmpty())
        line.setHeight(line.height() / 2);
    painter.setFont(NameFont(option, level));
    painter.setPen(InkOf(option, false));
    PaintWords(painter, line, ToQt(level.text), Qt::AlignVCenter);
    painter.setFont(option.font);
    painter.setPen(InkOf(option, true));
    if (!below.isEmpty())
        PaintWords(painter, line.translated(0, line.height()), below, Qt::AlignVCenter);
    for (int column = LevelModel::AuthorColumn; column < LevelModel::ColumnCount; ++column) {
        const QRect room = view_.ColumnRect(column, option.rect);
        if (!room.isNull())
            PaintWords(painter, room.adjusted(gap / 2, 0, -gap, 0),
                       index.siblingAtColumn(column).data().toString(), Qt::AlignVCenter);
    }
}

void LevelDelegate::PaintCover(QPainter& painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const auto& model = *static_cast<const LevelModel*>(index.model());
    const LibraryLevel& level = model.Shown().At(index.row());
    const int width = std::min(view_.CoverWidth(), option.rect.width() - 2 * gap);
    QRect cover(0, 0, width, width * 3 / 4);
    cover.moveTop(option.rect.top() + gap);
    cover.moveLeft(option.rect.center().x() - width / 2);
    PaintPicture(painter, cover, level);
    if (level.cdNumber != 0) {
        const QString words = Words(Msg::DiscBadge, {std::to_string(level.cdNumber)});
        QRect badge(0, 0, painter.fontMetrics().horizontalAdvance(words) + 2 * gap,
                    painter.fontMetrics().height());
        badge.moveBottomRight(cover.bottomRight());
        painter.fillRect(badge, QColor(0, 0, 0, 170));
        painter.setPen(Qt::white);
        painter.drawText(badge, Qt::AlignCenter, words);
    }
    QRect line(cover.left(), cover.bottom() + gap / 2, cover.width(),
               painter.fontMetrics().lineSpacing());
    QStringList below;
    for (const QString& words : {ToQt(level.author), MarksOf(level)})
        if (!words.isEmpty())
            below.append(words);
    painter.setFont(NameFont(option, level));
    painter.setPen(InkOf(option, false));
    if (level.current) {
        PaintMark(painter, QRect(line.left(), line.center().y() - markSide / 2, markSide, markSide),
                  option);
        line.setLeft(line.left() + markSide + 2);
    }
    QString rest = ToQt(level.text);
    if (below.size() < coverLines - 1) { // a line is free for the rest of the name
        PaintWords(painter, line, TakeLine(rest, painter.fontMetrics(), line.width()),
                   Qt::AlignHCenter);
        if (!rest.isEmpty())
            line = QRect(cover.left(), line.bottom() + 1, cover.width(), line.height());
    }
    PaintWords(painter, line, rest, Qt::AlignHCenter);
    line = QRect(cover.left(), line.bottom() + 1, cover.width(), line.height());
    painter.setFont(option.font);
    painter.setPen(InkOf(option, true));
    for (const QString& words : below) {
        PaintWords(painter, line, words, Qt::AlignHCenter);
        line.translate(0, line.height());
    }
}

bool LevelDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                              const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    if (!index.isValid())
        return true;
    const auto& model = *static_cast<const LevelModel*>(index.model());
    const LibraryLevel& level = model.Shown().At(index.row());
    const int room =
        view_.Look() == LibraryLook::Covers
            ? std::min(view_.CoverWidth(), option.rect.width() - 2 * gap)
            : PlacesIn(view_.ColumnRect(LevelModel::NameColumn, option.rect), option.direction)
                  .words.width();
    const QString name = ToQt(level.text);
    if (!IsWhole(name, QFontMetrics(NameFont(option, level)), room))
        QToolTip::showText(event->globalPos(), PlainTip(name), view);
    else
        QToolTip::hideText();
    return true;
}

} // namespace kestrova
