#include "ui/dialogs/dialog_tipo_exe.h"
#include "ui/window_world.h"

namespace kestrova::testing
{

namespace
{

TEST(TipoExeWindow, TakesAnAnswerOrNone)
{
    WindowWorld world;
    const Folders folders = world.session.Folders();
    InstalledPlace place{world.box.host, folders};
    TipoExeDialog dialog{place, nullptr};
    EXPECT_EQ(FromQt(dialog.windowTitle()), " Where did the files copied?");
    EXPECT_NE(In(dialog, "Pul_Help"), nullptr);
    dialog.reject();
    EXPECT_FALSE(place.Answer()) << "closing it is none";

    world.box.host.WillChoose("Select folder where the files have been copied", std::nullopt);
    Press(dialog, "Pul_Sfoglia");
    EXPECT_TRUE(world.box.host.WasTold("You must choose a folder!"));
    EXPECT_FALSE(place.Answer());
    world.box.host.WillChoose("Select folder where the files have been copied", world.box / "in");
    Press(dialog, "Pul_Sfoglia");
    ASSERT_TRUE(place.Answer());
    EXPECT_EQ(place.Answer()->code, "ZIP");
    EXPECT_EQ(place.Answer()->folder, world.box / "in");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);

    Press(dialog, "Pul_Trle");
    EXPECT_EQ(place.Answer()->code, "TRLE");
    EXPECT_EQ(place.Answer()->folder, folders.trle);
}

} // namespace

} // namespace kestrova::testing
