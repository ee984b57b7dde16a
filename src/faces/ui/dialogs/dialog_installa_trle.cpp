#include "ui/dialogs/dialog_installa_trle.h"

#include "editor/setup_run.h"
#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/progress_row.h"
#include "ui/widgets/qt_text.h"
#include "words/level_setup.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize setupSize{560, 420};

QLabel* PlainLabel(QWidget* parent, const char* name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

InstallTrleDialog::InstallTrleDialog(Session& session, const std::optional<Path>& folder,
                                     QWidget* parent)
    : QDialog(parent), session_(session), operations_(session.running.operations),
      choice_(session, folder), zips_(new QListWidget(this)), hint_(new QLabel(zips_->viewport())),
      language_(new QComboBox(this)), target_(new QLineEdit(this)),
      room_(PlainLabel(this, "Label_Room")), info_(PlainLabel(this, "Label_Info")),
      bar_(new QProgressBar(this)), stop_(NamedButton(this, "Pul_Stop")),
      install_(NamedButton(this, "Pul_Install")), progress_(*info_, *bar_, *stop_)
{
    setObjectName(QStringLiteral("Dialog_InstallaTrle"));
    setAcceptDrops(choice_.Wish().fromZips);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(MakeZips(), 1);
    parts->addLayout(MakeTarget());
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeProgress());
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    if (!choice_.Wish().fromZips)
        setWindowTitle(Words(Msg::InstallaFolderTitle));
    target_->setText(PathToQt(choice_.Wish().target));
    Connect();
    ShowChoice();
    ResizeToFit(*this, choice_.Wish().fromZips ? setupSize
                                               : QSize{setupSize.width(), sizeHint().height()});
    (choice_.Wish().fromZips ? findChild<QPushButton*>(QStringLiteral("Pul_Add")) : install_)
        ->setFocus();
}

QLayout* InstallTrleDialog::MakeZips()
{
    auto* row = new QHBoxLayout;
    zips_->setObjectName(QStringLiteral("List_Files"));
    zips_->setAccessibleName(Words(Msg::InstallaZipsName));
    zips_->setTextElideMode(Qt::ElideMiddle);
    hint_->setText(Words(Msg::InstallaHint));
    PutHint(*zips_, *hint_);
    auto* from = PlainLabel(this, "Label_From");
    from->setText(Words(Msg::InstallaFrom, {TextOf(choice_.Wish().folder)}));
    auto* add = NamedButton(this, "Pul_Add");
    auto* remove = NamedButton(this, "Pul_Remove");
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {add, remove}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    row->addWidget(zips_, 1);
    row->addWidget(from, 1);
    row->addLayout(buttons);
    const bool fromZips = choice_.Wish().fromZips;
    from->setVisible(!fromZips);
    for (QWidget* part :
         {static_cast<QWidget*>(zips_), static_cast<QWidget*>(add), static_cast<QWidget*>(remove)})
        part->setVisible(fromZips);
    return row;
}

QLayout* InstallTrleDialog::MakeTarget()
{
    language_->setObjectName(QStringLiteral("Combo_Language"));
    for (const SetupLanguage& language : SetupLanguages())
        language_->addItem(ToQt(NameOf(language)));
    target_->setObjectName(QStringLiteral("Text_Target"));
    auto* languageOf = PlainLabel(this, "Label_LanguageOf");
    languageOf->setBuddy(language_);
    auto* targetOf = PlainLabel(this, "Label_TargetOf");
    targetOf->setBuddy(target_);
    auto* browse = NamedButton(this, "Pul_SfogliaTarget");
    browse->setAutoDefault(false);
    auto* rows = new QGridLayout;
    rows->setColumnStretch(1, 1);
    rows->addWidget(languageOf, 0, 0);
    rows->addWidget(language_, 0, 1, 1, 2);
    rows->addWidget(targetOf, 1, 0);
    rows->addWidget(target_, 1, 1);
    rows->addWidget(browse, 1, 2);
    rows->addWidget(room_, 2, 1, 1, 2);
    return rows;
}

