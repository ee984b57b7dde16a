#include "ui/dialogs/dialog_list_savegame.h"
#include "ui/dialogs/dialog_savegame_history.h"
#include "ui/widgets/captions.h"
#include "window_world.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

namespace kestrova::testing
{

namespace
{

struct SavesWindows : WindowWorld {
    LevelCode level = AddLevel("Dawn");
    SavesWindows()
    {
        box.Write("levels/LEVEL_0001/backup_savegames/savegame.0", SavegameBytes("Caves", 4));
        box.Write("levels/LEVEL_0001/backup_savegames/savegame.2", SavegameBytes("Temple", 9));
        Show();
        list.Select(level);
    }
    void Trigger(const char* name)
    {
        window.findChild<QAction*>(QString::fromLatin1(name))->trigger();
    }
    /// Works on the dialog that a command opens.
    template <class Work> void WithDialog(const char* command, Work work)
    {
        QTimer::singleShot(0, &window, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr) << command;
            work(*dialog);
        });
        Trigger(command);
    }
};

QListWidget& RowsOf(QWidget& dialog)
{
    return *dialog.findChild<QListWidget*>(QStringLiteral("List_Shot"));
}

} // namespace

TEST(SavegameWindows, ExportTakesTheChosenRowsAndDeletesWhenTicked)
{
    SavesWindows world;
    world.WithDialog("mnu_ExportSavegame", [&](QWidget& dialog) {
        EXPECT_EQ(CaptionFaults(dialog), QStringList{});
        EXPECT_EQ(dialog.windowTitle(), "Select one or more savegame to export");
        EXPECT_EQ(RowsOf(dialog).count(), 2);
        EXPECT_TRUE(RowsOf(dialog).item(1)->text().startsWith(QStringLiteral("   9 - Temple  ")));
        Press(dialog, "Pul_Ok");
        EXPECT_TRUE(world.box.host.WasTold("No savegame selected"));
        EXPECT_TRUE(dialog.isVisible()) << "it stays open";
        RowsOf(dialog).item(1)->setSelected(true);
        dialog.findChild<QCheckBox*>(QStringLiteral("Check_Elimina"))->setChecked(true);
        std::filesystem::create_directory(world.box / "out");
        world.box.host.WillChoose("Select folder where save savegames", world.box / "out");
        Press(dialog, "Pul_Ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(world.box.Read("out/savegame.2"), SavegameBytes("Temple", 9));
    EXPECT_FALSE(world.box.Has("levels/LEVEL_0001/backup_savegames/savegame.2"));
    EXPECT_NE(world.TextOfLabel("Label_InfoDir").find("Savegames: 1 + 0"), std::string::npos)
        << "the level is shown anew: " << world.TextOfLabel("Label_InfoDir");
}

TEST(SavegameWindows, ImportAsksForTheFolderAndOffersNoDelete)
{
    SavesWindows world;
    world.box.Write("from/savegame.9", SavegameBytes("Come", 1));
    world.box.host.WillChoose("Select source folder with savegames to import", std::nullopt);
    world.Trigger("mnu_ImportSavegame");
    world.box.host.WillChoose("Select source folder with savegames to import", world.box / "from");
    world.WithDialog("mnu_ImportSavegame", [&](QWidget& dialog) {
        EXPECT_FALSE(
            dialog.findChild<QCheckBox*>(QStringLiteral("Check_Elimina"))->isVisibleTo(&dialog));
        RowsOf(dialog).selectAll();
        Press(dialog, "Pul_Ok");
    });
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/backup_savegames/savegame.1"),
              SavegameBytes("Come", 1));
}

TEST(SavegameWindows, TheMenuMovesAndTheHistoryBringsBack)
{
    SavesWindows world;
    world.Trigger("mnu_BackupSavegame");
    EXPECT_TRUE(world.box.host.WasTold("archvied"));
    EXPECT_NE(world.TextOfLabel("Label_InfoDir").find("Savegames: 1 + 2"), std::string::npos);
    world.Trigger("mnu_RestoreSavegames");
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/backup_savegames/savegame.0"),
              SavegameBytes("Caves", 4));
    world.box.Write("home/history/originals/data/mine.tr4", "my own level");
    const std::string longName(200, 'w');
    world.box.Write("home/history/originals/" + longName, "theirs");
    world.WithDialog("mnu_SavegameHistory", [&](QWidget& dialog) {
        EXPECT_EQ(CaptionFaults(dialog), QStringList{});
        auto& kept = *dialog.findChild<QTreeWidget*>(QStringLiteral("List_Originals"));
        ASSERT_EQ(kept.topLevelItemCount(), 2);
        dialog.findChild<QTabWidget*>(QStringLiteral("Tabs_History"))->setCurrentIndex(1);
        EXPECT_LE(kept.header()->length(), kept.viewport()->width())
            << "a long name leaves size and time in sight";
        const auto mine = kept.findItems("\\data\\mine.tr4", Qt::MatchExactly, 1);
        ASSERT_EQ(mine.size(), 1);
        kept.setCurrentItem(mine.front());
        Press(dialog, "Pul_BringOriginalBack");
        EXPECT_EQ(world.box.Read("trle/DATA/mine.tr4"), "my own level");
        kept.setCurrentItem(
            kept.findItems("\\" + QString::fromStdString(longName), Qt::MatchExactly, 1).front());
        for (const bool sure : {false, true}) {
            world.box.host.WillAsk("for good? Nothing else", sure);
            Press(dialog, "Pul_DeleteOriginal");
            EXPECT_EQ(kept.topLevelItemCount(), sure ? 1 : 2);
            EXPECT_EQ(world.box.Has("home/history/originals/" + longName), !sure);
        }
        dialog.findChild<QTabWidget*>(QStringLiteral("Tabs_History"))->setCurrentIndex(0);
        auto& rows = *dialog.findChild<QTreeWidget*>(QStringLiteral("List_History"));
        ASSERT_EQ(rows.topLevelItemCount(), 1) << "what was live before the restore";
        EXPECT_EQ(rows.topLevelItem(0)->text(3), "Temple");
        Press(dialog, "Pul_BringBack");
        EXPECT_TRUE(world.box.host.WasTold("Brought back as savegame.2."))
            << world.box.host.AllTold();
        for (const bool sure : {false, true}) {
            world.box.host.WillAsk("for good: savegame.0 (Temple)?", sure);
            Press(dialog, "Pul_DeleteKept");
            EXPECT_EQ(rows.topLevelItemCount(), sure ? 0 : 1);
        }
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("Pul_DeleteKept"))->isEnabled());
        Press(dialog, "Pul_Cancel");
    });
    world.box.host.WillAsk("is not current level", false);
    world.Trigger("mnu_StartSaveGameMan");
    EXPECT_TRUE(world.box.host.WasTold("Brivanta not found.")) << world.box.host.AllTold();
}

} // namespace kestrova::testing
