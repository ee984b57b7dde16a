#include "ui/dialogs/dialog_add_many.h"

#include "intake/queue_texts.h"
#include "intake/source_choice.h"
#include "session/operation.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/progress_row.h"
#include "ui/widgets/qt_text.h"
#include "words/add_many.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace kestrova
{

namespace
{

constexpr QSize addManySize{760, 560};
constexpr int sourceColumn = 0;
constexpr int stateColumn = 1;
constexpr int outcomeColumn = 2;

/// What a person wants to see first once all is over.
int RankOf(QueueState state)
{
    constexpr QueueState order[] = {QueueState::UnderWay, QueueState::NeedsYou, QueueState::Refused,
                                    QueueState::Waiting,  QueueState::Skipped,  QueueState::Added};
    return static_cast<int>(std::find(std::begin(order), std::end(order), state) -
                            std::begin(order));
}

/// So that no state's word is cut, whichever comes.
int StateWidth(const QWidget& list)
{
    int widest = 0;
    for (const bool ended : {false, true})
        for (const QueueState state :
             {QueueState::Waiting, QueueState::UnderWay, QueueState::Added, QueueState::Skipped,
              QueueState::NeedsYou, QueueState::Refused})
            widest = std::max(widest,
                              list.fontMetrics().horizontalAdvance(ToQt(StateText(state, ended))));
    return widest + 2 * list.fontMetrics().averageCharWidth() + 8;
}

} // namespace

AddManyDialog::AddManyDialog(Session& session, AddAlone addAlone, QWidget* parent)
    : QDialog(parent), session_(session), addAlone_(std::move(addAlone)), queue_(session),
      count_(new ElidedLabel(this)), name_(new ElidedLabel(this)), list_(new QTreeWidget(this)),
      hint_(new QLabel(list_->viewport())), begin_(NamedLabel(this, "Label_Begin")),
      end_(NamedLabel(this, "Label_End")), info_(new QLabel(this)), bar_(new QProgressBar(this)),
      stop_(NamedButton(this, "Pul_Stop")), addFile_(NamedButton(this, "Pul_AddFile")),
      addFolder_(NamedButton(this, "Pul_AddFolder")), start_(NamedButton(this, "Pul_Start")),
      retry_(NamedButton(this, "Pul_Retry")), copy_(NamedButton(this, "Pul_Copy")),
      close_(NamedButton(this, "Pul_Cancel")), progress_(*info_, *bar_, *stop_)
{
    setObjectName(QStringLiteral("Dialog_AddMany"));
    setAcceptDrops(true);
    count_->setObjectName(QStringLiteral("Label_Count"));
    QFont strong = count_->font();
    strong.setBold(true);
    count_->setFont(strong);
    name_->setObjectName(QStringLiteral("Label_Name"));
    name_->SetElide(Qt::ElideMiddle);
    info_->setObjectName(QStringLiteral("Label_Info"));
    info_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    MakeList();
    auto* column = new QVBoxLayout(this);
    column->addWidget(count_);
    column->addWidget(name_);
    column->addWidget(begin_);
    column->addWidget(list_, 1);
    column->addWidget(end_);
    column->addLayout(ProgressRow(*info_, *bar_, *stop_));
    column->addLayout(MakeButtons());
    Connect();
    SetCaptions(*this);
    ResizeToFit(*this, addManySize);
    ShowState();
}

void AddManyDialog::MakeList()
{
    list_->setObjectName(QStringLiteral("List_Many"));
    list_->setAccessibleName(Words(Msg::ManyListName));
    list_->setHeaderLabels(
        {Words(Msg::ManyColumnSource), Words(Msg::ManyColumnState), Words(Msg::ManyColumnOutcome)});
    list_->setRootIsDecorated(false);
    WrapWords(*list_, outcomeColumn); // what a person has to do may take a sentence or two
    list_->setAlternatingRowColors(true);
    list_->setTextElideMode(Qt::ElideRight);
    list_->header()->setStretchLastSection(true);
    list_->header()->resizeSection(sourceColumn, fontMetrics().averageCharWidth() * 34);
    list_->header()->resizeSection(stateColumn, StateWidth(*list_));
    PutHint(*list_, *hint_);
    hint_->setText(Words(Msg::ManyHint));
    begin_->setText(Words(Msg::ManyBegin));
}

QLayout* AddManyDialog::MakeButtons()
{
    auto* help = HelpButton(this);
    retry_->setToolTip(Words(Msg::ManyRetryTip));
    auto* row = new QHBoxLayout;
    row->addWidget(help);
    row->addStretch();
    for (QPushButton* button : {help, addFile_, addFolder_, start_, retry_, copy_, close_})
        button->setAutoDefault(false);
    for (QPushButton* button : {addFile_, addFolder_, start_, retry_, copy_, close_})
        row->addWidget(button);
    return row;
}

void AddManyDialog::Connect()
{
    connect(addFile_, &QPushButton::clicked, this, [this] {
        std::vector<Path> chosen;
        {
            const Operation operation{session_};
            chosen = ChooseSourceFiles(session_.host, session_.preferences);
        }
        Take(chosen);
    });
    connect(addFolder_, &QPushButton::clicked, this, [this] {
        std::optional<Path> chosen;
        {
            const Operation operation{session_};
            chosen = ChooseSourceFolder(session_.host, session_.preferences);
        }
        if (chosen)
            Take({*chosen});
    });
    connect(start_, &QPushButton::clicked, this, &AddManyDialog::Start);
    connect(retry_, &QPushButton::clicked, this, &AddManyDialog::Retry);
    connect(list_, &QTreeWidget::itemActivated, this, &AddManyDialog::Retry);
    connect(list_, &QTreeWidget::currentItemChanged, this,
            [this] { retry_->setEnabled(MayRetry()); });
    connect(copy_, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(ToQt(QueueText(queue_))); });
    connect(close_, &QPushButton::clicked, this, &AddManyDialog::reject);
}