QLayout* InstallTrleDialog::MakeProgress()
{
    info_->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    return ProgressRow(*info_, *bar_, *stop_);
}

QLayout* InstallTrleDialog::MakeButtons()
{
    auto* cancel = NamedButton(this, "Pul_Cancel");
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &InstallTrleDialog::reject);
    install_->setDefault(true);
    auto* row = new QHBoxLayout;
    row->addWidget(HelpButton(this));
    row->addStretch();
    row->addWidget(install_);
    row->addWidget(cancel);
    return row;
}

template <class Work> void InstallTrleDialog::Run(Work work)
{
    if (session_.running.operations > operations_)
        return;
    {
        const Operation operation{session_};
        work();
    }
    ShowChoice();
}

void InstallTrleDialog::Connect()
{
    connect(findChild<QPushButton*>(QStringLiteral("Pul_Add")), &QPushButton::clicked, this,
            [this] { Run([this] { choice_.ChooseZip(); }); });
    connect(findChild<QPushButton*>(QStringLiteral("Pul_Remove")), &QPushButton::clicked, this,
            [this] {
                const int row = zips_->currentRow();
                Run([this, row] {
                    choice_.Remove(row < 0 ? std::nullopt
                                           : std::optional{static_cast<std::size_t>(row)});
                });
            });
    connect(findChild<QPushButton*>(QStringLiteral("Pul_SfogliaTarget")), &QPushButton::clicked,
            this, [this] {
                Run([this] { choice_.ChooseTarget(); });
                target_->setText(PathToQt(choice_.Wish().target));
            });
    connect(target_, &QLineEdit::textChanged, this, [this](const QString& text) {
        choice_.SetTarget(PathFromQt(text.trimmed()));
        ShowChoice();
    });
    connect(language_, &QComboBox::currentIndexChanged, this, [this](int row) {
        choice_.SetLanguage(SetupLanguages()[static_cast<std::size_t>(row)]);
    });
    connect(install_, &QPushButton::clicked, this, &InstallTrleDialog::Install);
}

void InstallTrleDialog::Install()
{
    bool done = false;
    Run([&] {
        progress_.Begin();
        done = choice_.Install(progress_);
        progress_.End();
    });
    if (done)
        accept();
}

void InstallTrleDialog::ShowChoice()
{
    const auto& zips = choice_.Wish().zips;
    if (static_cast<std::size_t>(zips_->count()) != zips.size()) {
        zips_->clear();
        for (const Path& zip : zips)
            zips_->addItem(PathToQt(zip));
    }
    hint_->setVisible(zips.empty());
    room_->setText(ToQt(choice_.RoomText()));
}

void InstallTrleDialog::reject()
{
    if (session_.running.operations > operations_)
        return;
    Run([this] { session_.host.Tell(Tone::Plain, GetMsg(Msg::SetupStopped)); });
    QDialog::reject();
}

void InstallTrleDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.running.operations == operations_ && !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void InstallTrleDialog::dropEvent(QDropEvent* event)
{
    const auto files = DraggedPaths(*event->mimeData());
    event->acceptProposedAction();
    Run([&] {
        for (const Path& file : files)
            choice_.AddZip(file);
    });
}

std::optional<Path> ShowSetup(Session& session, SetupFrom from, QWidget* parent,
                              std::optional<Path> folder)
{
    {
        const Operation operation{session};
        if (!WantsSetup(session.host, session.Folders(), session.preferences))
            return std::nullopt;
        if (from == SetupFrom::Folder && !folder)
            folder = ChooseSetupFolder(session.host);
        if (from == SetupFrom::Folder && !folder)
            return std::nullopt;
    }
    InstallTrleDialog dialog{session, folder, parent};
    const InputGate::Admission admission{dialog}; // a start may be under way
    return dialog.exec() == QDialog::Accepted ? std::optional{dialog.Installed()} : std::nullopt;
}

} // namespace kestrova
