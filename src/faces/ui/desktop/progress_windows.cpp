#include "ui/desktop/progress_windows.h"

#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "words/session.h"
#include "words/ui_desktop.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrova
{

namespace
{

constexpr int barSteps = 1000;
constexpr qint64 pumpEveryMs = 20;
constexpr qint64 showAfterMs = 250;
constexpr int textWidth = 360;

/// The work that began last and goes on.
WindowProgress* innermost = nullptr;

const char* NameOf(ProgressWindow window)
{
    switch (window) {
    case ProgressWindow::Wait:
        return "Dialog_Wait";
    case ProgressWindow::Zip:
        return "Dialog_Zip";
    case ProgressWindow::Audio:
        return "Dialog_ConvertiMp3";
    case ProgressWindow::Download:
        return "Dialog_Download";
    case ProgressWindow::Progress:
        break;
    }
    return "Dialog_Progress";
}

} // namespace

void Pump::Turn()
{
    if (sinceLast_.isValid() && sinceLast_.elapsed() < pumpEveryMs)
        return;
    QCoreApplication::processEvents();
    sinceLast_.start();
}

void ShowShare(QProgressBar& bar, std::uint64_t done, std::uint64_t total)
{
    const double share =
        total == 0 ? 0.0 : static_cast<double>(std::min(done, total)) / static_cast<double>(total);
    bar.setValue(static_cast<int>(share * barSteps));
}

ProgressDialog::ProgressDialog(ProgressWindow window, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      label_(new QLabel(this)), bar_(new QProgressBar(this)), stop_(new QPushButton(this))
{
    setObjectName(QString::fromLatin1(NameOf(window)));
    label_->setObjectName(window == ProgressWindow::Wait ? QStringLiteral("Label_Mex")
                                                         : QStringLiteral("Label_Info"));
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(true);
    label_->setMinimumWidth(textWidth);
    if (window == ProgressWindow::Download) // whose words are now one line, now two
        label_->setMinimumHeight(2 * label_->fontMetrics().lineSpacing());
    const bool audio = window == ProgressWindow::Audio;
    bar_->setObjectName(audio ? QStringLiteral("ProgrBar_Tutti1") : QStringLiteral("ProgressBar1"));
    bar_->setRange(0, barSteps);
    bar_->setTextVisible(false);
    if (audio) {
        part_ = new QProgressBar(this);
        part_->setObjectName(QStringLiteral("ProgressBar_Singolo"));
        part_->setRange(0, barSteps);
        part_->setTextVisible(false);
        part_->setAccessibleName(Words(Msg::ProgressPartName));
    }
    // The other two have a bar only while somebody steps one.
    bar_->setVisible(window != ProgressWindow::Wait && window != ProgressWindow::Zip);
    stop_->setObjectName(QStringLiteral("Pul_Stop"));
    stop_->setAutoDefault(false);
    stop_->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    if (part_ != nullptr)
        layout->addWidget(part_);
    layout->addWidget(bar_);
    layout->addWidget(stop_, 0, Qt::AlignRight);
    connect(stop_, &QPushButton::clicked, this, &ProgressDialog::Stop);
    SetCaptions(*this);
    if (InputGate* gate = InputGate::Current())
        gate->AdmitAlways(*this);
}

void ProgressDialog::SetLabel(const QString& text)
{
    if (!stopped_)
        label_->setText(WithWordsWithin(text, label_->fontMetrics(), textWidth) + QLatin1Char(' '));
}

void ProgressDialog::SetBar(std::uint64_t done, std::uint64_t total)
{
    if (total > 0)
        bar_->setVisible(true);
    ShowShare(*bar_, done, total);
}

void ProgressDialog::SetPart(std::uint64_t done, std::uint64_t total)
{
    if (part_ != nullptr)
        ShowShare(*part_, done, total);
}

void ProgressDialog::AllowStop()
{
    stop_->setVisible(true);
}

void ProgressDialog::ForgetStop()
{
    stopped_ = false;
    stop_->setEnabled(true);
    stop_->hide();
}

void ProgressDialog::Stop()
{
    if (stop_->isHidden() || stopped_)
        return;
    SetLabel(Words(Msg::StoppingNow));
    stopped_ = true;
    stop_->setEnabled(false);
}

void ProgressDialog::closeEvent(QCloseEvent* event)
{
    Stop();
    event->ignore();
}

void ProgressDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        Stop();
    else if (event->key() == Qt::Key_Space)
        QDialog::keyPressEvent(event);
}

WindowProgress::WindowProgress(ProgressWindow window, const std::string& text, QWidget* parent)
    : outer_(std::exchange(innermost, this))
{
    shares_ = outer_ != nullptr && outer_->CanShare(window, parent);
    if (shares_) {
        dialog_ = outer_->dialog_;
        age_ = outer_->age_; // both are one piece of work for whoever waits
    } else {
        dialog_ = new ProgressDialog(window, parent);
        age_.start();
        if (outer_ != nullptr && outer_->dialog_ != nullptr)
            outer_->dialog_->hide();
    }
    SetLabel(text);
    SetBar(0, 0);
    // Up to here the windows may show what the last step left half painted.
    pump_.Turn();
}

WindowProgress::~WindowProgress()
{
    // Whoever keeps one longer than the work around it is left out of the chain.
    WindowProgress** link = &innermost;
    while (*link != this)
        link = &(*link)->outer_;
    *link = outer_;
    // The dialog may have gone with the window that it belongs to.
    if (!shares_)
        delete dialog_;
    if (outer_ != nullptr)
        outer_->TakeBack();
}

bool WindowProgress::CanShare(ProgressWindow window, const QWidget* parent) const
{
    return dialog_ != nullptr && dialog_->parentWidget() == parent &&
           (window != ProgressWindow::Audio || dialog_->HasParts());
}

void WindowProgress::TakeBack()
{
    // A Stop that only the work inside had offered was for that work alone.
    bool mayStop = mayStop_;
    for (const WindowProgress* at = this; at->shares_ && at->outer_ != nullptr; at = at->outer_)
        mayStop = mayStop || at->outer_->mayStop_;
    if (dialog_ != nullptr && !mayStop)
        dialog_->ForgetStop();
    ShowState();
}

void WindowProgress::ShowState()
{
    if (dialog_ == nullptr)
        return;
    dialog_->SetLabel(label_.empty() ? Words(Msg::FileCopyInProgress) : ToQt(label_));
    dialog_->SetBar(done_, total_);
}

void WindowProgress::SetLabel(const std::string& text)
{
    label_ = text;
    ShowState();
}

void WindowProgress::SetBar(std::uint64_t done, std::uint64_t total)
{
    done_ = done;
    total_ = total;
    ShowState();
}

void WindowProgress::SetPart(std::uint64_t done, std::uint64_t total)
{
    if (dialog_ != nullptr)
        dialog_->SetPart(done, total);
}

void WindowProgress::AllowStop()
{
    mayStop_ = true;
    if (dialog_ != nullptr)
        dialog_->AllowStop();
}

bool WindowProgress::Step()
{
    if (dialog_ == nullptr)
        return true;
    if (!dialog_->isVisible() && age_.elapsed() >= showAfterMs && innermost->dialog_ == dialog_)
        dialog_->show();
    pump_.Turn();
    return dialog_ == nullptr || !mayStop_ || !dialog_->Stopped();
}

void OwnProgress::SetLabel(const std::string& text)
{
    if (label_ != nullptr)
        label_->setText(ToQt(text));
}

void OwnProgress::SetBar(std::uint64_t done, std::uint64_t total)
{
    if (bar_ != nullptr)
        ShowShare(*bar_, done, total);
}

bool OwnProgress::Step()
{
    pump_.Turn();
    return true;
}

StoppableProgress::StoppableProgress(QLabel& label, QProgressBar& bar, QPushButton& stop)
    : OwnProgress(label, bar), bar_(&bar), stop_(&stop)
{
    bar.setRange(0, barSteps);
    QObject::connect(&stop, &QPushButton::clicked, &stop, [this] {
        stopped_ = true;
        stop_->setEnabled(false);
        SetLabel(GetMsg(Msg::StoppingNow));
    });
    if (InputGate* gate = InputGate::Current())
        gate->AdmitAlways(stop);
    End();
}

void StoppableProgress::Begin()
{
    stopped_ = false;
}

void StoppableProgress::SetBar(std::uint64_t done, std::uint64_t total)
{
    // An empty one beside a question would look like something to fill in.
    if (bar_ != nullptr && total > 0)
        bar_->show();
    OwnProgress::SetBar(done, total);
}

void StoppableProgress::End()
{
    bar_->setValue(0);
    bar_->hide();
    stop_->hide();
}

void StoppableProgress::AllowStop()
{
    if (stop_ == nullptr || !stop_->isHidden())
        return;
    stop_->setEnabled(true);
    stop_->show();
}

bool StoppableProgress::Step()
{
    return OwnProgress::Step() && !stopped_;
}

} // namespace kestrova
