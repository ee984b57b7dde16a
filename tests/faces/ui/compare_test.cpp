#include "ui/dialogs/dialog_compare_trle.h"
#include "ui/window_world.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QTreeView>

namespace kestrova::testing
{

namespace
{

/// What the list shows, a row a line.
std::string Shown(QWidget& dialog)
{
    const auto* model = In<QTreeView>(dialog, "List_Files")->model();
    QString text;
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column)
            text += (column > 0 ? "|" : "") + model->index(row, column).data().toString();
        text += '\n';
    }
    return FromQt(text);
}

TEST(CompareWindow, ComparesFiltersCopiesAndOpens)
{
    WindowWorld world;
    world.box.Write("a/DATA/gone.tr4", "gone");
    world.box.Write("a/changed", "one");
    world.box.Write("b/changed", "longer");
    world.box.Write("b/Come", "");
    for (const char* file : {"a/same", "b/SAME"})
        world.box.Write(file, "same");
    CompareTrleDialog dialog{world.session, nullptr};
    EXPECT_EQ(In<QLineEdit>(dialog, "Text_After")->text(), PathToQt(world.box / "trle"));
    EXPECT_FALSE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    EXPECT_FALSE(In(dialog, "Pul_Copy")->isEnabled());
    In<QLineEdit>(dialog, "Text_Before")->setText(PathToQt(world.box / "a"));
    world.box.host.WillChoose("Choose the folder to be compared", world.box / "b");
    Press(dialog, "Pul_SfogliaAfter");
    EXPECT_EQ(In<QLineEdit>(dialog, "Text_After")->text(), PathToQt(world.box / "b"));

    Press(dialog, "Pul_Compare");
    EXPECT_EQ(
        Shown(dialog),
        "changed|changed|3 bytes|6 bytes\nnew|Come||0 bytes\nmissing|DATA/gone.tr4|4 bytes|\n");
    EXPECT_TRUE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    EXPECT_EQ(FromQt(In<QCheckBox>(dialog, "Check_Equal")->text()), "Equal (1)");
    EXPECT_EQ(FromQt(In<QLabel>(dialog, "Label_Count")->text()), "Files shown: 3 of 4");
    In<QCheckBox>(dialog, "Check_Changed")->click();
    In<QCheckBox>(dialog, "Check_Equal")->click();
    EXPECT_EQ(Shown(dialog),
              "new|Come||0 bytes\nmissing|DATA/gone.tr4|4 bytes|\nequal|SAME|4 bytes|4 bytes\n");
    Press(dialog, "Pul_Copy");
    EXPECT_EQ(FromQt(QGuiApplication::clipboard()->text()),
              "new\tCome\nmissing\tDATA/gone.tr4\nequal\tSAME\n");

    // What a side does not have cannot be opened there.
    EXPECT_FALSE(In(dialog, "Pul_OpenBefore")->isEnabled());
    EXPECT_TRUE(In(dialog, "Pul_OpenAfter")->isEnabled());
    In<QLineEdit>(dialog, "Text_Search")->setText("GONE");
    EXPECT_EQ(Shown(dialog), "missing|DATA/gone.tr4|4 bytes|\n");
    EXPECT_FALSE(In(dialog, "Pul_OpenAfter")->isEnabled());
    Press(dialog, "Pul_OpenBefore");
    EXPECT_EQ(world.box.machine.opened,
              std::vector<std::string>{(world.box / "a/DATA/gone.tr4").native()});

    In<QLineEdit>(dialog, "Text_Search")->setText("nothing is called so");
    EXPECT_FALSE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    EXPECT_FALSE(In(dialog, "Pul_OpenBefore")->isEnabled());
    In<QLineEdit>(dialog, "Text_Search")->clear();
    In<QLineEdit>(dialog, "Text_After")->setText(PathToQt(world.box / "a"));
    EXPECT_EQ(Shown(dialog), "") << "another folder's files are not shown";
    Press(dialog, "Pul_Compare");
    EXPECT_EQ(Shown(dialog), "equal|changed|3 bytes|3 bytes\nequal|DATA/gone.tr4|4 bytes|4 "
                             "bytes\nequal|same|4 bytes|4 bytes\n");
    EXPECT_TRUE(world.box.host.told.empty()) << world.box.host.AllTold();
}

} // namespace

} // namespace kestrova::testing
