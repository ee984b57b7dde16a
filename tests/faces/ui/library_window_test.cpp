// The library in the main window: rows and covers, sorted, filtered, and where one stays in it.
#include "ui/main/level_view.h"
#include "window_world.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QSlider>
#include <QSplitter>
#include <QToolButton>

namespace kestrova::testing
{

namespace
{

std::vector<std::string> NamesIn(WindowWorld& world)
{
    const QAbstractItemModel& model = *world.Find<QListView>("Combo_Livelli")->model();
    std::vector<std::string> names;
    for (int row = 0; row < model.rowCount(); ++row)
        names.push_back(FromQt(model.index(row, 0).data().toString()));
    return names;
}

void Pick(WindowWorld& world, const char* box, const char* words)
{
    auto* combo = world.Find<QComboBox>(box);
    const int index = combo->findText(QString::fromUtf8(words));
    ASSERT_GE(index, 0) << words;
    combo->setCurrentIndex(index);
}

/// Levels "Level 01" to "Level NN", the first one the largest.
void AddLevels(WindowWorld& world, int count)
{
    for (int i = 1; i <= count; ++i) {
        world.AddLevel("Level " + ZeroPadded(i, 2), "note of " + std::to_string(i));
        LevelRecord& record = world.box.session.archive.levels.back();
        record.filesSize = (count - i) * 1000;
        record.cdNumber = i == 3 ? 7 : 0;
        record.authorName = i == 2 ? "Zoe" : "";
    }
    world.session.archive.levels = world.box.session.archive.levels;
}

void Remove(WindowWorld& world)
{
    world.box.host.AnswerAll(true);
    QTest::keyClick(world.Find("Combo_Livelli"), Qt::Key_Delete);
}

/// Letters as they are on a fine screen, whose widths are fractions of a pixel.
QFont FineLetters()
{
    QFont font = QApplication::font();
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// How far below the cover a level's words reach.
int DepthOfWords(LevelView& view, const QModelIndex& index)
{
    QStyleOptionViewItem option;
    option.rect = {{}, view.CoverCell()};
    option.font = FineLetters();
    option.palette = view.palette();
    option.state = QStyle::State_Enabled;
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(option.font);
    view.itemDelegate()->paint(&painter, option, index);
    painter.end();
    int lowest = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).lightness() < 128)
                lowest = y;
    return lowest - view.CoverWidth() * 3 / 4;
}

} // namespace

TEST(LibraryWindow, IsSortedFilteredAndSearchedByMoreThanNames)
{
    WindowWorld world;
    AddLevels(world, 3);
    world.Show();
    world.list.Select(2);
    Pick(world, "Combo_Sort", "Size");
    EXPECT_EQ(NamesIn(world),
              (std::vector<std::string>{"Level 01", "Level 02",
                                        "- TRLE: Original configuration - (*)", "Level 03"}));
    EXPECT_EQ(world.list.Selected(), 2) << "who is chosen stays chosen";
    world.Click("Pul_Prima");
    EXPECT_EQ(world.list.Selected(), 1) << "the buttons follow what is shown";

    Pick(world, "Combo_Filter", "On disc");
    EXPECT_EQ(NamesIn(world), std::vector<std::string>{"Level 03"});
    EXPECT_EQ(world.list.Selected(), 3);
    EXPECT_EQ(world.TextOfLabel("Label_LevelName"), "Level 03");
    Pick(world, "Combo_Filter", "Finished");
    EXPECT_FALSE(world.list.Selected());
    EXPECT_NE(world.TextOfLabel("Label_Empty").find("Finished"), std::string::npos);
    EXPECT_FALSE(world.Find("Pul_Play")->isEnabled());
    world.Find<QLineEdit>("Text_Search")->setText(QStringLiteral("level 0"));
    EXPECT_EQ(world.TextOfLabel("Label_Empty"),
              "No level under “Finished” holds “level 0” in its name, author or notes.\n"
              "Press Esc to clear the search, or choose All levels above.");
    world.Find<QLineEdit>("Text_Search")->clear();
    Pick(world, "Combo_Filter", "Favourites");
    EXPECT_EQ(world.TextOfLabel("Label_Empty").find("No level has four or five stars yet."), 0U);
    Pick(world, "Combo_Filter", "All levels");
    EXPECT_EQ(world.list.Selected(), 3) << "what was hidden is chosen again";

    auto* search = world.Find<QLineEdit>("Text_Search");
    search->setText(QStringLiteral("ZOE"));
    EXPECT_EQ(NamesIn(world), std::vector<std::string>{"Level 02"});
    search->setText(QStringLiteral("note of 3"));
    EXPECT_EQ(NamesIn(world), std::vector<std::string>{"Level 03"});
}

