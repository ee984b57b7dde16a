#include "ui/dialogs/originals_page.h"

#include "core/size_words.h"
#include "originals/vault.h"
#include "session/telling.h"
#include "swap/kept_originals.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/list_parts.h"
#include "ui/widgets/qt_text.h"
#include "words/app.h"
#include "words/originals.h"
#include "words/ui_dialogs.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

enum OriginalsColumn { keptColumn, fileColumn, bytesColumn, savedColumn, folderColumn };

} // namespace

OriginalsPage::OriginalsPage(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), list_(new QTreeWidget(this)),
      bringBack_(NamedButton(this, "Pul_BringOriginalBack")),
      delete_(NamedButton(this, "Pul_DeleteOriginal"))
{
    setObjectName(QStringLiteral("Page_Originals"));
    list_->setObjectName(QStringLiteral("List_Originals"));
    MakeRowList(*list_);
    list_->setHeaderLabels({Words(Msg::HistoryColumnKept), Words(Msg::HistoryColumnFile),
                            Words(Msg::ColumnSize), Words(Msg::HistoryColumnTime),
                            Words(Msg::OriginalsColumnFolder)});
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->header()->setStretchLastSection(false);
    // The two that may be long share the room, so that none pushes the others out of sight.
    for (const int wide : {fileColumn, folderColumn})
        list_->header()->setSectionResizeMode(wide, QHeaderView::Stretch);
    list_->setAccessibleName(Words(Msg::LevelEditorsFolder));
    connect(bringBack_, &QPushButton::clicked, this, &OriginalsPage::BringBack);
    connect(delete_, &QPushButton::clicked, this, &OriginalsPage::Delete);
    connect(list_, &QTreeWidget::itemActivated, this, &OriginalsPage::BringBack);
    connect(list_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        for (QPushButton* button : {bringBack_, delete_})
            button->setEnabled(item != nullptr);
    });
    Fill();

    auto* words = new QLabel(this);
    words->setObjectName(QStringLiteral("Label_Originals"));
    words->setTextFormat(Qt::PlainText);
    words->setWordWrap(true);
    words->setText(
        Words(list_->topLevelItemCount() == 0 ? Msg::OriginalsNone : Msg::OriginalsWords));
    auto* column = new QVBoxLayout(this);
    column->addWidget(words);
    column->addWidget(list_, 1);
    auto* buttons = new QHBoxLayout;
    delete_->setAutoDefault(false);
    buttons->addWidget(delete_);
    buttons->addStretch();
    buttons->addWidget(bringBack_);
    column->addLayout(buttons);
}

void OriginalsPage::Fill()
{
    for (QPushButton* button : {bringBack_, delete_})
        button->setEnabled(false);
    list_->clear();
    const auto files = KeptFiles(session_.Folders());
    if (!files) {
        TellFailure(session_.host, GetMsg(Msg::OriginalsUnreadable), files.Error());
        return;
    }
    QList<QTreeWidgetItem*> items;
    for (const KeptFile& entry : *files) {
        auto* item = new QTreeWidgetItem;
        item->setText(keptColumn, MomentText(entry.keptNs));
        item->setText(fileColumn, ToQt(Readable(entry.file)));
        item->setText(bytesColumn, ToQt(SizeInWords(static_cast<double>(entry.size))));
        item->setTextAlignment(bytesColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(savedColumn, MomentText(entry.modifiedNs));
        item->setText(folderColumn, ToQt(Readable(entry.folder)));
        for (const int wide : {fileColumn, folderColumn})
            item->setToolTip(wide, PlainTip(item->text(wide)));
        item->setData(keptColumn, Qt::UserRole, ToQt(entry.id));
        items.prepend(item);
    }
    list_->addTopLevelItems(items);
    for (const int narrow : {keptColumn, bytesColumn, savedColumn})
        list_->resizeColumnToContents(narrow);
    list_->setCurrentItem(items.isEmpty() ? nullptr : items.constFirst());
}

void OriginalsPage::BringBack()
{
    const QTreeWidgetItem* item = list_->currentItem();
    if (item == nullptr || session_.running.operations > 0)
        return;
    if (BringOriginalBackTold(session_, FromQt(item->data(keptColumn, Qt::UserRole).toString())))
        Fill(); // what stood there may have been kept
}

void OriginalsPage::Delete()
{
    const QTreeWidgetItem* item = list_->currentItem();
    if (item == nullptr || session_.running.operations > 0)
        return;
    if (DeleteOriginalsTold(session_, {FromQt(item->data(keptColumn, Qt::UserRole).toString())}))
        Fill();
}

} // namespace kestrova
