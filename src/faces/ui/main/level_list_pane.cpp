#include "ui/main/level_list_pane.h"

#include "session/operation.h"
#include "ui/main/library_bar.h"
#include "ui/main/library_foot.h"
#include "ui/main/library_settings.h"
#include "ui/main/library_source.h"
#include "ui/main/list_words.h"
#include "ui/main/search_field.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrova
{

LevelListPane::LevelListPane(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), model_(new LevelModel(this)),
      view_(new LevelView(*model_, this)), search_(new SearchField(*view_, this)),
      bar_(new LibraryBar(this)), source_(new LibrarySource(session, *model_, *view_)),
      foot_(new LibraryFoot(this)), find_(new QToolButton(this))
{
    setObjectName(QStringLiteral("Frame_Livelli"));
    MakeSearch();
    MakeBar();
    MakeView();
    MakeFoot();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addLayout(MakeTop());
    column->addWidget(bar_);
    column->addWidget(view_, 1);
    column->addWidget(foot_);
    std::vector<QWidget*> order{search_, find_};
    for (QWidget* control : bar_->Controls())
        order.push_back(control);
    order.push_back(view_);
    for (QWidget* control : foot_->Controls())
        order.push_back(control);
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void LevelListPane::MakeSearch()
{
    connect(search_, &QLineEdit::textChanged, this, &LevelListPane::SearchTyped);
    connect(search_, &QLineEdit::returnPressed, this, [this] {
        if (model_->rowCount() > 0)
            SearchFirst(); // the list says by itself that nothing was found
    });
}

template <class Work> void LevelListPane::Change(const Work& work)
{
    const ListPlace place = PlaceIn(model_->Shown(), chosen_);
    work();
    bar_->Show(model_->Shown());
    view_->Columns().ShowOrder(model_->Shown().Order(), model_->Shown().IsTurned());
    ChooseShown(place);
    lookChanged();
}

void LevelListPane::SetOrder(LibraryOrder order, bool turned)
{
    Change([&] { model_->SetOrder(order, turned); });
    if (order == LibraryOrder::Savegames)
        source_->CountAll();
}

void LevelListPane::MakeBar()
{
    const auto turn = [this] { SetOrder(model_->Shown().Order(), !model_->Shown().IsTurned()); };
    bar_->ordered = [this](LibraryOrder order) { SetOrder(order, false); };
    bar_->turned = turn;
    view_->Columns().orderWanted = [this, turn](LibraryOrder order) {
        order == model_->Shown().Order() ? turn() : SetOrder(order, false);
    };
    source_->counted = [this] {
        if (model_->Shown().Order() == LibraryOrder::Savegames)
            Change([&] { model_->SortAgain(); });
    };
    bar_->filtered = [this](LibraryFilter filter, const std::string& tag) {
        Change([&] { model_->SetFilter(filter, tag); });
    };
    bar_->looked = [this](LibraryLook look) { SetLook(look); };
    view_->Columns().changed = [this] {
        view_->viewport()->update();
        lookChanged();
    };
    bar_->columnsWanted = [this](QPoint place) { view_->Columns().OpenMenu(place); };
    view_->Columns().ShowOrder(model_->Shown().Order(), model_->Shown().IsTurned());
}

void LevelListPane::MakeView()
{
    view_->setAccessibleName(Words(Msg::LevelsListName));
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->installEventFilter(this);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &LevelListPane::RowChosen);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LevelListPane::ShowCounts);
    connect(view_, &QListView::activated, this, [this] { activated(); });
    connect(view_, &QListView::customContextMenuRequested, this, &LevelListPane::WantMenu);
}

QLayout* LevelListPane::MakeTop()
{
    find_->setObjectName(QStringLiteral("Pul_Search"));
    find_->setIcon(DrawnIcon(Drawing::Search));
    find_->setProperty("pictured", true);
    find_->setFocusPolicy(Qt::TabFocus);
    connect(find_, &QToolButton::clicked, this, &LevelListPane::SearchFirst);
    auto* top = new QHBoxLayout;
    top->addWidget(search_, 1);
    top->addWidget(find_);
    return top;
}

void LevelListPane::MakeFoot()
{
    foot_->stepped = [this](int step) { SearchOn(step); };
    foot_->coverWidthWanted = [this](int width) {
        view_->SetCoverWidth(width);
        view_->ExecuteDelayedLayout();
        MarkChosen();
        lookChanged();
    };
}

/// Where it is low the levels have the room of what a key does as well.
void LevelListPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool isLow = height() < lowLines * fontMetrics().lineSpacing();
    foot_->setVisible(!isLow);
    bar_->SetLow(isLow);
    view_->SetHead(!isLow);
}

bool LevelListPane::eventFilter(QObject* object, QEvent* event)
{
    // By the keyboard it is of the chosen row, wherever that stands.
    if (object == view_ && event->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard) {
        WantMenu(view_->visualRect(view_->currentIndex()).center());
        return true;
    }
    if (object == view_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Delete) && Chosen()) {
        removalWanted();
        return true;
    }
    return QWidget::eventFilter(object, event);
}

void LevelListPane::Refresh()
{
    const bool same = std::exchange(shownArchive_, session_.archive.file) == session_.archive.file;
    const ListPlace place = same ? PlaceIn(model_->Shown(), chosen_) : ListPlace{};
    const std::vector<LevelCode> several = ChosenAll();
    const int scrolled = same ? view_->verticalScrollBar()->value() : 0;
    {
        const QSignalBlocker quiet{view_->selectionModel()};
        model_->SetLevels(source_->Levels());
    }
    if (model_->Shown().Order() == LibraryOrder::Savegames)
        source_->CountAll();
    bar_->Show(model_->Shown());
    view_->ExecuteDelayedLayout();
    view_->verticalScrollBar()->setValue(scrolled);
    const bool gone = chosen_ && !model_->Shown().Has(*chosen_);
    if (gone && (!keepsPlace_ || !same))
        chosen_.reset();
    ChooseShown(place);
    if (several.size() > 1 && !gone)
        view_->SelectToo(several);
}

