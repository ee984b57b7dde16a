#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace kestrova
{

/// A picture that fits its room until somebody zooms in; then it can be moved about. Words in its
/// place when there is none.
class ZoomView : public QWidget
{
public:
    explicit ZoomView(QWidget* parent);

    void Show(const QImage& picture);
    void ShowWords(const QString& words);
    /// Nearer, or with a factor below 1 farther; `place` of the widget stays where it is.
    void Zoom(double factor, QPointF place);
    void Fit();
    /// How many points of the screen one of the picture takes.
    [[nodiscard]] double Scale() const;
    /// Where the picture lies now.
    [[nodiscard]] QRectF PictureRect() const;
    [[nodiscard]] bool HasPicture() const { return !picture_.isNull(); }
    [[nodiscard]] const QString& ShownWords() const { return words_; }

    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] double FitScale() const;
    void KeepInside();

    QImage picture_;
    QPixmap fitted_; ///< the whole picture for the present room
    QString words_;
    double zoom_ = 1; ///< 1: the whole picture is seen
    QPointF centre_;  ///< the place of the picture in the middle of the room
    QPointF dragged_; ///< where the mouse was last
};

} // namespace kestrova