void AddManyDialog::Show(const std::vector<QueueSource>& sources)
{
    if (!sources.empty()) {
        queue_.Take(sources);
        ShowRows();
        ShowState();
        QTimer::singleShot(0, this, &AddManyDialog::Start);
    }
    exec();
}

void AddManyDialog::Take(const std::vector<Path>& given)
{
    if (session_.running.operations > 0 || given.empty())
        return;
    {
        const Operation operation{session_};
        progress_.Begin();
        queue_.Take(SourcesOfLevels(given, [this] { return progress_.Step(); }));
        progress_.End();
    }
    ShowRows();
    ShowState();
    (start_->isEnabled() ? start_ : close_)->setFocus();
}

void AddManyDialog::Start()
{
    if (session_.running.operations > 0 || queue_.Count(QueueState::Waiting) == 0)
        return;
    {
        const Operation operation{session_};
        running_ = true;
        ShowState();
        progress_.Begin();
        const Compile compile =
            session_.preferences.noAutoCompile ? Compile::Never : Compile::WhereMissing;
        queue_.Run(
            progress_, [&](LevelDraft& draft) { draft.compile = compile; },
            [this](std::size_t index) { ShowItem(index); });
        progress_.End();
        running_ = false;
    }
    info_->clear();
    ShowRows();
    ShowState();
    close_->setFocus();
}

void AddManyDialog::Retry()
{
    const auto selected = Selected();
    if (session_.running.operations > 0 || !selected || !MayRetry())
        return;
    if (const auto code = addAlone_(queue_.Items()[*selected].source, this))
        queue_.NoteAdded(*selected, *code);
    ShowRows();
    ShowState();
}

