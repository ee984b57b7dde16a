#include "ui/dialogs/dialog_siti.h"

#include "formats/url_text.h"
#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/url_model.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"

#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QTreeView>

namespace kestrova
{

namespace
{

constexpr QSize sitiSize{760, 560};
constexpr int shownNoteLines = 3;

QLabel* CaptionOf(QWidget* control, const char* name)
{
    auto* label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setBuddy(control);
    return label;
}

} // namespace

SitiDialog::SitiDialog(Session& session, std::int32_t kind, QWidget* parent)
    : QDialog(parent), session_(session), editor_(session.host, session.machine, session.Folders(),
                                                  ServersFrom(session.settings.updateServers)),
      model_(new UrlModel(editor_, this)), kinds_(new QComboBox(this)),
      search_(new QLineEdit(this)), list_(new QTreeView(this)),
      hint_(new QLabel(list_->viewport())), note_(new QPlainTextEdit(this)),
      url_(new ElidedLabel(this)), updated_(new QLabel(this)), count_(new QLabel(this))
{
    setObjectName(QStringLiteral("Dialog_Siti"));
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeFilters());
    column->addWidget(new ScrollPage(MakeList()), 1);
    column->addLayout(MakeFacts());
    column->addLayout(AnswerButtons(*this));
    SetCaptions(*this);
    Connect();
    editor_.kind = kind;
    kinds_->setCurrentIndex(kinds_->findData(kind));
    ShowKind();
    ResizeToFit(*this, sitiSize);
    list_->setFocus();
}

QLayout* SitiDialog::MakeFilters()
{
    kinds_->setObjectName(QStringLiteral("Combo_TipoUrl"));
    kinds_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const ListedUrlKind& row : ListedUrlKinds())
        kinds_->addItem(Words(row.caption), row.kind);
    search_->setObjectName(QStringLiteral("Text_Search"));
    search_->setClearButtonEnabled(true);
    auto* row = new QHBoxLayout;
    row->addWidget(CaptionOf(kinds_, "Label_KindOf"));
    row->addWidget(kinds_, 2);
    row->addWidget(CaptionOf(search_, "Label_SearchOf"));
    row->addWidget(search_, 1);
    return row;
}

QWidget* SitiDialog::MakeList()
{
    list_->setObjectName(QStringLiteral("List_Url"));
    list_->setAccessibleName(Words(Msg::SitiListName));
    list_->setModel(model_);
    list_->setHeaderHidden(true);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    PutHint(*list_, *hint_);

    auto* page = new QWidget;
    auto* right = new QVBoxLayout;
    for (const char* name :
         {"Pul_Go", "Pul_Copy", "Pul_Add", "Pul_Change", "Pul_Remove", "Pul_Aggiorna"}) {
        auto* button = NamedButton(page, name);
        button->setAutoDefault(false);
        right->addWidget(button);
    }
    right->addStretch();
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins({});
    row->addWidget(list_, 1);
    row->addLayout(right);
    return page;
}

QLayout* SitiDialog::MakeFacts()
{
    note_->setObjectName(QStringLiteral("Text_Note"));
    note_->setAccessibleName(Words(Msg::SitiNoteName));
    note_->setReadOnly(true);
    note_->setTabChangesFocus(true);
    note_->setFixedHeight(note_->fontMetrics().lineSpacing() * shownNoteLines +
                          static_cast<int>(2 * note_->document()->documentMargin()) +
                          2 * note_->frameWidth());
    url_->setObjectName(QStringLiteral("Label_Url"));
    url_->setTextFormat(Qt::PlainText);
    url_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    updated_->setObjectName(QStringLiteral("Label_Update"));
    count_->setObjectName(QStringLiteral("Label_TotUrl"));
    auto* facts = new QHBoxLayout;
    facts->addWidget(CaptionOf(nullptr, "Label_UpdateOf"));
    facts->addWidget(updated_);
    facts->addStretch();
    facts->addWidget(CaptionOf(nullptr, "Label_TotOf"));
    facts->addWidget(count_);
    auto* column = new QVBoxLayout;
    column->addWidget(note_);
    column->addWidget(url_);
    column->addLayout(facts);
    return column;
}

