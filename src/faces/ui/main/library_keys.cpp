#include "ui/main/library_keys.h"

#include "ui/main/level_list_pane.h"

#include <QShortcut>

namespace kestrova
{

void AddLibraryKeys(QWidget& window, LevelListPane& levels)
{
    const auto key = [&](const QKeySequence& sequence, auto work) {
        QObject::connect(new QShortcut(sequence, &window), &QShortcut::activated, &levels, work);
    };
    key(Qt::CTRL | Qt::Key_F, [&levels] { levels.FocusSearch(); });
    key(Qt::Key_F3, [&levels] { levels.SearchOn(1); });
    key(Qt::SHIFT | Qt::Key_F3, [&levels] { levels.SearchOn(-1); });
    key(Qt::CTRL | Qt::Key_1, [&levels] { levels.SetLook(LibraryLook::Rows); });
    key(Qt::CTRL | Qt::Key_2, [&levels] { levels.SetLook(LibraryLook::Covers); });
}

} // namespace kestrova