std::optional<LevelCode> LevelListPane::Chosen() const
{
    return chosen_ && model_->Shown().RowOf(*chosen_) >= 0 ? chosen_ : std::nullopt;
}

std::vector<LevelCode> LevelListPane::ChosenAll() const
{
    std::vector<LevelCode> codes;
    for (const int row : view_->SelectedRows())
        codes.push_back(model_->Shown().At(row).code);
    if (const auto chosen = Chosen(); chosen && codes.empty())
        codes = {*chosen};
    return codes;
}

std::vector<LibraryLevel> LevelListPane::ChosenLevels() const
{
    std::vector<LibraryLevel> levels;
    for (const LevelCode code : ChosenAll())
        levels.push_back(model_->Shown().At(model_->Shown().RowOf(code)));
    return levels;
}

LevelNote LevelListPane::NoteOf(LevelCode code) const
{
    return source_->NoteOf(code);
}

void LevelListPane::Choose(LevelCode code)
{
    if (model_->Shown().RowOf(code) < 0)
        return;
    chosen_ = told_ = code; // whoever chose it shows it too
    MarkChosen();
}

void LevelListPane::Reveal(LevelCode code)
{
    if (model_->Shown().Has(code) && model_->Shown().RowOf(code) < 0) {
        search_->clear();
        if (model_->Shown().RowOf(code) < 0)
            bar_->filtered(LibraryFilter::All, {});
    }
    Choose(code);
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

void LevelListPane::SetLook(LibraryLook look)
{
    bar_->Show(look);
    foot_->ShowSlider(look == LibraryLook::Covers);
    view_->SetLook(look);
    view_->ExecuteDelayedLayout();
    MarkChosen();
    lookChanged();
}

void LevelListPane::RememberLook(QSettings& places) const
{
    const Library& shown = model_->Shown();
    WriteLibrarySettings(places,
                         {view_->Look(), view_->CoverWidth(), shown.Order(), shown.IsTurned(),
                          shown.Filter(), shown.Tag(), view_->Columns().Chosen()});
}

void LevelListPane::RestoreLook(const QSettings& places)
{
    const LibrarySettings settings = ReadLibrarySettings(places);
    foot_->ShowCoverWidth(settings.coverWidth);
    const auto told = std::exchange(lookChanged, [] {}); // it is the person's since long
    view_->Columns().Choose(settings.columns);
    SetOrder(settings.order, settings.turned);
    bar_->filtered(settings.filter, settings.tag);
    SetLook(settings.look);
    lookChanged = told;
}

void LevelListPane::MarkChosen()
{
    const int row = chosen_ ? model_->Shown().RowOf(*chosen_) : -1;
    const QSignalBlocker quiet{view_->selectionModel()};
    const QModelIndex index = row < 0 ? QModelIndex() : model_->index(row, 0);
    view_->setCurrentIndex(index);
    view_->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
    if (row >= 0)
        view_->scrollTo(index);
    view_->viewport()->update();
    ShowCounts();
}

void LevelListPane::RowChosen(const QModelIndex& index)
{
    if (index.isValid())
        ChooseRow(index.row());
}

void LevelListPane::ChooseRow(int row)
{
    chosen_ = model_->Shown().At(row).code;
    TellChosen();
}

void LevelListPane::TellChosen()
{
    if (Chosen() == told_)
        return;
    told_ = Chosen();
    passed(told_);
}

void LevelListPane::ChooseShown(const ListPlace& place)
{
    if (!Chosen() && model_->rowCount() > 0)
        chosen_ = chosen_ ? NearestTo(model_->Shown(), place) : model_->Shown().At(0).code;
    MarkChosen();
    TellChosen();
}

void LevelListPane::WantMenu(QPoint place)
{
    const QModelIndex index = view_->indexAt(place);
    if (index.isValid() && chosen_ == model_->Shown().At(index.row()).code)
        menuWanted(view_->viewport()->mapToGlobal(place));
}

void LevelListPane::SearchTyped(const QString& text)
{
    {
        // The list forgets its place when its rows change.
        const QSignalBlocker quiet{view_->selectionModel()};
        model_->SetSearch(FromQt(text));
    }
    ChooseShown({});
}

void LevelListPane::SearchFirst()
{
    if (model_->rowCount() > 0) {
        ChooseRow(0);
        MarkChosen();
        view_->setFocus();
    } else if (model_->Shown().IsSearched()) {
        TellNotFound();
    }
}

void LevelListPane::SearchOn(int step)
{
    // Every level that is shown is a match.
    const auto chosen = Chosen();
    const int row = chosen ? model_->Shown().RowOf(*chosen) + step : 0;
    if (row >= 0 && row < model_->rowCount()) {
        ChooseRow(row);
        MarkChosen();
    } else if (model_->Shown().IsSearched()) {
        TellNotFound();
    }
}

void LevelListPane::TellNotFound()
{
    if (session_.running.operations > 0)
        return;
    const Operation operation{session_};
    session_.host.Tell(Tone::Plain, GetMsg(Msg::NotFound));
}

void LevelListPane::ShowCounts()
{
    const bool any = !model_->Shown().Levels().empty();
    view_->ShowWords(
        WordsForEmptyList(session_.archive, model_->Shown(), search_->text(), bar_->FilterWords()));
    find_->setEnabled(any);
    foot_->ShowCounts(WordsOfCounts(model_->Shown(), view_->SelectedRows().size()), any);
}

} // namespace kestrova
