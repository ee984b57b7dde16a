#include "ui/dialogs/dialog_resize.h"

#include "session/operation.h"
#include "shots/shot_resize.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/picture_reading.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/wrapping_row.h"
#include "words/ui_dialogs.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

ResizeDialog::ResizeDialog(Session& session, Path shot, QWidget* parent)
    : QDialog(parent), session_(session), shot_(std::move(shot)), sizes_(new QComboBox(this)),
      picture_(new QLabel(this))
{
    setObjectName(QStringLiteral("Dialog_Resize"));
    sizes_->setObjectName(QStringLiteral("Combo_Resize"));
    sizes_->setAccessibleName(Words(Msg::ColumnSize));
    for (const ShotSize& size : ShotSizes())
        sizes_->addItem(Words(size.text));
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("Label_Sizes"));
    label->setBuddy(sizes_);
    auto* resize = NamedButton(this, "Pul_Resize");
    auto* save = NamedButton(this, "Pul_Save");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    picture_->setObjectName(QStringLiteral("Picture1"));
    picture_->setAccessibleName(Words(Msg::ResizePicture));
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setWordWrap(true);
    picture_->setTextFormat(Qt::PlainText);
    // Room for the largest one, so that nothing moves when another size is taken.
    const ShotSize& largest = ShotSizes().front();
    picture_->setMinimumSize(largest.width + 16, largest.height + 16);

    auto* row = new WrappingRow;
    for (QWidget* part : std::initializer_list<QWidget*>{label, sizes_, resize})
        row->addWidget(part);
    row->AddStretch();
    row->addWidget(save);
    row->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(picture_), 1);
    column->addLayout(row);
    connect(resize, &QPushButton::clicked, this, &ResizeDialog::Resize);
    connect(save, &QPushButton::clicked, this, &ResizeDialog::Save);
    connect(cancel, &QPushButton::clicked, this, &ResizeDialog::reject);
    SetCaptions(*this);

    const auto whole = LoadPicture(shot_);
    if (whole) {
        whole_ = *whole;
        Resize();
    } else {
        picture_->setText(Words(Msg::ShotUnreadable, {whole.Error().reason}));
    }
    ResizeToFit(*this, sizeHint());
    resize->setEnabled(!whole_.isNull());
    save->setEnabled(!whole_.isNull());
}

void ResizeDialog::Resize()
{
    const auto row = static_cast<std::size_t>(sizes_->currentIndex());
    if (row >= ShotSizes().size())
        return;
    const ShotSize& size = ShotSizes()[row];
    drawn_ =
        whole_.scaled(size.width, size.height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    picture_->setPixmap(QPixmap::fromImage(drawn_));
}

void ResizeDialog::Save()
{
    const Operation operation{session_};
    if (SaveResizedShot(session_.host, session_, session_.list.Selected().value_or(originalCode),
                        PictureOf(drawn_), shot_))
        accept();
}

} // namespace kestrova
