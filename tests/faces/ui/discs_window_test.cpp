#include "ui/dialogs/dialog_muovi_su_cd.h"
#include "ui/widgets/captions.h"
#include "ui/window_world.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTimer>
#include <QTreeWidget>

namespace kestrova::testing
{

namespace
{

/// What the plan shows, a row a line, those of levels set in.
std::string ShownPlan(QWidget& dialog)
{
    QString text;
    for (QTreeWidgetItemIterator at{In<QTreeWidget>(dialog, "List_Plan")}; *at != nullptr; ++at)
        text +=
            ((*at)->parent() == nullptr ? "" : "  ") + (*at)->text(0) + "|" + (*at)->text(2) + "\n";
    return FromQt(text);
}

void Settle()
{
    QTest::qWait(1); // the levels are looked at once the window is there
}

TEST(DiscsWindow, ShowsThePlanOfEachChoiceAndMakesTheImages)
{
    WindowWorld world;
    world.box.machine.tools["xorriso"] = "/usr/bin/xorriso";
    for (const char* name : {"Alpha", "Beta"})
        std::filesystem::resize_file(
            world.box /
                ("levels/LEVEL_000" + std::to_string(world.AddLevel(name)) + "/files/level1.tr4"),
            2'000'000);
    std::filesystem::create_directories(world.box / "images");
    MuoviSuCdDialog dialog{world.session, nullptr};
    dialog.show();
    Settle();
    EXPECT_EQ(ShownPlan(dialog), "Kestrova #1|3.8 MB\n  Alpha|1.9 MB\n  Beta|1.9 MB\n");
    auto* capacity = In<QComboBox>(dialog, "Combo_Mb");
    capacity->setEditText("10");
    EXPECT_EQ(ShownPlan(dialog),
              "Kestrova #1|1.9 MB\n  Alpha|1.9 MB\nKestrova #2|1.9 MB\n  Beta|1.9 MB\n");
    capacity->setEditText("");
    EXPECT_EQ(ShownPlan(dialog), "");
    EXPECT_FALSE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    Press(dialog, "Pul_Start");
    EXPECT_TRUE(world.box.host.WasTold("You must specify, CD capacity"));
    capacity->setEditText("10");
    Press(dialog, "Pul_Start");
    EXPECT_TRUE(world.box.host.WasTold("You must specify the folder"));

    // Without a drive that writes there are images alone.
    EXPECT_EQ(In<QComboBox>(dialog, "Combo_Unita")->count(), 1);
    EXPECT_FALSE(In(dialog, "Combo_Speed")->isEnabled());
    world.box.host.WillChoose("Folder for the images", world.box / "images");
    Press(dialog, "Pul_SfogliaImages");
    In<QCheckBox>(dialog, "Check_Archivio")->setChecked(false);
    Press(dialog, "Pul_Start");
    EXPECT_TRUE(world.box.host.WasTold("There is nothing to enclose in cd"));
    In<QCheckBox>(dialog, "Check_Archivio")->setChecked(true);

    // The button is the one of Stop while the work goes on.
    QTimer stop;
    QObject::connect(&stop, &QTimer::timeout, &dialog, [&] {
        if (world.session.running.operations > 0 &&
            In<QPushButton>(dialog, "Pul_Start")->text() == "Stop")
            Press(dialog, "Pul_Start");
    });
    stop.start(0);
    Press(dialog, "Pul_Start");
    stop.stop();
    EXPECT_TRUE(world.box.host.WasTold("No disc is made any more"));
    EXPECT_TRUE(world.box.Snapshot("images").empty());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(In<QPushButton>(dialog, "Pul_Start")->text().remove('&'), "Start");

    world.box.host.WillAsk("Remove from local disk (hard disk) 2 levels", false);
    Press(dialog, "Pul_Start");
    EXPECT_EQ(dialog.result(), QDialog::Accepted) << world.box.host.AllTold();
    EXPECT_TRUE(world.box.Has("images/Kestrova 02 levels.iso"));
    EXPECT_EQ(world.session.archive.levels[1].cdNumber, 0);
    EXPECT_TRUE(CaptionFaults(dialog).isEmpty()) << FromQt(CaptionFaults(dialog).join('\n'));
}

TEST(DiscsWindow, TakesTheCapacityOfTheChosenDrive)
{
    WindowWorld world;
    world.box.Write("written.img", "no disc that anybody knows");
    world.session.settings.drives = {
        {"small", world.box / "written.img", world.box / "seen", 105, true},
        {"unbounded", {}, world.box / "seen too", 0, true}};
    MuoviSuCdDialog dialog{world.session, nullptr};
    auto* capacity = In<QComboBox>(dialog, "Combo_Mb");
    auto* unit = In<QComboBox>(dialog, "Combo_Unita");
    EXPECT_EQ(FromQt(capacity->currentText()), "105 MB");
    unit->setCurrentIndex(1);
    EXPECT_EQ(FromQt(capacity->currentText()), "4.7 GB DVD");
    capacity->setCurrentIndex(0);
    unit->setCurrentIndex(2);
    EXPECT_EQ(FromQt(capacity->currentText()), "650 MB") << "what the person chose stays";
    unit->setCurrentIndex(0);
    EXPECT_EQ(FromQt(capacity->currentText()), "105 MB");
}

} // namespace

} // namespace kestrova::testing
