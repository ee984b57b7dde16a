#pragma once

#include <QWidget>
#include <functional>
#include <vector>

class QLabel;
class QSlider;
class QToolButton;

namespace kestrova
{

/// Below the list: the level before and behind, how large covers are, how many levels there are.
class LibraryFoot : public QWidget
{
public:
    explicit LibraryFoot(QWidget* parent);

    /// One level up (-1) or down (1).
    std::function<void(int)> stepped = [](int) {};
    std::function<void(int)> coverWidthWanted = [](int) {};

    void ShowCoverWidth(int width);
    void ShowSlider(bool shown);
    void ShowCounts(const QString& words, bool anyLevels);
    /// What the keyboard goes through, in that order.
    [[nodiscard]] std::vector<QWidget*> Controls() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* before_;
    QToolButton* behind_;
    QSlider* slider_;
    QLabel* counts_;
};

} // namespace kestrova
