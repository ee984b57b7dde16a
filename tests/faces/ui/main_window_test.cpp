#include "archive/archive_saving.h"
#include "formats/preferences.h"
#include "library/level_list.h"
#include "session/operation.h"
#include "session/preferences_file.h"
#include "ui/main/main_menu.h"
#include "ui/widgets/captions.h"
#include "window_world.h"

#include <QAction>
#include <QDropEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QTimer>

namespace kestrova::testing
{

namespace
{

constexpr const char* original = "- TRLE: Original configuration -";

std::vector<std::string> ShownRows(WindowWorld& world)
{
    const QAbstractItemModel& model = *world.Find<QListView>("Combo_Livelli")->model();
    std::vector<std::string> rows;
    for (int i = 0; i < model.rowCount(); ++i)
        rows.push_back(FromQt(model.index(i, 0).data().toString()));
    return rows;
}

std::string ChosenName(WindowWorld& world)
{
    const QModelIndex index = world.Find<QListView>("Combo_Livelli")->currentIndex();
    return FromQt(index.data().toString());
}

void Type(WindowWorld& world, const char* text)
{
    world.Find<QLineEdit>("Text_Search")->setText(QString::fromUtf8(text));
}

} // namespace

TEST(MainWindow, ListsTheLevelsWithTheInstalledOneMarked)
{
    WindowWorld world;
    const LevelCode zebra = world.AddLevel("Zebra", "stripes");
    world.AddLevel("Ägypten & more");
    world.AddLevel("Zebra");
    world.box.Write("trle/Kestrva.txt", "#LEVEL_CODE=0001#\r\n");
    world.Show();

    EXPECT_EQ(ShownRows(world),
              (std::vector<std::string>{original, "Zebra", "Zebra (*)", "Ägypten & more"}));
    EXPECT_EQ(world.window.windowTitle(), "Kestrova: LevelArchive.kva (4 levels)");
    EXPECT_EQ(ChosenName(world), original);
    EXPECT_FALSE(world.Find("Label_Installed")->isVisible());

    world.list.Select(zebra);
    EXPECT_EQ(world.list.Selected(), zebra);
    EXPECT_EQ(ChosenName(world), "Zebra (*)");
    EXPECT_TRUE(world.Find("Label_Installed")->isVisible());
    EXPECT_EQ(world.TextOfLabel("Label_InfoLevel"), "stripes");
    EXPECT_EQ(world.TextOfLabel("Label_InfoDir"), "Path: \"" +
                                                      (world.box / "levels/LEVEL_0001").native() +
                                                      "\"  -  Screenshots: 0 - Savegames: 0 + 0");

    world.session.archive.levels.erase(world.session.archive.levels.begin() + 2);
    world.list.Refresh();
    EXPECT_EQ(world.list.Selected(), zebra) << "a refresh keeps what was chosen";
    world.session.archive.levels.erase(world.session.archive.levels.begin() + 1);
    world.list.Refresh();
    EXPECT_EQ(world.list.Selected(), originalCode) << "and takes the first row when that is gone";
}

TEST(MainWindow, SaysWhatToDoWhereThereIsNothing)
{
    WindowWorld world;
    world.Show();
    EXPECT_NE(world.TextOfLabel("Label_Empty").find("no custom levels yet"), std::string::npos);
    // The original configuration alone is no archive that a level could be dropped into.
    world.session.archive.file.clear();
    world.list.Refresh();
    EXPECT_NE(world.TextOfLabel("Label_Empty").find("No archive is loaded"), std::string::npos);
    world.session.archive.levels.clear();
    world.list.Refresh();
    EXPECT_NE(world.TextOfLabel("Label_Empty").find("No archive is loaded"), std::string::npos);
    EXPECT_FALSE(world.list.Selected());
    EXPECT_FALSE(world.Find("Pul_Play")->isEnabled());
    EXPECT_EQ(world.window.windowTitle(), "Kestrova");
}

TEST(MainWindow, SearchNarrowsTheListAndWalksTheMatches)
{
    WindowWorld world;
    for (const char* name : {"Alpha tomb", "Beta", "Gamma TOMB", "Omega"})
        world.AddLevel(name);
    world.Show();
    Type(world, " tomb ");
    EXPECT_EQ(ShownRows(world), (std::vector<std::string>{"Alpha tomb", "Gamma TOMB"}));
    EXPECT_EQ(world.TextOfLabel("Label_Counts"), "2 of 5");
    EXPECT_EQ(ChosenName(world), "Alpha tomb")
        << "what was chosen is no match, so the first one is";

    world.Click("Pul_Dopo");
    EXPECT_EQ(ChosenName(world), "Gamma TOMB");
    EXPECT_TRUE(world.box.host.told.empty());
    world.Click("Pul_Dopo");
    EXPECT_TRUE(world.box.host.WasTold("Not found")) << "no wrap-around";
    EXPECT_EQ(ChosenName(world), "Gamma TOMB");
    world.Click("Pul_Prima");
    EXPECT_EQ(ChosenName(world), "Alpha tomb");
    world.Click("Pul_Prima");
    EXPECT_EQ(world.box.host.told.size(), 2U);

    Type(world, "omeg");
    world.box.host.told.clear();
    world.Click("Pul_Dopo");
    EXPECT_TRUE(world.box.host.WasTold("Not found")) << "only the chosen one holds it";
    world.Click("Pul_Search");
    EXPECT_EQ(ChosenName(world), "Omega");
    EXPECT_EQ(world.box.host.told.size(), 1U);

    Type(world, "nowhere");
    EXPECT_TRUE(ShownRows(world).empty());
    EXPECT_TRUE(world.Find("Label_Empty")->isVisible());
    EXPECT_FALSE(world.list.Selected()) << "what is not in the list is not chosen";
    EXPECT_EQ(world.TextOfLabel("Label_LevelName"), "No level is chosen");
    QTest::keyClick(world.Find("Text_Search"), Qt::Key_Return);
    EXPECT_EQ(world.box.host.told.size(), 1U) << "the list says it already";
    world.Click("Pul_Search");
    EXPECT_EQ(world.box.host.told.size(), 2U);
    QTest::keyClick(world.Find("Text_Search"), Qt::Key_Escape);
    EXPECT_EQ(ShownRows(world).size(), 5U);
    EXPECT_EQ(ChosenName(world), "Omega");

    world.Click("Pul_Dopo");
    EXPECT_EQ(world.box.host.told.size(), 2U) << "without a search text the end is just the end";
    world.Click("Pul_Search");
    EXPECT_EQ(world.list.Selected(), originalCode) << "an empty text finds the first row";
    world.Click("Pul_Dopo");
    EXPECT_EQ(ChosenName(world), "Alpha tomb");
}

TEST(MainWindow, TheKeyboardChoosesAndPlays)
{
    WindowWorld world;
    for (const char* name : {"First", "Second", "Third", "Third and a half"})
        world.AddLevel(name);
    world.Show();
    auto* list = world.Find<QListView>("Combo_Livelli");
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(world.TextOfLabel("Label_LevelName"), "First") << "one row at a time";
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(world.TextOfLabel("Label_LevelName"), "Second");
    QTest::keyClick(list, Qt::Key_End);
    QTest::keyClick(world.Find("Text_Search"), Qt::Key_Up);
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(world.TextOfLabel("Label_LevelName"), "Second");
    QTRY_VERIFY_WITH_TIMEOUT(
        world.TextOfLabel("Label_InfoDir").find("LEVEL_0002") != std::string::npos, 2000);

    QTest::keyClick(list, Qt::Key_Return);
    ASSERT_EQ(world.box.machine.started.size(), 1U) << world.box.host.AllTold();
    EXPECT_EQ(world.box.Read("trle/DATA/level1.tr4"), "Second");
    EXPECT_EQ(ChosenName(world), "Second (*)");
    EXPECT_TRUE(world.session.running.hotKeys);
    EXPECT_EQ(world.box.machine.clipboardCleared, 1);
    EXPECT_EQ(world.session.running.operations, 0);
}

TEST(MainWindow, EveryCommandIsThereAndWaitsForNothingButWhatCanBeUndone)
{
    WindowWorld world;
    world.Show();
    const QSet<QString> waiting{"mnu_Undo", "mnu_Redo", "mnu_UndoImportWads"};
    const QStringList commands = MenuCommands();
    EXPECT_EQ(commands.size(), 59);
    for (const QString& name : commands) {
        const auto* action = world.window.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << FromQt(name);
        EXPECT_FALSE(action->text().isEmpty()) << FromQt(name);
        EXPECT_EQ(action->isEnabled(), !waiting.contains(name)) << FromQt(name);
    }
    EXPECT_EQ(CaptionFaults(world.window), QStringList{});
    const auto caption = [&](const char* name) {
        return world.window.findChild<QAction*>(QString::fromLatin1(name))
            ->text()
            .remove(QLatin1Char('&'));
    };
    EXPECT_EQ(caption("mnu_SaveAs"), "Save Archive  as ...");
    EXPECT_EQ(caption("mnu_ConvertWav"), "Convert: WAV - >  different WAV format");
}

TEST(MainWindow, MenuCommandsWorkOnTheChosenLevelAndOnAll)
{
    WindowWorld world;
    const LevelCode level = world.AddLevel("First");
    world.box.Write("levels/LEVEL_0001/files/english.dat", "english");
    std::filesystem::remove(world.box / "home/backup_trle/English.DAT");
    world.box.Write("home/backup_trle/italiano.dat", "italiano");
    world.Show();
    const auto trigger = [&](const char* name) {
        world.box.host.told.clear();
        world.window.findChild<QAction*>(QString::fromLatin1(name))->trigger();
    };
    trigger("mnu_SetMylanguage");
    EXPECT_TRUE(world.box.host.WasTold("original configuration")) << world.box.host.AllTold();
    world.list.Select(level);
    trigger("mnu_SetMylanguage");
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/files/english.dat"), "italiano")
        << world.box.host.AllTold();
    trigger("mnu_RestoreAll");
    EXPECT_TRUE(world.box.host.WasTold("Restored 1 levels"));
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/files/english.dat"), "english");
    trigger("mnu_CreaInfoTr4");
    EXPECT_TRUE(world.box.Has("levels/LEVEL_0001/tr4.inf"));
    trigger("mnu_ControllaUguali");
    EXPECT_TRUE(world.box.host.WasTold("There is no equal level."));
    trigger("mnu_CalcolaSize");
    EXPECT_TRUE(world.box.host.WasTold("Level files: 12 bytes\r\n")) << world.box.host.AllTold();

    // A game that runs on the level is asked about before its files change.
    world.box.Write("trle/Kestrva.txt", "#LEVEL_CODE=0001#\r\n");
    world.box.machine.running = {{}};
    world.box.host.AnswerAll(false);
    trigger("mnu_SetMylanguage");
    trigger("mnu_SetLanguageAll");
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/files/english.dat"), "english");
}

TEST(MainWindow, ARightClickOnALevelOffersItsCommands)
{
    WindowWorld world;
    world.AddLevel("First");
    const LevelCode second = world.AddLevel("Second");
    world.Show();
    auto* list = world.Find<QListView>("Combo_Livelli");
    const QPoint place = list->visualRect(list->model()->index(2, 0)).center();
    QTest::mouseClick(list->viewport(), Qt::RightButton, Qt::NoModifier, place);
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, place, list->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list->viewport(), &wanted);
    EXPECT_EQ(world.list.Selected(), second) << "it is of the row under the pointer";
    auto* menu = world.Find<QMenu>("mnu_OnLevel");
    ASSERT_NE(menu, nullptr);
    QStringList captions;
    for (const QAction* action : menu->actions())
        captions.append(action->text().remove(QLatin1Char('&')));
    EXPECT_EQ(captions.front(), "Play");
    EXPECT_EQ(captions.back(), "Delete current level") << "far from what a slip would hit";
    menu->actions().front()->trigger();
    EXPECT_EQ(world.box.Read("trle/DATA/level1.tr4"), "Second") << world.box.host.AllTold();

