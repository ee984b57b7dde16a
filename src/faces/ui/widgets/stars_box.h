#pragma once

#include "formats/library_note.h"

#include <QWidget>
#include <functional>

class QPainter;

namespace kestrova
{

/// So many of five stars, filled in that colour and outlined, from the left edge of `place` on,
/// each as high as it.
void PaintStars(QPainter& painter, const QRectF& place, int stars, const QColor& colour);

/// Five stars that a person sets: by a click (the star that is set takes it away again), by the
/// digits 0 to 5, and by the arrows.
class StarsBox : public QWidget
{
public:
    explicit StarsBox(QWidget* parent = nullptr);

    void SetStars(int stars);
    [[nodiscard]] int Stars() const { return stars_; }
    /// A person has set other ones.
    std::function<void(int)> changed = [](int) {};

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] int StarAt(QPointF place) const;
    void Choose(int stars);

    int stars_ = 0;
    int pointed_ = 0; ///< the star under the mouse
};

} // namespace kestrova
