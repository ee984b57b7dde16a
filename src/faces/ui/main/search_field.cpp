#include "ui/main/search_field.h"

#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace kestrova
{

SearchField::SearchField(QWidget& list, QWidget* parent) : QLineEdit(parent), list_(list)
{
    setObjectName(QStringLiteral("Text_Search"));
    setPlaceholderText(Words(Msg::SearchHint));
    setAccessibleName(Words(Msg::SearchName));
    setClearButtonEnabled(true);
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        clear();
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(&list_, event);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace kestrova