    const Operation operation{world.session};
    menu->close();
    QTRY_VERIFY(world.window.findChild<QMenu*>(QStringLiteral("mnu_OnLevel")) == nullptr);
    QCoreApplication::sendEvent(list->viewport(), &wanted);
    EXPECT_EQ(world.window.findChild<QMenu*>(QStringLiteral("mnu_OnLevel")), nullptr);
}

TEST(MainWindow, TheKeyboardOffersTheCommandsOfTheChosenLevel)
{
    WindowWorld world;
    world.Show();
    auto* list = world.Find<QListView>("Combo_Livelli");
    const QPoint place = list->rect().center();
    QContextMenuEvent wanted(QContextMenuEvent::Keyboard, place, list->mapToGlobal(place));
    QCoreApplication::sendEvent(list, &wanted);
    EXPECT_NE(world.window.findChild<QMenu*>(QStringLiteral("mnu_OnLevel")), nullptr);
}

TEST(MainWindow, ClosingSavesThePreferencesButNotInTheMiddleOfWork)
{
    WindowWorld world;
    world.Show();
    int ended = 0;
    world.window.ended = [&] { ++ended; };
    {
        const Operation operation{world.session};
        EXPECT_FALSE(world.window.close());
    }
    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(world.window.isVisible());
    world.session.preferences.writeLogFiles = true;
    world.window.resize(777, 555);
    EXPECT_TRUE(world.window.close());
    EXPECT_EQ(ended, 1);
    EXPECT_TRUE(ParsePreferences(world.box.Read("home/Kestrova.prf")).writeLogFiles);

    MainWindow again{world.session, world.list};
    EXPECT_EQ(again.size(), QSize(777, 555));
}