TEST(LibraryWindow, ShowsRowsAndCoversAndRemembersWhich)
{
    WindowWorld world;
    AddLevels(world, 12);
    world.Show();
    auto* view = dynamic_cast<LevelView*>(world.Find<QListView>("Combo_Livelli"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->Look(), LibraryLook::Rows);
    EXPECT_FALSE(world.Find("Slider_Covers")->isVisible());
    world.list.Select(5);
    world.Click("Pul_Covers");
    EXPECT_EQ(view->Look(), LibraryLook::Covers);
    EXPECT_TRUE(world.Find("Slider_Covers")->isVisible());
    EXPECT_EQ(world.list.Selected(), 5);
    EXPECT_TRUE(view->viewport()->rect().intersects(view->visualRect(view->currentIndex())));
    world.Find<QSlider>("Slider_Covers")->setValue(smallestCover);
    const QRect first = view->visualRect(view->model()->index(0, 0));
    const QRect second = view->visualRect(view->model()->index(1, 0));
    EXPECT_EQ(first.top(), second.top());
    EXPECT_LT(first.left(), second.left());
    world.list.Select(originalCode);
    QTest::keyClick(view, Qt::Key_Right);
    EXPECT_EQ(world.list.Selected(), 1);
    world.Find<QSlider>("Slider_Covers")->setValue(240);
    EXPECT_EQ(view->CoverWidth(), 240);
    Pick(world, "Combo_Sort", "Added");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return world.box.Read("home/windows.ini").find("order=added") != std::string::npos; },
        60'000))
        << "a program that is killed now has it";
    EXPECT_TRUE(world.window.close());

    MainWindow again{world.session, world.list};
    again.show();
    again.RefreshList();
    auto* remembered = dynamic_cast<LevelView*>(In<QListView>(again, "Combo_Livelli"));
    EXPECT_EQ(remembered->Look(), LibraryLook::Covers);
    EXPECT_EQ(remembered->CoverWidth(), 240);
    EXPECT_EQ(In<QComboBox>(again, "Combo_Sort")->currentText(), "Added");
    EXPECT_TRUE(In<QToolButton>(again, "Pul_Covers")->isChecked());
}

TEST(LibraryWindow, ANameThatIsAFractionTooWideGoesOnBelow)
{
    WindowWorld world;
    for (int i = 1; i <= 60; ++i)
        world.AddLevel("The Lost Valley of King " + std::to_string(i * i * 7));
    world.Show();
    world.Click("Pul_Covers");
    auto& view = *dynamic_cast<LevelView*>(world.Find<QListView>("Combo_Livelli"));
    const QFontMetrics metrics{FineLetters()};
    int found = 0;
    for (int row = 1; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        const QString name = index.data().toString();
        const int rounded = metrics.horizontalAdvance(name);
        if (metrics.elidedText(name, Qt::ElideRight, rounded) == name)
            continue;
        ++found;
        view.SetCoverWidth(rounded);
        ASSERT_EQ(view.CoverWidth(), rounded);
        EXPECT_GT(DepthOfWords(view, index), metrics.lineSpacing() * 3 / 2) << FromQt(name);
    }
    EXPECT_GT(found, 0) << "letters without fractions";
}

