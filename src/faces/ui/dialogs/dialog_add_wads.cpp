#include "ui/dialogs/dialog_add_wads.h"

#include "core/size_words.h"
#include "session/documents.h"
#include "session/operation.h"
#include "session/telling.h"
#include "ui/dialogs/dialog_scambia_nomi.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/print_text.h"
#include "ui/widgets/progress_row.h"
#include "ui/widgets/qt_text.h"
#include "words/intake.h"
#include "words/wads_window.h"

#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize addWadsSize{680, 560};

/// A list with its caption above it.
QWidget* Captioned(QWidget* list, const char* name)
{
    auto* part = new QWidget;
    auto* label = new QLabel(part);
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(list);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins({});
    column->addWidget(label);
    column->addWidget(list, 1);
    return part;
}

} // namespace

AddWadsDialog::AddWadsDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), files_(new QTreeWidget(this)),
      hint_(new QLabel(files_->viewport())), report_(new QPlainTextEdit(this)),
      info_(new QLabel(this)), bar_(new QProgressBar(this)), stop_(NamedButton(this, "Pul_Stop")),
      import_(NamedButton(this, "Pul_Import")), cancel_(NamedButton(this, "Pul_Cancel")),
      progress_(*info_, *bar_, *stop_), wads_(session, progress_)
{
    setObjectName(QStringLiteral("Dialog_AddWads"));
    setAcceptDrops(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(MakeLists()), 1);
    column->addLayout(MakeProgress());
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    progress_.End();
    ResizeToFit(*this, addWadsSize);
    ShowState();
}

QWidget* AddWadsDialog::MakeLists()
{
    MakeFileList(*files_, Msg::AddWadsListName,
                 {Words(Msg::AddWadsColumnFile), Words(Msg::AddWadsColumnSize)});
    PutHint(*files_, *hint_);
    hint_->setText(Words(Msg::AddWadsHint));
    connect(files_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        const auto row = static_cast<std::size_t>(files_->indexOfTopLevelItem(item));
        const Path file = row < wads_.Files().size() ? wads_.Files()[row] : Path{};
        Run([&] {
            const auto opened = OpenOfLevel(session_.host, session_.machine, file);
            if (!opened && opened.Error().code != ErrorCode::Stopped)
                TellFailure(session_.host, GetMsg(Msg::FileNotOpened, {TextOf(file.filename())}),
                            opened.Error());
        });
    });
    report_->setObjectName(QStringLiteral("Text_Prospetto"));
    report_->setReadOnly(true);
    report_->setTabChangesFocus(true);
    report_->setLineWrapMode(QPlainTextEdit::NoWrap);
    report_->setFont(EvenLetters(*this));
    auto* parts = new QSplitter(Qt::Vertical, this);
    parts->setChildrenCollapsible(false);
    parts->addWidget(Captioned(files_, "Label_FilesOf"));
    parts->addWidget(Captioned(report_, "Label_ReportOf"));
    return parts;
}

QLayout* AddWadsDialog::MakeProgress()
{
    info_->setObjectName(QStringLiteral("Label_Info"));
    info_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return ProgressRow(*info_, *bar_, *stop_);
}

QLayout* AddWadsDialog::MakeButtons()
{
    auto* help = HelpButton(this);
    auto* file = NamedButton(this, "Pul_AddFile");
    auto* folder = NamedButton(this, "Pul_AddFolder");
    auto* print = NamedButton(this, "Pul_Print");
    for (QPushButton* button : {help, file, folder, print, import_, cancel_})
        button->setAutoDefault(false);
    auto* sources = new QHBoxLayout;
    sources->addWidget(file);
    sources->addWidget(folder);
    sources->addStretch();
    sources->addWidget(print);
    auto* answers = new QHBoxLayout;
    answers->addWidget(help);
    answers->addStretch();
    answers->addWidget(import_);
    answers->addWidget(cancel_);
    auto* rows = new QVBoxLayout;
    rows->addLayout(sources);
    rows->addLayout(answers);
    connect(file, &QPushButton::clicked, this,
            [this] { Run([this] { AddChosenWadFile(wads_); }); });
    connect(folder, &QPushButton::clicked, this,
            [this] { Run([this] { AddChosenWadFolder(wads_); }); });
    connect(import_, &QPushButton::clicked, this, &AddWadsDialog::Import);
    connect(print, &QPushButton::clicked, this, &AddWadsDialog::Print);
    connect(cancel_, &QPushButton::clicked, this, &AddWadsDialog::reject);
    return rows;
}

