#include "ui/dialogs/dialog_new_level.h"

#include "core/size_words.h"
#include "intake/compile_sources.h"
#include "intake/draft_files.h"
#include "intake/draft_sources.h"
#include "online/url_update.h"
#include "packages/name_pages.h"
#include "session/operation.h"
#include "ui/dialogs/dialog_add_wads.h"
#include "ui/dialogs/dialog_assistant.h"
#include "ui/dialogs/dialog_compila.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/dialogs/dialog_tipo_exe.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/archive.h"
#include "words/ui_dialogs.h"
#include "words/ui_shared.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QTreeWidget>

namespace kestrova
{

namespace
{

constexpr QSize newLevelSize{680, 520};
constexpr int textField = 256;

QLabel* CaptionFor(QWidget* control, const char* name)
{
    auto* label = new QLabel(control->parentWidget());
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(control);
    return label;
}

} // namespace

NewLevelDialog::NewLevelDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), name_(new QLineEdit(this)), note_(new QLineEdit(this)),
      moreInfo_(new QComboBox(this)), names_(new QComboBox(this)),
      namesLabel_(CaptionFor(names_, "Label_NamesOf")), files_(new QTreeWidget(this)),
      hint_(new QLabel(files_->viewport())), size_(new QLabel(this)), info_(new QLabel(this)),
      bar_(new QProgressBar(this)), stop_(NamedButton(this, "Pul_Stop")),
      addFile_(NamedButton(this, "Pul_AddFile")), addFolder_(NamedButton(this, "Pul_AddFolder")),
      remove_(NamedButton(this, "Pul_Remove")), refresh_(NamedButton(this, "Pul_Refresh")),
      compileTom_(NamedButton(this, "Pul_CompileTom")),
      setMyLanguage_(NamedButton(this, "Pul_SetMyLanguage")), progress_(*info_, *bar_, *stop_)
{
    setObjectName(QStringLiteral("Dialog_NewLevel"));
    setAcceptDrops(true);
    auto* answers = AnswerButtons(*this);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(MakeTexts());
    parts->addLayout(MakeFiles(), 1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeProgress());
    column->addLayout(answers);
    for (QPushButton* button :
         {addFile_, addFolder_, remove_, refresh_, compileTom_, setMyLanguage_, stop_})
        button->setAutoDefault(false);
    Connect();
    SetCaptions(*this);
    ResizeToFit(*this, newLevelSize);
}

QLayout* NewLevelDialog::MakeTexts()
{
    name_->setObjectName(QStringLiteral("Text_NameLevel"));
    name_->setMaxLength(textField);
    note_->setObjectName(QStringLiteral("Text_Note"));
    note_->setMaxLength(textField);
    moreInfo_->setObjectName(QStringLiteral("Combo_MoreInfo"));
    moreInfo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* grid = new QGridLayout;
    grid->addWidget(CaptionFor(name_, "Label_NameOf"), 0, 0);
    grid->addWidget(name_, 0, 1);
    grid->addWidget(CaptionFor(note_, "Label_NoteOf"), 1, 0);
    grid->addWidget(note_, 1, 1);
    grid->addWidget(CaptionFor(moreInfo_, "Label_MoreInfoOf"), 2, 0);
    grid->addWidget(moreInfo_, 2, 1);
    names_->setObjectName(QStringLiteral("Combo_Names"));
    names_->setToolTip(Words(Msg::NewLevelNamesTip));
    names_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const NamePage& page : NamePages())
        names_->addItem(ToQt(NamePageText(page.name)), ToQt(std::string{page.name}));
    grid->addWidget(namesLabel_, 3, 0);
    grid->addWidget(names_, 3, 1);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* NewLevelDialog::MakeFiles()
{
    MakeFileList(*files_, Msg::FilesOfLevelName,
                 {Words(Msg::HistoryColumnFile), Words(Msg::ColumnSize)});
    PutHint(*files_, *hint_);
    size_->setObjectName(QStringLiteral("Label_Size"));

    auto* left = new QVBoxLayout;
    left->addWidget(files_, 1);
    left->addWidget(size_);
    auto* right = new QVBoxLayout;
    for (QPushButton* button :
         {addFile_, addFolder_, remove_, refresh_, compileTom_, setMyLanguage_})
        right->addWidget(button);
    right->addStretch();
    auto* row = new QHBoxLayout;
    row->addLayout(left, 1);
    row->addLayout(right);
    return row;
}

