#pragma once

#include "ui/main/level_columns.h"

#include <QListView>

class QLabel;

namespace kestrova
{

class LevelDelegate;

enum class LibraryLook { Rows, Covers };

/// The smallest and the largest width of a cover.
inline constexpr int smallestCover = 90;
inline constexpr int largestCover = 360;
inline constexpr int usualCover = 170;

/// The list of levels: as rows with as many columns as there is room for, or as covers.
class LevelView : public QListView
{
public:
    LevelView(LevelModel& model, QWidget* parent);

    void SetLook(LibraryLook look);
    [[nodiscard]] LibraryLook Look() const { return look_; }
    /// Whether rows have the head of their columns above them.
    void SetHead(bool shown);
    void SetCoverWidth(int width);
    [[nodiscard]] int CoverWidth() const { return coverWidth_; }
    /// Every row has its place now, so that it can be scrolled to.
    void ExecuteDelayedLayout() { executeDelayedItemsLayout(); }
    /// In place of levels; empty takes them away.
    void ShowWords(const QString& words);
    /// These are selected beside the one that is.
    void SelectToo(const std::vector<LevelCode>& codes);
    /// The rows of which a part is on the screen.
    [[nodiscard]] std::vector<int> SeenRows() const;
    /// From the first to the last.
    [[nodiscard]] std::vector<int> SelectedRows() const;
    [[nodiscard]] LevelDelegate& Delegate() const { return *delegate_; }
    [[nodiscard]] LevelColumns& Columns() const { return *header_; }

    [[nodiscard]] int RowHeight() const;
    /// Where a column stands in a row that begins there; empty for one that has no room.
    [[nodiscard]] QRect ColumnRect(int column, const QRect& row) const
    {
        return header_->RectOf(column, row);
    }
    /// Of one cover with its words.
    [[nodiscard]] QSize CoverCell() const { return gridSize(); }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void updateGeometries() override;

private:
    void MakeLabel();
    void Arrange();

    LevelDelegate* delegate_;
    LevelColumns* header_;
    QLabel* empty_;
    LibraryLook look_ = LibraryLook::Rows;
    bool hasHead_ = true;
    int coverWidth_ = usualCover;
};

} // namespace kestrova
