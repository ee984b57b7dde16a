#include "ui/dialogs/dialog_compare_trle.h"

#include "session/operation.h"
#include "ui/dialogs/compare_model.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "ui/widgets/wrapping_row.h"
#include "words/ui_dialogs.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize compareSize{820, 560};

struct StateRow {
    FileState state;
    const char* box;
    Message words;
};
constexpr StateRow stateRows[] = {
    {FileState::New, "Check_New", Msg::CompareShowNew},
    {FileState::Missing, "Check_Missing", Msg::CompareShowMissing},
    {FileState::Changed, "Check_Changed", Msg::CompareShowChanged},
    {FileState::Equal, "Check_Equal", Msg::CompareShowEqual},
    {FileState::Unread, "Check_Unread", Msg::CompareShowUnread},
};

QString CountedWords(const StateRow& row, std::size_t count)
{
    return Words(row.words, {std::to_string(count)});
}

} // namespace

CompareTrleDialog::CompareTrleDialog(Session& session, QWidget* parent)
    : QDialog(parent), session_(session),
      comparison_(session.host, session.machine, session.Folders()),
      model_(new CompareModel(comparison_, this)), before_(new QLineEdit(this)),
      after_(new QLineEdit(this)), search_(new QLineEdit(this)), list_(new QTreeView(this)),
      hint_(new QLabel(list_->viewport())), count_(new QLabel(this)),
      compare_(NamedButton(this, "Pul_Compare")), openBefore_(NamedButton(this, "Pul_OpenBefore")),
      openAfter_(NamedButton(this, "Pul_OpenAfter")), copy_(NamedButton(this, "Pul_Copy"))
{
    setObjectName(QStringLiteral("Dialog_CompareTrle"));
    auto* page = new QWidget;
    auto* parts = new QVBoxLayout(page);
    parts->setContentsMargins({});
    parts->addLayout(MakeFolders());
    parts->addLayout(MakeFilters());
    parts->addWidget(MakeList(), 1);
    parts->addWidget(count_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new ScrollPage(page), 1);
    column->addLayout(MakeButtons());
    SetCaptions(*this);
    Connect();
    ShowRows();
    ResizeToFit(*this, compareSize);
    compare_->setFocus();
}

void CompareTrleDialog::AddFolder(QGridLayout& rows, Side side)
{
    const bool first = side == Side::Before;
    QLineEdit* const path = FieldOf(side);
    path->setObjectName(first ? QStringLiteral("Text_Before") : QStringLiteral("Text_After"));
    path->setText(PathToQt(comparison_.Folder(side)));
    auto* caption = new QLabel(this);
    caption->setObjectName(first ? QStringLiteral("Label_BeforeOf")
                                 : QStringLiteral("Label_AfterOf"));
    caption->setBuddy(path);
    auto* browse = NamedButton(this, first ? "Pul_SfogliaBefore" : "Pul_SfogliaAfter");
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this, side] { Choose(side); });
    connect(path, &QLineEdit::textChanged, this, [this, side](const QString& text) {
        comparison_.SetFolder(side, PathFromQt(text.trimmed()));
        ShowRows();
    });
    const int row = first ? 0 : 1;
    rows.addWidget(caption, row, 0);
    rows.addWidget(path, row, 1);
    rows.addWidget(browse, row, 2);
}

QLayout* CompareTrleDialog::MakeFolders()
{
    auto* rows = new QGridLayout;
    AddFolder(*rows, Side::Before);
    AddFolder(*rows, Side::After);
    compare_->setDefault(true);
    rows->addWidget(compare_, 0, 3, 2, 1);
    return rows;
}

QLayout* CompareTrleDialog::MakeFilters()
{
    auto* row = new WrappingRow;
    for (const StateRow& state : stateRows) {
        auto* box = new QCheckBox(CountedWords(state, 0), this);
        box->setObjectName(QString::fromLatin1(state.box));
        box->setChecked(comparison_.Shows(state.state));
        boxes_.push_back({state.state, box});
        row->addWidget(box);
    }
    search_->setObjectName(QStringLiteral("Text_Search"));
    search_->setClearButtonEnabled(true);
    constexpr int searchLetters = 30;
    search_->setMinimumWidth(searchLetters * search_->fontMetrics().averageCharWidth());
    search_->setPlaceholderText(Words(Msg::CompareSearchHint));
    search_->setAccessibleName(Words(Msg::CompareSearchHint));
    row->AddStretch();
    row->addWidget(search_);
    return row;
}

QWidget* CompareTrleDialog::MakeList()
{
    MakeTable(*list_, "List_Files", Msg::CompareListName, *model_, *hint_);
    QHeaderView& head = *list_->header();
    head.setStretchLastSection(false);
    head.setSectionResizeMode(CompareModel::Name, QHeaderView::Stretch);
    const QFontMetrics metrics = list_->fontMetrics();
    int widest = 0;
    for (const StateRow& state : stateRows)
        widest = std::max(widest,
                          metrics.horizontalAdvance(ToQt(FolderComparison::NameOf(state.state))));
    const int edge = 3 * metrics.averageCharWidth();
    head.resizeSection(CompareModel::State, widest + edge);
    for (const int size : {CompareModel::SizeBefore, CompareModel::SizeAfter})
        head.resizeSection(size, std::max(head.sectionSizeHint(size),
                                          metrics.horizontalAdvance(QStringLiteral("1023.9 Mb"))) +
                                     edge);
    count_->setObjectName(QStringLiteral("Label_Count"));
    return list_;
}