bool AddWadsDialog::Ready()
{
    bool ready = false;
    Run([&] { ready = PrepareWadImport(wads_, {}); });
    return ready;
}

bool AddWadsDialog::RunWith(const Path& package)
{
    QTimer::singleShot(0, this, [this, package] {
        working_ = true;
        ShowState();
        progress_.Begin();
        if (PrepareWadImport(wads_, package)) {
            ShowState();
            ImportAll();
        }
        progress_.End();
        QDialog::reject();
    });
    exec();
    return wads_.IsDone();
}

void AddWadsDialog::Run(const std::function<void()>& work)
{
    if (session_.running.operations > 0)
        return;
    QWidget* const before = focusWidget();
    working_ = true;
    ShowButtons();
    {
        const Operation operation{session_};
        progress_.Begin();
        work();
        progress_.End();
    }
    working_ = false;
    ShowState();
    if (before != nullptr && before->isEnabled())
        before->setFocus();
}

void AddWadsDialog::ImportAll()
{
    // The box that tells of the end stands over the whole report, and nothing is left to be
    // stopped.
    wads_.Run([this](const std::string& original) { return AskName(original); },
              [this] {
                  progress_.End();
                  ShowReport();
              });
}

void AddWadsDialog::Import()
{
    Run([this] { ImportAll(); });
    (wads_.IsDone() ? cancel_ : import_)->setFocus();
}

std::string AddWadsDialog::AskName(const std::string& original)
{
    ScambiaNomiDialog dialog{session_.host, original, this};
    const InputGate::Admission admission{dialog};
    dialog.exec();
    return dialog.Name();
}

void AddWadsDialog::Print()
{
    if (report_->document()->isEmpty())
        return session_.host.Tell(Tone::Error, GetMsg(Msg::NoTextToPrint));
    PreviewAndPrint(Words(Msg::PrintTitle), report_->toPlainText(), this);
}

void AddWadsDialog::ShowState()
{
    files_->clear();
    QList<QTreeWidgetItem*> items;
    for (const Path& file : wads_.Files()) {
        const QString name = ToQt(TextOf(file.filename()));
        auto* item =
            new QTreeWidgetItem({name, ToQt(SizeInWords(static_cast<double>(FileSize(file))))});
        item->setToolTip(fileNameColumn, PlainTip(name));
        item->setTextAlignment(fileSizeColumn, Qt::AlignRight | Qt::AlignVCenter);
        items.append(item);
    }
    files_->addTopLevelItems(items);
    hint_->setVisible(items.isEmpty());
    ShowButtons();
    const QString caption = Words(Msg::AddWadsClose);
    if (wads_.IsDone() && cancel_->accessibleName() != caption) {
        cancel_->setText(QLatin1Char('&') + caption);
        cancel_->setAccessibleName(caption);
    }
    ShowReport();
}

void AddWadsDialog::ShowReport()
{
    report_->setPlainText(ToQt(wads_.Report()));
    report_->verticalScrollBar()->setValue(report_->verticalScrollBar()->maximum());
}

void AddWadsDialog::ShowButtons()
{
    for (auto* button : findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly))
        if (button != stop_)
            button->setEnabled(!working_ && (button != import_ || !wads_.Files().empty()));
}

void AddWadsDialog::reject()
{
    if (session_.running.operations > 0)
        return;
    const bool dropsFiles = !wads_.IsDone() && !wads_.Files().empty();
    if (!dropsFiles || session_.host.AskYesNo(GetMsg(Msg::AskDropPackage)))
        QDialog::reject();
}

void AddWadsDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.running.operations == 0 && !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void AddWadsDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged it must not wait for the work.
    QTimer::singleShot(0, this, [this, paths = DraggedPaths(*event->mimeData())] {
        Run([&] { AddWadSources(wads_, paths); });
    });
}

void ShowAddWads(Session& session, QWidget* parent)
{
    AddWadsDialog dialog{session, parent};
    if (dialog.Ready())
        dialog.exec();
}

WadWindows WadWindowsOver(Session& session, QWidget* parent)
{
    WadWindows windows;
    windows.show = [&session, parent](const Path& package) {
        return AddWadsDialog(session, parent).RunWith(package);
    };
    return windows;
}

} // namespace kestrova
