// Another language is spoken by the windows that stand open, at once.
#include "ui/desktop/spoken_language.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialog_start.h"
#include "ui/main/level_list_pane.h"
#include "ui/window_world.h"
#include "words/captions.h"
#include "words/level_page.h"
#include "words/library_window.h"
#include "words/menus.h"
#include "words/ui_main.h"
#include "world/speaking.h"

#include <QComboBox>
#include <QMenu>
#include <QTimer>

namespace kestrova::testing
{
namespace
{

QString Plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

/// Chooses a language in the window of settings and accepts it.
void ChooseInSettings(WindowWorld& world, const char* code)
{
    SettingsDialog settings{world.session, &world.window};
    settings.show();
    auto* box = In<QComboBox>(settings, "Combo_Language");
    box->setCurrentIndex(box->findData(QString::fromLatin1(code)));
    Press(settings, "Pul_Ok");
    EXPECT_EQ(settings.result(), QDialog::Accepted) << world.box.host.AllTold();
}

void ExpectSpoken(WindowWorld& world)
{
    const auto menu = [&](const char* name) { return Plain(world.Find<QMenu>(name)->title()); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return menu("mnu_Pref") == Words(Msg::MenuPreferences); }))
        << FromQt(menu("mnu_Pref"));
    EXPECT_EQ(Plain(world.Find<QPushButton>("Pul_Play")->text()), Words(Msg::PlayButton));
    EXPECT_EQ(world.Find<QPushButton>("Pul_Play")->accessibleName(), Words(Msg::PlayButton));
    EXPECT_EQ(world.Find("Combo_Livelli")->accessibleName(), Words(Msg::LevelsListName));
    EXPECT_EQ(world.Find("Slider_Covers")->toolTip(), Words(Msg::CoverSizeName));
    EXPECT_EQ(Plain(world.Find<QAction>("mnu_Settings")->text()), Words(Msg::MenuSettings));
}

} // namespace

TEST(Language, IsSpokenAtOnceByTheWindowThatStandsOpen)
{
    WindowWorld world;
    world.AddLevel("Dawn");
    const LevelCode dusk = world.AddLevel("Dusk");
    world.Show();
    world.window.Choose(dusk);
    const QByteArray place = world.window.saveGeometry();
    std::set<QString> captions;
    for (const char* code : {"de", "it", "en@proofread", "en"}) {
        SCOPED_TRACE(code);
        ChooseInSettings(world, code);
        EXPECT_EQ(world.session.settings.language, code);
        ExpectSpoken(world);
        captions.insert(world.Find("Combo_Livelli")->accessibleName());
        EXPECT_EQ(world.window.Chosen(), dusk) << "the chosen level stays";
        EXPECT_EQ(world.window.saveGeometry(), place) << "the window stays where it is";
        EXPECT_EQ(world.window.findChildren<QMenu*>(QStringLiteral("mnu_Pref")).size(), 1);
    }
    EXPECT_GE(captions.size(), 3U);
    // It works as before.
    world.Click("Pul_Prima");
    EXPECT_NE(world.window.Chosen(), dusk);
}

TEST(Language, WaitsForTheEndOfWhatGoesOnInTheWindow)
{
    WindowWorld world;
    world.Show();
    ++world.session.running.operations;
    SpeakInWindows("de");
    QTest::qWait(1);
    EXPECT_NE(Plain(world.Find<QMenu>("mnu_Pref")->title()), Words(Msg::MenuPreferences));
    --world.session.running.operations;
    ExpectSpoken(world);
    SpeakInWindows("en");
}

TEST(Language, OfAnotherProgramIsSpokenWhenOneComesBackToTheWindow)
{
    WindowWorld world;
    world.Show();
    ASSERT_TRUE(WriteSettings(world.session.programFolder, world.session.settings));
    QWidget other;
    const auto comeBack = [&] {
        for (QWidget* window : {&other, static_cast<QWidget*>(&world.window)}) {
            window->show();
            window->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(window, 60'000));
        }
    };
    comeBack();
    ProgramSettings settings = world.session.settings;
    settings.language = "de";
    settings.historyCount = 77;
    ASSERT_TRUE(WriteSettings(world.session.programFolder, settings));
    comeBack();
    ExpectSpoken(world);
    EXPECT_EQ(world.session.settings.language, "de");
    EXPECT_EQ(world.session.settings.historyCount, 77) << "nor is it written over";
    SpeakInWindows("en");
}

TEST(Language, IsChosenOnTheFirstPage)
{
    WindowWorld world;
    world.session.preferences = DefaultPreferences();
    FirstStart rules{world.session, {}};
    StartDialog page{world.session, rules, nullptr};
    page.show();
    auto* box = In<QComboBox>(page, "Combo_Language");
    EXPECT_EQ(box->currentText(), QStringLiteral("English (original)"));
    box->setFocus();
    QTest::keyClicks(box, QStringLiteral("Deu"));
    QTest::keyClick(box, Qt::Key_Return);
    Q_EMIT box->activated(box->findData(QStringLiteral("de")));
    EXPECT_EQ(page.result(), int{StartDialog::InOtherWords});
    EXPECT_EQ(world.session.settings.language, "de");
    StartDialog again{world.session, rules, nullptr};
    EXPECT_EQ(In<QLabel>(again, "Label_LanguageOf")->text(), Words(Msg::SettingsLanguage));
    EXPECT_EQ(In<QComboBox>(again, "Combo_Language")->currentText(), QStringLiteral("Deutsch"));
    SpeakInWindows("en");
}

} // namespace kestrova::testing
