#include "ui/widgets/captions.h"

#include "ui/widgets/qt_text.h"
#include "words/add_many.h"
#include "words/assistant.h"
#include "words/captions.h"
#include "words/disc_windows.h"
#include "words/discs_window.h"
#include "words/first_start.h"
#include "words/help.h"
#include "words/installers.h"
#include "words/level_setup.h"
#include "words/menus.h"
#include "words/ui_desktop.h"
#include "words/ui_dialogs.h"
#include "words/ui_main.h"
#include "words/ui_shared.h"
#include "words/wads_window.h"
#include "words/wizard.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QStackedWidget>
#include <QTabWidget>

namespace kestrova
{

namespace
{

struct Caption {
    const char* window;
    const char* control;
    Message text;
};

constexpr Caption captions[] = {
#define KV_CAPTION(window, control, text) {window, control, Msg::text},
#include "words/captions.def"
#undef KV_CAPTION
};

/// An ampersand of the caption's own is doubled, since a single one marks the letter.
QString Escaped(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// Marks a letter that `taken` does not hold yet, the beginnings of words first.
QString WithLetter(const QString& caption, QSet<QChar>& taken)
{
    const QString text = Escaped(caption);
    for (const bool onlyBeginnings : {true, false})
        for (qsizetype place = 0; place < text.size(); ++place) {
            const QChar letter = text[place].toLower();
            const bool begins = place == 0 || !text[place - 1].isLetterOrNumber();
            if (!letter.isLetterOrNumber() || taken.contains(letter) || (onlyBeginnings && !begins))
                continue;
            taken.insert(letter);
            return QString{text}.insert(place, QLatin1Char('&'));
        }
    return text;
}

bool SetCaption(QWidget& window, const char* name, const QString& text)
{
    const QString control = QString::fromLatin1(name);
    if (window.objectName() == control) {
        window.setWindowTitle(text);
        return true;
    }
    if (auto* button = window.findChild<QAbstractButton*>(control)) {
        // A button that shows a picture says its words to those who ask.
        if (button->property("pictured").toBool())
            button->setToolTip(button->toolTip().isEmpty() ? text : button->toolTip());
        else
            button->setText(text);
        button->setAccessibleName(text);
        return true;
    }
    if (auto* label = window.findChild<QLabel*>(control)) {
        label->setText(text);
        return true;
    }
    if (auto* box = window.findChild<QGroupBox*>(control)) {
        box->setTitle(text);
        return true;
    }
    return false;
}

/// The page that a control stands on, of a window that shows one step at a time; null without such.
const QWidget* PageOf(const QWidget* control)
{
    for (; control != nullptr; control = control->parentWidget()) {
        const auto* stack = qobject_cast<const QStackedWidget*>(control->parentWidget());
        if (stack != nullptr && qobject_cast<const QTabWidget*>(stack->parentWidget()) == nullptr)
            return control;
    }
    return nullptr;
}

/// Menus choose first, then the buttons in the order of the table, in which a window's own stand
/// before those of its pages. Pages that are never shown together may use the same letters.
void GiveAllLetters(QWidget& window)
{
    QSet<QChar> taken;
    for (const auto* bar : window.findChildren<QMenuBar*>())
        for (QAction* menu : bar->actions()) {
            menu->setText(WithLetter(menu->text(), taken));
            GiveLetters(*menu->menu());
        }
    const std::string name = FromQt(window.objectName());
    QHash<const QWidget*, QSet<QChar>> onPages;
    for (const Caption& caption : captions) {
        if (name != caption.window)
            continue;
        auto* button = window.findChild<QAbstractButton*>(QString::fromLatin1(caption.control));
        if (button == nullptr || button->property("pictured").toBool())
            continue;
        const QWidget* page = PageOf(button);
        if (page != nullptr && !onPages.contains(page))
            onPages.insert(page, taken);
        QSet<QChar>& letters = page == nullptr ? taken : onPages[page];
        button->setText(WithLetter(Words(caption.text), letters));
    }
}

} // namespace

void GiveLetters(const QMenu& menu)
{
    QSet<QChar> taken;
    for (QAction* action : menu.actions()) {
        if (!action->text().isEmpty())
            action->setText(WithLetter(action->text(), taken));
        if (action->menu() != nullptr)
            GiveLetters(*action->menu());
    }
}

void SetCaptions(QWidget& window)
{
    const std::string name = FromQt(window.objectName());
    for (const Caption& caption : captions)
        if (name == caption.window)
            SetCaption(window, caption.control, Words(caption.text));
    GiveAllLetters(window);
}

QStringList CaptionFaults(const QWidget& window)
{
    QStringList faults;
    const std::string name = FromQt(window.objectName());
    QSet<QString> captioned;
    for (const Caption& caption : captions) {
        if (name != caption.window)
            continue;
        const QString control = QString::fromLatin1(caption.control);
        captioned.insert(control);
        if (control != window.objectName() && window.findChild<QObject*>(control) == nullptr)
            faults.append(control);
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        const QString& control = button->objectName();
        if (control.startsWith(QLatin1String("Pul_")) && button->accessibleName().isEmpty())
            faults.append(control);
    }
    return faults;
}

} // namespace kestrova
