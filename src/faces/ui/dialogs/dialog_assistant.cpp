#include "ui/dialogs/dialog_assistant.h"

#include "core/text.h"
#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "words/assistant.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>

namespace kestrova
{

namespace
{

constexpr QSize assistantSize{640, 560};
constexpr int helpLines = 7;
constexpr int readmeLines = 4;

QLabel* WordsFor(QWidget* control, const char* name)
{
    auto* label = new QLabel(control->parentWidget());
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(control);
    return label;
}

std::optional<std::size_t> ChosenRow(int row)
{
    return row < 0 ? std::nullopt : std::optional{static_cast<std::size_t>(row)};
}

int RowOf(const std::optional<std::size_t>& chosen)
{
    return chosen ? static_cast<int>(*chosen) : -1;
}

/// The rows are new only where they differ, so that a list keeps its place.
template <class Text> void Fill(QComboBox& box, const std::vector<Path>& rows, Text text)
{
    QStringList texts;
    for (const Path& row : rows)
        texts.append(ToQt(Readable(text(row))));
    box.clear();
    for (const QString& shown : texts) {
        box.addItem(shown);
        box.setItemData(box.count() - 1, PlainTip(shown), Qt::ToolTipRole);
    }
}

} // namespace

AssistantDialog::AssistantDialog(Session& session, TomAssistant& assistant, QWidget* parent)
    : QDialog(parent), session_(session), assistant_(assistant), help_(new QPlainTextEdit(this)),
      readmes_(new QListWidget(this)), toms_(new QComboBox(this)), wads_(new QComboBox(this)),
      essential_(new QCheckBox(this)), read_(NamedButton(this, "Pul_ReadFile")),
      analyse_(NamedButton(this, "Pul_AutoAnalisi")), perform_(NamedButton(this, "Pul_Perform"))
{
    setObjectName(QStringLiteral("Dialog_Assistant"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(MakePage()), 1);
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    help_->setPlainText(ToQt(assistant_.HelpText()));
    for (const Path& document : assistant_.Documents()) {
        const QString name = ToQt(TextOf(document.filename()));
        readmes_->addItem(name);
        readmes_->item(readmes_->count() - 1)->setToolTip(PlainTip(name));
    }
    readmes_->setCurrentRow(RowOf(assistant_.document));
    Connect();
    ShowLinks();
    ResizeToFit(*this, assistantSize);
    readmes_->setFocus();
}

QWidget* AssistantDialog::MakePage()
{
    help_->setObjectName(QStringLiteral("Text_Help"));
    help_->setAccessibleName(Words(Msg::AssistantHelpName));
    help_->setReadOnly(true);
    help_->setTabChangesFocus(true);
    help_->setMinimumHeight(help_->fontMetrics().lineSpacing() * helpLines);
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addWidget(help_, 2);
    parts->addLayout(MakeReadmes(), 1);
    parts->addLayout(MakeChoice());
    return page;
}

QLayout* AssistantDialog::MakeReadmes()
{
    readmes_->setObjectName(QStringLiteral("List_Readme"));
    readmes_->setMinimumHeight(readmes_->fontMetrics().lineSpacing() * readmeLines);
    readmes_->setTextElideMode(Qt::ElideMiddle);
    readmes_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(read_);
    buttons->addWidget(analyse_);
    buttons->addStretch();
    auto* row = new QHBoxLayout;
    row->addWidget(readmes_, 1);
    row->addLayout(buttons);
    auto* column = new QVBoxLayout;
    QLabel* words = WordsFor(readmes_, "Label_Readme");
    words->setWordWrap(true);
    column->addWidget(words);
    column->addLayout(row, 1);
    return column;
}

QLayout* AssistantDialog::MakeChoice()
{
    toms_->setObjectName(QStringLiteral("Combo_Sorgenti"));
    wads_->setObjectName(QStringLiteral("Combo_WadsStandard"));
    wads_->setPlaceholderText(Words(Msg::AssistantChooseWads));
    for (QComboBox* box : {toms_, wads_})
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    // A long name does not fit into its box.
    for (QComboBox* box : {toms_, wads_})
        connect(box, &QComboBox::currentTextChanged, box,
                [box](const QString& text) { box->setToolTip(PlainTip(text)); });
    essential_->setObjectName(QStringLiteral("Check_Essenziali"));
    auto* grid = new QGridLayout;
    grid->addWidget(WordsFor(toms_, "Label_Sorgenti"), 0, 0);
    grid->addWidget(toms_, 0, 1);
    grid->addWidget(WordsFor(wads_, "Label_Wads"), 1, 0);
    grid->addWidget(wads_, 1, 1);
    grid->addWidget(perform_, 1, 2);
    grid->addWidget(essential_, 2, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* AssistantDialog::MakeButtons()
{
    auto* done = NamedButton(this, "Pul_Fatto");
    auto* cancel = NamedButton(this, "Pul_Cancel");
    auto* help = HelpButton(this);
    for (QPushButton* button : {done, cancel, help, read_, analyse_})
        button->setAutoDefault(false);
    perform_->setDefault(true);
    connect(done, &QPushButton::clicked, this, [this] { Run([this] { assistant_.Finish(); }); });
    connect(cancel, &QPushButton::clicked, this, &AssistantDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(help);
    row->addStretch();
    row->addWidget(done);
    row->addWidget(cancel);
    return row;
}

void AssistantDialog::Connect()
{
    connect(readmes_, &QListWidget::currentRowChanged, this,
            [this](int row) { assistant_.document = ChosenRow(row); });
    connect(toms_, &QComboBox::currentIndexChanged, this,
            [this](int row) { assistant_.tom = ChosenRow(row); });
    connect(wads_, &QComboBox::currentIndexChanged, this,
            [this](int row) { assistant_.wads = ChosenRow(row); });
    const auto step = [this](QPushButton* button, auto work) {
        connect(button, &QPushButton::clicked, this, [this, work] { Run(work); });
    };
    step(read_, [this] { assistant_.ReadChosen(); });
    step(analyse_, [this] { assistant_.Analyse(); });
    step(perform_, [this] { assistant_.Perform(); });
    connect(essential_, &QCheckBox::clicked, this,
            [this](bool checked) { Run([this, checked] { assistant_.ShowEssential(checked); }); });
    connect(readmes_, &QListWidget::itemDoubleClicked, read_, &QPushButton::click);
    // The key opens what the list has chosen, and links nothing.
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, readmes_, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, read_, &QPushButton::click);
}

template <class Work> void AssistantDialog::Run(Work work)
{
    {
        const Operation operation{session_};
        work();
    }
    if (assistant_.IsOver())
        return done(assistant_.IsDone() ? Accepted : Rejected);
    ShowLinks();
}

void AssistantDialog::ShowLinks()
{
    // What the boxes say while they are filled is nobody's choice.
    const auto tom = assistant_.tom;
    const auto wads = assistant_.wads;
    Fill(*toms_, assistant_.Toms(), [](const Path& file) { return file.filename().native(); });
    Fill(*wads_, assistant_.Wads(), TomAssistant::SetOf);
    toms_->setCurrentIndex(RowOf(tom));
    wads_->setCurrentIndex(RowOf(wads));
    assistant_.tom = tom;
    assistant_.wads = wads;
    essential_->setChecked(assistant_.ShowsEssential());
    read_->setEnabled(readmes_->count() > 0);
}

void AssistantDialog::reject()
{
    Run([this] { assistant_.Cancel(); });
}

bool ShowAssistant(Session& session, TomAssistant& assistant, QWidget* parent)
{
    AssistantDialog dialog{session, assistant, parent};
    const InputGate::Admission admission{dialog};
    return dialog.exec() == QDialog::Accepted;
}

} // namespace kestrova
