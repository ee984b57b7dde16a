#include "ui/dialogs/wizard_pages.h"

#include "publish/upload_lists.h"
#include "ui/dialogs/wizard_files_page.h"
#include "ui/dialogs/wizard_row_pages.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/captions.h"
#include "words/ui_shared.h"
#include "words/wizard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr int overviewPicture = 96;
constexpr int messageLines = 5;

/// `Frame_Pag1`.
class OverviewPage : public UploadPage
{
public:
    OverviewPage(UploadWizard& wizard, const Runner& run) : UploadPage(wizard, run, "Frame_Pag1")
    {
        auto* picture = new QLabel(this);
        picture->setPixmap(ProgramIcon().pixmap(overviewPicture));
        picture->setAccessibleName(Words(Msg::ProgramName));
        std::string steps;
        int number = 2;
        for (const Message step :
             {Msg::UploadOverviewFiles, Msg::UploadOverviewAuthor, Msg::UploadOverviewLevel,
              Msg::UploadOverviewImport, Msg::UploadOverviewTom, Msg::UploadOverviewEnd})
            steps +=
                GetMsg(Msg::UploadOverviewStep, {std::to_string(number++), Shown(step), lineBreak});
        const std::string gap = std::string{lineBreak} + std::string{lineBreak};
        auto* text = new QLabel(Words(Msg::UploadOverview, {gap, gap, steps, lineBreak}), this);
        text->setObjectName(QStringLiteral("Label_Overview"));
        text->setTextFormat(Qt::PlainText);
        text->setWordWrap(true);
        text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins({});
        row->addWidget(picture, 0, Qt::AlignTop);
        row->addSpacing(12);
        row->addWidget(text, 1);
    }
};

/// `Frame_Pag3`.
class AuthorPage : public UploadPage
{
public:
    AuthorPage(UploadWizard& wizard, const Runner& run)
        : UploadPage(wizard, run, "Frame_Pag3"), name_(new QLineEdit), note_(new QPlainTextEdit),
          emails_(new QComboBox), sites_(new QComboBox)
    {
        name_->setObjectName(QStringLiteral("Text_NomeAutore"));
        connect(name_, &QLineEdit::textChanged, this,
                [this](const QString& text) { wizard_.author = FromQt(text); });
        note_->setObjectName(QStringLiteral("Text_NoteAutore"));
        note_->setTabChangesFocus(true);
        note_->setMinimumHeight(messageLines * note_->fontMetrics().lineSpacing());
        connect(note_, &QPlainTextEdit::textChanged, this, [this] {
            if (note_->toPlainText() != ToQt(wizard_.authorNote))
                wizard_.authorNote = ReplaceAll(FromQt(note_->toPlainText()), "\n", lineBreak);
        });
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addWidget(Frame("Frame_Autore", Msg::AuthorFrame, name_));
        column->addWidget(Frame("Frame_Message", Msg::UploadMessageFrame, note_), 1);
        column->addWidget(Addresses("Frame_Email", Msg::UploadEmailFrame, "Combo_Email", emails_,
                                    AddressKind::Email,
                                    {"Pul_AddEmail", "Pul_Email_Cambia", "Pul_TogliEmail"}));
        column->addWidget(Addresses("Frame_Siti", Msg::UploadSiteFrame, "Combo_Siti", sites_,
                                    AddressKind::Site,
                                    {"Pul_AddSito", "Pul_Sito_Cambia", "Pul_TogliSito"}));
    }

    void ShowState() override
    {
        if (name_->text() != ToQt(wizard_.author))
            name_->setText(ToQt(wizard_.author));
        if (note_->toPlainText() != ToQt(wizard_.authorNote))
            note_->setPlainText(ToQt(wizard_.authorNote));
        Fill(*emails_, wizard_.emails);
        Fill(*sites_, wizard_.sites);
    }
    QWidget* First() override { return name_; }

private:
    QGroupBox* Frame(const char* name, Message words, QWidget* box)
    {
        auto* frame = new QGroupBox(this);
        frame->setObjectName(QString::fromLatin1(name));
        (new QVBoxLayout(frame))->addWidget(box);
        box->setAccessibleName(Words(words).trimmed());
        return frame;
    }
    QGroupBox* Addresses(const char* frameName, Message words, const char* name, QComboBox* combo,
                         AddressKind kind, const std::array<const char*, 3>& buttons)
    {
        combo->setObjectName(QString::fromLatin1(name));
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        UploadAddresses& list = kind == AddressKind::Email ? wizard_.emails : wizard_.sites;
        connect(combo, &QComboBox::activated, this, [&list](int row) {
            if (row >= 0)
                list.selected = static_cast<std::size_t>(row);
        });
        QGroupBox* frame = Frame(frameName, words, combo);
        auto* row = new QHBoxLayout;
        row->addWidget(Button(frame, buttons[0], [this, kind] { AddAddress(wizard_, kind); }));
        row->addWidget(Button(frame, buttons[1], [this, kind] { ChangeAddress(wizard_, kind); }));
        row->addWidget(Button(frame, buttons[2], [this, kind] { RemoveAddress(wizard_, kind); }));
        row->addStretch();
        qobject_cast<QVBoxLayout*>(frame->layout())->addLayout(row);
        return frame;
    }
    static void Fill(QComboBox& combo, const UploadAddresses& list)
    {
        combo.clear();
        for (const std::string& item : list.items)
            combo.addItem(ToQt(item));
        combo.setCurrentIndex(list.selected ? static_cast<int>(*list.selected) : -1);
    }

