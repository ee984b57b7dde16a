#include "ui/main/level_log_page.h"

#include "library/level_events.h"
#include "ui/widgets/qt_text.h"
#include "words/captions.h"
#include "words/level_events.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

enum LogColumn { whenColumn, whatColumn };

} // namespace

LevelLogPage::LevelLogPage(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), empty_(new QLabel(this)), list_(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("Page_Log"));
    empty_->setObjectName(QStringLiteral("Label_NoLog"));
    empty_->setTextFormat(Qt::PlainText);
    empty_->setWordWrap(true);
    empty_->setText(Words(Msg::EventsNone, {std::string{Trim(GetMsg(Msg::SettingsLogFiles))}}));
    empty_->hide();
    list_->setObjectName(QStringLiteral("List_Log"));
    list_->setAccessibleName(Words(Msg::EventsListName));
    list_->setUniformRowHeights(true);
    list_->setHeaderLabels({Words(Msg::EventsWhen), Words(Msg::EventsWhat)});
    list_->header()->setSectionResizeMode(whenColumn, QHeaderView::ResizeToContents);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(empty_);
    column->addWidget(list_, 1);
    connect(list_, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem* item) { ReadLines(*item); });
}

void LevelLogPage::ShowLevel(LevelCode code, const LevelNote& note)
{
    code_ = code;
    note_ = note;
    read_ = false;
    if (isVisible())
        Read();
}

void LevelLogPage::ShowNothing()
{
    code_.reset();
    read_ = true;
    list_->clear();
    empty_->hide();
}

void LevelLogPage::showEvent(QShowEvent* event)
{
    if (!read_)
        Read();
    QWidget::showEvent(event);
}

void LevelLogPage::Read()
{
    read_ = true;
    list_->clear();
    const Folders folders = session_.Folders();
    QList<QTreeWidgetItem*> rows;
    for (const LevelEvent& event : EventsOf(folders, session_.archive, *code_, note_)) {
        auto* row = new QTreeWidgetItem({MomentText(event.whenNs), ToQt(event.words)});
        row->setToolTip(whatColumn, PlainTip(ToQt(event.words)));
        row->setData(whatColumn, Qt::UserRole, PathToQt(event.log));
        if (!event.log.empty())
            row->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
        rows.append(row);
    }
    empty_->setVisible(rows.isEmpty());
    list_->addTopLevelItems(rows);
}

void LevelLogPage::ReadLines(QTreeWidgetItem& item)
{
    const Path log = PathFromQt(item.data(whatColumn, Qt::UserRole).toString());
    if (log.empty() || item.childCount() > 0 || !code_)
        return;
    const auto add = [&](const QString& words) {
        auto* line = new QTreeWidgetItem(&item, {QString(), words});
        line->setToolTip(whatColumn, PlainTip(words));
    };
    const auto found = LinesOfLog(session_.Folders(), *code_, log);
    if (!found)
        return add(Words(Msg::EventsLogNotRead, {found.Error().reason}));
    for (const std::string& line : found->lines)
        add(ToQt(line));
    if (found->leftOut > 0)
        add(Words(Msg::EventsLeftOut, {std::to_string(found->leftOut)}));
}

} // namespace kestrova
