#pragma once

#include "words/message.h"

#include <QStringList>

class QAbstractItemView;
class QLabel;
class QTreeWidget;

/// What lists of several windows have alike.
namespace kestrova
{

/// Puts a hint into the list's own room, so that it does not change the list's size.
void PutHint(QAbstractItemView& list, QLabel& hint);

/// The columns of a list of files.
constexpr int fileNameColumn = 0;
constexpr int fileSizeColumn = 1;
/// A list of files with their sizes. `name` is what a screen reader says.
void MakeFileList(QTreeWidget& files, Message name, const QStringList& headings);

} // namespace kestrova
