#include "ui/dialogs/dialog_wizard.h"

#include "publish/finish_upload.h"
#include "publish/upload_files.h"
#include "publish/upload_steps.h"
#include "publish/upload_texts.h"
#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/dialogs/wizard_pages.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/progress_row.h"
#include "ui/widgets/qt_text.h"
#include "words/wizard.h"

#include <QDragEnterEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize wizardSize{680, 560};

constexpr HelpTag stepTags[] = {HelpTag::PublishOverview,   HelpTag::PublishFiles,
                                HelpTag::PublishAuthor,     HelpTag::PublishLevel,
                                HelpTag::PublishImportWads, HelpTag::PublishTomWads,
                                HelpTag::PublishOverview};

} // namespace

WizardDialog::WizardDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), info_(new QLabel(this)), bar_(new QProgressBar(this)),
      stop_(NamedButton(this, "Pul_Stop")), back_(NamedButton(this, "Pul_Back")),
      next_(NamedButton(this, "Pul_Next")), stack_(new QStackedWidget(this)),
      progress_(*info_, *bar_, *stop_), wizard_(session, progress_)
{
    setObjectName(QStringLiteral("Dialog_Wizard"));
    setAcceptDrops(true);
    pages_ = MakeUploadPages(wizard_, [this](const std::function<void()>& work) { Run(work); });
    for (UploadPage* page : pages_)
        stack_->addWidget(new ScrollPage(page));
    auto* column = new QVBoxLayout(this);
    column->addWidget(stack_, 1);
    column->addLayout(MakeProgress());
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    progress_.End();
    ResizeToFit(*this, wizardSize);
    ShowStep();
}

QLayout* WizardDialog::MakeProgress()
{
    info_->setObjectName(QStringLiteral("Label_Info_Step7"));
    info_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return ProgressRow(*info_, *bar_, *stop_);
}

QLayout* WizardDialog::MakeButtons()
{
    auto* help = HelpButton(this);
    auto* cancel = NamedButton(this, "Pul_Cancel");
    for (QPushButton* button : {help, back_, cancel})
        button->setAutoDefault(false);
    next_->setDefault(true);
    connect(back_, &QPushButton::clicked, this, &WizardDialog::Back);
    connect(next_, &QPushButton::clicked, this, &WizardDialog::Next);
    connect(cancel, &QPushButton::clicked, this, &WizardDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(help);
    row->addStretch();
    row->addWidget(back_);
    row->addWidget(next_);
    row->addWidget(cancel);
    return row;
}

bool WizardDialog::Ready()
{
    const Operation operation{session_};
    if (!OpenWizard(wizard_))
        return false;
    wizard_.keepsTexts = true;
    OfferUploadTexts(wizard_);
    return true;
}

void WizardDialog::Run(const std::function<void()>& work)
{
    if (session_.running.operations > 0)
        return;
    {
        const Operation operation{session_};
        progress_.Begin();
        work();
        progress_.End();
    }
    pages_[static_cast<std::size_t>(wizard_.step)]->ShowState();
}

void WizardDialog::Next()
{
    const UploadStep before = wizard_.step;
    Run([this, before] {
        if (before != UploadStep::End)
            (void)NextStep(wizard_);
        else
            (void)FinishUpload(wizard_); // every failure is told
    });
    if (wizard_.isOver)
        QDialog::accept();
    else if (wizard_.step != before)
        ShowStep();
}

void WizardDialog::Back()
{
    if (wizard_.step == UploadStep::Overview || session_.running.operations > 0)
        return;
    BackStep(wizard_);
    ShowStep();
}

void WizardDialog::ShowStep()
{
    const auto step = static_cast<std::size_t>(wizard_.step);
    setWindowTitle(ToQt(StepTitle(wizard_.step)));
    SetHelpTag(*this, stepTags[step]);
    pages_[step]->ShowState();
    stack_->setCurrentIndex(static_cast<int>(step));
    back_->setEnabled(wizard_.step != UploadStep::Overview);
    const QString caption =
        Words(wizard_.step == UploadStep::End ? Msg::UploadFinish : Msg::UploadNext);
    next_->setText(QLatin1Char('&') + caption);
    next_->setAccessibleName(caption);
    QWidget* first = pages_[step]->First();
    (first != nullptr ? first : next_)->setFocus();
}

bool WizardDialog::HasTyped() const
{
    return !wizard_.files.empty() || !wizard_.author.empty() || !wizard_.authorNote.empty() ||
           !wizard_.name.empty() || !wizard_.note.empty() || !wizard_.emails.items.empty() ||
           !wizard_.sites.items.empty() || !wizard_.importWads.rows.empty() ||
           !wizard_.externWaves.rows.empty() || !wizard_.tomWads.rows.empty() ||
           !wizard_.importNotes.empty();
}

void WizardDialog::reject()
{
    if (session_.running.operations == 0 && (!HasTyped() || MayDropTyped(session_)))
        QDialog::reject();
}

void WizardDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.running.operations == 0 && !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void WizardDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged it must not wait for the work.
    QTimer::singleShot(0, this, [this, paths = DraggedPaths(*event->mimeData())] {
        Run([&] { AddSources(wizard_, paths); });
        if (wizard_.step == UploadStep::Overview) {
            wizard_.step = UploadStep::Files;
            ShowStep();
        }
    });
}

void ShowWizard(Session& session, QWidget* parent)
{
    WizardDialog dialog{session, parent};
    if (dialog.Ready())
        dialog.exec();
}

} // namespace kestrova
