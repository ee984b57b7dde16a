#include "ui/widgets/captions.h"

#include "ui/widgets/qt_text.h"
#include "ui/widgets/reading_order.h"
#include "words/add_many.h"
#include "words/assistant.h"
#include "words/captions.h"
#include "words/disc_windows.h"
#include "words/discs_window.h"
#include "words/first_start.h"
#include "words/help.h"
#include "words/installers.h"
#include "words/level_page.h"
#include "words/level_setup.h"
#include "words/library_window.h"
#include "words/menus.h"
#include "words/ui_desktop.h"
#include "words/ui_dialogs.h"
#include "words/ui_main.h"
#include "words/ui_shared.h"
#include "words/ui_widgets.h"
#include "words/wads_window.h"
#include "words/wizard.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QDialog>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
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

/// A control whose caption several of its window have: whose words a screen reader says behind it.
struct SpokenName {
    const char* window;
    const char* control;
    const char* of;
};
constexpr SpokenName spokenNames[] = {
    {"Principale", "Pul_Zoom1", "Image1"},
    {"Principale", "Pul_Zoom2", "Image2"},
    {"Dialog_Settings", "Pul_SfogliaPathTrle", "Label_TrleOf"},
    {"Dialog_Settings", "Pul_SfogliaNomeTomb", "Label_TombOf"},
    {"Dialog_Settings", "Pul_SfogliaTom2Pc", "Label_Tom2PcOf"},
    {"Dialog_Settings", "Pul_SfogliaLoadDir", "Label_LoadDirOf"},
    {"Dialog_Settings", "Spin_HistoryCount", "Frame_History"},
    {"Dialog_Settings", "Spin_HistorySize", "Frame_History"},
    {"Dialog_Settings", "Spin_UndoCount", "Frame_Undo"},
    {"Dialog_Settings", "Spin_UndoSize", "Frame_Undo"},
    {"Dialog_PrefArc", "Pul_SfogliaMainDir", "Label_MainOf"},
    {"Dialog_PrefArc", "Pul_SfogliaSecDir", "Label_SecondaryOf"},
    {"Dialog_CompareTrle", "Pul_SfogliaBefore", "Label_BeforeOf"},
    {"Dialog_CompareTrle", "Pul_SfogliaAfter", "Label_AfterOf"},
    {"Dialog_InstallaTrle", "Pul_SfogliaTarget", "Label_TargetOf"},
    {"Dialog_ConvertAudio", "Pul_SfogliaDirOut", "Frame_Target"},
    {"Dialog_Autore", "Pul_NewEmail", "Frame_Email"},
    {"Dialog_Autore", "Pul_ChangeEmail", "Frame_Email"},
    {"Dialog_Autore", "Pul_DelEmail", "Frame_Email"},
    {"Dialog_Autore", "Pul_New_Sito", "Frame_Sito"},
    {"Dialog_Autore", "Pul_ModSito", "Frame_Sito"},
    {"Dialog_Autore", "Pul_DelSito", "Frame_Sito"},
    {"Dialog_Wizard", "Pul_AddEmail", "Frame_Email"},
    {"Dialog_Wizard", "Pul_Email_Cambia", "Frame_Email"},
    {"Dialog_Wizard", "Pul_TogliEmail", "Frame_Email"},
    {"Dialog_Wizard", "Pul_AddSito", "Frame_Siti"},
    {"Dialog_Wizard", "Pul_Sito_Cambia", "Frame_Siti"},
    {"Dialog_Wizard", "Pul_TogliSito", "Frame_Siti"},
    {"Dialog_Wizard", "Pul_AddWads", "Frame_ImportWads"},
    {"Dialog_Wizard", "Pul_UpdateWads", "Frame_ImportWads"},
    {"Dialog_Wizard", "Pul_RemoveWads", "Frame_ImportWads"},
    {"Dialog_Wizard", "Pul_AddExternWav", "Frame_ExtWave"},
    {"Dialog_Wizard", "Pul_UpdateExtWave", "Frame_ExtWave"},
    {"Dialog_Wizard", "Pul_RimuoviWav", "Frame_ExtWave"},
};

