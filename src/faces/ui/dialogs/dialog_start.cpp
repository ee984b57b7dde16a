#include "ui/dialogs/dialog_start.h"

#include "app/languages.h"
#include "core/size_words.h"
#include "online/url_update.h"
#include "session/operation.h"
#include "ui/desktop/spoken_language.h"
#include "ui/dialogs/dialog_installa_trle.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/dialogs/language_box.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/wrapping_row.h"
#include "words/first_start.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr int startWidth = 660;
constexpr int sizesAgainMs = 60;
/// A path's shown part may be narrow; the whole of it is reached by the cursor.
constexpr int leastLetters = 24;

template <class Box> Box* NamedBox(QWidget* parent, const char* name)
{
    auto* box = new Box(parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

QPushButton* PlainButton(QWidget* parent, const char* name)
{
    auto* button = NamedButton(parent, name);
    button->setAutoDefault(false);
    return button;
}

/// Words below a control, in its own column.
QLabel* NoteBelow(QWidget* parent, const char* name)
{
    auto* label = NamedLabel(parent, name);
    label->setIndent(24);
    return label;
}

/// Words that name a path wrap only at blanks; its long parts are shortened. Shorter words leave
/// what stands below them where it is: a mouse may be on its way there.
void Say(QLabel& label, const FirstStart::Verdict& verdict)
{
    if (label.isVisible())
        label.setMinimumHeight(std::max(label.minimumHeight(), label.height()));
    label.setText(WithWordsWithin(ToQt(verdict.words), label.fontMetrics(), startWidth - 80));
    label.setToolTip(label.text() == ToQt(verdict.words) ? QString{}
                                                         : PlainTip(ToQt(verdict.words)));
    label.setVisible(!verdict.words.empty());
    QFont font = label.font();
    font.setBold(!verdict.fine); // what keeps from a start is seen without any colour
    label.setFont(font);
}

/// Shows it without a word to the rules, which know it: not every path can be shown exactly.
void ShowText(QLineEdit& line, QObject& teller, const std::string& text)
{
    const QSignalBlocker quiet{teller};
    if (line.text() != ToQt(text))
        line.setText(ToQt(text));
}

} // namespace

StartDialog::StartDialog(Session& session, FirstStart& rules, QWidget* parent)
    : QDialog(parent), session_(session), rules_(rules),
      trle_(NamedBox<QComboBox>(this, "Combo_Trle")), trleState_(NamedLabel(this, "Label_Trle")),
      levels_(NamedBox<QLineEdit>(this, "Text_Levels")),
      levelsState_(NamedLabel(this, "Label_Levels")), room_(NamedLabel(this, "Label_Room"))
{
    setObjectName(QStringLiteral("Dialog_Start"));
    auto* help = HelpButton(this);
    auto* start = NamedButton(this, "Pul_Start");
    auto* cancel = NamedButton(this, "Pul_Cancel"); // the default while it has the keyboard
    help->setAutoDefault(false);
    start->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(start);
    buttons->addWidget(cancel);
    auto* page = MakePage();
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(buttons);

    connect(start, &QPushButton::clicked, this, [this] {
        bool done = false;
        Run([&] { done = rules_.Begin(); });
        if (done)
            accept();
    });
    connect(cancel, &QPushButton::clicked, this, &StartDialog::reject);
    ConnectChoices();
    SetCaptions(*this);
    sizes_.setInterval(sizesAgainMs);
    connect(&sizes_, &QTimer::timeout, this, &StartDialog::ShowSizes);
    ShowRules();
    ResizeToFit(*this, {startWidth, page->heightForWidth(startWidth) + 80});
    (rules_.CanStart() ? start : findChild<QPushButton*>(QStringLiteral("Pul_Sfoglia")))
        ->setFocus();
}

QWidget* StartDialog::MakePage()
{
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(MakeLanguage(page));
    parts->addWidget(NamedLabel(page, "Label_Welcome"));
    parts->addWidget(MakeTrleBox());
    parts->addWidget(MakeBackupBox());
    parts->addWidget(MakeLevelsBox());
    parts->addWidget(MakePracticeBox());
    parts->addStretch();
    return page;
}

QLayout* StartDialog::MakeLanguage(QWidget* page)
{
    auto* language = LanguageBox(page, session_.settings.language);
    auto* label = NamedBox<QLabel>(page, "Label_LanguageOf");
    label->setBuddy(language);
    connect(language, &QComboBox::activated, this, [this, language] {
        if (LanguageIn(*language) == SpokenLanguage())
            return;
        session_.settings.language = LanguageIn(*language);
        SpeakInWindows(session_.settings.language);
        rules_.JudgeAnew();
        done(InOtherWords);
    });
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(label);
    row->addWidget(language);
    return row;
}

QGroupBox* StartDialog::MakeTrleBox()
{
    auto* box = NamedBox<QGroupBox>(this, "Frame_Trle");
    trle_->setEditable(true);
    trle_->setInsertPolicy(QComboBox::NoInsert);
    trle_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    trle_->setMinimumContentsLength(leastLetters);
    trle_->setAccessibleName(Words(Msg::StartTrleName));
    trleState_->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    for (const Path& folder : rules_.FoundFolders())
        trle_->addItem(ToQt(TextOf(folder)));
    auto* row = new QHBoxLayout;
    row->addWidget(trle_, 1);
    row->addWidget(PlainButton(box, "Pul_Sfoglia"));
    auto* setups = new WrappingRow;
    setups->addWidget(PlainButton(box, "Pul_InstallCompresso"));
    setups->addWidget(PlainButton(box, "Pul_InstallTrleCD"));
    auto* column = new QVBoxLayout(box);
    column->addLayout(row);
    column->addWidget(trleState_);
    column->addWidget(NamedBox<QCheckBox>(box, "Check_Original"));
    column->addLayout(setups);
    return box;
}

QGroupBox* StartDialog::MakeBackupBox()
{
    auto* box = NamedBox<QGroupBox>(this, "Frame_Backup");
    auto* full = NamedBox<QRadioButton>(box, "Opt_Full");
    auto* compact = NamedBox<QRadioButton>(box, "Opt_Compact");
    (rules_.Choices().compact ? compact : full)->setChecked(true);
    auto* column = new QVBoxLayout(box);
    column->addWidget(full);
    column->addWidget(NoteBelow(box, "Label_Full"));
    column->addWidget(compact);
    column->addWidget(NoteBelow(box, "Label_Compact"));
    column->addWidget(room_);
    connect(compact, &QRadioButton::toggled, this, [this](bool on) {
        rules_.SetCompact(on);
        ShowSizes();
    });
    return box;
}

QGroupBox* StartDialog::MakeLevelsBox()
{
    auto* box = NamedBox<QGroupBox>(this, "Frame_Levels");
    levels_->setAccessibleName(Words(Msg::StartLevelsName));
    auto* row = new QHBoxLayout;
    row->addWidget(levels_, 1);
    row->addWidget(PlainButton(box, "Pul_SfogliaLevels"));
    row->addWidget(PlainButton(box, "Pul_Load"));
    auto* types = NamedBox<QCheckBox>(box, "Check_FileTypes");
    types->setChecked(rules_.Choices().fileTypes);
    types->setVisible(rules_.OffersTypes());
    connect(types, &QCheckBox::toggled, this, [this](bool on) { rules_.SetFileTypes(on); });
    auto* column = new QVBoxLayout(box);
    column->addLayout(row);
    column->addWidget(levelsState_);
    column->addWidget(types);
    return box;
}

QGroupBox* StartDialog::MakePracticeBox()
{
    auto* box = NamedBox<QGroupBox>(this, "Frame_Practice");
    auto* practice = PlainButton(box, "Pul_Practice");
    auto* row = new QHBoxLayout(box);
    row->addWidget(NamedLabel(box, "Label_Practice"), 1);
    row->addWidget(practice, 0, Qt::AlignTop);
    connect(practice, &QPushButton::clicked, this, [this] {
        bool done = false;
        Run([&] { done = rules_.BeginPractice(); });
        if (done)
            accept();
    });
    return box;
}

void StartDialog::ConnectChoices()
{
    const auto button = [this](const char* name, auto work) {
        connect(findChild<QPushButton*>(QString::fromLatin1(name)), &QPushButton::clicked, this,
                work);
    };
    button("Pul_Sfoglia", [this] { Run([this] { rules_.BrowseTrle(); }); });
    button("Pul_SfogliaLevels", [this] { Run([this] { rules_.BrowseLevels(); }); });
    button("Pul_Load", [this] { Run([this] { rules_.BrowseArchive(); }); });
    button("Pul_InstallCompresso", [this] { SetUp(SetupFrom::Zips); });
    button("Pul_InstallTrleCD", [this] { SetUp(SetupFrom::Folder); });
    ShowText(*trle_->lineEdit(), *trle_, rules_.Choices().trle);
    connect(trle_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        rules_.SetTrle(FromQt(text));
        ShowRules();
    });
    ShowText(*levels_, *levels_, rules_.Choices().levels);
    connect(levels_, &QLineEdit::textEdited, this, [this](const QString& text) {
        rules_.SetLevels(FromQt(text));
        ShowRules();
    });
    connect(findChild<QCheckBox*>(QStringLiteral("Check_Original")), &QCheckBox::toggled, this,
            [this](bool on) { rules_.SetOriginal(on); });
}

