#include "ui/main/main_menu.h"

#include "app/command_table.h"
#include "ui/main/command_looks.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/qt_text.h"

#include <QMenu>
#include <algorithm>
#include <set>
#include <vector>

namespace kestrova
{

namespace
{

/// What stands in one menu, in its order: the names of commands and of menus inside of it.
using Order = std::vector<std::string_view>;

QString Name(std::string_view name)
{
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

const MenuRow* FindMenu(std::string_view name)
{
    for (const MenuRow& menu : MenuTable())
        if (menu.name == name)
            return &menu;
    return nullptr;
}

/// A name, and the one that it wants to stand behind.
struct Wish {
    std::string_view name;
    std::string_view behind;
};

std::vector<Wish> WishesFor(std::string_view menu)
{
    std::vector<Wish> wishes;
    for (const MenuRow& inner : MenuTable())
        if (inner.menu == menu)
            wishes.push_back({inner.name, inner.behind});
    for (const CommandRow& row : CommandTable())
        if (!row.window.control.empty() && row.window.menu == menu)
            wishes.push_back({row.window.control, row.window.behind});
    return wishes;
}

/// Rows stand in their order, but for those that want to stand behind a certain one.
Order OrderOf(std::string_view menu)
{
    Order order;
    std::vector<Wish> waiting;
    for (const Wish& wish : WishesFor(menu)) {
        if (wish.behind.empty())
            order.push_back(wish.name);
        else
            waiting.push_back(wish);
    }
    for (std::size_t rounds = waiting.size(); rounds > 0 && !waiting.empty(); --rounds)
        std::erase_if(waiting, [&](const Wish& wish) {
            const auto place = std::find(order.begin(), order.end(), wish.behind);
            if (place == order.end())
                return false;
            order.insert(place + 1, wish.name);
            return true;
        });
    return order;
}

/// A caption with names in it, which may be long.
QString WithNames(const std::string& caption, const QWidget& window)
{
    constexpr int widest = 420;
    return window.fontMetrics().elidedText(ToQt(caption), Qt::ElideRight, widest);
}

QAction* AddCommand(QMenu& menu, const CommandRow& row, std::string_view name, const Invoke& invoke)
{
    QAction* action = menu.addAction(Words(row.window.caption));
    action->setObjectName(Name(name));
    if (row.window.shown != nullptr)
        SetMenuText(*action, action->text());
    if (const auto drawing = LookOf(name).drawing)
        action->setIcon(DrawnIcon(*drawing));
    // Roles would move commands to other menus on some desktops.
    action->setMenuRole(QAction::NoRole);
    QObject::connect(action, &QAction::triggered, &menu, [invoke, &row] { invoke(row); });
    return action;
}

void FillMenu(QMenu& menu, std::string_view name, const Invoke& invoke)
{
    menu.setObjectName(Name(name));
    menu.setToolTipsVisible(true);
    for (const std::string_view item : OrderOf(name)) {
        if (LookOf(item).line)
            menu.addSeparator();
        if (const MenuRow* inner = FindMenu(item)) {
            FillMenu(*menu.addMenu(Words(inner->caption)), inner->name, invoke);
            continue;
        }
        const CommandRow& row = *FindControl(item);
        AddCommand(menu, row, item, invoke)
            ->setShortcuts(QKeySequence::listFromString(Name(row.window.keys)));
    }
}

} // namespace

void BuildMenu(QMenuBar& bar, const Invoke& invoke)
{
    for (const MenuRow& menu : MenuTable())
        if (menu.menu.empty())
            FillMenu(*bar.addMenu(Words(menu.caption)), menu.name, invoke);
}

void FillLevelMenu(QMenu& menu, const Invoke& invoke)
{
    menu.setObjectName(QStringLiteral("mnu_OnLevel"));
    std::vector<const CommandRow*> rows;
    for (const CommandRow& row : CommandTable())
        if (row.window.onLevel > 0)
            rows.push_back(&row);
    std::stable_sort(rows.begin(), rows.end(), [](const CommandRow* one, const CommandRow* other) {
        return one->window.onLevel < other->window.onLevel;
    });
    for (const CommandRow* row : rows)
        AddCommand(menu, *row,
                   row->window.control.empty() ? row->window.button : row->window.control, invoke);
    if (!rows.empty())
        menu.setDefaultAction(menu.actions().front());
}

void ShowMenuNow(const QWidget& window, const Session& session)
{
    std::set<const QMenu*> menus;
    for (const CommandRow& row : CommandTable()) {
        if (row.window.shown == nullptr)
            continue;
        auto* action = window.findChild<QAction*>(Name(row.window.control));
        if (action == nullptr)
            continue;
        const ShownNow now = row.window.shown(session);
        SetMenuText(*action, WithNames(now.caption, window));
        action->setEnabled(now.enabled);
        if (const auto* menu = qobject_cast<QMenu*>(action->parent()))
            menus.insert(menu);
    }
    for (const QMenu* menu : menus)
        GiveLetters(*menu);
}

QStringList MenuCommands()
{
    QStringList names;
    for (const CommandRow& row : CommandTable())
        if (!row.window.control.empty())
            names.append(Name(row.window.control));
    return names;
}

} // namespace kestrova
