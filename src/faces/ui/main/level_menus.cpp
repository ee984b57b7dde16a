#include "ui/main/level_menus.h"

#include "app/command_table.h"
#include "ui/main/window_commands.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/qt_text.h"

#include <QMenu>

#include <algorithm>

namespace kestrova
{

namespace
{

void FillSeveral(QMenu& menu, const Invoke& several)
{
    menu.setObjectName(QStringLiteral("mnu_OnLevels"));
    std::vector<const CommandRow*> rows;
    for (const CommandRow& row : CommandTable())
        if (row.several.question != Message{})
            rows.push_back(&row);
    // That which takes levels away stands last, far from what a slip would hit.
    std::stable_partition(rows.begin(), rows.end(), [](const CommandRow* row) {
        return row->window.control != removeCommand;
    });
    for (const CommandRow* row : rows)
        QObject::connect(menu.addAction(Words(row->several.caption)), &QAction::triggered, &menu,
                         [several, row] { several(*row); });
}

} // namespace

void FillChosenMenu(QMenu& menu, std::size_t chosen, const Invoke& one, const Invoke& several)
{
    if (chosen > 1)
        FillSeveral(menu, several);
    else
        FillLevelMenu(menu, one);
    GiveLetters(menu);
}

} // namespace kestrova