template <class Work> void StartDialog::Run(Work work)
{
    {
        const Operation operation{session_};
        work();
    }
    ShowRules();
}

void StartDialog::SetUp(SetupFrom from)
{
    if (const auto installed = ShowSetup(session_, from, this))
        Run([&] { rules_.SetTrle(installed->native()); });
}

void StartDialog::ShowRules()
{
    ShowText(*trle_->lineEdit(), *trle_, rules_.Choices().trle);
    ShowText(*levels_, *levels_, rules_.Choices().levels);
    Say(*trleState_, rules_.OfTrle());
    Say(*levelsState_, rules_.OfLevels());
    auto* original = findChild<QCheckBox*>(QStringLiteral("Check_Original"));
    original->setEnabled(rules_.OfTrle().fine);
    original->setChecked(rules_.IsOriginal());
    findChild<QPushButton*>(QStringLiteral("Pul_Start"))->setEnabled(rules_.CanStart());
    ShowSizes();
}

void StartDialog::ShowSizes()
{
    const auto sizes = rules_.Sizes();
    const auto show = [&](const char* name, Message plain, Message sized, std::uint64_t bytes) {
        auto* button = findChild<QRadioButton*>(QString::fromLatin1(name));
        // The letter that the window gave it stands at the caption's beginning or in it.
        const QString before = button->text();
        const QString words =
            sizes ? Words(sized, {SizeInWords(static_cast<double>(bytes))}) : Words(plain);
        const qsizetype mark = before.indexOf(QLatin1Char('&'));
        button->setText(mark < 0 ? words : QString{words}.insert(mark, QLatin1Char('&')));
        button->setAccessibleName(words);
    };
    show("Opt_Full", Msg::StartFull, Msg::StartFullSize, sizes ? sizes->full : 0);
    show("Opt_Compact", Msg::StartCompact, Msg::StartCompactSize, sizes ? sizes->compact : 0);
    Say(*room_, rules_.OfRoom());
    if (rules_.Measures())
        sizes_.start();
    else
        sizes_.stop();
}

void StartDialog::reject()
{
    bool wantsUrls = false;
    // Who has a Level Editor need not be asked where to get one.
    if (!rules_.OfTrle().fine)
        Run([&] { wantsUrls = WantsEditorUrls(session_.host); });
    if (wantsUrls)
        ShowUrls(session_, UrlKindEditor, this);
    Run([this] { rules_.GiveUp(); });
    QDialog::reject();
}

} // namespace kestrova
