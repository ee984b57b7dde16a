#pragma once

#include <QPixmap>
#include <QWidget>
#include <functional>

namespace kestrova
{

/// A picture scaled into whatever room there is, or words in its place.
class PictureView : public QWidget
{
public:
    using QWidget::QWidget;

    void Show(const QImage& picture);
    void ShowWords(const QString& words);
    [[nodiscard]] const QString& ShownWords() const { return words_; }
    [[nodiscard]] bool HasPicture() const { return !picture_.isNull(); }
    [[nodiscard]] const QImage& Shown() const { return picture_; }

    /// A double click, and a press of the right button at that place of the screen.
    std::function<void()> opened = [] {};
    std::function<void(QPoint)> menuWanted = [](QPoint) {};

    [[nodiscard]] QSize sizeHint() const override { return {320, 240}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {64, 72}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QImage picture_;
    QPixmap scaled_; ///< for the present size
    QString words_;
};

/// Words in the middle of a widget that has no picture to show.
void PaintWords(QWidget& widget, const QString& words);

} // namespace kestrova
