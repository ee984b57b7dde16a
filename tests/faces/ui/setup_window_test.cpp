#include "ui/dialogs/dialog_installa_trle.h"

#include "session/operation.h"
#include "ui/widgets/captions.h"
#include "ui/window_world.h"
#include "world/zip_builder.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

namespace kestrova::testing
{

namespace
{

/// A person without a Level Editor, and a small setup of one.
class SetupWindowWorld : public WindowWorld
{
public:
    SetupWindowWorld()
    {
        session.preferences.trlePath.clear();
        std::vector<BuiltEntry> entries{{"trle/script/script.dat", "script"},
                                        {"trle/script/german.dat", "german"},
                                        {"trle/data/title.tr4", "title"}};
        for (const auto& [file, content] : box.Snapshot("trle"))
            entries.push_back({"trle/" + file, content});
        box.Write("setup.zip", BuildZip(entries));
    }
};

TEST(SetupWindow, GathersZipsAndInstalls)
{
    SetupWindowWorld world;
    const Operation start{world.session}; // it opens during one
    InstallTrleDialog dialog{world.session, std::nullopt, nullptr};
    EXPECT_EQ(CaptionFaults(dialog), QStringList{});
    EXPECT_EQ(FromQt(dialog.windowTitle()), " Compress TR Level Editor Setup");
    EXPECT_EQ(In<QComboBox>(dialog, "Combo_Language")->count(), 6);
    EXPECT_EQ(In<QLineEdit>(dialog, "Text_Target")->text(),
              PathToQt(world.box / "person/.local/share/Core Design/trle"));
    EXPECT_FALSE(In<QLabel>(dialog, "Label_Hint")->isHidden());
    Press(dialog, "Pul_Remove");
    EXPECT_TRUE(world.box.host.WasTold("No item selected"));
    Press(dialog, "Pul_Install");
    EXPECT_TRUE(world.box.host.WasTold("You must insert in list box"));

    for (int round = 0; round < 2; ++round) {
        world.box.host.WillChoose("Select compress trle setup .zip file", world.box / "setup.zip");
        Press(dialog, "Pul_Add");
    }
    const std::string zip = (world.box / "setup.zip").native();
    EXPECT_TRUE(world.box.host.WasTold("File '" + zip + "' already exists"));
    auto* list = In<QListWidget>(dialog, "List_Files");
    ASSERT_EQ(list->count(), 1);
    list->setCurrentRow(0);
    Press(dialog, "Pul_Remove");
    EXPECT_EQ(list->count(), 0);
    world.box.host.WillChoose("Select compress", world.box / "setup.zip");
    Press(dialog, "Pul_Add");

    world.box.host.WillChoose("install Tomb Raider Level Editor into", world.box / "new");
    Press(dialog, "Pul_SfogliaTarget");
    EXPECT_EQ(In<QLineEdit>(dialog, "Text_Target")->text(), PathToQt(world.box / "new"));
    EXPECT_NE(In<QLabel>(dialog, "Label_Room")->text().indexOf(QStringLiteral("Free there: ")), -1);
    In<QComboBox>(dialog, "Combo_Language")->setCurrentIndex(3);
    world.box.host.AnswerAll(true);
    Press(dialog, "Pul_Install");
    EXPECT_EQ(dialog.result(), QDialog::Accepted) << world.box.host.AllTold();
    EXPECT_EQ(dialog.Installed(), world.box / "new");
    EXPECT_EQ(world.box.Read("new/german.dat"), "german");
}

TEST(SetupWindow, CancelStopsAndNothingIsMade)
{
    SetupWindowWorld world;
    InstallTrleDialog dialog{world.session, world.box / "trle", nullptr};
    EXPECT_TRUE(In(dialog, "List_Files")->isHidden());
    EXPECT_FALSE(In(dialog, "Label_From")->isHidden());
    Press(dialog, "Pul_Cancel");
    EXPECT_TRUE(world.box.host.WasTold("Setup stopped"));
    EXPECT_FALSE(std::filesystem::exists(world.box / "person"));
}

} // namespace

} // namespace kestrova::testing