TEST(LibraryWindow, EveryCoverCanBeScrolledToAtWhateverWidth)
{
    WindowWorld world;
    AddLevels(world, 5);
    world.Show();
    world.Click("Pul_Covers");
    auto& view = *dynamic_cast<LevelView*>(world.Find<QListView>("Combo_Livelli"));
    for (int width = 800; width < 1500; width += 9) {
        world.window.resize(width, 820);
        QCoreApplication::processEvents();
        const int seen = view.viewport()->height();
        const QRect last = view.visualRect(view.model()->index(5, 0));
        EXPECT_LE(last.bottom() + view.verticalScrollBar()->value(),
                  seen + view.verticalScrollBar()->maximum())
            << width;
        const int columns = std::max(1, view.viewport()->width() / view.gridSize().width());
        const QRect wrapped = view.visualRect(view.model()->index(columns, 0));
        EXPECT_EQ(wrapped.left(), view.visualRect(view.model()->index(0, 0)).left()) << width;
    }
}

TEST(LibraryWindow, IsSortedByNumbersOfSavegamesAndTurnedRound)
{
    WindowWorld world;
    AddLevels(world, 3);
    for (int i = 0; i < 4; ++i)
        world.box.Write("levels/LEVEL_0002/backup_savegames/savegame." + std::to_string(i), "s");
    world.box.Write("levels/LEVEL_0003/backup_savegames/savegame.0", "s");
    world.Show();
    world.list.Select(1);
    Pick(world, "Combo_Sort", "Savegames");
    const std::vector<std::string> sorted{"Level 02", "Level 03",
                                          "- TRLE: Original configuration - (*)", "Level 01"};
    EXPECT_TRUE(QTest::qWaitFor([&] { return NamesIn(world) == sorted; }, 60'000));
    EXPECT_EQ(world.list.Selected(), 1) << "who is chosen stays chosen";
    world.Click("Pul_Turn");
    EXPECT_EQ(NamesIn(world).back(), "Level 02");
    Pick(world, "Combo_Sort", "Name");
    EXPECT_EQ(NamesIn(world).back(), "Level 03") << "another order begins as usual";
    auto* head = world.Find<LevelColumns>("Head_Levels");
    const auto click = [&] {
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, {40, head->height() / 2});
    };
    click();
    EXPECT_EQ(NamesIn(world).front(), "Level 03") << "the head of the sorted column turns";
    world.list.Select(3);
    world.Click("Pul_Dopo");
    EXPECT_EQ(world.list.Selected(), 2) << "the buttons follow what is shown";
    click();
    EXPECT_EQ(NamesIn(world).back(), "Level 03");
}

TEST(LibraryWindow, ColumnsAreDraggedHiddenAndRemembered)
{
    WindowWorld world;
    AddLevels(world, 2);
    world.Show();
    world.window.resize(1800, 700);
    world.window.findChild<QSplitter*>()->setSizes({1300, 500});
    QCoreApplication::processEvents();
    auto* head = world.Find<LevelColumns>("Head_Levels");
    const auto shown = [](const LevelColumns& columns) {
        std::string words;
        for (int place = 0; place < columns.count(); ++place)
            if (const int column = columns.logicalIndex(place); !columns.isSectionHidden(column))
                words +=
                    FromQt(columns.model()->headerData(column, Qt::Horizontal).toString()) + "; ";
        return words;
    };
    ASSERT_EQ(shown(*head), "Name; Author; Last played; Time played; Savegames; Size; Added; ");
    head->moveSection(head->visualIndex(LevelModel::SizeColumn), 1);
    const int author = head->sectionSize(LevelModel::AuthorColumn);
    const int name = head->sectionSize(LevelModel::NameColumn);
    head->resizeSection(LevelModel::AuthorColumn, author + 25);
    EXPECT_EQ(head->sectionSize(LevelModel::AuthorColumn), author + 25);
    EXPECT_EQ(head->sectionSize(LevelModel::NameColumn), name) << "its neighbour gives the room";
    head->resizeSection(LevelModel::NameColumn, 10);
    EXPECT_GE(head->sectionSize(LevelModel::NameColumn), 100) << "a name can be read";

    // The keyboard reaches the menu by the button of the rows.
    auto* rows = world.Find("Pul_Rows");
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {1, 1}, rows->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(rows, &event);
    auto* menu = head->findChild<QMenu*>("mnu_Columns");
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
        if (action->text().remove(QLatin1Char('&')) == QLatin1String("Added"))
            action->trigger();
    menu->close();
    const std::string wanted = "Name; Size; Author; Last played; Time played; Savegames; ";
    EXPECT_EQ(shown(*head), wanted);
    EXPECT_TRUE(world.window.close());

    MainWindow again{world.session, world.list};
    again.show();
    again.resize(1800, 700);
    again.RefreshList();
    QCoreApplication::processEvents();
    const auto& remembered = *again.findChild<LevelColumns*>("Head_Levels");
    EXPECT_EQ(shown(remembered), wanted);
    EXPECT_EQ(remembered.sectionSize(LevelModel::AuthorColumn), author + 25);
}

TEST(LibraryWindow, APlaceInTheListStaysAfterADeletion)
{
    WindowWorld world;
    AddLevels(world, 60);
    world.Show();
    auto* view = world.Find<QListView>("Combo_Livelli");
    world.list.Select(40);
    const int scrolled = view->verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    Remove(world);
    EXPECT_EQ(world.session.archive.levels.size(), 60U) << world.box.host.AllTold();
    EXPECT_EQ(world.list.Selected(), 41) << "the one that came into its place";
    EXPECT_NEAR(view->verticalScrollBar()->value(), scrolled, view->sizeHintForRow(0) + 1);
    world.list.Select(60);
    Remove(world);
    EXPECT_EQ(world.list.Selected(), 59) << "the last one leaves it to the one before";
    const int last = view->verticalScrollBar()->value();
    world.list.Refresh();
    EXPECT_EQ(view->verticalScrollBar()->value(), last);
}

TEST(LibraryWindow, AClickBesideTheLevelsLeavesTheChosenOne)
{
    WindowWorld world;
    AddLevels(world, 1);
    world.Show();
    world.list.Select(1);
    auto* view = world.Find<QListView>("Combo_Livelli");
    const QPoint below = view->viewport()->rect().bottomRight() - QPoint(10, 10);
    ASSERT_FALSE(view->indexAt(below).isValid());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, below);
    EXPECT_TRUE(view->selectionModel()->isSelected(view->model()->index(1, 0)));
    EXPECT_EQ(world.list.Selected(), 1);
}

