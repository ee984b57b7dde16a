#include "ui/widgets/list_parts.h"

#include "ui/widgets/qt_text.h"

#include <QHeaderView>
#include <QLabel>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

namespace
{

/// QTreeView asks for the size of an item without saying how wide its column is, and keeps the
/// heights that it was told when the column is made wider or narrower.
class WrappedWords : public QStyledItemDelegate
{
public:
    WrappedWords(QTreeView& list, int column) : QStyledItemDelegate(&list), list_(list)
    {
        again_.setSingleShot(true);
        connect(&again_, &QTimer::timeout, &list, &QTreeView::doItemsLayout);
        connect(list.header(), &QHeaderView::sectionResized, this,
                [this, column](int resized, int before, int now) {
                    if (resized == column && before != now)
                        again_.start();
                });
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        QStyleOptionViewItem wide = option;
        wide.rect = QRect(0, 0, list_.columnWidth(index.column()), 1);
        return QStyledItemDelegate::sizeHint(wide, index);
    }

private:
    QTreeView& list_;
    QTimer again_;
};

} // namespace

void PutHint(QAbstractItemView& list, QLabel& hint)
{
    (new QVBoxLayout(list.viewport()))->addWidget(&hint);
    hint.setObjectName(QStringLiteral("Label_Hint"));
    hint.setAttribute(Qt::WA_TransparentForMouseEvents);
    hint.setTextFormat(Qt::PlainText);
    hint.setWordWrap(true);
    hint.setAlignment(Qt::AlignCenter);
    hint.setForegroundRole(QPalette::PlaceholderText);
}

void MakeRowList(QTreeView& list)
{
    list.setRootIsDecorated(false);
    list.setUniformRowHeights(true);
    list.setAllColumnsShowFocus(true);
    list.setAlternatingRowColors(true);
}

void MakeTable(QTreeView& list, const char* name, Message spoken, QAbstractItemModel& model,
               QLabel& hint)
{
    list.setObjectName(QString::fromLatin1(name));
    list.setAccessibleName(Words(spoken));
    list.setModel(&model);
    MakeRowList(list);
    list.setTextElideMode(Qt::ElideMiddle);
    PutHint(list, hint);
}

void WrapWords(QTreeView& list, int column)
{
    list.setWordWrap(true);
    list.setUniformRowHeights(false);
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerItem); // by pixels all are measured
    list.setItemDelegateForColumn(column, new WrappedWords(list, column));
}

void MakeFileList(QTreeWidget& files, Message name, const QStringList& headings)
{
    files.setObjectName(QStringLiteral("List_Files"));
    files.setAccessibleName(Words(name));
    files.setColumnCount(2);
    files.setHeaderLabels(headings);
    files.setRootIsDecorated(false);
    files.setUniformRowHeights(true);
    files.setTextElideMode(Qt::ElideMiddle);
    files.header()->setStretchLastSection(false);
    files.header()->setSectionResizeMode(fileNameColumn, QHeaderView::Stretch);
    files.header()->setSectionResizeMode(fileSizeColumn, QHeaderView::ResizeToContents);
}

} // namespace kestrova
