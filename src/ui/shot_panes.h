#pragma once

#include "catalogue/message.h"
#include "saves/shot_list.h"
#include "ui/elided_label.h"

#include <QImage>
#include <QToolButton>

namespace kestrova
{

/// A picture file decoded by its content; the failure's words are for people.
Result<QImage> LoadPicture(const Path& file);

/// A picture scaled into whatever room there is, or words in its place.
class PictureView : public QWidget
{
public:
    using QWidget::QWidget;

    void Show(const QImage& picture);
    void ShowWords(const QString& words);
    [[nodiscard]] const QString& ShownWords() const { return words_; }
    [[nodiscard]] bool HasPicture() const { return !picture_.isNull(); }

    [[nodiscard]] QSize sizeHint() const override { return {320, 240}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {96, 72}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage picture_;
    QPixmap scaled_; ///< for the present size
    QString words_;
};

/// The two panes with the pictures of the selected level.
class ShotPanes : public QWidget
{
public:
    explicit ShotPanes(QWidget* parent = nullptr);

    void ShowLevel(Session& session, LevelCode code);
    void Clear();

private:
    struct Pane {
        PictureView* view = nullptr;
        ElidedLabel* label = nullptr;
        QToolButton* zoom = nullptr;
        Path shown; ///< what was decoded last
        std::int64_t shownTime = 0;
    };
    void ShowPair();
    static void ShowFile(Pane& pane, const Path& file);
    QLayout* MakePane(Pane& pane, const char* number, Msg name);

    ShotList shots_;
    Pane left_;
    Pane right_;
    QToolButton* previous_;
    QToolButton* next_;
};

} // namespace kestrova
