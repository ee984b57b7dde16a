#include "ui/dialogs/dialog_restore.h"

#include "session/operation.h"
#include "swap/backup.h"
#include "swap/folder_guard.h"
#include "swap/restore.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace kestrova
{

namespace
{

constexpr int restoreWidth = 520;
constexpr int restoreSteps = 1000;

} // namespace

RestoreDialog::RestoreDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), info_(NamedLabel(this, "Label_Info")),
      bar_(new QProgressBar(this))
{
    setObjectName(QStringLiteral("Dialog_Restore"));
    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    bar_->setRange(0, restoreSteps);
    bar_->setTextVisible(false);
    QSizePolicy keepsRoom = bar_->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    bar_->setSizePolicy(keepsRoom);
    bar_->hide();
    auto* full = NamedButton(this, "Pul_Full");
    auto* fast = NamedButton(this, "Pul_Fast");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    QLabel* choose = NamedLabel(this, "Label3");
    QFont strong = choose->font();
    strong.setBold(true);
    choose->setFont(strong);
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(0, 1);
    grid->setVerticalSpacing(10);
    grid->addWidget(choose, 0, 0, 1, 2);
    grid->addWidget(NamedLabel(this, "Label2"), 1, 0);
    grid->addWidget(fast, 1, 1);
    grid->addWidget(NamedLabel(this, "Label1"), 2, 0);
    grid->addWidget(full, 2, 1);
    grid->addWidget(info_, 3, 0, 1, 2);
    grid->addWidget(bar_, 4, 0);
    grid->addWidget(cancel, 4, 1);
    grid->setRowStretch(3, 1);
    grid->setRowMinimumHeight(3, fontMetrics().lineSpacing() * 2);
    cancel->setDefault(true);
    connect(fast, &QPushButton::clicked, this, &RestoreDialog::RestoreFast);
    connect(full, &QPushButton::clicked, this, &RestoreDialog::RestoreFull);
    connect(cancel, &QPushButton::clicked, this, &RestoreDialog::reject);
    SetCaptions(*this);
    ResizeToFit(*this, {restoreWidth, sizeHint().height()});
    cancel->setFocus();
}

void RestoreDialog::AllowButtons(bool allowed)
{
    for (const char* name : {"Pul_Full", "Pul_Fast", "Pul_Cancel"})
        findChild<QPushButton*>(QString::fromLatin1(name))->setEnabled(allowed);
}

void RestoreDialog::RestoreFast()
{
    const Operation operation{session_};
    AllowButtons(false);
    const bool done = RestoreFastWithWords(session_);
    AllowButtons(true);
    if (done)
        accept();
}

void RestoreDialog::RestoreFull()
{
    const Operation operation{session_};
    if (!MayChangeTrle(session_, session_.Folders()))
        return;
    AllowButtons(false);
    bar_->show();
    OwnProgress progress{*info_, *bar_};
    RestoreOriginalConfiguration(session_, progress);
    session_.list.Refresh();
    accept();
}

void RestoreDialog::reject()
{
    if (session_.running.operations == 0)
        QDialog::reject();
}

} // namespace kestrova