QLayout* NewLevelDialog::MakeProgress()
{
    info_->setObjectName(QStringLiteral("Label_Info"));
    info_->setTextFormat(Qt::PlainText);
    info_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    bar_->setTextVisible(false);
    auto* row = new QHBoxLayout;
    row->addWidget(info_, 1);
    row->addWidget(bar_);
    row->addWidget(stop_);
    return row;
}

void NewLevelDialog::Connect()
{
    connect(name_, &QLineEdit::textChanged, this,
            [this](const QString& text) { level_->draft.name = FromQt(text); });
    connect(note_, &QLineEdit::textChanged, this,
            [this](const QString& text) { level_->draft.note = FromQt(text); });
    connect(moreInfo_, &QComboBox::activated, this, [this](int row) {
        choseMoreInfo_ = true;
        level_->draft.moreInfo = row == 0 ? std::string{} : FromQt(moreInfo_->itemText(row));
    });
    connect(names_, &QComboBox::activated, this, [this](int row) {
        const std::string page = FromQt(names_->itemData(row).toString());
        if (page != level_->draft.namesReadAs)
            Run([this, page] { ReadNamesAs(*level_, page); });
    });
    const auto step = [this](QPushButton* button, auto work) {
        connect(button, &QPushButton::clicked, this, [this, work] { Run(work); });
    };
    step(addFile_, [this] { AddChosenFile(*level_); });
    step(addFolder_, [this] { AddChosenFolder(*level_); });
    step(remove_, [this] { RemoveFile(*level_, SelectedFile()); });
    step(refresh_, [this] { (void)Refresh(*level_); });
    step(compileTom_, [this] { CompileLevel(*level_); });
    step(setMyLanguage_, [this] { SetMyLanguage(*level_); });
    connect(files_, &QTreeWidget::itemActivated, this, [this] {
        if (const Path file = SelectedFile(); !file.empty())
            Run([this, file] { OpenFile(*level_, file); });
    });
    connect(new QShortcut(Qt::Key_Delete, files_, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, remove_, &QPushButton::click);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, refresh_, &QPushButton::click);
}

template <class Work> void NewLevelDialog::Run(Work work)
{
    if (level_ == nullptr || session_.running.operations > 0)
        return;
    {
        const Operation operation{session_};
        progress_.Begin();
        work();
        progress_.End();
    }
    ShowLevel();
    if (!level_->draft.givenUp)
        return;
    if (AsksForLevelUrls())
        ShowUrls(session_, UrlKindLevels, this);
    QDialog::reject();
}

bool NewLevelDialog::AsksForLevelUrls()
{
    const Operation operation{session_};
    return WantsLevelUrls(session_.host, session_.archive.levels.size());
}

bool NewLevelDialog::Show(Intake& level, std::vector<Path> sources)
{
    level_ = &level;
    level.draft.compile = Compile::Asked;
    level.windows.assistant = [this](TomAssistant& assistant) {
        return ShowAssistant(session_, assistant, this);
    };
    level.windows.compile = [this](TomCompile& compile) { ShowCompila(session_, compile, this); };
    level.windows.installed = [this](InstalledPlace& place) { TipoExeDialog{place, this}.exec(); };
    level.windows.wads = WadWindowsOver(session_, this);
    filledName_ = level.draft.name;
    filledNote_ = level.draft.note;
    choseMoreInfo_ = false;
    setWindowTitle(Words(level.draft.inArchive ? Msg::LevelPropertiesTitle : Msg::NewLevelTitle));
    info_->setText(ToQt(level.draft.inArchive ? level.draft.SizeText() : std::string{}));
    progress_.End();
    ShowLevel();
    name_->setFocus();
    if (!sources.empty())
        QTimer::singleShot(0, this, [this, sources = std::move(sources)] { AddSources(sources); });
    const bool accepted = exec() == QDialog::Accepted;
    level_ = nullptr;
    return accepted;
}

