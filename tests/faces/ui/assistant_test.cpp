#include "editor/compile_tom_file.h"
#include "ui/dialogs/dialog_assistant.h"
#include "ui/dialogs/dialog_compila.h"
#include "ui/widgets/captions.h"
#include "ui/window_world.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>

namespace kestrova::testing
{

namespace
{

/// A level with a tom file that lacks its wads, and two sets that it could have.
class SourcesWorld : public WindowWorld
{
public:
    SourcesWorld()
        : assistant({session.host, session.machine, session.Folders(), ToolsOf(session)},
                    box / "level")
    {
        for (const char* file : {"city.wad", "city.was", "angkor.wad"})
            box.Write("trle/graphics/wads/" + std::string{file}, file);
        box.Write("level/mill.tom", "tom");
        box.Write("level/tower.tom", "tom");
        box.Write("level/readme.txt", "mill.tom: city.wad");
        box.Write("level/" + std::string(150, 'x') + ".txt", "long");
    }

    TomAssistant assistant;
};

TEST(AssistantDialog, ItsControlsAreTheAssistantsState)
{
    SourcesWorld world;
    ASSERT_TRUE(world.assistant.Open());
    AssistantDialog dialog{world.session, world.assistant, nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    EXPECT_EQ(dialog.windowTitle(), " Tom -> Tr4 conversion Assistant");
    dialog.show();
    EXPECT_LE(dialog.width(), 700) << "a long name asks for no more room";
    auto* toms = In<QComboBox>(dialog, "Combo_Sorgenti");
    auto* wads = In<QComboBox>(dialog, "Combo_WadsStandard");
    EXPECT_EQ(In<QListWidget>(dialog, "List_Readme")->currentItem()->text(), "readme.txt");
    EXPECT_EQ(toms->currentText(), "mill.tom");
    EXPECT_EQ(wads->currentIndex(), -1);
    EXPECT_EQ(wads->itemText(1), "city.*");
    Press(dialog, "Pul_Perform");
    EXPECT_TRUE(world.box.host.WasTold("You must select wads"));

    // Of two tom files the chosen one is linked; the lists are new then.
    toms->setCurrentIndex(1);
    wads->setCurrentIndex(1);
    Press(dialog, "Pul_Perform");
    EXPECT_TRUE(world.box.host.WasTold("'tower.tom' linked with wads files 'city.*'"));
    EXPECT_TRUE(world.box.Has("level/tower.was"));
    EXPECT_EQ(toms->count(), 1);
    EXPECT_EQ(wads->currentIndex(), -1);
    In<QCheckBox>(dialog, "Check_Essenziali")->click();
    EXPECT_EQ(toms->count(), 2);
    EXPECT_EQ(wads->count(), 3) << "the level's own too";

    world.box.host.WillAsk("Are you sure to wish cancel", false);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    world.box.host.WillAsk("readme.txt", true);
    world.box.host.WillAsk("mill.tom  should use -> city.*", true);
    Press(dialog, "Pul_AutoAnalisi");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(world.session.running.operations, 0);
}

TEST(CompilaDialog, OnlyItsButtonsLeaveItAndTheFolderComesBack)
{
    for (const bool takes : {true, false}) {
        SourcesWorld world;
        world.box.Write("level/mill.wad", "the level's");
        world.box.Write("trle/graphics/wads/mill.wad", "a builder's own");
        const auto before = world.box.Snapshot("trle");
        const auto files = ListFiles(world.box / "level", "*.*");
        const auto progress = world.box.host.BeginProgress(ProgressWindow::Progress, {});
        TomCompile compile{CompilePartsOf(world.session, *progress)};
        compile.Prepare(SourcesAmong(*files), world.box / "level", false);
        ASSERT_TRUE(compile.NeedsPerson());
        CompilaDialog dialog{world.session, compile, nullptr};
        EXPECT_EQ(CaptionFaults(dialog), QStringList{});
        EXPECT_TRUE(In<QPlainTextEdit>(dialog, "Text_InfoCompile")
                        ->toPlainText()
                        .contains("3) Pushing CTRL key"));
        dialog.show();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        dialog.close();
        ASSERT_TRUE(dialog.isVisible());
        EXPECT_TRUE(compile.NeedsPerson());
        Press(dialog, "Pul_Done");
        EXPECT_TRUE(world.box.host.WasTold("Compile is not completed!"));
        ASSERT_TRUE(dialog.isVisible());
        for (const char* stem : {"mill", "tower"})
            world.box.Write("trle/DATA/" + std::string{stem} + ".tr4", "made by hand");
        Press(dialog, takes ? "Pul_Done" : "Pul_Annulla");
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(compile.IsDone(), takes);
        EXPECT_EQ(world.box.Has("level/tower.tr4"), takes);
        EXPECT_EQ(world.box.Snapshot("trle"), before);
    }
}

} // namespace

} // namespace kestrova::testing
