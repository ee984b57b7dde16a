#include "ui/widgets/list_parts.h"

#include "ui/widgets/qt_text.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrova
{

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
