#include "ui/window_world.h"

#include "formats/archive_file.h"

#include <QAction>
#include <QMenu>

namespace kestrova::testing
{

TEST(UndoInTheMenu, SaysWhatItWouldDoAndDoesIt)
{
    WindowWorld world;
    const LevelCode code = world.AddLevel("Rock & Roll");
    world.Show();
    auto* undo = world.Find<QAction>("mnu_Undo");
    auto* redo = world.Find<QAction>("mnu_Redo");
    EXPECT_EQ(undo->text(), "&Undo");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(redo->isEnabled());
    EXPECT_EQ(undo->shortcut(), QKeySequence{"Ctrl+Z"});

    world.list.Select(code);
    world.box.host.AnswerAll(true);
    world.Find<QAction>("mnu_RemoveLevel")->trigger();
    EXPECT_EQ(world.session.archive.Find(code), nullptr) << world.box.host.AllTold();
    EXPECT_EQ(undo->text(), "&Undo removal of level \"Rock && Roll\"");
    ASSERT_TRUE(undo->isEnabled());
    undo->trigger();
    ASSERT_NE(world.session.archive.Find(code), nullptr) << world.box.host.AllTold();
    EXPECT_EQ(world.list.Selected(), code) << "what came back is chosen";
    EXPECT_EQ(world.box.Read("levels/LEVEL_0001/files/level1.tr4"), "Rock & Roll");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_EQ(redo->text(), "&Redo removal of level \"Rock && Roll\"");
    redo->trigger();
    EXPECT_EQ(world.session.archive.Find(code), nullptr) << world.box.host.AllTold();
    EXPECT_FALSE(redo->isEnabled());
}

} // namespace kestrova::testing
