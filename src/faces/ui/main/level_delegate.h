#pragma once

#include "ui/main/level_model.h"

#include <QPixmap>
#include <QStyledItemDelegate>

namespace kestrova
{

class LevelView;

/// Paints a level as a row or as a cover: its picture, its name, the mark of the one that stands in
/// the Level Editor's folder. Tells the whole of a name that is too long.
class LevelDelegate : public QStyledItemDelegate
{
public:
    explicit LevelDelegate(LevelView& view);

    /// The level's picture; null while it is not there, and where there is none. It answers at
    /// once.
    std::function<QPixmap(LevelCode)> picture = [](LevelCode) { return QPixmap{}; };

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    void PaintRow(QPainter& painter, const QStyleOptionViewItem& option,
                  const QModelIndex& index) const;
    void PaintCover(QPainter& painter, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;
    void PaintPicture(QPainter& painter, const QRect& room, const LibraryLevel& level) const;

    LevelView& view_;
};

} // namespace kestrova
