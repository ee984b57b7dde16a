// What the keyboard reaches in every window: one letter or key, one meaning.
#include "archive/level_folders.h"
#include "saves/savegame_list.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialog_author.h"
#include "ui/dialogs/dialog_cattura.h"
#include "ui/dialogs/dialog_convert_audio.h"
#include "ui/dialogs/dialog_import_shot.h"
#include "ui/dialogs/dialog_list_savegame.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/dialogs/dialog_pref_arc.h"
#include "ui/dialogs/dialog_resize.h"
#include "ui/dialogs/dialog_restore.h"
#include "ui/dialogs/dialog_savegame_history.h"
#include "ui/dialogs/dialog_set_mp3.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialog_start.h"
#include "ui/dialogs/dialog_trova_trle.h"
#include "ui/dialogs/dialogs_small.h"
#include "window_world.h"

#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTabBar>
#include <map>

namespace kestrova::testing
{
namespace
{

/// Each key of a window with what it does there.
std::multimap<std::string, std::string> KeysOf(const QWidget& window)
{
    std::multimap<std::string, std::string> keys;
    const auto add = [&](const QKeySequence& key, const QString& meaning) {
        if (!key.isEmpty())
            keys.emplace(FromQt(key.toString()), FromQt(meaning));
    };
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
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
    for (const auto* button : window.findChildren<QAbstractButton*>())
        EXPECT_TRUE(!button->objectName().startsWith(QLatin1String("Pul_")) ||
                    button->text().isEmpty() || button->property("pictured").toBool() ||
                    !QKeySequence::mnemonic(button->text()).isEmpty())
            << FromQt(window.objectName()) << ": no letter for " << FromQt(button->objectName());
}

} // namespace

TEST(Keys, EachHasOneMeaningInEveryWindow)
{
    WindowWorld world;
    world.AddLevel("One");
    Session& session = world.session;
    TrleFinder finder{session};
    SavegameList rules{session, ListPurpose::Export};
    const CapturedShot shot{Picture{}, 0, world.box / "levels"};
    const AboutDialog about{nullptr};
    const NewArcDialog newArc{nullptr};
    const ArchiveDialog archive{session, nullptr};
    const SettingsDialog settings{session, nullptr};
    const FindTrleDialog find{session, finder, nullptr};
    FirstStart page{session, {}};
    const StartDialog start{session, page, nullptr};
    const RestoreDialog restore{session, nullptr};
    const AuthorDialog author{session, 0, nullptr};
    const NewLevelDialog add{session, nullptr};
    const ProgressDialog progress{ProgressWindow::Progress, nullptr};
    const ProgressDialog batch{ProgressWindow::Audio, nullptr};
    const ConvertAudioDialog decode{session, AudioToolMode::Decode, nullptr};
    const ConvertAudioDialog encode{session, AudioToolMode::Encode, nullptr};
    const ConvertAudioDialog convert{session, AudioToolMode::Convert, nullptr};
    const SetMp3Dialog settingsOfMp3{session, true, nullptr};
    const CaptureDialog capture{session, shot, nullptr};
    const ImportShotDialog importShot{session, 1, nullptr};
    const ListSavegameDialog list{session, rules, nullptr};
    const ResizeDialog resize{session, world.box / "none.jpg", nullptr};
    const SavegameHistoryDialog history{session, 1, nullptr};
    const QWidget* const windows[] = {
        &world.window,  &about,   &newArc,     &archive, &settings, &find,    &restore,
        &author,        &add,     &progress,   &batch,   &decode,   &encode,  &convert,
        &settingsOfMp3, &capture, &importShot, &list,    &resize,   &history, &start};
    for (const QWidget* window : windows)
        ExpectOneMeaningEach(*window);
}

TEST(Keys, AltPOpensThePreferencesAndPlaysNothing)
{
    WindowWorld world;
    EXPECT_EQ(QKeySequence::mnemonic(world.Find<QMenu>("mnu_Pref")->title()),
              QKeySequence(Qt::ALT | Qt::Key_P));
    EXPECT_NE(world.Find<QPushButton>("Pul_Play")->shortcut(), QKeySequence(Qt::ALT | Qt::Key_P));
}

} // namespace kestrova::testing