void AddManyDialog::FillRow(QTreeWidgetItem& row, const QueueItem& item) const
{
    const bool ended = !running_ && queue_.End() != QueueEnd::None;
    row.setText(sourceColumn, ToQt(TextOf(item.source.filename())));
    row.setToolTip(sourceColumn, PlainTip(ToQt(TextOf(item.source))));
    row.setText(stateColumn, ToQt(StateText(item.state, ended)));
    const QString outcome = ToQt(OutcomeText(item));
    row.setText(outcomeColumn, outcome);
    const QString more = ToQt(item.details);
    const QString tip = more.isEmpty() || more == outcome ? outcome : outcome + '\n' + more;
    // A rich text would let a file's name draw what it likes.
    row.setToolTip(outcomeColumn, PlainTip(tip));
}

void AddManyDialog::ShowItem(std::size_t index)
{
    const QueueItem& item = queue_.Items()[index];
    if (item.state == QueueState::UnderWay) {
        const std::string all = std::to_string(queue_.Items().size());
        count_->setText(Words(Msg::ManyAt, {std::to_string(index + 1), all}));
        name_->setText(ToQt(TextOf(item.source.filename())));
        list_->setCurrentItem(rows_[index]);
    }
    FillRow(*rows_[index], item);
    list_->scrollToItem(rows_[index]);
}

void AddManyDialog::ShowRows()
{
    const auto selected = Selected();
    const std::vector<QueueItem>& items = queue_.Items();
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (queue_.End() != QueueEnd::None)
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return RankOf(items[a].state) < RankOf(items[b].state);
        });
    list_->clear();
    rows_.assign(items.size(), nullptr);
    QList<QTreeWidgetItem*> rows;
    rows.reserve(static_cast<qsizetype>(items.size()));
    for (const std::size_t index : order) {
        auto* row = new QTreeWidgetItem;
        row->setData(sourceColumn, Qt::UserRole, static_cast<qulonglong>(index));
        FillRow(*row, items[index]);
        rows_[index] = row;
        rows.append(row);
    }
    list_->addTopLevelItems(rows);
    if (!running_ && !rows.isEmpty())
        list_->setCurrentItem(selected && queue_.End() == QueueEnd::None ? rows_[*selected]
                                                                         : rows.constFirst());
    hint_->setVisible(rows.isEmpty());
}

void AddManyDialog::ShowState()
{
    const bool ended = queue_.End() != QueueEnd::None;
    const std::size_t waiting = queue_.Count(QueueState::Waiting);
    if (!running_)
        count_->setText(ended          ? ToQt(CountsText(queue_))
                        : waiting == 0 ? QString()
                                       : Words(Msg::ManyReady, {std::to_string(waiting)}));
    name_->setVisible(running_);
    begin_->setVisible(!running_ && !ended);
    end_->setText(running_ ? QString() : ToQt(EndText(queue_.End())));
    end_->setVisible(!end_->text().isEmpty());
    for (QPushButton* button : {addFile_, addFolder_})
        button->setVisible(!ended && !running_);
    start_->setVisible(!running_ && (!ended || waiting > 0));
    start_->setEnabled(waiting > 0);
    for (QPushButton* button : {retry_, copy_})
        button->setVisible(ended && !running_);
    retry_->setEnabled(MayRetry());
    close_->setEnabled(!running_);
}

std::optional<std::size_t> AddManyDialog::Selected() const
{
    const QTreeWidgetItem* row = list_->currentItem();
    if (row == nullptr)
        return {};
    return static_cast<std::size_t>(row->data(sourceColumn, Qt::UserRole).toULongLong());
}

bool AddManyDialog::MayRetry() const
{
    const auto selected = Selected();
    return selected && !running_ && queue_.End() != QueueEnd::None &&
           queue_.Items()[*selected].state != QueueState::Added;
}

void AddManyDialog::reject()
{
    if (session_.running.operations == 0)
        QDialog::reject();
}

void AddManyDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.running.operations == 0 && queue_.End() == QueueEnd::None &&
        !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void AddManyDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged it must not wait for the work.
    QTimer::singleShot(0, this, [this, paths = DraggedPaths(*event->mimeData())] { Take(paths); });
}

} // namespace kestrova
