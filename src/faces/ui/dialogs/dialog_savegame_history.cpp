#include "ui/dialogs/dialog_savegame_history.h"

#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/originals_page.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/app.h"
#include "words/menus.h"
#include "words/ui_dialogs.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

constexpr QSize historySize{820, 460};

enum Column { kept, file, number, title, saved, reason };

} // namespace

SavegameHistoryDialog::SavegameHistoryDialog(Session& session, LevelCode code, QWidget* parent)
    : QDialog(parent), session_(session), rules_(session, code), list_(new QTreeWidget(this)),
      bringBack_(NamedButton(this, "Pul_BringBack")), delete_(NamedButton(this, "Pul_DeleteKept"))
{
    setObjectName(QStringLiteral("Dialog_SavegameHistory"));
    const bool empty = rules_.Entries().empty();
    auto* words = new QLabel(
        empty ? Words(Msg::HistoryEmpty) : Words(Msg::HistoryOfLevel, {rules_.LevelName()}), this);
    words->setObjectName(QStringLiteral("Label_Ask"));
    words->setTextFormat(Qt::PlainText);
    words->setWordWrap(true);
    list_->setObjectName(QStringLiteral("List_History"));
    MakeRowList(*list_);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setHeaderLabels({Words(Msg::HistoryColumnKept), Words(Msg::HistoryColumnFile),
                            Words(Msg::HistoryColumnNumber), Words(Msg::HistoryColumnTitle),
                            Words(Msg::HistoryColumnTime), Words(Msg::HistoryColumnReason)});
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(title, QHeaderView::Stretch);
    list_->setAccessibleName(Words(Msg::HistoryTitle));
    auto* close = NamedButton(this, "Pul_Cancel");
    bringBack_->setDefault(true);
    connect(close, &QPushButton::clicked, this, &SavegameHistoryDialog::reject);
    delete_->setAutoDefault(false);
    connect(delete_, &QPushButton::clicked, this, &SavegameHistoryDialog::Delete);
    connect(bringBack_, &QPushButton::clicked, this, &SavegameHistoryDialog::BringBack);
    connect(list_, &QTreeWidget::itemActivated, this, &SavegameHistoryDialog::BringBack);
    connect(list_, &QTreeWidget::itemSelectionChanged, this, [this] {
        const auto chosen = list_->selectedItems().size();
        bringBack_->setEnabled(chosen == 1);
        delete_->setEnabled(chosen > 0);
    });

    auto* savegames = new QWidget(this);
    auto* page = new QVBoxLayout(savegames);
    page->addWidget(words);
    page->addWidget(list_, 1);
    auto* actions = new QHBoxLayout;
    actions->addWidget(delete_);
    actions->addStretch();
    actions->addWidget(bringBack_);
    page->addLayout(actions);
    auto* tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("Tabs_History"));
    tabs->addTab(savegames, Words(Msg::MenuSaveGames));
    tabs->addTab(new OriginalsPage(session, tabs), Words(Msg::LevelEditorsFolder));
    auto* column = new QVBoxLayout(this);
    column->addWidget(tabs, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(close);
    column->addLayout(buttons);
    SetCaptions(*this);
    ResizeToFit(*this, historySize);
    Fill();
    list_->setFocus();
}

void SavegameHistoryDialog::Fill()
{
    for (QPushButton* button : {bringBack_, delete_})
        button->setEnabled(false);
    list_->clear();
    QList<QTreeWidgetItem*> items;
    for (const HistoryEntry& entry : rules_.Entries()) {
        auto* item = new QTreeWidgetItem;
        item->setText(kept, MomentText(entry.keptNs));
        item->setText(file, ToQt(entry.name));
        // A note or a picture has no number.
        item->setText(number, entry.title.empty() && entry.number == 0
                                  ? QString()
                                  : QString::number(entry.number));
        item->setTextAlignment(number, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(title, ToQt(entry.title));
        item->setToolTip(title, PlainTip(item->text(title)));
        item->setText(saved, MomentText(entry.modifiedNs));
        item->setText(reason, ToQt(ShownAsSpoken(entry.reason)));
        item->setData(kept, Qt::UserRole, ToQt(entry.id));
        items.append(item);
    }
    list_->addTopLevelItems(items);
    for (const int narrow : {kept, file, number, saved, reason})
        list_->resizeColumnToContents(narrow);
    list_->setCurrentItem(items.isEmpty() ? nullptr : items.constFirst());
}

void SavegameHistoryDialog::BringBack()
{
    const auto chosen = list_->selectedItems();
    if (chosen.size() != 1 || session_.running.operations > 0)
        return;
    rules_.BringBack(FromQt(chosen.constFirst()->data(kept, Qt::UserRole).toString()));
}

void SavegameHistoryDialog::Delete()
{
    std::vector<std::string> ids;
    for (const QTreeWidgetItem* item : list_->selectedItems())
        ids.push_back(FromQt(item->data(kept, Qt::UserRole).toString()));
    if (ids.empty() || session_.running.operations > 0)
        return;
    if (rules_.Delete(ids))
        Fill();
}

} // namespace kestrova
