#include "ui/main/command_looks.h"

#include "app/command_table.h"
#include "ui/widgets/drawn_shapes.h"
#include "window_world.h"

#include <QAccessible>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace kestrova::testing
{

namespace
{

/// What a screen reader says of it.
QString NameHeard(QWidget& control)
{
    return QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Name);
}

TEST(CommandLooks, AreOfCommandsThatAreThereAndStayInTheirSquare)
{
    for (const CommandLook& look : CommandLooks()) {
        EXPECT_NE(FindControl(look.name), nullptr) << look.name;
        if (!look.drawing)
            continue;
        const DrawnShape& shape = ShapeOf(*look.drawing);
        EXPECT_FALSE(shape.path.isEmpty()) << look.name;
        EXPECT_TRUE(QRectF(1, 1, 14, 14).contains(shape.path.boundingRect())) << look.name;
    }
    for (const std::string_view name : ButtonsAtHand())
        EXPECT_TRUE(name.empty() || LookOf(name).drawing) << name;
}

TEST(CommandLooks, LinesPartCommandsAndStandNowhereElse)
{
    WindowWorld world;
    int lines = 0;
    for (const QMenu* menu : world.window.menuBar()->findChildren<QMenu*>()) {
        const QList<QAction*> items = menu->actions();
        ASSERT_FALSE(items.isEmpty());
        EXPECT_FALSE(items.front()->isSeparator() || items.back()->isSeparator());
        for (qsizetype i = 1; i < items.size(); ++i) {
            lines += items[i]->isSeparator() ? 1 : 0;
            EXPECT_FALSE(items[i]->isSeparator() && items[i - 1]->isSeparator());
        }
    }
    EXPECT_GT(lines, 5);
}

TEST(CommandLooks, ButtonsAreTheCommandsOfTheMenuAndStay)
{
    WindowWorld world;
    world.Show();
    auto* bar = world.Find<QToolBar>("Bar_Tools");
    for (const std::string_view name : ButtonsAtHand()) {
        if (name.empty())
            continue;
        auto* action = world.Find<QAction>(std::string{name}.c_str());
        auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
        ASSERT_NE(button, nullptr) << name;
        EXPECT_FALSE(button->icon().isNull()) << name;
        EXPECT_FALSE(button->toolTip().isEmpty() || NameHeard(*button).isEmpty()) << name;
    }
    QTest::mouseClick(bar, Qt::RightButton, {}, bar->rect().center());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(bar->isVisible());
}

TEST(CommandLooks, PicturesAreSeenInLightAndDark)
{
    const QPalette before = QApplication::palette();
    for (const QColor paper : {QColor(Qt::white), QColor(32, 32, 32)}) {
        QPalette palette;
        palette.setColor(QPalette::ButtonText, paper.lightness() > 128 ? Qt::black : Qt::white);
        QApplication::setPalette(palette);
        for (const CommandLook& look : CommandLooks()) {
            if (!look.drawing)
                continue;
            QImage seen = DrawnIcon(*look.drawing).pixmap(16, 16).toImage();
            int marks = 0;
            for (int y = 0; y < seen.height(); ++y)
                for (int x = 0; x < seen.width(); ++x)
                    marks += seen.pixelColor(x, y).alpha() > 128 &&
                                     std::abs(seen.pixelColor(x, y).lightness() -
                                              paper.lightness()) > 100
                                 ? 1
                                 : 0;
            EXPECT_GT(marks, 12) << look.name;
        }
    }
    QApplication::setPalette(before);
}

} // namespace

} // namespace kestrova::testing