TEST(MainWindow, ANewArchiveThatIsGivenUpLeavesTheOldOneLoaded)
{
    WindowWorld world;
    const LevelCode level = world.AddLevel("First");
    ASSERT_TRUE(SaveArchiveNow(world.session));
    world.session.preferences.autoSave = false;
    world.session.archive.levels[1].levelNote = "changed";
    SaveArchive(world.session);
    world.Show();
    const auto action = [&](const char* name) {
        return world.window.findChild<QAction*>(QString::fromLatin1(name));
    };
    // Without a folder there is no new archive, and the old one is not gone.
    world.list.Select(level);
    world.box.host.WillAsk("has been changed", true);
    world.box.host.WillChoose("Select main folder for new archive", std::nullopt);
    world.box.host.WillAsk("'LevelArchive.kva' is as it was. Do you want to have it loaded", true);
    action("mnu_New")->trigger();
    EXPECT_EQ(world.window.windowTitle(), "Kestrova: LevelArchive.kva (2 levels)");
    EXPECT_EQ(world.session.archive.levels.at(1).levelNote, "changed");

    // Where nobody can be asked, nothing is lost.
    world.session.archive.levels[1].levelNote = "once more";
    SaveArchive(world.session);
    EXPECT_TRUE(world.window.MayEnd(false));
    EXPECT_FALSE(world.session.archive.dirty);
    EXPECT_NE(world.box.Read("home/LevelArchive.kva").find("once more"), std::string::npos);
}

