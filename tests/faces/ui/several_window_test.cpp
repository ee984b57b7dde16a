// Several levels chosen in the list, and what is done with all of them at once.
#include "app/command_table.h"
#include "app/run_on_several.h"
#include "platform/process.h"
#include "window_world.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QListView>
#include <QMenu>

namespace kestrova::testing
{

namespace
{

struct SeveralWorld : WindowWorld {
    explicit SeveralWorld(int count)
    {
        for (int i = 1; i <= count; ++i)
            AddLevel("Level " + ZeroPadded(i, 2));
    }
    /// Rows from the first to the last of these, as with Shift.
    void ChooseRows(int first, int last)
    {
        list.Select(first);
        auto* view = Find<QListView>("Combo_Livelli");
        for (int row = first; row < last; ++row)
            QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    }
    QMenu* OpenMenu()
    {
        auto* view = Find<QListView>("Combo_Livelli");
        const QPoint place = view->visualRect(view->currentIndex()).center();
        QTest::mouseClick(view->viewport(), Qt::RightButton, Qt::NoModifier, place);
        QContextMenuEvent wanted(QContextMenuEvent::Mouse, place,
                                 view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &wanted);
        return window.findChild<QMenu*>(QStringLiteral("mnu_OnLevels"));
    }
    void Trigger(QMenu& menu, const char* words)
    {
        for (QAction* action : menu.actions())
            if (action->text().remove(QLatin1Char('&')) == QString::fromUtf8(words))
                return action->trigger();
        ADD_FAILURE() << words;
    }
};

} // namespace

TEST(SeveralLevels, AreDeletedAfterOneQuestion)
{
    SeveralWorld world{6};
    world.session.archive.levels[3].cdNumber = 2; // one on a disc cannot be deleted
    world.Show();
    world.ChooseRows(2, 4);
    EXPECT_EQ(world.TextOfLabel("Label_Counts"), "3 of 7 chosen");
    world.box.host.WillAsk("\"Level 03\"", false);
    QTest::keyClick(world.Find("Combo_Livelli"), Qt::Key_Delete);
    EXPECT_EQ(world.session.archive.levels.size(), 7U);

    world.box.host.WillAsk("these 3 levels", true);
    QTest::keyClick(world.Find("Combo_Livelli"), Qt::Key_Delete);
    EXPECT_EQ(world.session.archive.levels.size(), 5U);
    EXPECT_FALSE(world.box.Has("levels/LEVEL_0002"));
    EXPECT_TRUE(world.box.Has("levels/LEVEL_0003"));
    ASSERT_EQ(world.box.host.told.size(), 1U) << world.box.host.AllTold();
    EXPECT_NE(world.box.host.told[0].text.find("2 of 3"), std::string::npos);
    EXPECT_NE(world.box.host.told[0].details.find("Level 03: "), std::string::npos);
    EXPECT_EQ(world.list.Selected(), 5) << "the level that came into the chosen one's place";

    // Each one can be brought back, as if it had been deleted alone.
    world.box.host.told.clear();
    world.box.host.AnswerAll(true);
    world.window.findChild<QAction*>(QStringLiteral("mnu_Undo"))->trigger();
    EXPECT_EQ(world.session.archive.levels.size(), 6U) << world.box.host.AllTold();
    EXPECT_TRUE(world.box.Has("levels/LEVEL_0004"));
}

TEST(SeveralLevels, AreExportedEachIntoAZipOfItsOwn)
{
    SeveralWorld world{3};
    world.box.machine.tools["zip"] = platform::FindOnPath("zip");
    world.Show();
    world.box.Write("zips/TR_Level_Level 02.zip", "not mine");
    world.ChooseRows(1, 2);
    QMenu* menu = world.OpenMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(world.list.Selected(), 2) << "a right click on one of them chooses no other";
    world.box.host.WillAsk("these 2 levels", true);
    world.box.host.WillChoose("Select a folder for the zip files", world.box / "zips");
    world.Trigger(*menu, "Export chosen levels as zip files");
    EXPECT_TRUE(world.box.host.told.empty()) << world.box.host.AllTold();
    EXPECT_EQ(world.box.Read("zips/TR_Level_Level 02.zip"), "not mine");
    EXPECT_EQ(ListFiles(world.box / "zips", "*.zip").ValueOr({}).size(), 3U);
}

TEST(SeveralLevels, AreStoppedBetweenTwo)
{
    SeveralWorld world{4};
    world.Show();
    world.box.host.WillAsk("these 4 levels", true);
    world.box.host.StopAtStep(2);
    class Quiet : public Face
    {
    } face;
    EXPECT_FALSE(RunOnSeveral(*FindControl("mnu_RemoveLevel"), world.session, face, {1, 2, 3, 4}));
    EXPECT_TRUE(world.box.host.WasTold("It was stopped")) << world.box.host.AllTold();
    EXPECT_GT(world.session.archive.levels.size(), 1U);
    EXPECT_LT(world.session.archive.levels.size(), 5U);
    for (const LevelRecord& level : world.session.archive.levels)
        EXPECT_TRUE(level.levelCode == originalCode ||
                    world.box.Has("levels/LEVEL_" + ZeroPadded(level.levelCode, 4)));
}

TEST(SeveralLevels, AreMarkedTogether)
{
    SeveralWorld world{5};
    world.Show();
    world.ChooseRows(2, 4);
    const auto mark = [&](const char* sub, const char* words) {
        QMenu* menu = world.OpenMenu();
        ASSERT_NE(menu, nullptr);
        auto* inner = menu->findChild<QMenu*>(QString::fromLatin1(sub));
        ASSERT_NE(inner, nullptr);
        world.Trigger(*inner, words);
        menu->close();
        QTRY_VERIFY(world.window.findChild<QMenu*>(QStringLiteral("mnu_OnLevels")) == nullptr);
    };
    mark("mnu_Status", "Finished");
    EXPECT_EQ(world.TextOfLabel("Label_Counts"), "3 of 6 chosen") << "they stay chosen";
    world.box.host.WillAskText("A tag for", "jungle");
    mark("mnu_Tags", "New tag …");
    EXPECT_TRUE(world.box.host.told.empty()) << world.box.host.AllTold();
    auto* filter = world.Find<QComboBox>("Combo_Filter");
    filter->setCurrentIndex(filter->findText(QStringLiteral("Tag: jungle")));
    auto* view = world.Find<QListView>("Combo_Livelli");
    EXPECT_EQ(view->model()->rowCount(), 3);
    filter->setCurrentIndex(filter->findText(QStringLiteral("Finished")));
    EXPECT_EQ(view->model()->rowCount(), 3);
    // What is no longer so leaves the list, and the choice to its neighbour.
    world.ChooseRows(2, 3);
    mark("mnu_Status", "Given up");
    EXPECT_EQ(view->model()->rowCount(), 1);
    EXPECT_EQ(world.list.Selected(), 4);
}

} // namespace kestrova::testing
