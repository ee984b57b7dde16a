#pragma once

#include "shots/shot_list.h"
#include "ui/widgets/cover_cache.h"

#include <QListView>
#include <functional>

namespace kestrova
{

/// All pictures of a level as a row of small ones; hidden while both panes show all there are.
class ShotStrip : public QListView
{
public:
    explicit ShotStrip(QWidget* parent = nullptr);

    /// The pictures of the list, and the one on the left marked.
    void ShowList(const ShotList& shots);
    /// A person chose the picture at that place of the list.
    std::function<void(std::ptrdiff_t)> picked = [](std::ptrdiff_t) {};
    /// The commands are wanted for it, at that place of the screen.
    std::function<void(std::ptrdiff_t, QPoint)> menuWanted = [](std::ptrdiff_t, QPoint) {};

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    class Model;

    CoverCache cache_;
    Model* model_;
};

} // namespace kestrova