/// What a menu's item says without its letter; whether that changes.
constexpr const char* plainText = "plain";
constexpr const char* changesText = "changes";

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

/// Blanks around a told caption would move it from where its neighbours begin.
bool SetCaption(QWidget& window, const char* name, const QString& told)
{
    const QString text = told.trimmed();
    const QString control = QString::fromLatin1(name);
    if (window.objectName() == control) {
        window.setWindowTitle(told);
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
        label->setText(told);
        return true;
    }
    if (auto* box = window.findChild<QGroupBox*>(control)) {
        box->setTitle(text);
        return true;
    }
    return false;
}

/// The words of a label, frame or button; of a line of text or a list those of its label or frame.
QString WordsOf(const QWidget& control)
{
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        return label->text().trimmed();
    if (const auto* frame = qobject_cast<const QGroupBox*>(&control))
        return frame->title().trimmed();
    if (!control.accessibleName().isEmpty())
        return control.accessibleName();
    for (const auto* label : control.window()->findChildren<QLabel*>())
        if (label->buddy() == &control)
            return label->text().trimmed();
    const auto* box = qobject_cast<const QGroupBox*>(control.parentWidget());
    return box == nullptr ? QString() : box->title().trimmed();
}

/// Without the marks at a caption's end.
QString Spoken(QString words)
{
    while (!words.isEmpty() && !words.back().isLetterOrNumber() && words.back() != QLatin1Char(')'))
        words.chop(1);
    return words;
}

/// What a screen reader says: of each control what only it is, of each bar that it is one.
void GiveSpokenNames(QWidget& window)
{
    const std::string name = FromQt(window.objectName());
    for (const SpokenName& spoken : spokenNames) {
        if (name != spoken.window)
            continue;
        auto* control = window.findChild<QWidget*>(QString::fromLatin1(spoken.control));
        const auto* of = window.findChild<QWidget*>(QString::fromLatin1(spoken.of));
        if (control != nullptr && of != nullptr)
            control->setAccessibleName(Words(Msg::SpokenWithin, {FromQt(Spoken(WordsOf(*control))),
                                                                 FromQt(Spoken(WordsOf(*of)))}));
    }
    // Lists are the one kind of control that takes no name from the label beside it.
    for (auto* list : window.findChildren<QAbstractItemView*>())
        if (list->accessibleName().isEmpty())
            list->setAccessibleName(Spoken(WordsOf(*list)));
    for (auto* bar : window.findChildren<QProgressBar*>())
        if (bar->accessibleName().isEmpty())
            bar->setAccessibleName(Words(Msg::ProgressName));
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
        button->setText(WithLetter(Words(caption.text).trimmed(), letters));
    }
}

} // namespace

void SetMenuText(QAction& action, const QString& text)
{
    action.setProperty(plainText, text);
    action.setProperty(changesText, true);
}

void GiveLetters(const QMenu& menu)
{
    QSet<QChar> taken;
    const auto give = [&](QAction& action) {
        if (!action.property(plainText).isValid())
            action.setProperty(plainText, action.text());
        if (const QString plain = action.property(plainText).toString(); !plain.isEmpty())
            action.setText(WithLetter(plain, taken));
    };
    for (const bool changing : {false, true})
        for (QAction* action : menu.actions())
            if (action->property(changesText).toBool() == changing)
                give(*action);
    for (QAction* action : menu.actions())
        if (action->menu() != nullptr)
            GiveLetters(*action->menu());
}

void SetCaptions(QWidget& window)
{
    const std::string name = FromQt(window.objectName());
    for (const Caption& caption : captions)
        if (name == caption.window)
            SetCaption(window, caption.control, Words(caption.text));
    GiveAllLetters(window);
    GiveSpokenNames(window);
    if (qobject_cast<QDialog*>(&window) != nullptr)
        SetReadingOrder(window);
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
