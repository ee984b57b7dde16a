#include "ui/dialog_add_folder.h"

#include "ui/captions.h"
#include "ui/dialogs_small.h"
#include "ui/qt_text.h"
#include "upkeep/level_life.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kestrova
{

namespace
{

constexpr int dialogWidth = 560;
constexpr int textField = 256;

QLabel* CaptionOf(QLineEdit* edit, const char* name)
{
    auto* label = new QLabel(edit->parentWidget());
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(edit);
    return label;
}

} // namespace

AddFolderDialog::AddFolderDialog(Session& session, const Path& folder, QWidget* parent)
    : QDialog(parent), session_(session), folder_(new QLineEdit(this)), name_(new QLineEdit(this)),
      note_(new QLineEdit(this)), ok_(NamedButton(this, "Pul_Ok"))
{
    setObjectName(QStringLiteral("Dialog_AddFolder"));
    folder_->setObjectName(QStringLiteral("Text_Folder"));
    name_->setObjectName(QStringLiteral("Text_Name"));
    name_->setMaxLength(textField);
    note_->setObjectName(QStringLiteral("Text_Note"));
    note_->setMaxLength(textField);
    auto* browse = NamedButton(this, "Pul_Sfoglia");
    browse->setAutoDefault(false);
    auto* cancel = NamedButton(this, "Pul_Cancel");
    ok_->setDefault(true);

    auto* grid = new QGridLayout(this);
    grid->addWidget(CaptionOf(folder_, "Label_FolderOf"), 0, 0, 1, 3);
    grid->addWidget(folder_, 1, 0, 1, 2);
    grid->addWidget(browse, 1, 2);
    grid->addWidget(CaptionOf(name_, "Label_NameOf"), 2, 0, 1, 3);
    grid->addWidget(name_, 3, 0, 1, 3);
    grid->addWidget(CaptionOf(note_, "Label_NoteOf"), 4, 0, 1, 3);
    grid->addWidget(note_, 5, 0, 1, 3);
    grid->setRowMinimumHeight(6, 8);
    grid->addWidget(ok_, 7, 1, Qt::AlignRight);
    grid->addWidget(cancel, 7, 2);
    grid->setColumnStretch(0, 1);
    connect(browse, &QPushButton::clicked, this, &AddFolderDialog::Browse);
    connect(folder_, &QLineEdit::textChanged, this, &AddFolderDialog::TakeFolder);
    connect(name_, &QLineEdit::textChanged, this, &AddFolderDialog::AllowOk);
    connect(ok_, &QPushButton::clicked, this, &AddFolderDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    for (auto [before, behind] : std::initializer_list<std::pair<QWidget*, QWidget*>>{
             {folder_, browse}, {browse, name_}, {name_, note_}, {note_, ok_}, {ok_, cancel}})
        setTabOrder(before, behind);
    SetCaptions(*this);
    AllowOk();
    if (folder.empty()) {
        folder_->setFocus();
    } else {
        folder_->setText(PathToQt(folder));
        name_->setFocus();
        name_->selectAll();
    }
    resize(dialogWidth, sizeHint().height());
}

void AddFolderDialog::Browse()
{
    const Operation operation{session_};
    const Path typed = PathFromQt(folder_->text());
    const auto chosen = session_.host.ChooseFolder(
        GetMsg(Msg::ChooseLevelFolder),
        typed.empty() ? FolderFromText(Trim(session_.preferences.downloadFolder)) : typed);
    if (!chosen)
        return;
    folder_->setText(PathToQt(*chosen));
    name_->setFocus();
    name_->selectAll();
}

void AddFolderDialog::TakeFolder(const QString& folder)
{
    // The folder's name is a good name until the person has typed a better one.
    const QString name = ToQt(TextOf(PathFromQt(folder).filename()));
    if (name_->text().isEmpty() || name_->text() == suggested_)
        name_->setText(name);
    suggested_ = name;
    AllowOk();
}

void AddFolderDialog::AllowOk()
{
    ok_->setEnabled(!folder_->text().trimmed().isEmpty() && !name_->text().trimmed().isEmpty());
}

void AddFolderDialog::accept()
{
    const Operation operation{session_};
    const Path folder = PathFromQt(folder_->text());
    if (!FolderExists(folder))
        return session_.host.Tell(Tone::Error, GetMsg(Msg::AddFolderMissing, {TextOf(folder)}));
    LevelCode code = 0;
    if (AddFolderAsLevel(session_, FromQt(name_->text().trimmed()), FromQt(note_->text().trimmed()),
                         folder, code))
        QDialog::accept();
}

} // namespace kestrova
