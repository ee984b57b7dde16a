// Every window for whoever walks it from outside, as a screen reader does: tests/e2e/access_all.py.
#include "ui/every_window.h"

#include <QAccessible>
#include <QEventLoop>
#include <QKeyEvent>
#include <QSocketNotifier>

#include <iostream>

namespace kestrova::testing
{

namespace
{

constexpr int walkerPatienceMs = 120000;

/// Straight to what has the keyboard: an application that is listened to asks the listeners first
/// whether a key is theirs, and goes on some time later.
void PressTab(QWidget& window)
{
    QWidget* const at = window.focusWidget();
    QKeyEvent tab{QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier};
    static_cast<QObject*>(at != nullptr ? at : &window)->event(&tab);
}

/// Does what one letter after the other says, `t`: press Tab, `b`: nothing, and answers by a change
/// of the window's description, which comes after all that is told of the keyboard. `n` ends it.
void LetBeWalked(QWidget& window)
{
    QEventLoop loop;
    QSocketNotifier asked{0, QSocketNotifier::Read};
    QObject::connect(&asked, &QSocketNotifier::activated, &loop, [&] {
        const int letter = std::cin.get();
        if (letter != 't' && letter != 'b')
            return loop.quit();
        if (letter == 't')
            PressTab(window);
        QAccessibleEvent answer{&window, QAccessible::DescriptionChanged};
        QAccessible::updateAccessibility(&answer);
    });
    loop.exec();
}

} // namespace

TEST(EveryWindow, IsThereForAWalkFromOutside)
{
    if (!qEnvironmentVariableIsSet("KESTROVA_WALK"))
        GTEST_SKIP() << "nobody says by KESTROVA_WALK that he is there";
    EveryWindow windows;
    windows.Each([](QWidget& window, const std::string& page) {
        window.activateWindow(); // nobody manages windows here
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window, walkerPatienceMs)) << page;
        std::cout << "window " << page << std::endl;
        LetBeWalked(window);
    });
}

} // namespace kestrova::testing