void SitiDialog::Connect()
{
    connect(kinds_, &QComboBox::currentIndexChanged, this, [this](int row) {
        editor_.kind = kinds_->itemData(row).toInt();
        ShowKind();
    });
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
        editor_.Search(FromQt(text));
        ShowRows();
    });
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& row) {
                if (row.isValid())
                    editor_.selected = editor_.Rows()[static_cast<std::size_t>(row.row())];
                ShowRecord();
            });
    const auto step = [this](const char* name, const QKeySequence& key, auto work) {
        auto* button = findChild<QPushButton*>(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, [this, work] { Run(work); });
        if (!key.isEmpty())
            connect(new QShortcut(key, list_, nullptr, nullptr, Qt::WidgetShortcut),
                    &QShortcut::activated, button, &QPushButton::click);
    };
    step("Pul_Go", {}, [this] { editor_.Go(); });
    step("Pul_Copy", QKeySequence::Copy, [this] {
        editor_.Copy(
            [](const std::string& text) { QGuiApplication::clipboard()->setText(ToQt(text)); });
    });
    step("Pul_Add", Qt::Key_Insert, [this] { editor_.Add(); });
    step("Pul_Change", Qt::Key_F2, [this] { editor_.Change(); });
    step("Pul_Remove", Qt::Key_Delete, [this] { editor_.Remove(); });
    step("Pul_Aggiorna", {}, [this] {
        editor_.Update([this](const std::string& line) { url_->setText(ToQt(line)); });
    });
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, &SitiDialog::UpdateNow);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_,
            qOverload<>(&QWidget::setFocus));
    connect(list_, &QTreeView::doubleClicked, this, [this] { Run([this] { editor_.Go(); }); });
    // The key is the list's and the search's own there, and does not close the window.
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        connect(new QShortcut(key, list_, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, this, [this] { Run([this] { editor_.Go(); }); });
        connect(new QShortcut(key, search_, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, list_, qOverload<>(&QWidget::setFocus));
    }
}

template <class Work> void SitiDialog::Run(Work work)
{
    {
        const Operation operation{session_};
        work();
    }
    ShowRows();
}

void SitiDialog::UpdateNow()
{
    findChild<QPushButton*>(QStringLiteral("Pul_Aggiorna"))->click();
}

void SitiDialog::ShowKind()
{
    setWindowTitle(kinds_->currentText());
    editor_.Show(editor_.kind);
    ShowRows();
}

void SitiDialog::ShowRows()
{
    model_->Refresh();
    list_->setCurrentIndex(model_->Chosen());
    const bool none = editor_.Rows().empty();
    hint_->setVisible(none);
    hint_->setText(EmptyWords());
    updated_->setText(ToQt(UpdateDateText(editor_.List().updateDate)));
    count_->setText(QString::number(editor_.Rows().size()));
    ShowRecord();
}

QString SitiDialog::EmptyWords() const
{
    if (editor_.NotRead())
        return Words(Msg::SitiNotRead, {editor_.NotRead()->reason});
    return Words(search_->text().trimmed().isEmpty() ? Msg::SitiEmpty : Msg::SitiNothingFound);
}

void SitiDialog::ShowRecord()
{
    const UrlRecord* record =
        editor_.selected ? &editor_.List().records[*editor_.selected] : nullptr;
    note_->setPlainText(record != nullptr ? ToQt(record->description) : QString());
    url_->setText(record != nullptr ? ToQt(ShownAddress(record->url)) : QString());
}

void SitiDialog::accept()
{
    const Operation operation{session_};
    if (editor_.Save())
        QDialog::accept();
}

void SitiDialog::reject()
{
    const Operation operation{session_};
    if (editor_.MayLeave())
        QDialog::reject();
}

void ShowUrls(Session& session, std::int32_t kind, QWidget* parent, bool update)
{
    SitiDialog dialog{session, kind, parent};
    const InputGate::Admission admission{dialog};
    if (update)
        QTimer::singleShot(0, &dialog, &SitiDialog::UpdateNow);
    dialog.exec();
}

} // namespace kestrova