    QLineEdit* name_;
    QPlainTextEdit* note_;
    QComboBox* emails_;
    QComboBox* sites_;
};

/// `Frame_Pag4`.
class LevelPage : public UploadPage
{
public:
    LevelPage(UploadWizard& wizard, const Runner& run)
        : UploadPage(wizard, run, "Frame_Pag4"), name_(new QLineEdit(this)),
          note_(new QLineEdit(this)), exe_(new QComboBox(this))
    {
        connect(name_, &QLineEdit::textChanged, this,
                [this](const QString& text) { wizard_.name = FromQt(text); });
        connect(note_, &QLineEdit::textChanged, this,
                [this](const QString& text) { wizard_.note = FromQt(text); });
        for (const UploadChoice& format : ExeFormats())
            exe_->addItem(ToQt(format.text));
        exe_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        connect(exe_, &QComboBox::activated, this,
                [this](int row) { wizard_.exeFormat = static_cast<std::size_t>(row); });
        auto* hint = new QLabel(this);
        hint->setObjectName(QStringLiteral("Label_LevelHint"));
        hint->setWordWrap(true);
        hint->setForegroundRole(QPalette::PlaceholderText);
        auto* grid = new QGridLayout(this);
        grid->setContentsMargins({});
        const auto put = [&](int row, QWidget* box, const char* name, const char* label) {
            auto* words = new QLabel(this);
            words->setObjectName(QString::fromLatin1(label));
            words->setBuddy(box);
            box->setObjectName(QString::fromLatin1(name));
            grid->addWidget(words, row, 0);
            grid->addWidget(box, row, 1);
        };
        put(0, name_, "Text_NomeLivello", "Label_NameOf");
        put(1, note_, "Text_NoteLivello", "Label_NoteOf");
        put(2, exe_, "Combo_TipoExeFormat", "Label_ExeOf");
        grid->addWidget(hint, 3, 1);
        grid->setColumnStretch(1, 1);
        grid->setRowStretch(4, 1);
    }

    void ShowState() override
    {
        if (name_->text() != ToQt(wizard_.name))
            name_->setText(ToQt(wizard_.name));
        if (note_->text() != ToQt(wizard_.note))
            note_->setText(ToQt(wizard_.note));
        exe_->setCurrentIndex(static_cast<int>(wizard_.exeFormat));
    }
    QWidget* First() override { return name_; }

private:
    QLineEdit* name_;
    QLineEdit* note_;
    QComboBox* exe_;
};

/// `Frame_Pag7`.
class EndPage : public UploadPage
{
public:
    EndPage(UploadWizard& wizard, const Runner& run)
        : UploadPage(wizard, run, "Frame_Pag7"), text_(new QLabel(this)), only_(new QCheckBox(this))
    {
        text_->setObjectName(QStringLiteral("Label_EndNotes"));
        text_->setTextFormat(Qt::PlainText);
        text_->setWordWrap(true);
        only_->setObjectName(QStringLiteral("Check_SoloConfig"));
        connect(only_, &QCheckBox::toggled, this, [this](bool only) { wizard_.configOnly = only; });
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addWidget(text_);
        column->addSpacing(12);
        column->addWidget(only_);
        column->addStretch();
    }

    void ShowState() override
    {
        const std::string gap = std::string{lineBreak} + std::string{lineBreak};
        const std::string name = wizard_.config.name;
        text_->setText(Words(Msg::UploadEndHint, {wizard_.FilesText(), "\"" + name + "\"", gap}));
        only_->setChecked(wizard_.configOnly);
    }
    QWidget* First() override { return only_; }

private:
    QLabel* text_;
    QCheckBox* only_;
};

} // namespace

std::vector<UploadPage*> MakeUploadPages(UploadWizard& wizard, const UploadPage::Runner& run)
{
    return {new OverviewPage(wizard, run), MakeFilesPage(wizard, run),  new AuthorPage(wizard, run),
            new LevelPage(wizard, run),    MakeImportPage(wizard, run), MakeTomPage(wizard, run),
            new EndPage(wizard, run)};
}

} // namespace kestrova
