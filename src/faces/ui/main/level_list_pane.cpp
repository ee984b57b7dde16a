#include "ui/main/level_list_pane.h"

#include "history/standing.h"
#include "session/operation.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_main.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

QToolButton* MakeButton(QWidget* parent, const char* name, Drawing drawing, bool pictured)
{
    auto* made = new QToolButton(parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setIcon(DrawnIcon(drawing));
    made->setProperty("pictured", pictured);
    made->setToolButtonStyle(pictured ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    made->setFocusPolicy(Qt::TabFocus);
    return made;
}

} // namespace

LevelListPane::LevelListPane(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), model_(new LevelModel(this)),
      search_(new QLineEdit(this)), view_(new QListView(this)), counts_(new QLabel(this))
{
    setObjectName(QStringLiteral("Frame_Livelli"));
    counts_->setObjectName(QStringLiteral("Label_Counts"));
    MakeSearch();
    MakeView();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addLayout(MakeTop());
    column->addWidget(view_, 1);
    column->addLayout(MakeBottom());
    std::vector<QWidget*> order{search_, searchButtons_.front(), view_};
    order.insert(order.end(), searchButtons_.begin() + 1, searchButtons_.end());
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void LevelListPane::MakeSearch()
{
    search_->setObjectName(QStringLiteral("Text_Search"));
    search_->setPlaceholderText(Words(Msg::SearchHint));
    search_->setAccessibleName(Words(Msg::SearchName));
    search_->setClearButtonEnabled(true);
    connect(search_, &QLineEdit::textChanged, this, &LevelListPane::SearchTyped);
    connect(search_, &QLineEdit::returnPressed, this, &LevelListPane::SearchFirst);
    search_->installEventFilter(this);
}

void LevelListPane::MakeView()
{
    view_->setObjectName(QStringLiteral("Combo_Livelli"));
    view_->setAccessibleName(Words(Msg::LevelsListName));
    view_->setUniformItemSizes(true);
    view_->setTextElideMode(Qt::ElideRight);
    view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setItemDelegate(new LevelDelegate(view_));
    view_->setModel(model_);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->installEventFilter(this);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &LevelListPane::RowChosen);
    connect(view_, &QListView::activated, this, [this] { activated(); });
    connect(view_, &QListView::customContextMenuRequested, this, &LevelListPane::WantMenu);
    // In the list's own room, so that it does not change its size.
    empty_ = new QLabel(view_->viewport());
    (new QVBoxLayout(view_->viewport()))->addWidget(empty_);
    empty_->setAttribute(Qt::WA_TransparentForMouseEvents);
    empty_->setObjectName(QStringLiteral("Label_Empty"));
    empty_->setTextFormat(Qt::PlainText);
    empty_->setWordWrap(true);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setMargin(12);
    empty_->setForegroundRole(QPalette::PlaceholderText);
}

QLayout* LevelListPane::MakeTop()
{
    auto* find = MakeButton(this, "Pul_Search", Drawing::Search, true);
    connect(find, &QToolButton::clicked, this, &LevelListPane::SearchFirst);
    searchButtons_.push_back(find);
    auto* top = new QHBoxLayout;
    top->addWidget(search_, 1);
    top->addWidget(find);
    return top;
}

QLayout* LevelListPane::MakeBottom()
{
    auto* before = MakeButton(this, "Pul_Prima", Drawing::Previous, false);
    auto* behind = MakeButton(this, "Pul_Dopo", Drawing::Next, false);
    before->setToolTip(Words(Msg::PreviousLevelTip));
    behind->setToolTip(Words(Msg::NextLevelTip));
    connect(before, &QToolButton::clicked, this, [this] { SearchOn(-1); });
    connect(behind, &QToolButton::clicked, this, [this] { SearchOn(1); });
    searchButtons_.push_back(before);
    searchButtons_.push_back(behind);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(before);
    bottom->addWidget(behind);
    bottom->addStretch();
    bottom->addWidget(counts_);
    return bottom;
}

bool LevelListPane::eventFilter(QObject* object, QEvent* event)
{
    // By the keyboard it is of the chosen row, wherever that stands.
    if (object == view_ && event->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard) {
        WantMenu(view_->visualRect(view_->currentIndex()).center());
        return true;
    }
    if (object != search_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(object, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        search_->clear();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        // The list follows while the search keeps the keyboard.
        return QCoreApplication::sendEvent(view_, event);
    default:
        return false;
    }
}

void LevelListPane::Refresh()
{
    model_->SetRows(ListRows(session_.Folders(), session_.archive),
                    CurrentLevelCode(session_.Folders(), session_.archive));
    if (!chosen_ || model_->RowOf(*chosen_) < 0)
        chosen_ = model_->Rows().empty() ? std::nullopt
                                         : std::optional<LevelCode>{model_->Rows().front().code};
    MarkChosen();
    ShowCounts();
}

bool LevelListPane::Choose(LevelCode code)
{
    if (model_->RowOf(code) < 0)
        return false;
    chosen_ = code;
    MarkChosen();
    return true;
}

void LevelListPane::FocusList()
{
    view_->setFocus();
}

void LevelListPane::FocusSearch()
{
    search_->setFocus();
    search_->selectAll();
}

void LevelListPane::MarkChosen()
{
    const int row = chosen_ ? model_->ShownRowOf(*chosen_) : -1;
    const QSignalBlocker quiet{view_->selectionModel()};
    const QModelIndex index = row < 0 ? QModelIndex() : model_->index(row);
    view_->setCurrentIndex(index);
    view_->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
    if (row >= 0)
        view_->scrollTo(index);
    view_->viewport()->update();
}

void LevelListPane::RowChosen(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    ChooseRow(model_->RowOf(model_->CodeAt(index.row())));
}

void LevelListPane::ChooseRow(std::ptrdiff_t row)
{
    const LevelCode code = model_->Rows()[static_cast<std::size_t>(row)].code;
    if (chosen_ == code)
        return;
    chosen_ = code;
    passed(code);
}

void LevelListPane::WantMenu(QPoint place)
{
    const QModelIndex index = view_->indexAt(place);
    if (index.isValid() && chosen_ == model_->CodeAt(index.row()))
        menuWanted(view_->viewport()->mapToGlobal(place));
}

void LevelListPane::SearchTyped(const QString& text)
{
    {
        // The list forgets its place when its rows change.
        const QSignalBlocker quiet{view_->selectionModel()};
        model_->SetSearch(FromQt(text));
    }
    if (model_->rowCount() > 0 && (!chosen_ || model_->ShownRowOf(*chosen_) < 0))
        ChooseRow(model_->RowOf(model_->CodeAt(0)));
    MarkChosen();
    ShowCounts();
}

void LevelListPane::SearchFirst()
{
    const std::string text{Trim(FromQt(search_->text()))};
    const std::ptrdiff_t row = FindRow(model_->Rows(), text, 0, 1);
    if (row >= 0) {
        ChooseRow(row);
        MarkChosen();
        view_->setFocus();
    } else if (!text.empty()) {
        TellNotFound();
    }
}

void LevelListPane::SearchOn(int step)
{
    const std::string text{Trim(FromQt(search_->text()))};
    const std::ptrdiff_t from = chosen_ ? model_->RowOf(*chosen_) + step : 0;
    const std::ptrdiff_t row = FindRow(model_->Rows(), text, from, step);
    if (row >= 0) {
        ChooseRow(row);
        MarkChosen();
    } else if (!text.empty()) {
        TellNotFound();
    }
}

void LevelListPane::TellNotFound()
{
    if (session_.runningOperations > 0)
        return;
    const Operation operation{session_};
    session_.host.Tell(Tone::Plain, GetMsg(Msg::NotFound));
}

QString LevelListPane::EmptyWords() const
{
    if (!session_.archive.Loaded())
        return Words(Msg::EmptyNoArchive, {lineBreak});
    if (model_->rowCount() == 0)
        return Words(Msg::EmptyNoHit, {FromQt(search_->text().trimmed()), lineBreak});
    if (session_.archive.levels.size() == 1)
        return Words(Msg::EmptyNoLevels, {lineBreak});
    return {};
}

void LevelListPane::ShowCounts()
{
    const QString words = EmptyWords();
    empty_->setText(words);
    empty_->setVisible(!words.isEmpty());
    const int all = static_cast<int>(model_->Rows().size());
    for (QWidget* button : searchButtons_)
        button->setEnabled(all > 0);
    const int shown = model_->rowCount();
    counts_->setText(all == shown
                         ? all == 1 ? Words(Msg::CountOneLevel)
                                    : Words(Msg::CountLevels, {std::to_string(all)})
                         : Words(Msg::CountMatches, {std::to_string(shown), std::to_string(all)}));
}

} // namespace kestrova