TEST(MainWindow, ALevelWhoseFolderIsGoneIsNotShownAsAnEmptyOne)
{
    WindowWorld world;
    const LevelCode level = world.AddLevel("First");
    std::filesystem::rename(world.box / "levels", world.box / "unplugged");
    world.Show();
    world.list.Select(level);
    EXPECT_EQ(world.TextOfLabel("Label_InfoDir"),
              "The level's folder is not there now: " + (world.box / "levels/LEVEL_0001").native());
    EXPECT_TRUE(world.TextOfLabel("Label_InfoImage1").empty()) << "no picture of the original";
    EXPECT_FALSE(world.Find("Pul_Zoom1")->isEnabled());
    world.window.findChild<QAction*>(QStringLiteral("mnu_Property"))->trigger();
    EXPECT_TRUE(world.box.host.WasTold("so this cannot be done now"));
}

TEST(MainWindow, WhatIsDroppedIsOfferedAsALevel)
{
    WindowWorld world;
    world.box.Write("My level/level1.tr4", "x");
    world.box.host.WillAsk("Do you want see url list", false);
    world.Show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(PathToQt(world.box / "My level"))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&world.window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    auto* light = world.Find("Frame_Livelli")->findChild<QWidget*>(QStringLiteral("Light_Drop"));
    ASSERT_NE(light, nullptr);
    EXPECT_TRUE(light->isVisible());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&world.window, &drop);
    EXPECT_FALSE(light->isVisible());
    QWidget* dialog = nullptr;
    QString name;
    QTimer::singleShot(400, [&] {
        dialog = QApplication::activeModalWidget();
        if (dialog == nullptr)
            return;
        name = dialog->findChild<QLineEdit*>(QStringLiteral("Text_NameLevel"))->text();
        dialog->close();
    });
    QTest::qWait(500);
    EXPECT_NE(dialog, nullptr);
    EXPECT_EQ(name, "My level");
    EXPECT_FALSE(world.box.Has("levels/LEVEL_0001")) << "closing the window gives it up";

    // A picture on the panes is none of the list's matter.
    QMimeData picture;
    picture.setUrls({QUrl::fromLocalFile(PathToQt(world.box / "shot.JPG")),
                     QUrl::fromLocalFile(PathToQt(world.box / "savegame.3"))});
    QDragEnterEvent other(QPoint(5, 5), Qt::CopyAction, &picture, Qt::LeftButton, Qt::NoModifier);
    other.ignore();
    QCoreApplication::sendEvent(&world.window, &other);
    EXPECT_FALSE(other.isAccepted());

    // An archive alone is opened; among other files it is told apart.
    const Path archive = world.box / "other/Other.kva";
    world.box.Write(
        "other/Other.kva",
        world.box.Read(world.session.ArchivePath().lexically_relative(world.box.root).native()));
    const auto dropFiles = [&](const std::vector<Path>& files) {
        QMimeData dropped;
        QList<QUrl> addresses;
        for (const Path& file : files)
            addresses.append(QUrl::fromLocalFile(PathToQt(file)));
        dropped.setUrls(addresses);
        QDragEnterEvent above(QPoint(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&world.window, &above);
        const std::string words = FromQt(light->accessibleName());
        QDropEvent falls(QPointF(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&world.window, &falls);
        return words;
    };
    world.box.Write("another.kva", "an archive too");
    EXPECT_EQ(dropFiles({archive, world.box / "another.kva"}),
              "Drop it here to add it to the archive");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return world.box.host.WasTold("Other.kva, another.kva"); }, 60'000));
    EXPECT_NE(world.session.ArchivePath(), archive);
    EXPECT_EQ(dropFiles({archive}), "Drop it here to open this archive");
    EXPECT_TRUE(QTest::qWaitFor([&] { return world.session.ArchivePath() == archive; }, 60'000))
        << world.box.host.AllTold();
    PreferencesRecord written;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            ReadPreferencesFile(world.session.Folders(), written, world.session.settings);
            return Path{Trim(written.archivePath)} == archive;
        },
        60'000))
        << "a program that is killed now opens it again";

    QMimeData text;
    text.setText(QStringLiteral("no file"));
    QDragEnterEvent refused(QPoint(5, 5), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    refused.ignore();
    QCoreApplication::sendEvent(&world.window, &refused);
    EXPECT_FALSE(refused.isAccepted());
}

} // namespace kestrova::testing
