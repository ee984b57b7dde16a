#include "intake/edit_level.h"
#include "session/operation.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/window_world.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QTimer>
#include <QTreeWidget>

namespace kestrova::testing
{

namespace
{

TEST(NewLevelDialog, ShowsWhatComesInAndTakesTheTextsBack)
{
    WindowWorld world;
    world.box.Write("down/level.tr4", "level");
    world.box.Write("down/read this.txt", "read");
    world.box.Write("down/" + std::string(200, 'x') + ".txt", "long");
    NewLevelDialog dialog{world.session, nullptr};
    bool looked = false;
    QTimer::singleShot(400, &dialog, [&] {
        auto* files = In<QTreeWidget>(dialog, "List_Files");
        ASSERT_EQ(files->topLevelItemCount(), 3);
        EXPECT_EQ(files->topLevelItem(0)->text(0), "level.tr4");
        EXPECT_FALSE(In<QWidget>(dialog, "Label_Hint")->isVisible());
        EXPECT_EQ(In<QLabel>(dialog, "Label_Size")->text(), "3 files (13)");
        auto* moreInfo = In<QComboBox>(dialog, "Combo_MoreInfo");
        EXPECT_EQ(moreInfo->count(), 4);
        EXPECT_EQ(moreInfo->currentText(), "read this.txt");
        auto* name = In<QLineEdit>(dialog, "Text_NameLevel");
        EXPECT_EQ(name->text(), "down");
        EXPECT_FALSE(In<QWidget>(dialog, "ProgressBar1")->isVisible());

        // Remove asks; the selected file goes.
        Press(dialog, "Pul_Remove");
        EXPECT_TRUE(world.box.host.WasTold("No file selected"));
        files->setCurrentItem(files->topLevelItem(2));
        world.box.host.WillAsk("Are you sure to remove file: xxxx", true);
        Press(dialog, "Pul_Remove");
        EXPECT_EQ(files->topLevelItemCount(), 2);

        name->setText("  My level ");
        In<QLineEdit>(dialog, "Text_Note")->setText("a note");
        moreInfo->setCurrentIndex(0);
        Q_EMIT moreInfo->activated(0);
        looked = true;
        Press(dialog, "Pul_Ok");
    });
    LevelCode code = 0;
    ASSERT_TRUE(AddLevel(
        world.session, dialog.Progress(),
        [&](Intake& level) { return dialog.Show(level, {world.box / "down"}); }, code));
    EXPECT_TRUE(looked);
    const LevelRecord& record = world.session.archive.levels.back();
    EXPECT_EQ(record.levelName, "My level");
    EXPECT_EQ(record.levelNote, "a note");
    EXPECT_EQ(record.moreInfoFile, "");
    EXPECT_EQ(world.session.running.operations, 0);
}

TEST(NewLevelDialog, EscapeGivesTheLevelUp)
{
    WindowWorld world;
    NewLevelDialog dialog{world.session, nullptr};
    QTimer::singleShot(100, &dialog, [&] {
        EXPECT_TRUE(In<QWidget>(dialog, "Label_Hint")->isVisible());
        world.box.host.WillAsk("Do you want see url list where you could download new", false);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    LevelCode code = 0;
    EXPECT_FALSE(AddLevel(
        world.session, dialog.Progress(), [&](Intake& level) { return dialog.Show(level); }, code));
    EXPECT_EQ(world.session.archive.levels.size(), 1U);
    EXPECT_FALSE(world.box.Has("levels/LEVEL_0001"));
}

TEST(NewLevelDialog, WhatWasTypedIsNotDroppedUnasked)
{
    WindowWorld world;
    world.AddLevel("Level", "a note");
    for (const bool keeps : {true, false}) {
        NewLevelDialog dialog{world.session, nullptr};
        QTimer::singleShot(100, &dialog, [&] {
            const QString typed = keeps ? "a longer note" : "the longest note";
            In<QLineEdit>(dialog, "Text_Note")->setText(typed);
            world.box.host.WillAsk("is not stored yet", false);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            ASSERT_TRUE(dialog.isVisible());
            EXPECT_EQ(In<QLineEdit>(dialog, "Text_Note")->text(), typed);
            if (!keeps)
                world.box.host.WillAsk("is not stored yet", true);
            Press(dialog, keeps ? "Pul_Ok" : "Pul_Cancel");
        });
        EXPECT_EQ(EditLevel(world.session, dialog.Progress(), 1,
                            [&](Intake& level) { return dialog.Show(level); }),
                  keeps);
        EXPECT_EQ(world.session.archive.levels[1].levelNote, "a longer note");
    }
    // Nothing is asked where nothing was typed, nor where it was typed back.
    NewLevelDialog dialog{world.session, nullptr};
    QTimer::singleShot(100, &dialog, [&] {
        auto* name = In<QLineEdit>(dialog, "Text_NameLevel");
        name->setText("Other");
        name->setText("Level");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(EditLevel(world.session, dialog.Progress(), 1,
                           [&](Intake& level) { return dialog.Show(level); }));
}

TEST(NewLevelDialog, StopIsHeardDuringTheWorkAndForgottenByTheNext)
{
    WindowWorld world;
    NewLevelDialog dialog{world.session, nullptr};
    dialog.show();
    auto& progress = dynamic_cast<StoppableProgress&>(dialog.Progress());
    const Operation operation{world.session};
    progress.Begin();
    auto* bar = In<QProgressBar>(dialog, "ProgressBar1");
    progress.SetBar(0, 0);
    EXPECT_FALSE(bar->isVisible()) << "an empty one looks like something to fill in";
    progress.SetBar(1, 2);
    EXPECT_TRUE(bar->isVisible());
    progress.AllowStop();
    EXPECT_TRUE(progress.Step());
    auto* stop = In<QPushButton>(dialog, "Pul_Stop");
    ASSERT_TRUE(stop->isVisible());
    QTest::mouseClick(In<QPushButton>(dialog, "Pul_Ok"), Qt::LeftButton);
    QTest::mouseClick(stop, Qt::LeftButton);
    EXPECT_FALSE(progress.Step());
    progress.End();
    EXPECT_FALSE(stop->isVisible());
    progress.Begin();
    EXPECT_TRUE(progress.Step());
}

} // namespace

} // namespace kestrova::testing
