#include "ui/dialogs/dialog_add_many.h"
#include "ui/widgets/captions.h"
#include "ui/window_world.h"
#include "world/zip_builder.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QTimer>
#include <QTreeWidget>

namespace kestrova::testing
{

namespace
{

void WriteZip(WindowWorld& world, const std::string& file, const std::string& tr4)
{
    world.box.Write(file, BuildZip({{tr4, tr4}, {"script.dat", "script"}}));
}

QString RowText(const QTreeWidget& list, int row)
{
    const QTreeWidgetItem* item = list.topLevelItem(row);
    return item->text(0) + " | " + item->text(1) + " | " + item->text(2);
}

/// A sentence is seen whole, however wide its column is, and no row is higher than it must be.
void ExpectWholeSentences(QTreeWidget& list)
{
    const auto rowHeight = [&](int row) {
        return list.visualItemRect(list.topLevelItem(row)).height();
    };
    for (const int sourceWidth : {60, 400}) {
        list.header()->resizeSection(0, sourceWidth);
        QCoreApplication::processEvents();
        const QRect room{0, 0, list.columnWidth(2) - 6, 1000};
        const QRect words =
            list.fontMetrics().boundingRect(room, Qt::TextWordWrap, list.topLevelItem(0)->text(2));
        EXPECT_GE(rowHeight(0), words.height()) << "column of " << room.width();
    }
    EXPECT_GT(rowHeight(0), rowHeight(2)) << "which has few words";
}

/// Looks once the queue has ended; the dialog stands in its own loop meanwhile.
void WhenEnded(AddManyDialog& dialog, const std::function<void()>& look)
{
    auto* timer = new QTimer(&dialog);
    QObject::connect(timer, &QTimer::timeout, &dialog, [&dialog, timer, look] {
        if (dialog.Queue().End() == QueueEnd::None)
            return;
        timer->deleteLater();
        timer->stop();
        look();
    });
    timer->start(20);
}

TEST(AddManyDialog, WorksThroughItsSourcesAndSaysWhatBecameOfEach)
{
    WindowWorld world;
    world.Show();
    WriteZip(world, "down/One.zip", "one.tr4");
    WriteZip(world, "down/Same as one.zip", "one.tr4");
    world.box.Write("down/Torn.zip", "no zip at all");
    world.box.Write("down/" + std::string(180, 'x') + "/long.tr4", "long");
    int alone = 0;
    AddManyDialog dialog{world.session,
                         [&](const Path& source, QWidget*) -> std::optional<LevelCode> {
                             EXPECT_EQ(source, world.box / "down/Torn.zip");
                             return ++alone == 1 ? std::nullopt : std::optional<LevelCode>{1};
                         },
                         nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    bool looked = false;
    WhenEnded(dialog, [&] {
        auto* list = In<QTreeWidget>(dialog, "List_Many");
        ASSERT_EQ(list->topLevelItemCount(), 4);
        EXPECT_TRUE(RowText(*list, 0).startsWith("Torn.zip | Refused | "))
            << RowText(*list, 0).toStdString();
        EXPECT_TRUE(RowText(*list, 1).startsWith("Same as one.zip | Skipped | The archive has it"));
        EXPECT_EQ(RowText(*list, 2), "One.zip | Added | Level 1, \"One\"");
        EXPECT_EQ(In<QLabel>(dialog, "Label_Count")->text(),
                  "2 added, 1 skipped, 0 needing you, 1 refused");
        EXPECT_FALSE(In<QWidget>(dialog, "Pul_Stop")->isVisible());
        EXPECT_FALSE(In<QWidget>(dialog, "Pul_AddFile")->isVisible());
        EXPECT_FALSE(In<QWidget>(dialog, "Pul_Start")->isVisible());
        EXPECT_LE(dialog.width(), 760) << "a long name asks for no room";
        ExpectWholeSentences(*list);

        Press(dialog, "Pul_Copy");
        EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("Torn.zip"));
        Press(dialog, "Pul_Retry");
        EXPECT_EQ(alone, 1);
        EXPECT_TRUE(RowText(*list, 0).startsWith("Torn.zip | Refused"));
        Press(dialog, "Pul_Retry");
        EXPECT_EQ(alone, 2);
        EXPECT_TRUE(RowText(*list, 0).startsWith("Same as one.zip")) << "nothing needs the person";
        list->setCurrentItem(list->topLevelItem(3));
        EXPECT_FALSE(In<QWidget>(dialog, "Pul_Retry")->isEnabled()) << "it is in";
        looked = true;
        Press(dialog, "Pul_Cancel");
    });
    dialog.Show(SourcesOfLevels({world.box / "down"}));
    EXPECT_TRUE(looked);
    EXPECT_EQ(world.session.archive.levels.size(), 3U);
    EXPECT_EQ(world.session.running.operations, 0);
    EXPECT_TRUE(world.box.host.told.empty()) << world.box.host.AllTold();
}

TEST(AddManyDialog, StopLeavesTheRestForLater)
{
    WindowWorld world;
    for (const char* name : {"a", "b", "c"})
        WriteZip(world, std::string{"down/"} + name + ".zip", std::string{name} + ".tr4");
    AddManyDialog dialog{world.session, [](const Path&, QWidget*) { return std::nullopt; },
                         nullptr};
    dialog.show();
    EXPECT_TRUE(In<QWidget>(dialog, "Label_Hint")->isVisible());
    EXPECT_FALSE(In<QWidget>(dialog, "Pul_Start")->isEnabled());
    world.box.host.WillChoose("Select packages", world.box / "down/a.zip");
    Press(dialog, "Pul_AddFile");
    world.box.host.WillChoose("Select source folder", world.box / "down");
    Press(dialog, "Pul_AddFolder");
    auto* list = In<QTreeWidget>(dialog, "List_Many");
    ASSERT_EQ(list->topLevelItemCount(), 3) << "what is there already is passed over";
    EXPECT_EQ(RowText(*list, 2), "c.zip | Waits | ");
    // Stop is pressed while the first one is under way, and the window cannot be left meanwhile.
    QTimer::singleShot(0, &dialog, [&] {
        EXPECT_TRUE(In<QWidget>(dialog, "Pul_Stop")->isVisible());
        dialog.reject();
        EXPECT_TRUE(dialog.isVisible());
        Press(dialog, "Pul_Stop");
    });
    Press(dialog, "Pul_Start");
    EXPECT_EQ(dialog.Queue().End(), QueueEnd::Stopped);
    EXPECT_LT(dialog.Queue().Count(QueueState::Added), 3U);
    EXPECT_TRUE(In<QLabel>(dialog, "Label_End")->isVisible());
    EXPECT_TRUE(RowText(*list, 0).contains("Not tried")) << RowText(*list, 0).toStdString();
    Press(dialog, "Pul_Start");
    EXPECT_EQ(dialog.Queue().Count(QueueState::Added), 3U);
    EXPECT_FALSE(In<QLabel>(dialog, "Label_End")->isVisible());
    EXPECT_FALSE(In<QWidget>(dialog, "Pul_Start")->isVisible());
}

} // namespace

} // namespace kestrova::testing
