#include "ui/dialogs/dialog_import_shot.h"

#include "session/operation.h"
#include "shots/shot_import.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int importWidth = 460;
constexpr int importSteps = 1000;

} // namespace

ImportShotDialog::ImportShotDialog(Session& session, std::size_t index, QWidget* parent)
    : QDialog(parent), session_(session), index_(index), all_(new QRadioButton(this)),
      info_(new QLabel(this)), bar_(new QProgressBar(this))
{
    setObjectName(QStringLiteral("Dialog_ImportShot"));
    auto* current = new QRadioButton(this);
    current->setObjectName(QStringLiteral("Opt_SoloCur"));
    current->setChecked(true);
    all_->setObjectName(QStringLiteral("Opt_Tutti"));
    info_->hide();
    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    bar_->setRange(0, importSteps);
    bar_->setTextVisible(false);
    QSizePolicy keepsRoom = bar_->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    bar_->setSizePolicy(keepsRoom);
    bar_->hide();
    auto* import = NamedButton(this, "Pul_Import");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    auto* help = HelpButton(this);
    import->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(import);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(current);
    column->addWidget(all_);
    column->addWidget(bar_);
    column->addLayout(buttons);
    connect(import, &QPushButton::clicked, this, &ImportShotDialog::Import);
    connect(cancel, &QPushButton::clicked, this, &ImportShotDialog::reject);
    SetCaptions(*this);
    setWindowTitle(Words(Msg::ImportShotTitle) + QLatin1Char('"') +
                   ToQt(Trim(session.archive.levels[index].levelName)) + QLatin1Char('"'));
    ResizeToFit(*this, {importWidth, sizeHint().height()});
}

void ImportShotDialog::Import()
{
    const Operation operation{session_};
    OwnProgress progress{*info_, *bar_};
    bar_->show();
    const ImportedShots imported = all_->isChecked()
                                       ? ImportShotsOfAllLevels(session_.host, session_, progress)
                                       : ImportShots(session_.host, session_, index_, progress);
    bar_->hide();
    // Every failure was told where it happened.
    if (imported.pictures > 0)
        session_.host.Tell(Tone::Plain, GetMsg(Msg::ShotImportDone));
    else if (imported.all)
        session_.host.Tell(Tone::Plain, GetMsg(Msg::ShotImportNone));
    accept();
}

void ImportShotDialog::reject()
{
    if (session_.running.operations == 0)
        QDialog::reject();
}

} // namespace kestrova
