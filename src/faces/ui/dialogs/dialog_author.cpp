#include "ui/dialogs/dialog_author.h"

#include "saves/send_mail.h"
#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int authorWidth = 520;
constexpr int authorNoteLines = 4;
constexpr int comboLetters = 30;

QGroupBox* AuthorFrame(QWidget* parent, const char* name)
{
    auto* frame = new QGroupBox(parent);
    frame->setObjectName(QString::fromLatin1(name));
    return frame;
}

} // namespace

AuthorDialog::AuthorDialog(Session& session, std::size_t index, QWidget* parent)
    : QDialog(parent), session_(session), infos_(session, index), name_(new QLineEdit),
      note_(new QPlainTextEdit), emails_(new QComboBox), sites_(new QComboBox)
{
    setObjectName(QStringLiteral("Dialog_Autore"));
    name_->setObjectName(QStringLiteral("Text_NomeAutore"));
    name_->setText(ToQt(infos_.name));
    name_->setCursorPosition(0);
    note_->setObjectName(QStringLiteral("Text_Note"));
    note_->setPlainText(ToQt(infos_.note));
    note_->setTabChangesFocus(true);
    note_->setFixedHeight(
        authorNoteLines * note_->fontMetrics().lineSpacing() +
        2 * (note_->frameWidth() + static_cast<int>(note_->document()->documentMargin())));
    emails_->setObjectName(QStringLiteral("Combo_Email"));
    sites_->setObjectName(QStringLiteral("Combo_Sito"));

    auto* author = AuthorFrame(this, "Frame_Autore");
    (new QVBoxLayout(author))->addWidget(name_);
    auto* note = AuthorFrame(this, "Frame_Note");
    (new QVBoxLayout(note))->addWidget(note_);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(author);
    parts->addWidget(note);
    parts->addWidget(MakeAddresses("Frame_Email", *emails_, infos_.emails,
                                   {{"Pul_NewEmail", &AuthorInfos::NewEmail},
                                    {"Pul_ChangeEmail", &AuthorInfos::ChangeEmail},
                                    {"Pul_DelEmail", &AuthorInfos::DeleteEmail},
                                    {"Pul_SendMail", &AuthorInfos::SendMail}}));
    parts->addWidget(MakeAddresses("Frame_Sito", *sites_, infos_.sites,
                                   {{"Pul_New_Sito", &AuthorInfos::NewSite},
                                    {"Pul_ModSito", &AuthorInfos::ChangeSite},
                                    {"Pul_DelSito", &AuthorInfos::DeleteSite},
                                    {"Pul_GoSito", &AuthorInfos::VisitSite}}));
    parts->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    auto* ok = NamedButton(this, "Pul_Ok");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &AuthorDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &AuthorDialog::reject);
    auto* answers = new QHBoxLayout;
    answers->addStretch();
    answers->addWidget(ok);
    answers->addWidget(cancel);
    column->addLayout(answers);
    SetCaptions(*this);
    name_->setAccessibleName(author->title().trimmed());
    note_->setAccessibleName(note->title().trimmed());
    ResizeToFit(*this, {authorWidth, sizeHint().height()});
    name_->setFocus();
}

QGroupBox* AuthorDialog::MakeAddresses(const char* frame, QComboBox& combo,
                                       AuthorInfos::Addresses& list,
                                       std::initializer_list<Deed> deeds)
{
    auto* group = AuthorFrame(this, frame);
    combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo.setMinimumContentsLength(comboLetters);
    ShowAddresses(combo, list);
    connect(&combo, QOverload<int>::of(&QComboBox::activated), this, [&list](int row) {
        if (row >= 0)
            list.selected = static_cast<std::size_t>(row);
    });
    auto* column = new QVBoxLayout(group);
    column->addWidget(&combo); // first, so that the Tab key comes to it before its buttons
    auto* row = new QHBoxLayout;
    for (const Deed& deed : deeds) {
        // The last one opens what is selected, the others change the list.
        if (&deed == deeds.end() - 1)
            row->addStretch();
        auto* button = NamedButton(group, deed.button);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, run = deed.run, &combo, &list] {
            const Operation operation{session_};
            (infos_.*run)();
            ShowAddresses(combo, list);
        });
        row->addWidget(button);
    }
    column->addLayout(row);
    return group;
}

void AuthorDialog::ShowAddresses(QComboBox& combo, const AuthorInfos::Addresses& list)
{
    combo.clear();
    for (const std::string& text : list.items)
        combo.addItem(ToQt(text));
    combo.setCurrentIndex(list.selected ? static_cast<int>(*list.selected) : -1);
}

void AuthorDialog::reject()
{
    if (session_.running.operations > 0)
        return;
    const bool typed = name_->text() != ToQt(shown_.name) || note_->document()->isModified() ||
                       infos_.emails.items != shown_.emails.items ||
                       infos_.sites.items != shown_.sites.items;
    if (!typed || MayDropTyped(session_))
        QDialog::reject();
}

void AuthorDialog::accept()
{
    const Operation operation{session_};
    infos_.name = FromQt(name_->text());
    // A note that nobody touched keeps its line breaks as they are.
    if (note_->toPlainText() != ToQt(infos_.note))
        infos_.note = ReplaceAll(FromQt(note_->toPlainText()), "\n", lineBreak);
    if (!infos_.Store())
        return;
    session_.list.Refresh();
    QDialog::accept();
}

} // namespace kestrova
