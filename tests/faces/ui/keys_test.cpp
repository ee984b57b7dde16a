// What the keyboard reaches in every window: one letter or key, one meaning.
#include "ui/every_window.h"
#include "world/speaking.h"

#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <map>

namespace kestrova::testing
{
namespace
{

/// A page of a window that shows one at a time, and not this one now.
bool IsElsewhere(const QWidget& control)
{
    for (const QWidget* at = &control; at != nullptr; at = at->parentWidget()) {
        const auto* stack = qobject_cast<const QStackedWidget*>(at->parentWidget());
        if (stack != nullptr && stack->currentWidget() != at &&
            qobject_cast<const QTabWidget*>(stack->parentWidget()) == nullptr)
            return true;
    }
    return false;
}

/// Each key of a window with what it does there.
std::multimap<std::string, std::string> KeysOf(const QWidget& window)
{
    std::multimap<std::string, std::string> keys;
    const auto add = [&](const QKeySequence& key, const QString& meaning) {
        if (!key.isEmpty())
            keys.emplace(FromQt(key.toString()), FromQt(meaning));
    };
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (IsElsewhere(*button))
            continue;
        add(button->shortcut(), button->objectName());
        if (button->shortcut() != QKeySequence::mnemonic(button->text()))
            add(QKeySequence::mnemonic(button->text()), button->objectName());
    }
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->buddy() != nullptr)
            add(QKeySequence::mnemonic(label->text()), label->objectName());
    for (const auto* box : window.findChildren<QGroupBox*>())
        add(QKeySequence::mnemonic(box->title()), box->objectName());
    for (const auto* bar : window.findChildren<QTabBar*>())
        for (int i = 0; i < bar->count(); ++i)
            add(QKeySequence::mnemonic(bar->tabText(i)), bar->tabText(i));
    for (const auto* bar : window.findChildren<QMenuBar*>())
        for (const QAction* menu : bar->actions())
            add(QKeySequence::mnemonic(menu->text()), menu->text());
    for (const auto* action : window.findChildren<QAction*>())
        for (const QKeySequence& key : action->shortcuts())
            add(key, action->objectName());
    for (const auto* shortcut : window.findChildren<QShortcut*>())
        if (shortcut->context() != Qt::WidgetShortcut) // which is that control's own
            add(shortcut->key(), QStringLiteral("a shortcut"));
    return keys;
}

void ExpectOneMeaningEach(const QWidget& window)
{
    const auto keys = KeysOf(window);
    for (auto key = keys.begin(); key != keys.end(); key = keys.upper_bound(key->first)) {
        std::string meanings;
        const auto [first, last] = keys.equal_range(key->first);
        for (auto one = first; one != last; ++one)
            meanings += " " + one->second;
        EXPECT_EQ(keys.count(key->first), 1U)
            << FromQt(window.objectName()) << ": " << key->first << meanings;
    }
    // A window with more buttons than letters leaves the last ones without.
    const auto hasFreeLetter = [&](const QString& words) {
        return std::any_of(words.begin(), words.end(), [&](QChar letter) {
            const auto key = static_cast<Qt::Key>(letter.toUpper().unicode());
            const QKeySequence reaches{QKeyCombination{Qt::AltModifier, key}};
            return letter.isLetterOrNumber() && !keys.contains(FromQt(reaches.toString()));
        });
    };
    for (const auto* button : window.findChildren<QAbstractButton*>())
        EXPECT_TRUE(IsElsewhere(*button) || !hasFreeLetter(button->text()) ||
                    !button->objectName().startsWith(QLatin1String("Pul_")) ||
                    button->text().isEmpty() || button->property("pictured").toBool() ||
                    !QKeySequence::mnemonic(button->text()).isEmpty())
            << FromQt(window.objectName()) << ": no letter for " << FromQt(button->objectName());
}

} // namespace

class KeysIn : public InEachLanguage
{
};
INSTANTIATE_TEST_SUITE_P(Languages, KeysIn, eachLanguage, NameOfLanguage);

TEST_P(KeysIn, EachHasOneMeaningInEveryWindow)
{
    EveryWindow windows;
    windows.Each([](QWidget& window, const std::string& page) {
        SCOPED_TRACE(page);
        ExpectOneMeaningEach(window);
    });
}

TEST_P(KeysIn, EveryCommandOfAMenuHasALetterOfItsOwn)
{
    WindowWorld world;
    for (const auto* menu : world.window.findChildren<QMenu*>()) {
        QSet<QChar> letters;
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            const qsizetype mark = action->text().indexOf(QLatin1Char('&'));
            ASSERT_GE(mark, 0) << FromQt(action->text());
            const QChar letter = action->text()[mark + 1].toLower();
            EXPECT_FALSE(letters.contains(letter)) << FromQt(action->text());
            letters.insert(letter);
        }
    }
}

TEST(Keys, AltPOpensThePreferencesAndPlaysNothing)
{
    WindowWorld world;
    EXPECT_EQ(QKeySequence::mnemonic(world.Find<QMenu>("mnu_Pref")->title()),
              QKeySequence(Qt::ALT | Qt::Key_P));
    EXPECT_NE(world.Find<QPushButton>("Pul_Play")->shortcut(), QKeySequence(Qt::ALT | Qt::Key_P));
}

} // namespace kestrova::testing
