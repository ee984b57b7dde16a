#include "app/command_table.h"
#include "app/run_command.h"
#include "history/undo_entries.h"
#include "publish/author_infos.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

bool Write(World& world, std::size_t index, const std::string& author)
{
    AuthorInfos infos{world.session, index};
    infos.name = author;
    return infos.Store();
}

} // namespace

TEST(UndoOfAWindow, OffersAnOlderChangeWhereTheNewestIsRefused)
{
    World world;
    world.MakeTrle();
    world.MakeBackupAndArchive();
    for (const char* name : {"First", "Second"})
        ASSERT_GT(world.AddLevel(name, {{"level1.tr4", name}}), 0);
    ASSERT_TRUE(Write(world, 1, "one") && Write(world, 2, "two")) << world.host.AllTold();
    world.session.archive.levels[2].levelNote = "somebody else's";
    const CommandRow& undo = *FindControl("mnu_Undo");
    Face face;
    world.host.WillAsk("Undo that one instead?", false);
    EXPECT_FALSE(RunOnChosen(undo, world.session, face));
    EXPECT_TRUE(world.host.WasTold("has been changed since")) << world.host.AllTold();
    EXPECT_EQ(Trim(world.session.archive.levels[1].authorName), "one");
    world.host.WillAsk("Undo that one instead?", true);
    EXPECT_TRUE(RunOnChosen(undo, world.session, face)) << world.host.AllTold();
    EXPECT_EQ(Trim(world.session.archive.levels[1].authorName), "");
    EXPECT_EQ(Trim(world.session.archive.levels[2].authorName), "two");
    EXPECT_FALSE(RunOnChosen(undo, world.session, face)) << "no older one is left";
}

} // namespace kestrova::testing
