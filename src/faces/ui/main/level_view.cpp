#include "ui/main/level_view.h"

#include "ui/main/level_delegate.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrova
{

LevelView::LevelView(LevelModel& model, QWidget* parent)
    : QListView(parent), delegate_(new LevelDelegate(*this)),
      header_(new LevelColumns(model, this)), empty_(new QLabel(viewport()))
{
    setObjectName(QStringLiteral("Combo_Livelli"));
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setResizeMode(QListView::Adjust);
    setItemDelegate(delegate_);
    setModel(&model);
    MakeLabel();
    Arrange();
}

void LevelView::MakeLabel()
{
    // In the list's own room, so that it does not change its size.
    (new QVBoxLayout(viewport()))->addWidget(empty_);
    empty_->setObjectName(QStringLiteral("Label_Empty"));
    empty_->setForegroundRole(QPalette::PlaceholderText);
    constexpr int margin = 12;
    empty_->setAttribute(Qt::WA_TransparentForMouseEvents);
    empty_->setTextFormat(Qt::PlainText);
    empty_->setWordWrap(true);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setMargin(margin);
    empty_->setMinimumSize(1, 1); // a long search text makes no window larger
}

void LevelView::ShowWords(const QString& words)
{
    empty_->setText(words);
    empty_->setVisible(!words.isEmpty());
}

void LevelView::SetLook(LibraryLook look)
{
    look_ = look;
    Arrange();
}

void LevelView::SetHead(bool shown)
{
    if (std::exchange(hasHead_, shown) != shown)
        Arrange();
}

void LevelView::SetCoverWidth(int width)
{
    coverWidth_ = std::clamp(width, smallestCover, largestCover);
    Arrange();
}

void LevelView::SelectToo(const std::vector<LevelCode>& codes)
{
    const auto& levels = *static_cast<const LevelModel*>(model());
    std::vector<int> rows;
    for (const LevelCode code : codes)
        if (const int row = levels.Shown().RowOf(code); row >= 0)
            rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    QItemSelection selection;
    for (std::size_t begin = 0, end = 0; begin < rows.size(); begin = end) {
        while (end < rows.size() && rows[end] == rows[begin] + static_cast<int>(end - begin))
            ++end;
        selection.select(levels.index(rows[begin], 0), levels.index(rows[end - 1], 0));
    }
    selectionModel()->select(selection, QItemSelectionModel::Select);
}

std::vector<int> LevelView::SelectedRows() const
{
    std::vector<int> rows;
    for (const QModelIndex& index : selectedIndexes())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<int> LevelView::SeenRows() const
{
    const QRect screen = viewport()->rect();
    const QModelIndex first = indexAt(screen.topLeft() + QPoint(1, 1));
    std::vector<int> rows;
    for (int row = std::max(first.row(), 0); row < model()->rowCount(); ++row) {
        const QRect place = visualRect(model()->index(row, 0));
        if (place.top() > screen.bottom())
            break;
        if (place.intersects(screen))
            rows.push_back(row);
    }
    return rows;
}

int LevelView::RowHeight() const
{
    constexpr int gaps = 8;
    return 2 * fontMetrics().lineSpacing() + gaps;
}

void LevelView::Arrange()
{
    const bool covers = look_ == LibraryLook::Covers;
    header_->setVisible(!covers && hasHead_);
    setWrapping(covers);
    setFlow(covers ? QListView::LeftToRight : QListView::TopToBottom);
    if (covers) {
        constexpr int gap = 12;
        // As wide with the scroll bar as without it: were the columns others then, the bar would
        // come and go for ever, and levels stand where nobody can scroll to.
        const int bar =
            style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, verticalScrollBar());
        const int width = maximumViewportSize().width() - bar - 1;
        const int columns = std::max(1, width / (coverWidth_ + gap));
        const int height = coverWidth_ * 3 / 4 + 3 * fontMetrics().lineSpacing() + 2 * gap;
        setGridSize({std::max(width / columns, smallestCover), height});
    } else {
        setGridSize({});
        header_->Arrange(viewport()->width());
    }
    verticalScrollBar()->setSingleStep(RowHeight());
    scheduleDelayedItemsLayout();
    updateGeometries();
}

void LevelView::updateGeometries()
{
    const int height = look_ == LibraryLook::Rows && hasHead_ ? header_->sizeHint().height() : 0;
    if (viewportMargins().top() != height)
        setViewportMargins(0, height, 0, 0);
    const QRect place = viewport()->geometry();
    header_->setGeometry(place.left(), place.top() - height, place.width(), height);
    QListView::updateGeometries();
}

void LevelView::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    Arrange();
}

void LevelView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        Arrange();
}

void LevelView::mousePressEvent(QMouseEvent* event)
{
    // What is chosen stays chosen when no level is clicked.
    if (indexAt(event->position().toPoint()).isValid())
        QListView::mousePressEvent(event);
}

} // namespace kestrova
