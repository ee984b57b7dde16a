#include "ui/dialogs/dialog_indice.h"

#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/letter_size.h"
#include "ui/widgets/qt_text.h"
#include "words/help.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QStringListModel>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize indexSize{440, 520};
/// What is longer is no topic that anybody reads in a list.
constexpr std::size_t longestShown = 200;

QStringList ShownItems(const std::vector<std::string>& items)
{
    QStringList shown;
    shown.reserve(static_cast<qsizetype>(items.size()));
    for (const std::string& item : items)
        shown.append(ToQt(std::string_view{item}.substr(0, longestShown)).simplified());
    return shown;
}

} // namespace

HelpIndexDialog::HelpIndexDialog(Session& session, std::string_view help, QWidget* parent)
    : QDialog(parent), index_(session.host, help), list_(new QListView(this)),
      items_(new QStringListModel(this)), wanted_(new QLineEdit(this)), info_(new QLabel(this))
{
    setObjectName(QStringLiteral("Dialog_Indice"));
    list_->setObjectName(QStringLiteral("List_Indice"));
    list_->setModel(items_);
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    new LetterSize(*list_);
    info_->setObjectName(QStringLiteral("Label_Info"));
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeKinds());
    column->addLayout(MakeSearch());
    column->addWidget(list_, 1);
    column->addLayout(MakeAnswers());
    SetCaptions(*this);
    list_->setAccessibleName(windowTitle().trimmed());
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& now) {
                if (now.isValid())
                    index_.selected = static_cast<std::size_t>(now.row());
            });
    connect(list_, &QListView::activated, this, [this] { accept(); });
    connect(new QShortcut(Qt::CTRL | Qt::Key_F, this), &QShortcut::activated, wanted_, [this] {
        wanted_->setFocus();
        wanted_->selectAll();
    });
    connect(new QShortcut(Qt::Key_Down, wanted_, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, list_, [this] { list_->setFocus(); });
    ShowItems();
    wanted_->setFocus();
    ResizeToFit(*this, indexSize);
}

QLayout* HelpIndexDialog::MakeKinds()
{
    auto* main = new QRadioButton(this);
    main->setObjectName(QStringLiteral("Opt_Main"));
    main->setChecked(true);
    auto* sub = new QRadioButton(this);
    sub->setObjectName(QStringLiteral("Opt_Sub"));
    connect(main, &QRadioButton::toggled, this, [this](bool checked) {
        index_.Show(checked);
        ShowItems();
    });
    auto* row = new QHBoxLayout;
    row->addWidget(main);
    row->addWidget(sub);
    row->addStretch();
    return row;
}

QLayout* HelpIndexDialog::MakeSearch()
{
    wanted_->setObjectName(QStringLiteral("Text_Find"));
    wanted_->setAccessibleName(Words(Msg::HelpFind));
    wanted_->setPlaceholderText(Words(Msg::HelpIndexHint));
    wanted_->setClearButtonEnabled(true);
    auto* row = new QHBoxLayout;
    row->addWidget(wanted_, 1);
    QPushButton* find = NamedButton(this, "Pul_Find");
    QPushButton* next = NamedButton(this, "Pul_Dopo");
    QPushButton* previous = NamedButton(this, "Pul_Prima");
    for (QPushButton* button : {find, next, previous}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    const auto search = [this] {
        index_.Find(FromQt(wanted_->text()));
        ShowSelected();
    };
    connect(find, &QPushButton::clicked, this, search);
    // While it is typed, so that Enter takes what is found.
    connect(wanted_, &QLineEdit::textEdited, this, search);
    connect(next, &QPushButton::clicked, this, [this] {
        index_.Next();
        ShowSelected();
    });
    connect(previous, &QPushButton::clicked, this, [this] {
        index_.Previous();
        ShowSelected();
    });
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, next, &QPushButton::click);
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F3, this), &QShortcut::activated, previous,
            &QPushButton::click);
    return row;
}

QLayout* HelpIndexDialog::MakeAnswers()
{
    QPushButton* ok = NamedButton(this, "Pul_Ok");
    QPushButton* cancel = NamedButton(this, "Pul_Cancel");
    ok->setDefault(true);
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &HelpIndexDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &HelpIndexDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(info_, 1);
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

void HelpIndexDialog::ShowItems()
{
    items_->setStringList(ShownItems(index_.Items()));
    ShowSelected();
}

void HelpIndexDialog::ShowSelected()
{
    info_->setText(ToQt(index_.Info()));
    if (index_.selected)
        list_->setCurrentIndex(items_->index(static_cast<int>(*index_.selected)));
}

void HelpIndexDialog::accept()
{
    const auto chosen = index_.Chosen();
    if (!chosen)
        return;
    chosen_ = *chosen;
    QDialog::accept();
}

} // namespace kestrova