TEST(LibraryWindow, FitsASmallScreenWhateverStandsInIt)
{
    WindowWorld world;
    world.AddLevel(std::string(255, 'W'), std::string(255, 'm'));
    world.Show();
    world.list.Select(1);
    world.Find<QLineEdit>("Text_Search")->setText(QString(200, QLatin1Char('x')));
    world.Find<QLineEdit>("Text_Search")->clear();
    // 800 by 600 at twice the size, without what a window manager puts around it.
    EXPECT_LE(world.window.minimumSizeHint().width(), 384);
    EXPECT_LE(world.window.minimumSizeHint().height(), 252);
    const QSize usual = world.window.size();
    auto* list = world.Find<QListView>("Combo_Livelli");
    const int lines = world.window.fontMetrics().lineSpacing();
    const auto isWhole = [&](const char* name) {
        const QWidget& control = *world.Find(name);
        const QRect place{control.mapTo(&world.window, QPoint{}), control.size()};
        return control.isVisible() && world.window.rect().contains(place);
    };
    world.window.resize(384, 252);
    QCoreApplication::processEvents();
    EXPECT_GE(list->viewport()->height(), 6 * lines) << "three rows and more";
    for (const char* name : {"Text_Search", "Combo_Sort", "Combo_Filter", "Pul_Play"})
        EXPECT_TRUE(isWhole(name)) << name;
    EXPECT_FALSE(world.Find("Bar_Tools")->isVisible());
    EXPECT_GE(world.Find("Tabs_Level")->height(), 5 * lines);
    world.window.resize(usual);
    QCoreApplication::processEvents();
    for (const char* name : {"Bar_Tools", "Pul_Dopo", "Pul_Covers", "Pul_MoreInfo", "Head_Levels"})
        EXPECT_TRUE(isWhole(name)) << name;
}

} // namespace kestrova::testing
