#include "ui/dialogs/dialog_cattura.h"

#include "session/operation.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/picture_view.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QImage>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

CaptureDialog::CaptureDialog(Session& session, const CapturedShot& shot, QWidget* parent)
    : QDialog(parent), session_(session), shot_(shot)
{
    setObjectName(QStringLiteral("Dialog_Cattura"));
    auto* view = new PictureView(this);
    view->setObjectName(QStringLiteral("Image1"));
    view->setAccessibleName(Words(Msg::CapturePicture));
    view->Show(QImage(shot.picture.rgb.data(), shot.picture.width, shot.picture.height,
                      static_cast<qsizetype>(shot.picture.width) * 3, QImage::Format_RGB888));
    auto* automatic = new QCheckBox(this);
    automatic->setObjectName(QStringLiteral("Check_AutoSave"));
    automatic->setChecked(!session.preferences.promptCapture);
    auto* save = NamedButton(this, "Pul_Save");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    save->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(cancel);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(view, 1);
    parts->addWidget(automatic);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, &CaptureDialog::Save);
    connect(cancel, &QPushButton::clicked, this, &CaptureDialog::reject);
    connect(automatic, &QCheckBox::clicked, this, &CaptureDialog::PromptChanged);
    SetCaptions(*this);
    ResizeToFit(*this, {640, 560});
}

void CaptureDialog::PromptChanged(bool never)
{
    const Operation operation{session_};
    session_.preferences.promptCapture = !never;
    DoneOrTold(session_.host,
               SavePreferencesNow(session_.Folders(), session_.preferences, session_.settings));
}

void CaptureDialog::Save()
{
    const Operation operation{session_};
    if (!AskSaveCapturedShot(session_, shot_))
        return;
    BringGameBack(session_.machine);
    accept();
}

void CaptureDialog::reject()
{
    if (session_.running.operations > 0)
        return;
    BringGameBack(session_.machine);
    QDialog::reject();
}

} // namespace kestrova
