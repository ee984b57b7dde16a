#include "ui/dialogs/dialog_screen_shot.h"

#include "ui/widgets/picture_reading.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/zoom_view.h"
#include "words/ui_dialogs.h"

#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr double keyStep = 1.25;
constexpr QSize shotSize{800, 600};

} // namespace

ScreenShotDialog::ScreenShotDialog(const ShotList& shots, std::ptrdiff_t index, QWidget* parent)
    : QDialog(parent), shots_(shots), index_(index), view_(new ZoomView(this))
{
    setObjectName(QStringLiteral("Dialog_ScreenShot"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(false);
    view_->setObjectName(QStringLiteral("Image1"));
    view_->setToolTip(Words(Msg::ViewShotTip));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(view_);
    const QSize room = screen()->availableSize() * 9 / 10;
    resize(shotSize.boundedTo(room));
    ShowShot();
}

void ScreenShotDialog::ShowShot()
{
    const Path& shot = shots_.At(index_);
    setWindowTitle(Words(Msg::ViewShotTitle) + ToQt(TextOf(shot)));
    view_->setAccessibleName(ToQt(TextOf(shot.filename())));
    const Path found = ResolvePath(shot);
    if (!FileExists(found))
        return view_->ShowWords(Words(Msg::ShotNotFound, {TextOf(shot)}));
    if (const auto picture = LoadPicture(found))
        view_->Show(*picture);
    else
        view_->ShowWords(Words(Msg::ShotUnreadable, {picture.Error().reason}));
}

void ScreenShotDialog::Step(std::ptrdiff_t step)
{
    if (!shots_.Has(index_) || !shots_.Has(index_ + step))
        return;
    index_ += step;
    ShowShot();
}

void ScreenShotDialog::keyPressEvent(QKeyEvent* event)
{
    const QPointF middle = QPointF(view_->width(), view_->height()) / 2;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        return Step(-1);
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        return Step(1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return view_->Zoom(keyStep, middle);
    case Qt::Key_Minus:
        return view_->Zoom(1 / keyStep, middle);
    case Qt::Key_0:
        return view_->Fit();
    default:
        QDialog::keyPressEvent(event);
    }
}

} // namespace kestrova
