#include "ui/dialogs/dialog_doctor.h"

#include "storage/stored_hashes.h"
#include "ui/window_world.h"

#include <QClipboard>
#include <QTreeView>
#include <QTreeWidget>

namespace kestrova::testing
{

namespace
{

/// What the list of faults shows, a row a line.
std::string ShownFaults(QWidget& dialog)
{
    const auto* model = In<QTreeView>(dialog, "List_Faults")->model();
    QString text;
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column)
            text += (column > 0 ? "|" : "") + model->index(row, column).data().toString();
        text += '\n';
    }
    return FromQt(text);
}

TEST(DoctorWindow, ChecksRepairsAndCopies)
{
    WindowWorld world;
    const LevelCode code = world.AddLevel("Dawn");
    world.box.Write("levels/LEVEL_0001/files/read.txt", "text");
    const Path home = world.box / "levels/LEVEL_0001";
    NoteStoredFiles(home, {});
    world.Show();
    world.session.list.Select(code);
    DoctorDialog dialog{world.session, nullptr};
    EXPECT_GT(In<QTreeWidget>(dialog, "List_State")->topLevelItemCount(), 3);
    EXPECT_FALSE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    for (const char* button : {"Pul_Repair", "Pul_From", "Pul_Copy"})
        EXPECT_FALSE(In(dialog, button)->isEnabled()) << button;

    Press(dialog, "Pul_CheckLevel");
    EXPECT_EQ(ShownFaults(dialog), "");
    std::filesystem::remove(home / "files/level1.tr4");
    std::filesystem::remove(home / "files/read.txt");
    world.box.Write("trle/data/level1.tr4", "Dawn");
    Press(dialog, "Pul_CheckAll");
    EXPECT_EQ(ShownFaults(dialog), "Dawn|level1.tr4|missing|the Level Editor's folder\n"
                                   "Dawn|read.txt|missing|(no source known)\n");
    EXPECT_TRUE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    Press(dialog, "Pul_Copy");
    EXPECT_NE(FromQt(QGuiApplication::clipboard()->text()).find("\tDawn\tread.txt\tmissing\t"),
              std::string::npos);

    Press(dialog, "Pul_Repair");
    EXPECT_NE(ShownFaults(dialog).find("Dawn|read.txt|missing|No source here"), std::string::npos);
    EXPECT_EQ(ReadWholeFile(home / "files/level1.tr4").ValueOr({}), "Dawn");
    world.box.Write("any.txt", "text");
    world.box.host.WillChoose("The package to repair from", world.box / "any.txt");
    Press(dialog, "Pul_From");
    EXPECT_EQ(ShownFaults(dialog), "");
    EXPECT_FALSE(In(dialog, "Pul_Repair")->isEnabled());
    EXPECT_NE(FromQt(In<QLabel>(dialog, "Label_Result")->text()).find("Brought back: 1."),
              std::string::npos);
    EXPECT_TRUE(world.box.host.told.empty()) << world.box.host.AllTold();
}

} // namespace

} // namespace kestrova::testing
