#pragma once

#include "ui/main/level_view.h"

#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QToolButton;

namespace kestrova
{

/// Above the list: what it is sorted by, which levels it shows, and how.
class LibraryBar : public QWidget
{
public:
    explicit LibraryBar(QWidget* parent);

    std::function<void(LibraryOrder)> ordered = [](LibraryOrder) {};
    /// The order the other way round.
    std::function<void()> turned = [] {};
    std::function<void(LibraryFilter, const std::string& tag)> filtered = [](LibraryFilter,
                                                                             const std::string&) {};
    std::function<void(LibraryLook)> looked = [](LibraryLook) {};
    /// The menu of the columns, at that place of the screen.
    std::function<void(QPoint)> columnsWanted = [](QPoint) {};

    /// Shows that choice without telling of it. A tag that no level has is offered all the same
    /// while it is the filter.
    void Show(const Library& library);
    void Show(LibraryLook look);
    /// One row without the looks, where there is no room for more.
    void SetLow(bool low);
    /// The words of the filter that is chosen.
    [[nodiscard]] QString FilterWords() const;
    /// What the keyboard goes through, in that order.
    [[nodiscard]] std::vector<QWidget*> Controls() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Arrange();
    QToolButton* MakeButton(const char* name);
    QToolButton* MakeLook(const char* name, LibraryLook look);
    void FillFilters(const Library& library);

    QComboBox* order_;
    QComboBox* filter_;
    QToolButton* turn_;
    QToolButton* rows_;
    QToolButton* covers_;
    QHBoxLayout* above_;
    QHBoxLayout* below_;
    bool low_ = false;
    std::optional<bool> inTwoRows_;
    std::vector<std::string> tags_;
};

} // namespace kestrova
