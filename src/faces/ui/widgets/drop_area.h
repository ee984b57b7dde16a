#pragma once

#include "core/names.h"

#include <QObject>
#include <functional>
#include <vector>

class QWidget;

namespace kestrova
{

/// Lets files be dropped on a widget: it lights up and says what will be done with them. What it
/// does not take goes on to the widgets around it.
class DropArea : public QObject
{
public:
    explicit DropArea(QWidget* target) : DropArea(target, *target) {}
    /// A part of the widget lights up, which owns this.
    DropArea(QWidget* target, QWidget& lit);

    /// What a drop of these files and folders would do, in words; empty: it takes none of them.
    std::function<QString(const std::vector<Path>&)> welcome = [](const std::vector<Path>&) {
        return QString();
    };
    /// Called behind the drop, so that whoever dragged them waits for nobody.
    std::function<void(const std::vector<Path>&)> dropped = [](const std::vector<Path>&) {};

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Light;
    QWidget* target_;
    Light* light_;
};

} // namespace kestrova
