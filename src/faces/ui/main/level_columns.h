#pragma once

#include "ui/main/level_model.h"

#include <QHeaderView>

#include <functional>

namespace kestrova
{

/// How a person wants a column of the rows.
struct ChosenColumn {
    int column = 0; ///< `LevelModel::Column`
    int width = 0;  ///< 0: the usual one
    bool hidden = false;
};
/// From the left to the right; those that are missing stand behind them as usual.
using ChosenColumns = std::vector<ChosenColumn>;

/// The head of the rows: which columns there are, in which order, and how wide. The name has what
/// the others leave; where the room is small the last ones are not shown. A column is dragged to
/// another place or to another width, and hidden by the menu; a click sorts by it, or turns the
/// order round.
class LevelColumns : public QHeaderView
{
public:
    LevelColumns(LevelModel& model, QWidget* parent);

    /// As many of the wanted columns as fit in that width.
    void Arrange(int width);
    /// Where a column stands in a row that begins there; empty for one that is not shown.
    [[nodiscard]] QRect RectOf(int column, const QRect& row) const;
    void ShowOrder(LibraryOrder order, bool turned);
    /// The menu that hides and shows columns, at that place of the screen.
    void OpenMenu(QPoint place);

    [[nodiscard]] ChosenColumns Chosen() const;
    /// What makes no sense in it is passed over.
    void Choose(const ChosenColumns& columns);

    std::function<void(LibraryOrder)> orderWanted = [](LibraryOrder) {};
    /// The rows must be painted anew.
    std::function<void()> changed = [] {};

private:
    struct Wish {
        int width = 0; ///< 0: the usual one
        bool hidden = false;
    };
    [[nodiscard]] int UsualWidth(int column) const;
    [[nodiscard]] int WidthOf(int column) const;
    [[nodiscard]] int LeastOfName() const;
    [[nodiscard]] int NextShown(int column) const;
    void TakeWidth(int column, int before, int now);
    void SetHidden(int column, bool hidden);

    Wish wishes_[LevelModel::ColumnCount];
    int width_ = 0;
    bool arranging_ = false; ///< what moves now is no wish of the person's
};

} // namespace kestrova