QLayout* CompareTrleDialog::MakeButtons()
{
    auto* close = NamedButton(this, "Pul_Cancel");
    connect(close, &QPushButton::clicked, this, &CompareTrleDialog::reject);
    auto* row = new WrappingRow;
    row->addWidget(HelpButton(this));
    row->AddStretch();
    for (QPushButton* button : {openBefore_, openAfter_, copy_, close}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    return row;
}

void CompareTrleDialog::Connect()
{
    connect(compare_, &QPushButton::clicked, this, &CompareTrleDialog::Compare);
    connect(openBefore_, &QPushButton::clicked, this, [this] { Open(Side::Before); });
    connect(openAfter_, &QPushButton::clicked, this, [this] { Open(Side::After); });
    connect(copy_, &QPushButton::clicked, this, &CompareTrleDialog::CopyList);
    connect(list_, &QTreeView::doubleClicked, this, &CompareTrleDialog::OpenChosen);
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CompareTrleDialog::ShowChosen);
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
        comparison_.Search(FromQt(text));
        ShowRows();
    });
    for (const StateBox& state : boxes_)
        connect(state.box, &QCheckBox::toggled, this, [this, which = state.state](bool shown) {
            comparison_.Show(which, shown);
            ShowRows();
        });
    const auto shortcut = [this](const QKeySequence& key, QWidget* where, auto work) {
        connect(new QShortcut(key, where, nullptr, nullptr,
                              where == this ? Qt::WindowShortcut : Qt::WidgetShortcut),
                &QShortcut::activated, this, work);
    };
    shortcut(QKeySequence::Find, this, [this] { search_->setFocus(); });
    shortcut(Qt::Key_F5, this, [this] { Compare(); });
    shortcut(QKeySequence::Copy, list_, [this] { CopyList(); });
    // The key is the list's and the search's own there, and does not compare again.
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        shortcut(key, list_, [this] { OpenChosen(); });
        shortcut(key, search_, [this] { list_->setFocus(); });
    }
}

void CompareTrleDialog::Choose(Side side)
{
    bool chosen = false;
    {
        const Operation operation{session_};
        chosen = comparison_.Choose(side);
    }
    if (chosen)
        FieldOf(side)->setText(PathToQt(comparison_.Folder(side)));
}

void CompareTrleDialog::Compare()
{
    if (session_.running.operations > 0)
        return;
    {
        const Operation operation{session_};
        comparison_.Compare();
    }
    ShowRows();
    if (!comparison_.Rows().empty())
        list_->setFocus();
}

void CompareTrleDialog::ShowRows()
{
    model_->Refresh();
    list_->setCurrentIndex(model_->index(0, 0));
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        boxes_[i].box->setText(CountedWords(stateRows[i], comparison_.Count(boxes_[i].state)));
    const std::size_t shown = comparison_.Rows().size();
    const std::size_t all = comparison_.Files().size();
    const bool compared = comparison_.IsCompared();
    const bool equal = all == comparison_.Count(FileState::Equal);
    hint_->setVisible(shown == 0);
    hint_->setText(Words(!compared  ? Msg::CompareHint
                         : all == 0 ? Msg::CompareBothEmpty
                         : equal    ? Msg::CompareAllEqual
                                    : Msg::CompareNothingFound));
    count_->setText(all == 0
                        ? QString()
                        : Words(Msg::CompareCount, {std::to_string(shown), std::to_string(all)}));
    copy_->setEnabled(shown > 0);
    ShowChosen();
}

void CompareTrleDialog::ShowChosen()
{
    const QModelIndex row = list_->currentIndex();
    const ComparedFile* file =
        row.isValid() ? &comparison_.At(static_cast<std::size_t>(row.row())) : nullptr;
    openBefore_->setEnabled(file != nullptr && !file->before.empty());
    openAfter_->setEnabled(file != nullptr && !file->after.empty());
}

void CompareTrleDialog::Open(Side side)
{
    const QModelIndex row = list_->currentIndex();
    if (!row.isValid() || session_.running.operations > 0)
        return;
    const Operation operation{session_};
    comparison_.Open(static_cast<std::size_t>(row.row()), side);
}

void CompareTrleDialog::OpenChosen()
{
    (openAfter_->isEnabled() ? openAfter_ : openBefore_)->click();
}

void CompareTrleDialog::CopyList()
{
    if (!comparison_.Rows().empty())
        QGuiApplication::clipboard()->setText(ToQt(comparison_.ListText()));
}

} // namespace kestrova