void NewLevelDialog::AddSources(const std::vector<Path>& sources)
{
    // What did not come in was told, and the window shows what did.
    Run([this, &sources] { (void)kestrova::AddSources(*level_, sources); });
}

void NewLevelDialog::ShowLevel()
{
    if (name_->text() != ToQt(level_->draft.name)) {
        filledName_ = level_->draft.name;
        name_->setText(ToQt(level_->draft.name));
    }
    if (note_->text() != ToQt(level_->draft.note)) {
        filledNote_ = level_->draft.note;
        note_->setText(ToQt(level_->draft.note));
        note_->setCursorPosition(0); // a long one is read from its beginning
    }
    ShowFiles();
    ShowMoreInfo();
    ShowNamesPage();
    size_->setText(ToQt(level_->draft.FilesText()));
    compileTom_->setEnabled(HasTomFiles(level_->draft.files));
    setMyLanguage_->setEnabled(level_->draft.canSetLanguage);
    for (QPushButton* button : {addFile_, addFolder_, remove_})
        button->setToolTip(level_->draft.OnCd() ? Words(Msg::LevelOnCd, {lineBreak}) : QString());
}

void NewLevelDialog::ShowFiles()
{
    const QString selected = PathToQt(SelectedFile());
    files_->clear();
    QList<QTreeWidgetItem*> rows;
    rows.reserve(static_cast<qsizetype>(level_->draft.files.size()));
    for (const Path& file : level_->draft.files) {
        auto* row = new QTreeWidgetItem({ToQt(TextOf(file.filename())),
                                         ToQt(SizeInWords(static_cast<double>(FileSize(file))))});
        row->setData(fileNameColumn, Qt::UserRole, PathToQt(file));
        row->setToolTip(fileNameColumn, PlainTip(row->text(fileNameColumn)));
        row->setTextAlignment(fileSizeColumn, Qt::AlignRight | Qt::AlignVCenter);
        rows.append(row);
    }
    files_->addTopLevelItems(rows);
    for (QTreeWidgetItem* row : rows)
        if (row->data(fileNameColumn, Qt::UserRole).toString() == selected)
            files_->setCurrentItem(row);
    hint_->setText(Words(Msg::NewLevelDropHint));
    hint_->setVisible(rows.isEmpty());
}

void NewLevelDialog::ShowMoreInfo()
{
    moreInfo_->clear();
    QStringList names{Words(Msg::NoMoreInfo)};
    int chosen = 0;
    for (const Path& file : level_->draft.files) {
        names.append(ToQt(TextOf(file.filename())));
        if (EqualNames(file.filename().native(), level_->draft.moreInfo))
            chosen = static_cast<int>(names.size()) - 1;
    }
    moreInfo_->addItems(names);
    moreInfo_->setCurrentIndex(chosen);
}

/// Only where a package has names that do not say their code page is there something to choose.
void NewLevelDialog::ShowNamesPage()
{
    const std::string& page = level_->draft.namesReadAs;
    namesLabel_->setVisible(!page.empty());
    names_->setVisible(!page.empty());
    names_->setCurrentIndex(names_->findData(ToQt(page)));
}

Path NewLevelDialog::SelectedFile() const
{
    const QTreeWidgetItem* row = files_->currentItem();
    return row == nullptr ? Path{} : PathFromQt(row->data(fileNameColumn, Qt::UserRole).toString());
}

void NewLevelDialog::accept()
{
    bool accepted = false;
    Run([&] { accepted = Accept(*level_); });
    if (accepted)
        QDialog::accept();
}

bool NewLevelDialog::HasTyped() const
{
    return level_->draft.name != filledName_ || level_->draft.note != filledNote_ ||
           choseMoreInfo_ || (level_->draft.inArchive && level_->draft.HasOtherFiles());
}

void NewLevelDialog::reject()
{
    if (session_.running.operations > 0)
        return;
    if (level_ == nullptr)
        return QDialog::reject();
    if (!HasTyped() || MayDropTyped(session_))
        Run([this] { GiveUp(*level_); });
}

void NewLevelDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.running.operations == 0 && !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void NewLevelDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged it must not wait for the work.
    QTimer::singleShot(0, this,
                       [this, paths = DraggedPaths(*event->mimeData())] { AddSources(paths); });
}

} // namespace kestrova
