#pragma once

#include "words/message.h"

#include <QStringList>

class QAbstractItemModel;
class QAbstractItemView;
class QLabel;
class QTreeView;
class QTreeWidget;

/// What lists of several windows have alike.
namespace kestrova
{

/// Puts a hint into the list's own room, so that it does not change the list's size.
void PutHint(QAbstractItemView& list, QLabel& hint);

/// A list whose rows are chosen whole.
void MakeRowList(QTreeView& list);
/// The same for the rows of a model, with a hint where there are none. `spoken`: what a screen
/// reader says.
void MakeTable(QTreeView& list, const char* name, Message spoken, QAbstractItemModel& model,
               QLabel& hint);

/// Rows become as high as that column's sentences need in its width. Only rows that are seen are
/// measured.
void WrapWords(QTreeView& list, int column);

/// The columns of a list of files.
constexpr int fileNameColumn = 0;
constexpr int fileSizeColumn = 1;
/// A list of files with their sizes. `name` is what a screen reader says.
void MakeFileList(QTreeWidget& files, Message name, const QStringList& headings);

} // namespace kestrova
